#include "support/tdsserver.h"

#include <unistd.h>

#include <cstdlib>
#include <vector>

#include "store/connectionstring.h"
#include "store/odbc/odbcstore.h"
#include "store/odbc/sessionpool.h"

namespace orvenmod::test {

TdsDatabase* TdsDatabase::get(std::string& reason) {
    static std::string refusal;
    static const std::unique_ptr<TdsDatabase> database = []() -> std::unique_ptr<TdsDatabase> {
        const char* server = std::getenv("ORVEN_TDS_SERVER");
        if (server == nullptr || *server == '\0') {
            refusal = "no server: ORVEN_TDS_SERVER names none";
            return nullptr;
        }
        return std::unique_ptr<TdsDatabase>(new TdsDatabase(server));
    }();
    reason = refusal;
    return database.get();
}

TdsDatabase::TdsDatabase(std::string server)
    : server_(std::move(server)),
      name_("orven_test_" + std::to_string(::getpid())),
      connectionString_(withDatabase(server_, name_)) {
    store::odbc::OdbcStore().connect(server_)->execute("create database " + name_);
}

TdsDatabase::~TdsDatabase() {
    store::odbc::dropIdleSessions();
    try {
        store::odbc::OdbcStore().connect(server_)->execute("drop database " + name_);
    } catch (const store::Failure&) {
        // Left to whoever owns the server.
        return;
    }
}

std::unique_ptr<store::Connection> TdsDatabase::connect() const {
    return store::odbc::OdbcStore().connect(connectionString_);
}

void TdsDatabase::clear() const {
    const auto connection = connect();
    for (const std::string kind : {"view", "table"}) {
        const store::Recordset found =
            connection->open("select name from sysobjects where xtype='" + std::string(kind == "view" ? "V" : "U") +
                             // What reads another is younger.
                             "' order by id desc");
        for (std::size_t row = 0; row < found.rowCount(); ++row)
            connection->execute("drop " + kind + " [" + std::string(*found.cell(row, 0)) + "]");
    }
}

std::string withDatabase(const std::string& connectionString, const std::string& database) {
    const char* key = store::ConnectionString(connectionString).has("Provider") ? "Initial Catalog" : "Database";
    return connectionString + ";" + key + "=" + database;
}

}  // namespace orvenmod::test
