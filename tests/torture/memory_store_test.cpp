// Each allocation of the embedded store fails once, all of them in turn: what a statement told as done is what it did,
// and a transaction of which the engine has undone a part is never stored.
#include <gtest/gtest.h>

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "store/sqlite/sqlitestore.h"
#include "support/database.h"
#include "support/temporary.h"
#include "torture/failingmemory.h"
#include "torture/states.h"

namespace orvenmod::test {
namespace {

using store::Connection;

constexpr const char* kFirst = "1|客户|2026-01-02 00:00:00|1.5|";
constexpr const char* kAdded = "xxxxxxxxxxxxxxx";

class StoreMemory : public testing::Test {
protected:
    StoreMemory() {
        const auto connection = store_.connect(connectionStringFor(file()) + ";Mode=Create");
        connection->execute("create table t(id int primary key,c varchar(20),d datetime,m decimal(9,2))");
        connection->execute("insert into t(id,c,d,m) values(1,'客户','2026-1-2','1.5')");
        connection->execute("create view v as select id,c from t");
    }
    ~StoreMemory() override { endMemory(); }

    std::string file() const { return folder_.file("t.db"); }
    std::unique_ptr<Connection> connect() { return store_.connect(connectionStringFor(file()) + ";Busy Timeout=50"); }

    /// Only here something fails.
    static bool works(const std::function<void()>& act) {
        bool done = false;
        pauseMemory(false);
        try {
            act();
            done = true;
        } catch (const std::exception&) {
            done = false;
        }
        pauseMemory(true);
        return done;
    }

    /// As the component adds a row without a statement of its own.
    static void addRow(Connection& connection, const std::string& id) {
        const auto writer = connection.openTable("t");
        writer->addNew();
        writer->set("id", id);
        writer->set("c", kAdded);
        writer->set("m", "7.25");
        writer->update();
    }

    /// Calls `act` with a new handle and each of its allocations failing in turn.
    void sweep(const std::function<void(Connection&)>& act, const std::function<void()>& check) {
        for (std::int64_t at = 1;; ++at) {
            SCOPED_TRACE("allocation " + std::to_string(at));
            store::sqlite::SqliteStore::dropIdleHandles();
            const auto connection = connect();
            beginMemory({MemoryTrouble::Kind::once, at});
            pauseMemory(true);
            act(*connection);
            endMemory();
            connection->close();
            check();
            if (!memoryFailed()) break;
            if (HasFailure()) return;
        }
    }

    std::string rowsNow() {
        store::sqlite::SqliteStore::dropIdleHandles();
        return rowsText(*connect(), "select id,c,d,m from t order by id");
    }
    static std::string rowsText(Connection& connection, const std::string& sql) {
        std::string text;
        for (const auto& row : rowsOf(connection, sql)) {
            for (const std::string& cell : row)
                text += cell + "|";
        }
        return text;
    }

private:
    TemporaryFolder folder_;
    store::sqlite::SqliteStore store_;
};

TEST_F(StoreMemory, aTransactionThatTheEngineHasUndoneStoresNothingOfWhatFollows) {
    bool committed = false;
    std::string expected;
    sweep(
        [&](Connection& connection) {
            committed = false;
            expected = kFirst;
            if (!works([&] { connection.beginTrans(); })) return;
            // As a caller that takes a failure for "there was nothing to do".
            const auto add = [&](const char* id) {
                const std::string sql = std::string("insert into t(id,c,d,m) values(") + id + ",'名','2026-2-3',2)";
                if (works([&] { connection.execute(sql); })) expected += std::string(id) + "|名|2026-02-03 00:00:00|2|";
            };
            add("2");
            if (works([&] { addRow(connection, "3"); })) expected += std::string("3|") + kAdded + "|NULL|7.25|";
            works([&] { connection.execute("drop index t.ix_none"); });
            works([&] { connection.open("select * from v where c='x'"); });
            add("4");
            committed = works([&] { connection.commitTrans(); });
            if (!committed) works([&] { connection.rollbackTrans(); });
        },
        [&] {
            EXPECT_EQ(rowsNow(), committed ? expected : kFirst);
            connect()->execute("delete from t where id>1");
        });
}

TEST_F(StoreMemory, whatWasToldAsStoredIsStoredAsItWasTyped) {
    bool told = false;
    sweep(
        [&](Connection& connection) {
            told = works([&] {
                connection.execute("insert into t(id,c,d,m) values('5','名','26-2-3','2.50')");
                addRow(connection, "6");
            });
        },
        [&] {
            if (told) {
                EXPECT_EQ(rowsNow(), std::string(kFirst) + "5|名|2026-02-03 00:00:00|2.5|6|" + kAdded + "|NULL|7.25|");
            }
            connect()->execute("delete from t where id>1");
        });
}

TEST_F(StoreMemory, whatWasReadIsWhatStandsThere) {
    std::string read;
    bool told = false;
    sweep(
        [&](Connection& connection) {
            told = works([&] {
                read = rowsText(connection, "select id,c,d,m from t where c like '客%' and left(c,1)=substring(c,1,1)");
            });
        },
        [&] {
            if (told) {
                EXPECT_EQ(read, kFirst);
            }
        });
}

}  // namespace
}  // namespace orvenmod::test
