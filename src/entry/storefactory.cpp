#include "entry/storefactory.h"

#include <utility>

#include "store/connectionstring.h"
#include "store/odbc/odbcstore.h"
#include "store/postgres/postgresstore.h"
#include "store/sqlite/sqlitestore.h"
#include "store/tsql/stringparts.h"
#include "store/tsql/utf8.h"

namespace orvenmod {

namespace {

// The providers of OLE DB that hosts name for a server of the dialect, and its bridge to ODBC.
bool isServerProvider(const std::string& provider) {
    return provider.starts_with("sqloledb") || provider.starts_with("msoledbsql") || provider.starts_with("sqlncli") ||
           provider.starts_with("msdasql");
}

}  // namespace

StoreFactory::StoreFactory(std::function<void()> paint)
    : embedded_(std::make_unique<store::sqlite::SqliteStore>()),
      postgres_(std::make_unique<store::postgres::PostgresStore>(paint)),
      server_(std::make_unique<store::odbc::OdbcStore>(std::move(paint))) {}
StoreFactory::~StoreFactory() = default;

std::unique_ptr<store::Connection> StoreFactory::connect(const std::string& connectionString) {
    const store::ConnectionString parts(connectionString);
    const std::string provider = store::tsql::lowerText(parts.get("Provider"));
    if (provider == "sqlite") return embedded_->connect(connectionString);
    if (provider == "postgresql") return postgres_->connect(connectionString);
    const bool odbc = provider.empty() && (parts.has("Driver") || parts.has("DSN"));
    if (odbc || isServerProvider(provider)) return server_->connect(connectionString);
    throw store::tsql::refusedString(store::tsql::languageOf(parts), "其中没有可识别的 Provider、Driver 或 DSN",
                                     "it names no Provider, Driver or DSN that is known");
}

}  // namespace orvenmod
