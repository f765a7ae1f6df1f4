#include <stdexcept>

#include "benches.h"
#include "entry/startup.h"
#include "stage.h"
#include "store/sqlite/database.h"
#include "store/tsql/shape.h"

namespace orvenmod::bench {
namespace {

constexpr int kStatements = 20000;
constexpr int kGoods = 10000;

std::string updateOf(int item) {
    return "update tblItem set fisLock=1  where fitemid=" + std::to_string(item % kGoods + 1);
}

double translation(const std::string& target) {
    store::sqlite::Database database(store::sqlite::DatabaseFile::parse(target));
    store::tsql::Shape shape;
    return leastOf(5,
                   [&] {
                       for (int i = 0; i < kStatements; ++i) {
                           const std::string sql = updateOf(i);
                           shape.scan(sql);
                           database.prepare(sql, shape);
                       }
                   }) *
           1000 / kStatements;
}

double bareUpdates(const std::string& target) {
    store::sqlite::Database database(store::sqlite::DatabaseFile::parse(target));
    const auto run = [&](const std::string& sql) {
        if (sqlite3_exec(database.handle(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sqlite3_errmsg(database.handle()));
        }
    };
    return leastOf(5,
                   [&] {
                       run("begin immediate");
                       for (int i = 0; i < kStatements; ++i)
                           run(updateOf(i));
                       run("rollback");
                   }) *
           1000 / kStatements;
}

double ourUpdates(const std::string& target) {
    const auto connection = componentStore().connect(target);
    const double least = leastOf(5, [&] {
        connection->beginTrans();
        for (int i = 0; i < kStatements; ++i)
            connection->execute(updateOf(i));
        connection->rollbackTrans();
    });
    connection->close();
    return least * 1000 / kStatements;
}

}  // namespace

void measureStatements(Report& report, const std::string& folder) {
    const std::string target = goodsDatabase(folder, kGoods);
    report.ratio("translation of a known shape", translation(target), "a fixed time", 5.0, 1.0, "us");
    const double bare = bareUpdates(target);
    report.ratio("update by id", ourUpdates(target), "sqlite3_exec", bare, 1.0, "us");
}

}  // namespace orvenmod::bench
