#include "store/schema.h"

#include <orvenmod/schema.h>

#include <stdexcept>

#include "entry/startup.h"
#include "store/upgrade.h"

namespace orvenmod {

void CreateSchema(const std::string& connectionString) {
    // Mode=Create makes the file of the embedded store; to a server it says nothing new.
    const auto connection = componentStore().connect(connectionString + ";Mode=Create");
    store::createSchema(*connection);
    connection->close();
}

std::string SchemaViewText(const std::string& view) {
    for (const store::SchemaView& each : store::schemaViews()) {
        if (each.name == view) return std::string(each.text);
    }
    throw std::invalid_argument("the schema has no view " + view);
}

int SchemaVersion(const std::string& connectionString) {
    return store::schemaVersion(*componentStore().connect(connectionString));
}

int NewestSchemaVersion() { return store::newestSchemaVersion(); }

void UpgradeSchema(const std::string& connectionString) {
    store::upgradeSchema(*componentStore().connect(connectionString));
}

}  // namespace orvenmod
