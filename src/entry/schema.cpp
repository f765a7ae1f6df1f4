#include "store/schema.h"

#include <orvenmod/schema.h>

#include "entry/startup.h"

namespace orvenmod {

void CreateSchema(const std::string& connectionString) {
    // Mode=Create makes the file of the embedded store; to a server it says nothing new.
    const auto connection = componentStore().connect(connectionString + ";Mode=Create");
    store::createSchema(*connection);
    connection->close();
}

}  // namespace orvenmod
