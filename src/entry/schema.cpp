#include "store/schema.h"

#include <orvenmod/schema.h>

#include "entry/startup.h"
#include "store/upgrade.h"

namespace orvenmod {

void CreateSchema(const std::string& connectionString) {
    // Mode=Create makes the file of the embedded store; to a server it says nothing new.
    const auto connection = componentStore().connect(connectionString + ";Mode=Create");
    store::createSchema(*connection);
    connection->close();
}

int SchemaVersion(const std::string& connectionString) {
    return store::schemaVersion(*componentStore().connect(connectionString));
}

int NewestSchemaVersion() { return store::newestSchemaVersion(); }

void UpgradeSchema(const std::string& connectionString) {
    store::upgradeSchema(*componentStore().connect(connectionString));
}

}  // namespace orvenmod
