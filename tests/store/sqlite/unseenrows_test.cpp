// Lists that may never be looked at: counted when they are opened, and of that moment when somebody looks.
#include "store/sqlite/unseenrows.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>

#include "embeddeddatabase.h"
#include "store/sqlite/sqliteconnection.h"

namespace orvenmod::store::sqlite::test {
namespace {

constexpr const char* kEntries = "select * from  tblItem where fisdetail=1  and   fitemclassid=7 order by fnumber ";

std::string textsOf(const ListRows& rows) {
    std::string texts;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        for (int column = 0; column < static_cast<int>(rows.columns().size()); ++column)
            texts.append(rows.cell(row, column).value_or("(null)")).append("|");
    }
    return texts;
}

class UnseenRows : public EmbeddedDatabase {
protected:
    UnseenRows() {
        connect()->execute(
            "create table tblItem(fItemId int not null,fNumber varchar(100),fName varchar(100),fItemClassId int,"
            "fIsDetail int,constraint PK_item primary key(fItemId))");
        native(
            "WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM r WHERE n < 30000) INSERT INTO "
            "tblItem(fItemId, fNumber, fName, fItemClassId, fIsDetail) SELECT n, printf('%05d', 31000 - n), 'name ' || "
            "n, CASE WHEN n <= 3000 THEN 7 WHEN n <= 5000 THEN 8 WHEN n <= 5100 THEN 9 ELSE 10 END, 1 FROM r");
    }
};

TEST_F(UnseenRows, AreTheRowsOfTheWholeQueryOnceSomebodyLooks) {
    const auto connection = connect();
    const WholeRows whole(connection->open(kEntries));
    const auto rows = connection->openUnseen(kEntries);
    EXPECT_EQ(rows->reading(), ListReading::unseen);
    ASSERT_EQ(rows->columns().size(), whole.columns().size());
    for (std::size_t i = 0; i < whole.columns().size(); ++i) {
        EXPECT_EQ(rows->columns()[i].name, whole.columns()[i].name);
        EXPECT_EQ(rows->columns()[i].type, whole.columns()[i].type);
    }
    EXPECT_EQ(rows->rowCount(), 3000U);
    EXPECT_FALSE(rows->holds(0));
    connection->close();
    EXPECT_EQ(textsOf(*rows), textsOf(whole));
    EXPECT_TRUE(rows->holds(0));
    EXPECT_TRUE(logIsFree());
}

TEST_F(UnseenRows, AreThoseOfTheOpeningWhoeverSavesSince) {
    const auto connection = connect();
    const std::string before = textsOf(WholeRows(connection->open(kEntries)));
    const auto first = connection->openUnseen(kEntries);
    connect()->execute("update tblItem set fName='changed' where fItemId<100");
    const std::string after = textsOf(WholeRows(connection->open(kEntries)));
    const auto second = connection->openUnseen(kEntries);
    connection->execute("delete from tblItem where fItemClassId=7 and fItemId>200");
    const auto third = connection->openUnseen("select fName from tblItem where fItemClassId=8 order by fNumber");
    connection->execute("alter table tblItem add fMore int");
    const auto fourth = connection->openUnseen("select * from tblItem where fItemClassId=8 order by fNumber");
    EXPECT_EQ(textsOf(*first), before);
    EXPECT_EQ(textsOf(*second), after);
    EXPECT_EQ(third->columns().size(), 1U);
    EXPECT_EQ(third->rowCount(), 2000U);
    EXPECT_EQ(fourth->columns().back().name, "fMore");
    EXPECT_EQ(fourth->cell(1999, 5), std::nullopt);
}

TEST_F(UnseenRows, AreThoseOfTheOpeningInAWalkThroughAColumnToo) {
    const auto connection = connect();
    const auto rows = connection->openUnseen(kEntries);
    ASSERT_EQ(rows->reading(), ListReading::unseen);
    const WholeRows before(connection->open(kEntries));
    connect()->execute("update tblItem set fNumber='changed'");
    std::size_t count = 0;
    rows->forEachRow(std::vector{1}, [&](std::size_t row) {
        ++count;
        ASSERT_EQ(rows->cell(row, 1), before.cell(row, 1));
    });
    EXPECT_EQ(count, before.rowCount());
}

TEST_F(UnseenRows, ShareOneSnapshotWhileNobodyWrites) {
    const auto connection = connect();
    auto database = std::make_unique<Database>(DatabaseFile::parse(connectionString()));
    SharedSnapshot shared;
    const auto first = shared.get(*database, connectionString());
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(shared.get(*database, connectionString()), first);
    connection->execute("update tblItem set fName='x' where fItemId=1");
    const auto second = shared.get(*database, connectionString());
    EXPECT_NE(second, first);
    EXPECT_EQ(shared.get(*database, connectionString()), second);
    database->run("UPDATE tblItem SET fName='y' WHERE fItemId=1");
    EXPECT_NE(shared.get(*database, connectionString()), second);
}

TEST_F(UnseenRows, LetTheLogGoAtTheirEndOrWhenItHasGrown) {
    const auto connection = connect();
    const std::string before = textsOf(WholeRows(connection->open(kEntries)));
    auto database = std::make_unique<Database>(DatabaseFile::parse(connectionString()));
    SharedSnapshot shared;
    const std::uint64_t mostLog = std::filesystem::file_size(file() + "-wal") + (1U << 20);
    const auto open = [&] { return openUnseenRows(*database, connectionString(), shared, kEntries, {0, 0, mostLog}); };
    auto dropped = open();
    const auto kept = open();
    ASSERT_NE(kept, nullptr);
    connection->execute("update tblItem set fName='x' where fItemId=1");
    dropped.reset();
    kept->tend();
    EXPECT_FALSE(kept->holds(0));
    EXPECT_FALSE(logIsFree());
    connection->execute("update tblItem set fName='" + std::string(80, 'y') + "'");
    kept->tend();
    EXPECT_TRUE(kept->holds(0));
    EXPECT_TRUE(logIsFree());
    EXPECT_EQ(textsOf(*kept), before);
}

TEST_F(UnseenRows, AreWholeWhereTheyAreFewOrNoSnapshotCanBeHeld) {
    const auto connection = connect();
    const auto readingOf = [](Connection& of, const std::string& sql) { return of.openUnseen(sql)->reading(); };
    EXPECT_EQ(readingOf(*connection, kEntries), ListReading::unseen);
    EXPECT_EQ(readingOf(*connection, "select * from tblItem where fItemClassId=9 order by fnumber"),
              ListReading::whole);
    EXPECT_EQ(readingOf(*connection, "select fName from tblItem where fItemClassId=7 group by fName order by fName"),
              ListReading::whole);
    EXPECT_EQ(readingOf(*connect(";Mode=ReadOnly"), kEntries), ListReading::whole);
    connection->beginTrans();
    connection->execute("delete from tblItem where fItemId=1");
    const auto within = connection->openUnseen(kEntries);
    EXPECT_EQ(within->reading(), ListReading::whole);
    EXPECT_EQ(within->rowCount(), 2999U);
    connection->rollbackTrans();
    connection->execute("delete from tblItem where fItemId>15000");
    EXPECT_EQ(readingOf(*connection, kEntries), ListReading::whole);
}

TEST_F(UnseenRows, FailAtTheOpeningAsTheWholeQueryDoes) {
    const auto connection = connect();
    for (const char* sql :
         {"select * from  tblSubType where  and   fitemclassid=1 order by fnumber ",
          "select * from tblItem where fName=1 order by fNumber", "select fNone from tblItem order by fNumber"}) {
        const Failure whole = failureOf([&] { connection->open(sql); });
        const Failure unseen = failureOf([&] { connection->openUnseen(sql); });
        EXPECT_NE(whole.number(), 0) << sql;
        EXPECT_EQ(unseen.number(), whole.number()) << sql;
        EXPECT_EQ(unseen.text(), whole.text()) << sql;
    }
}

}  // namespace
}  // namespace orvenmod::store::sqlite::test
