// Among many tables a small one that gets a column is made anew; nothing shows it but the time.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <vector>

#include "embeddeddatabase.h"

namespace orvenmod::store::sqlite::test {
namespace {

using Texts = std::vector<std::string>;

class AddedColumn : public EmbeddedDatabase {
protected:
    /// What another program reads from the file, or does to it.
    Texts natively(const std::string& text) {
        sqlite3* opened = nullptr;
        sqlite3_open(file().c_str(), &opened);
        const std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle(opened, sqlite3_close);
        Texts cells;
        const auto add = [](void* all, int count, char** texts, char**) {
            for (int i = 0; i < count; ++i)
                static_cast<Texts*>(all)->emplace_back(texts[i] == nullptr ? "NULL" : texts[i]);
            return 0;
        };
        char* message = nullptr;
        EXPECT_EQ(sqlite3_exec(handle.get(), text.c_str(), add, &cells, &message), SQLITE_OK) << message;
        sqlite3_free(message);
        return cells;
    }

    void addManyTables() {
        std::string all = "BEGIN;";
        for (int i = 0; i < 550; ++i)
            all += "CREATE TABLE many" + std::to_string(i) + "(a int);";
        natively(all + "COMMIT");
    }

    static constexpr const char* kColumns =
        "(id int not null primary key, code varchar(20) default 'x', n decimal(9,2), unique(n), check(n<100))";

    void makeTable(Connection& connection, const std::string& name) {
        connection.execute("create table " + name + kColumns);
        connection.execute("create index by_code on " + name + "(code,n desc)");
        for (const char* row : {"(7,'b',1.5)", "(3,'A ',2)", "(5,null,null)"})
            connection.execute("insert into " + name + " values" + row);
        connection.execute("delete from " + name + " where id=7");
    }

    /// What the file says of the table and its indexes, and what lies in it.
    Texts all(const std::string& name) {
        Texts texts = natively("SELECT sql FROM sqlite_master WHERE tbl_name = '" + name + "' ORDER BY sql");
        for (std::string& text : texts) {
            for (auto at = text.find(name); at != text.npos; at = text.find(name))
                text.replace(at, name.size(), "?");
        }
        const Texts rows = natively("SELECT rowid, typeof(n), typeof(code), * FROM " + name + " ORDER BY rowid");
        texts.insert(texts.end(), rows.begin(), rows.end());
        return texts;
    }

