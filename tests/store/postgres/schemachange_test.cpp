#include <gtest/gtest.h>
#include <signal.h>
#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

#include "store/tsql/failurenumbers.h"
#include "suiteserver.h"

namespace orvenmod::store::postgres::test {
namespace {

// `other` stands for another process: it shares nothing with the first but the database.
class SchemaChange : public OnTheServer {
protected:
    SchemaChange() : connection_(connect()), other_(connect(";application_name=other")) {}

    /// A change that the first doesn't hear of before it has sent its next statement: its session stands still till
    /// then.
    void changeUnheard(const std::string& definition) {
        const pid_t session =
            std::stoi(database_.run("SELECT pid FROM pg_stat_activity WHERE datname = current_database() AND "
                                    "application_name = 'orvenmod'"));
        ASSERT_EQ(::kill(session, SIGSTOP), 0);
        connection_->setProgress([session] { ::kill(session, SIGCONT); });
        other_->execute(definition);
    }

    std::unique_ptr<Connection> connection_;
    std::unique_ptr<Connection> other_;
};

TEST_F(SchemaChange, ByTheConnectionItselfIsFollowed) {
    EXPECT_EQ(connection_->open("select * from t").columnCount(), 3);
    connection_->execute("alter table t add d int");
    EXPECT_EQ(connection_->open("select * from t").columnCount(), 4);
}

TEST_F(SchemaChange, ByAnotherProcessIsFollowedByAKnownQuery) {
    EXPECT_EQ(connection_->open("select * from t").columnCount(), 3);
    other_->execute("alter table t add d int");
    EXPECT_EQ(connection_->open("select * from t").columnCount(), 4);
}

TEST_F(SchemaChange, ByAnotherProcessIsFollowedByAKnownChange) {
    connection_->execute("insert into t values(1,2,'a')");
    other_->execute("drop table t");
    other_->execute("create table t(id int, n varchar(3), c varchar(10))");
    EXPECT_EQ(connection_->execute("insert into t values(1,2,'a')"), 1);
    EXPECT_EQ(failureOf([&] { connection_->execute("insert into t values(1,2345,'a')"); }).number(), 0);
    other_->execute("alter table t add d int");
    EXPECT_EQ(failureOf([&] { connection_->execute("insert into t values(1,2,'a')"); }).number(), 213);
}

TEST_F(SchemaChange, ByAnotherProcessIsFollowedAtTheBeginningOfATransaction) {
    connection_->execute("insert into t values(1,2,'a')");
    other_->execute("alter table t add d int");
    connection_->beginTrans();
    EXPECT_EQ(connection_->open("select * from t").columnCount(), 4);
    connection_->execute("insert into t values(1,2,'a',5)");
    connection_->commitTrans();
    EXPECT_EQ(value(*other_, "select count(*) from t"), "2");
}

TEST_F(SchemaChange, ByAnotherProgramIsSeenByANewStatement) {
    EXPECT_EQ(failureOf([&] { connection_->open("select * from later"); }).number(), 208);
    foreignly("CREATE TABLE later(a integer)");
    EXPECT_EQ(connection_->open("select * from later").columnCount(), 1);
    foreignly("DROP TABLE later");
    EXPECT_EQ(failureOf([&] { connection_->open("select * from later"); }).number(), 208);
}

TEST_F(SchemaChange, ThatTakesAColumnAwayIsSeenHoweverItWasMade) {
    EXPECT_EQ(connection_->open("select c from t").columnCount(), 1);
    foreignly("ALTER TABLE t DROP COLUMN c");
    EXPECT_EQ(failureOf([&] { connection_->open("select c from t"); }).number(), 207);
    EXPECT_EQ(connection_->open("select * from t").columnCount(), 2);
}

// The columns of a known shape are those that were there when it was first seen.
TEST_F(SchemaChange, ThatAddsAColumnInAnotherProgramIsSeenOnceTheNumberOfTheSchemaIsRaised) {
    EXPECT_EQ(connection_->open("select * from t").columnCount(), 3);
    foreignly("ALTER TABLE t ADD COLUMN d integer");
    EXPECT_EQ(connection_->open("select * from t").columnCount(), 3);
    foreignly("UPDATE orven.schema_version SET number = number + 1");
    EXPECT_EQ(connection_->open("select * from t").columnCount(), 4);
    foreignly("ALTER TABLE t ADD COLUMN e integer");
    EXPECT_EQ(connection_->open("select e from t").columnCount(), 1) << "who names it sees it";
}

TEST_F(SchemaChange, IsSeenByTheNextQueryHoweverOftenItComes) {
    for (int i = 0; i < 30; ++i) {
        other_->execute("alter table t add e" + std::to_string(i) + " int");
        EXPECT_EQ(connection_->open("select * from t").columnCount(), 4 + i);
    }
}

TEST_F(SchemaChange, IsSeenByTheNextTransactionHoweverOftenItComes) {
    const std::string insert = "insert into t values(1,2,'a'";
    for (int i = 0; i < 30; ++i) {
        std::string values;
        for (int added = 0; added <= i; ++added)
            values += ",4";
        other_->execute("alter table t add e" + std::to_string(i) + " int");
        connection_->beginTrans();
        EXPECT_EQ(connection_->execute(insert + values + ")"), 1);
        connection_->commitTrans();
    }
    EXPECT_EQ(value(*other_, "select count(*) from t"), "30");
}

TEST_F(SchemaChange, IsSeenByAFlightThatBeginsATransactionAndIsDoneOnce) {
    const auto insertTwice = [&] {
        connection_->executeAll(
            std::vector<std::string>{"insert into t(id) values(1)", "insert into t values(2,2,'a')"});
    };
    insertTwice();
    other_->execute("alter table t add d int");
    connection_->beginTrans();
    EXPECT_EQ(failureOf(insertTwice).number(), 213);
    connection_->commitTrans();
    EXPECT_EQ(value(*other_, "select count(*) from t where id=1"), "2") << "what stands before the one that fails";
    other_->execute("alter table t drop column d");
    connection_->beginTrans();
    insertTwice();
    connection_->commitTrans();
    EXPECT_EQ(value(*other_, "select count(*) from t"), "5");
}

TEST_F(SchemaChange, ToldWithTheAnswerMakesWhatBeginsATransactionBeginAnew) {
    const std::string insert = "insert into t values(1,2,'a')";
    connection_->execute(insert);
    changeUnheard("alter table t add d int");
    connection_->beginTrans();
    EXPECT_EQ(failureOf([&] { connection_->execute(insert); }).number(), 213);
    EXPECT_EQ(connection_->execute("insert into t values(1,2,'a',4)"), 1);
    connection_->commitTrans();
    changeUnheard("alter table t drop column d");
    connection_->beginTrans();
    EXPECT_EQ(connection_->open("select * from t").columnCount(), 3);
    connection_->commitTrans();
    EXPECT_EQ(value(*other_, "select count(*) from t"), "2");
}

TEST_F(SchemaChange, ToldWithTheAnswerMakesAFlightBeginAnew) {
    const std::vector<std::string> inserts = {"insert into t(id) values(1)", "insert into t values(2,2,'a')"};
    connection_->executeAll(inserts);
    for (const bool within : {true, false}) {
        changeUnheard(within ? "alter table t add d int" : "alter table t add e int");
        if (within) connection_->beginTrans();
        EXPECT_EQ(failureOf([&] { connection_->executeAll(inserts); }).number(), 213);
        if (within) connection_->commitTrans();
    }
    EXPECT_EQ(value(*other_, "select count(*) from t"), "4") << "what stands before the one that fails is stored once";
}

TEST_F(SchemaChange, IsSeenByASessionThatIsToldOfNone) {
    database_.run("ALTER TABLE orven.schema_version DISABLE TRIGGER tell_schema");
    connection_->execute("insert into t values(1,2,'a')");
    other_->execute("alter table t add d int");
    EXPECT_EQ(connection_->execute("insert into t values(1,2,'a',4)"), 1) << "a change looks by itself";
    connection_->beginTrans();
    other_->execute("alter table t add e int");
    EXPECT_EQ(connection_->open("select * from t").columnCount(), 5) << "and so does a transaction";
}

TEST_F(SchemaChange, RolledBackIsForgotten) {
    connection_->beginTrans();
    connection_->execute("create table u(a int)");
    EXPECT_EQ(connection_->open("select * from u").columnCount(), 1);
    connection_->rollbackTrans();
    other_->execute("create table u(a int, b int)");
    EXPECT_EQ(connection_->open("select * from u").columnCount(), 2);
}

TEST_F(SchemaChange, OfAViewIsFollowed) {
    connection_->execute("create view v as select id,n from t");
    EXPECT_EQ(connection_->open("select * from v").columnCount(), 2);
    other_->execute("drop view v");
    other_->execute("create view v as select id from t");
    EXPECT_EQ(connection_->open("select * from v").columnCount(), 1);
}

TEST_F(SchemaChange, IsFollowedByATableWriter) {
    const auto writer = connection_->openTable("t");
    for (int i = 0; i < 2; ++i) {
        writer->addNew();
        writer->set("id", std::to_string(i));
        writer->update();
        other_->execute("create table x" + std::to_string(i) + "(a int)");
    }
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "2");
}

TEST_F(SchemaChange, LeavesATableThatWasMadeByHandReadable) {
    foreignly("CREATE TABLE hand(a smallint, b numeric(9,2), c text, d timestamp, e double precision, f bytea)");
    foreignly("INSERT INTO hand VALUES (1, 2.50, 'x', '2026-01-02 03:04:05.5', 1e20, '\\x0aff')");
    const Recordset rows = connection_->open("select * from hand where c='X '");
    ASSERT_EQ(rows.rowCount(), 1U);
    EXPECT_EQ(rows.cell(0, 1), "2.5");
    EXPECT_EQ(rows.cell(0, 3), "2026-01-02 03:04:05.500");
    EXPECT_EQ(rows.cell(0, 4), "100000000000000000000");
    EXPECT_EQ(rows.cell(0, 5), "\x0a\xff");
}

TEST_F(SchemaChange, OfATableWithCapitalsInItsNameIsTheAdministratorsOwn) {
    foreignly("CREATE TABLE \"Hand\"(\"Id\" integer PRIMARY KEY, c text); INSERT INTO \"Hand\" VALUES (1, 'x')");
    EXPECT_EQ(value(*connection_, "select c from Hand where id=1"), "x");
    EXPECT_EQ(connection_->execute("insert into hand(id,C) values(2,'y')"), 1);
    EXPECT_EQ(connection_->execute("update HAND set c='z' where Id=2"), 1);
    const auto writer = connection_->openTable("Hand");
    writer->addNew();
    writer->set("Id", "3");
    writer->update();
    EXPECT_EQ(value(*connection_, "select count(*) from hand"), "3");
    for (const char* definition :
         {"alter table Hand add d int", "alter table hand drop column c", "create index i on hand(c)",
          "drop table Hand", "truncate table Hand", "alter table Hand add constraint k unique(c)"}) {
        const Failure refused = failureOf([&] { connection_->execute(definition); });
        EXPECT_EQ(refused.number(), tsql::kNotSupported) << definition;
        EXPECT_NE(refused.text().find("a definition of \"Hand\""), std::string::npos) << refused.text();
    }
    connection_->execute("create view vHand as select id,c from hand");
    EXPECT_EQ(value(*connection_, "select c from vHand where id=2"), "z");
    EXPECT_EQ(connection_->execute("delete from hand"), 3);
}

}  // namespace
}  // namespace orvenmod::store::postgres::test
