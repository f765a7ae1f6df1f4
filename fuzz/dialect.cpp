// The dialect: any text becomes a statement of either target or a failure with a number; and what the embedded target
// gets is one statement that its engine takes, however the text was written.
#include <sqlite3.h>

#include <memory>
#include <string>

#include "fuzz/fuzz.h"
#include "store/sqlite/functions.h"
#include "store/tsql/error.h"
#include "store/tsql/fakecatalog.h"
#include "store/tsql/messages.h"
#include "store/tsql/shape.h"
#include "store/tsql/translator.h"

namespace {

using namespace orvenmod::store;

template <typename Translate>
void refusedOrDone(Translate translate) {
    try {
        translate();
    } catch (const tsql::Error& error) {
        tsql::worded(tsql::Language::chinese, error);
        tsql::worded(tsql::Language::english, error);
    }
}

/// An empty database of the catalog's tables, which only prepares.
class Engine {
public:
    Engine() {
        sqlite3_open(":memory:", &handle_);
        sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
        sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
        sqlite::registerFunctions(handle_, runtime_);
        const int made = sqlite3_exec(handle_,
                                      "create table t(id,n,c,f,d,m); create table u(id,c); create view v as select "
                                      "id,c from u",
                                      nullptr, nullptr, nullptr);
        orvenmod::fuzz::check(made == SQLITE_OK, "the engine has the catalog's tables");
    }
    ~Engine() { sqlite3_close(handle_); }
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    void take(const std::string& sql) {
        sqlite3_stmt* statement = nullptr;
        const char* rest = "";
        const int size = static_cast<int>(sql.size()) + 1;
        const int code = sqlite3_prepare(handle_, sql.c_str(), size, &statement, &rest);
        sqlite3_finalize(statement);
        if (code != SQLITE_OK) std::fprintf(stderr, "%s\n%s\n", sqlite3_errmsg(handle_), sql.c_str());
        orvenmod::fuzz::check(code == SQLITE_OK, "the engine takes what was made for it");
        orvenmod::fuzz::check(*rest == '\0', "and it is one statement");
    }

private:
    sqlite3* handle_ = nullptr;
    sqlite::Runtime runtime_;
};

void toTheEngine(std::string_view sql, const tsql::Catalog& catalog) {
    static Engine engine;
    const tsql::Translation made = tsql::translateForSqlite(sql, catalog);
    if (tsql::runsAsItIs(made.kind)) engine.take(made.statements.front());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const tsql::FakeCatalog catalog;
    const std::string_view sql = orvenmod::fuzz::textOf(data, size);
    refusedOrDone([&] {
        tsql::Shape shape;
        shape.scan(sql);
    });
    refusedOrDone([&] { toTheEngine(sql, catalog); });
    refusedOrDone([&] { tsql::translateForPostgres(sql, catalog); });
    refusedOrDone([&] { tsql::viewColumns(sql, catalog); });
    tsql::storedViewText(sql);
    return 0;
}
