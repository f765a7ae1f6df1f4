#include "frame/entry/storefactory.h"

#include "store/connectionstring.h"
#include "store/sqlite/sqlitestore.h"
#include "store/tsql/messages.h"
#include "store/tsql/utf8.h"

namespace orvenmod {

StoreFactory::StoreFactory() : embedded_(std::make_unique<store::sqlite::SqliteStore>()) {}
StoreFactory::~StoreFactory() = default;

std::unique_ptr<store::Connection> StoreFactory::connect(const std::string& connectionString) {
    const store::ConnectionString parts(connectionString);
    const std::string provider = store::tsql::lowerText(parts.get("Provider"));
    if (provider == "sqlite") return embedded_->connect(connectionString);
    const bool english = store::tsql::lowerText(parts.get("Language")) == "us_english";
    const auto language = english ? store::tsql::Language::english : store::tsql::Language::chinese;
    throw store::tsql::worded(
        language, store::tsql::kBadConnectionString,
        {english ? "it names no Provider, Driver or DSN that is known" : "其中没有可识别的 Provider、Driver 或 DSN"});
}

}  // namespace orvenmod