    /// Whether the table was made anew, by its place in the schema; `work` makes no other table.
    template <typename Work>
    bool madeAnew(const std::string& name, Work work) {
        const std::string place = "SELECT rowid FROM sqlite_master WHERE type = 'table' AND name = '" + name + "'";
        const Texts before = natively(place);
        work();
        return natively(place) != before;
    }
};

TEST_F(AddedColumn, leavesTheTableAsTheOrdinaryWayDoes) {
    const auto connection = connect();
    makeTable(*connection, "usual");
    makeTable(*connection, "renewed");
    natively("UPDATE usual SET code = x'4142' WHERE id = 5; UPDATE renewed SET code = x'4142' WHERE id = 5");
    EXPECT_FALSE(madeAnew("usual", [&] { connection->execute("alter table usual add  f varchar(50), g int"); }));
    addManyTables();
    EXPECT_TRUE(madeAnew("renewed", [&] { connection->execute("alter table renewed add  f varchar(50), g int"); }));
    EXPECT_EQ(all("renewed"), all("usual"));
    EXPECT_EQ(natively("PRAGMA integrity_check"), Texts{"ok"});
    connection->execute("insert into renewed(id,f) values(8,'new')");
    EXPECT_EQ(value(*connection, "select code+f from renewed where id=8"), "xnew");
    EXPECT_NE(failureOf([&] { connection->execute("insert into renewed(id) values(3)"); }).number(), 0);
    EXPECT_NE(failureOf([&] { connection->execute("insert into renewed(id,n) values(9,200)"); }).number(), 0);
}

TEST_F(AddedColumn, isFollowedByViewsAndKnownStatements) {
    const auto connection = connect();
    addManyTables();
    connection->execute("create view v as select id,c from t");
    connection->execute("insert into t values(1,2,'a')");
    EXPECT_EQ(connection->open("select * from t").columnCount(), 3);
    const auto other = connect();
    EXPECT_EQ(other->open("select * from t").columnCount(), 3);
    EXPECT_TRUE(madeAnew("t", [&] { connection->execute("alter table t add d int"); }));
    EXPECT_EQ(connection->open("select * from t").columnCount(), 4);
    EXPECT_EQ(other->open("select * from t").columnCount(), 4);
    EXPECT_EQ(value(*other, "select c from v"), "a");
    EXPECT_EQ(failureOf([&] { connection->execute("alter table t add d int"); }).number(), 2705);
}

TEST_F(AddedColumn, goesWithItsTransaction) {
    const auto connection = connect();
    addManyTables();
    connection->execute("create index by_n on t(n)");
    connection->execute("insert into t values(1,2,'a')");
    const Texts before = natively("SELECT sql FROM sqlite_master WHERE tbl_name = 't' ORDER BY name");
    connection->beginTrans();
    connection->execute("alter table t add d int");
    connection->execute("update t set d=5");
    EXPECT_EQ(value(*connection, "select d from t"), "5");
    connection->rollbackTrans();
    EXPECT_EQ(natively("SELECT sql FROM sqlite_master WHERE tbl_name = 't' ORDER BY name"), before);
    EXPECT_EQ(connection->open("select * from t where n=2").columnCount(), 3);
    EXPECT_EQ(value(*connection, "select count(*) from t where n=2"), "1");
}

TEST_F(AddedColumn, comesTheOrdinaryWayWhereTheTextOfTheTableIsNotAllOfIt) {
    const auto connection = connect();
    connection->execute("create table counted(id int identity(1,1) primary key, n int)");
    connection->execute("create table large(id int)");
    connection->execute("create table pictures(id int, photo image)");
    connection->execute("create table watched(id int)");
    connection->execute("create table filled(id int)");
    natively(
        "CREATE TABLE computed(a int, b int AS (a + 1)); CREATE TRIGGER see AFTER INSERT ON watched BEGIN DELETE FROM "
        "many1; END; INSERT INTO large WITH RECURSIVE k(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM k WHERE i < 1001) "
        "SELECT i FROM k");
    addManyTables();
    for (const std::string name : {"counted", "large", "pictures", "watched", "computed"}) {
        EXPECT_FALSE(madeAnew(name, [&] { connection->execute("alter table " + name + " add f int"); })) << name;
        EXPECT_EQ(connection->execute("update " + name + " set f=1 where 1=0"), 0) << name;
    }
    EXPECT_EQ(natively("SELECT name FROM sqlite_master WHERE type = 'trigger'"), Texts{"see"});
    for (const char* column : {"f int default 5", "f int not null default 5"}) {
        connection->execute(std::string("alter table filled add ") + column);
        connection->execute("alter table filled drop column f");
    }
}

TEST_F(AddedColumn, comesTheOrdinaryWayWhereARowIsThereThatTheTableRefuses) {
    const auto connection = connect();
    makeTable(*connection, "checked");
    addManyTables();
    natively("PRAGMA ignore_check_constraints = ON; UPDATE checked SET n = 500 WHERE id = 3");
    EXPECT_FALSE(madeAnew("checked", [&] { connection->execute("alter table checked add f int"); }));
    EXPECT_EQ(value(*connection, "select n from checked where id=3 and f is null"), "500");
    EXPECT_EQ(natively("SELECT count(*) FROM sqlite_temp_master"), Texts{"0"});
}

}  // namespace
}  // namespace orvenmod::store::sqlite::test
