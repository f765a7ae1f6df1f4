#include <gtest/gtest.h>
#include <sqlite3.h>

#include "embeddeddatabase.h"

namespace orvenmod::store::sqlite::test {
namespace {

class SchemaChange : public EmbeddedDatabase {
protected:
    // What another program does to the file.
    void foreignly(const std::string& text) {
        sqlite3* handle = nullptr;
        sqlite3_open(file().c_str(), &handle);
        char* message = nullptr;
        EXPECT_EQ(sqlite3_exec(handle, text.c_str(), nullptr, nullptr, &message), SQLITE_OK) << message;
        sqlite3_free(message);
        sqlite3_close(handle);
    }
};

TEST_F(SchemaChange, ByTheConnectionItselfIsFollowed) {
    const auto connection = connect();
    EXPECT_EQ(connection->open("select * from t").columnCount(), 3);
    connection->execute("alter table t add d int");
    EXPECT_EQ(connection->open("select * from t").columnCount(), 4);
}

TEST_F(SchemaChange, ByAnotherProgramIsFollowedByAKnownQuery) {
    const auto connection = connect();
    EXPECT_EQ(connection->open("select * from t").columnCount(), 3);
    foreignly("ALTER TABLE t ADD d int");
    EXPECT_EQ(connection->open("select * from t").columnCount(), 4);
}

TEST_F(SchemaChange, ByAnotherProgramIsFollowedByAKnownChange) {
    const auto connection = connect();
    connection->execute("insert into t values(1,2,'a')");
    foreignly("DROP TABLE t; CREATE TABLE t(id int, n varchar(3), c varchar(10))");
    EXPECT_EQ(connection->execute("insert into t values(1,2,'a')"), 1);
    EXPECT_EQ(failureOf([&] { connection->execute("insert into t values(1,2345,'a')"); }).number(), 0);
    foreignly("ALTER TABLE t ADD d int");
    EXPECT_EQ(failureOf([&] { connection->execute("insert into t values(1,2,'a')"); }).number(), 213);
}

TEST_F(SchemaChange, ByAnotherProgramIsSeenByANewStatement) {
    const auto connection = connect();
    EXPECT_EQ(failureOf([&] { connection->open("select * from later"); }).number(), 208);
    foreignly("CREATE TABLE later(a int)");
    EXPECT_EQ(connection->open("select * from later").columnCount(), 1);
    foreignly("DROP TABLE later");
    EXPECT_EQ(failureOf([&] { connection->open("select * from later"); }).number(), 208);
}

TEST_F(SchemaChange, RolledBackIsForgotten) {
    const auto connection = connect();
    connection->beginTrans();
    connection->execute("create table u(a int)");
    EXPECT_EQ(connection->open("select * from u").columnCount(), 1);
    connection->rollbackTrans();
    foreignly("CREATE TABLE u(a int, b int)");
    EXPECT_EQ(connection->open("select * from u").columnCount(), 2);
}

TEST_F(SchemaChange, OfAViewsTableIsFollowedByTheView) {
    const auto connection = connect();
    connection->execute("create view v as select id,n from t");
    EXPECT_EQ(connection->open("select * from v").columnCount(), 2);
    connection->execute("drop view v");
    connection->execute("create view v as select id from t");
    EXPECT_EQ(connection->open("select * from v").columnCount(), 1);
}

TEST_F(SchemaChange, IsFollowedByATableWriter) {
    const auto connection = connect();
    const auto writer = connection->openTable("t");
    for (int i = 0; i < 2; ++i) {
        writer->addNew();
        writer->set("id", std::to_string(i));
        writer->update();
        foreignly("CREATE TABLE x" + std::to_string(i) + "(a int)");
    }
    EXPECT_EQ(value(*connection, "select count(*) from t"), "2");
}

}  // namespace
}  // namespace orvenmod::store::sqlite::test
