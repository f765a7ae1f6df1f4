// Lists that are read by keys: the same rows as whole ones, whoever writes beside them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <span>

#include "listrowsbeside.h"
#include "support/machinelimits.h"
#include "support/otherprocess.h"

namespace orvenmod::store::sqlite::test {
namespace {

using orvenmod::test::OtherProcess;

TEST_F(ListRowsBeside, AreTheRowsOfTheWholeListWhateverTheTexts) {
    const std::vector<std::string> codes = {
        "NULL",        "''",   "'A01'", "'a01'",     "'A01  '", "'B-2'",  "'{x'",         "'z~'",
        "'中文'",      "'啊'", "'1中'", "'Été'",     "'[b'",    "'_'",    "' lead'",      "X'FFFE'",
        "X'41FF'",     "'9'",  "'10'",  "12",        "3.5",     "'A.01'", "'a_1'",        "'龘'",
        "'A' || '中'", "'ａ'", "'b2'",  "X'410042'", "'`'",     "'|'",    "'A' || x'00'", "'0'"};
    const std::vector<std::string> prices = {"NULL", "0", "1.5", "3.3000000000000003", "'oops'", "99999999999.9999"};
    const std::vector<std::string> days = {"NULL", "'2026-11-22 00:00:00'", "'2026-1-2'", "'soon'", "X'00'"};
    std::mt19937 random(18);
    const auto any = [&random](const std::vector<std::string>& of) { return of[random() % of.size()]; };
    native("INSERT INTO tblItem VALUES(1, 'first', '.1.'), (2, NULL, '.1.2.'), (3, 'x' || X'FF', '.3.')");
    std::string all;
    for (int id = 1; id <= 700; ++id) {
        all += "INSERT INTO goods(fItemId, fNumber, fName, fPrice, fDay, fH) VALUES(" + std::to_string(id % 5) + "," +
               any(codes) + (id % 3 == 0 ? " || " + std::to_string(random() % 50) : "") + "," + any(codes) + "," +
               any(prices) + "," + any(days) + "," + std::to_string(random() % 5) + ");";
    }
    native("BEGIN;" + all + "COMMIT");
    for (const char* index : {"(fNumber)", "(fNumber) include (fItemId)", "(fNumber,fItemId)"}) {
        connect()->execute("drop index goods.number");
        connect()->execute(std::string("create index number on goods") + index);
        expectSameForConditions();
    }
    expectSame("select fHName,fNumber as n from vGoods order by n");
    expectSame("select fNumber,fName from goods order by fName,fNumber");
}

TEST_F(ListRowsBeside, AreThoseOfACategoryWhereverItsCodesStand) {
    fill(12000, "printf('%06d', n / 3)");
    native("INSERT INTO tblItem SELECT fItemId, 'x', '.2.' || fItemId || '.' FROM goods");
    // Categories have a path too, but no row among the goods.
    native("INSERT INTO tblItem VALUES(30001, 'category', '.1.'), (30002, 'category', '.1.2.')");
    for (const char* index :
         {"", "create index number on goods(fNumber) include (fItemId)", "create unique index id on goods(fItemId)"}) {
        if (std::string_view(index).find("number") != std::string_view::npos)
            connect()->execute("drop index goods.number");
        if (*index != 0) connect()->execute(index);
        for (const char* which : {"BETWEEN 1500 AND 3500", "% 5 = 0", "NOT BETWEEN 1000 AND 11000",
                                  "BETWEEN 6000 AND 7500 OR fItemId IN (1, 12000)", "BETWEEN 500 AND 510"}) {
            SCOPED_TRACE(std::string(index) + ", " + which);
            native(std::string("UPDATE tblItem SET fNBNumber = iif(fItemId ") + which +
                   ", '.1.', '.2.') || fItemId || '.' WHERE fItemId <= 12000");
            expectSame("select * from vGoods where fNBNumber like '.1.%' order by fNumber");
        }
    }
}

TEST_F(ListRowsBeside, AreThoseOfACategoryWhateverOtherProgramsWrote) {
    fill(3000);
    native("INSERT INTO tblItem SELECT fItemId, 'x', '.1.' || fItemId || '.' FROM goods");
    connect()->execute("drop index goods.number");
    connect()->execute("create index number on goods(fNumber) include (fItemId)");
    connect()->execute("create unique index id on goods(fItemId)");
    const std::string category = "select * from vGoods where fNBNumber like '.1.%' order by fNumber";
    const char* const writings[] = {
        "UPDATE goods SET fNumber = NULL WHERE fItemId % 1000 = 7",
        "UPDATE goods SET fNumber = '中' || fItemId WHERE fItemId % 1000 = 8",
        "UPDATE goods SET fItemId = NULL WHERE fItemId = 9",
        "UPDATE goods SET fItemId = 'none' WHERE fItemId = 10",
        "INSERT INTO tblItem VALUES(0, 'zero', '.1.0.')",
        "UPDATE tblItem SET fItemId = 'none' WHERE fItemId = 11",
        "UPDATE tblItem SET fItemId = -5 WHERE fItemId = 12",
        "UPDATE goods SET fItemId = -5 WHERE fItemId = 13",
        "UPDATE tblItem SET fItemId = 4000000000 WHERE fItemId = 14",
    };
    for (const char* writing : writings) {
        native(writing);
        SCOPED_TRACE(writing);
        expectSame(category);
    }
}

TEST_F(ListRowsBeside, AreThoseOfTheOpeningWhileAnotherProcessSaves) {
    fill(3000);
    OtherProcess clerk([this](OtherProcess& parent) {
        parent.await();
        const auto connection = connect();
        connection->execute("update goods set fName='changed' where fItemId>500");
        connection->execute("update goods set fNumber='000000' where fItemId=2500");
        connection->execute("delete from goods where fItemId between 1000 and 1999");
        native("UPDATE goods SET rowid = rowid + 100000 WHERE fItemId < 700");
        connection->execute("insert into goods(fItemId,fNumber) values(9000,'000001')");
        return 0;
    });
    const Table before = tableOf(connect()->open(kList));
    const auto rows = byKeys(kList);
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rows->cell(0, 0), before[0][0]);
    clerk.tell();
    ASSERT_EQ(clerk.result(), 0);
    EXPECT_EQ(tableOf(*rows), before);
    EXPECT_EQ(connect()->open(kList).rowCount(), 2001U);
    EXPECT_EQ(tableOf(*rows), before);
}

TEST_F(ListRowsBeside, AreReadAsTheTableIsLongAtTheTime) {
    fill(5000);
    const auto connection = connect();
    const auto readingOf = [&] { return connection->openList(kList)->reading(); };
    EXPECT_EQ(readingOf(), ListReading::keys);
    native("UPDATE goods SET rowid = rowid - 30000");
    EXPECT_EQ(readingOf(), ListReading::whole);
    EXPECT_EQ(readingOf(), ListReading::whole);
    native(
        "CREATE TABLE longer(fItemId int, fNumber varchar(100)); INSERT INTO longer(rowid, fItemId, fNumber) SELECT "
        "rowid + 30000, fItemId, fNumber FROM goods");
    connection->execute("drop view vGoods");
    connection->execute(
        "create view vGoods as select a.fItemId,isnull(a.fNumber,'') as fNumber,'' as fName,0 as fPrice,null as "
        "fDay,'' as fHName from longer as a");
    EXPECT_EQ(readingOf(), ListReading::keys);
}

TEST_F(ListRowsBeside, OutliveTheTableThatTheyWereReadFrom) {
    fill(1000);
    const auto rows = byKeys(kList);
    ASSERT_NE(rows, nullptr);
    const Table before = tableOf(connect()->open(kList));
    const auto connection = connect();
    connection->execute("alter table goods add fMore varchar(10)");
    connection->execute("update goods set fMore='x',fName='y'");
    connection->execute("drop view vGoods");
    connection->execute("drop table goods");
    EXPECT_EQ(tableOf(*rows), before);
}

TEST_F(ListRowsBeside, LetTheLogGoWhenItHasGrown) {
    fill(2000);
    const auto rows = byKeys(kList, 1 << 20);
    ASSERT_NE(rows, nullptr);
    const Table before = tableOf(connect()->open(kList));
    const auto connection = connect();
    connection->execute("update goods set fName='x'");
    rows->tend();
    EXPECT_FALSE(logIsFree());
    for (int i = 0; i < 6; ++i)
        connection->execute("update goods set fName='" + std::string(80, static_cast<char>('a' + i)) + "'");
    EXPECT_FALSE(logIsFree());
    rows->tend();
    EXPECT_TRUE(logIsFree());
    EXPECT_EQ(rows->reading(), ListReading::keys);
    connection->execute("delete from goods");
    rows->tend();
    EXPECT_EQ(tableOf(*rows), before);
    EXPECT_TRUE(rows->holds(0));
    EXPECT_TRUE(rows->holds(1999));
}

TEST_F(ListRowsBeside, BoundTheLogAlsoWhereEachSaveOpensThemAnew) {
    fill(2000);
    const auto connection = connect();
    auto rows = byKeys(kList, 1 << 20);
    for (int save = 0; save < 40; ++save) {
        connection->execute("update goods set fName='" + std::string(80, static_cast<char>('a' + save % 26)) + "'");
        // The old ones go when there are new ones.
        rows = byKeys(kList, 1 << 20);
        ASSERT_NE(rows, nullptr);
        rows->tend();
    }
    EXPECT_LT(std::filesystem::file_size(file() + "-wal"), 6U << 20);
    EXPECT_EQ(rows->rowCount(), 2000U);
}

TEST_F(ListRowsBeside, LeaveNoLongLogBehindOnceItIsFree) {
    fill(1000);
    const auto connection = connect();
    auto rows = byKeys(kList);
    native(
        "PRAGMA synchronous = OFF; CREATE TABLE much(c); INSERT INTO much VALUES(zeroblob(40000000)); DELETE FROM "
        "much");
    EXPECT_GT(std::filesystem::file_size(file() + "-wal"), 40'000'000U);
    rows.reset();
    for (int save = 0; save < 3; ++save)
        connection->execute("update goods set fName='" + std::to_string(save) + "' where fItemId=1");
    EXPECT_LE(std::filesystem::file_size(file() + "-wal"), 16U << 20);
}

TEST_F(ListRowsBeside, LetTheLogGoAtTheirEnd) {
    fill(1000);
    auto rows = byKeys(kList);
    ASSERT_NE(rows, nullptr);
    connect()->execute("update goods set fName='x'");
    EXPECT_FALSE(logIsFree());
    rows.reset();
    EXPECT_TRUE(logIsFree());
}

TEST_F(ListRowsBeside, HoldFewOfTheRowsThatWereLookedAt) {
    fill(6000);
    const auto rows = byKeys(kList);
    ASSERT_NE(rows, nullptr);
    EXPECT_FALSE(rows->holds(3000));
    EXPECT_EQ(rows->cell(3000, 1), "003001");
    EXPECT_TRUE(rows->holds(3000));
    for (std::size_t row = 0; row < 6000; ++row)
        rows->cell(row, 0);
    EXPECT_FALSE(rows->holds(0));
    EXPECT_TRUE(rows->holds(5999));
    EXPECT_EQ(rows->cell(0, 1), "000001");
}

TEST_F(ListRowsBeside, AreTheSameWhereTheyLieInAnotherOrder) {
    fill(100000, "printf('%06d', n * 7919 % 100000)");
    const auto rows = byKeys(kList);
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(tableOf(*rows), tableOf(connect()->open(kList)));
    // Those of a walk go when somebody looks elsewhere.
    for (std::size_t row = 0; row < 100000; row += 5000)
        rows->cell(row, 0);
    EXPECT_LT(rows->memory(), 20U << 20);
}

TEST_F(ListRowsBeside, AreFetchedTogetherInAnOrderThatIsTold) {
    fill(20000);
    const auto rows = byKeys(kList);
    ASSERT_NE(rows, nullptr);
    std::vector<std::uint32_t> order(20000);
    for (std::uint32_t i = 0; i < order.size(); ++i)
        order[i] = i * 7919 % 20000;
    int fetches = 0;
    for (std::size_t at = 0; at < order.size(); ++at) {
        if (!rows->holds(order[at])) {
            ++fetches;
            rows->expect(std::span(order).subspan(at));
        }
        ASSERT_TRUE(rows->holds(order[at]));
        ASSERT_EQ(rows->cell(order[at], 0), std::to_string(order[at] + 1));
    }
    EXPECT_LT(fetches, 200);
    EXPECT_EQ(rows->cell(0, 1), "000001");
    EXPECT_EQ(rows->cell(19999, 1), "020000");
    EXPECT_LT(rows->memory(), 20U << 20);
}

TEST_F(ListRowsBeside, GoOnBeingReadWhileAllOfThemAreFetched) {
    fill(40000);
    int paints = 0;
    std::unique_ptr<ListRows> rows;
    const auto paint = [&] {
        if (!rows) return;
        ++paints;
        EXPECT_EQ(rows->cell(static_cast<std::size_t>(paints) * 1000, 0), std::to_string(paints * 1000 + 1));
    };
    rows = openByKeys({connectionString(), DatabaseFile::parse(connectionString()).identify(), paint}, kList,
                      {0, 0, 1 << 20});
    ASSERT_NE(rows, nullptr);
    const Table before = tableOf(connect()->open(kList));
    for (int i = 0; i < 2; ++i)
        connect()->execute("update goods set fName='" + std::string(80, static_cast<char>('a' + i)) + "'");
    rows->tend();
    EXPECT_EQ(paints, 2);
    EXPECT_TRUE(logIsFree());
    EXPECT_EQ(tableOf(*rows), before);
}

TEST_F(ListRowsBeside, AreReadOnWhereTheDiskIsFull) {
    fill(20000);
    const auto rows = byKeys(kList);
    ASSERT_NE(rows, nullptr);
    const Table before = tableOf(connect()->open(kList));
    {
        const orvenmod::test::FullDisk disk(4096);
        EXPECT_NE(failureOf([&] { connect()->execute("update goods set fName='x'"); }).number(), 0);
        EXPECT_EQ(tableOf(*rows), before);
    }
    connect()->execute("update goods set fName='x'");
    EXPECT_EQ(tableOf(*rows), before);
}

TEST_F(ListRowsBeside, AreThoseOfTheOpeningWhileAnotherProcessAddsAField) {
    fill(3000);
    OtherProcess designer([this](OtherProcess& parent) {
        parent.await();
        const auto connection = connect();
        connection->beginTrans();
        connection->execute("alter table goods add fMore varchar(10)");
        connection->execute("drop view vGoods");
        connection->execute(
            "create view vGoods as select a.fItemId,isnull(a.fMore,'') as fMore,isnull(a.fNumber,'') as "
            "fNumber,'other' as fName,a.fPrice,a.fDay,'other' as fHName from goods as a");
        connection->execute("update goods set fMore='more',fPrice=7");
        connection->commitTrans();
        return 0;
    });
    const Table before = tableOf(connect()->open(kList));
    const auto rows = byKeys(kList);
    ASSERT_NE(rows, nullptr);
    designer.tell();
    ASSERT_EQ(designer.result(), 0);
    EXPECT_EQ(tableOf(*rows), before);
    EXPECT_EQ(connect()->open(kList).cell(0, 2), "other");
    EXPECT_EQ(tableOf(*rows), before);
}

TEST_F(ListRowsBeside, TellADamagedFileAndKeepWhatTheyHold) {
    fill(5000);
    SqliteStore::dropIdleHandles();
    const auto rows = byKeys(kList);
    ASSERT_NE(rows, nullptr);
    EXPECT_EQ(rows->cell(0, 1), "000001");
    constexpr std::size_t kPage = 4096;
    std::fstream bytes(file(), std::ios::binary | std::ios::in | std::ios::out);
    bytes.seekp(kPage);
    bytes << std::string(std::filesystem::file_size(file()) - kPage, '\0') << std::flush;
    for (int time = 0; time < 2; ++time) {
        EXPECT_NE(failureOf([&] { rows->cell(4000, 1); }).number(), 0);
        EXPECT_NE(failureOf([&] { rows->forEachRow(std::vector{1}, [](std::size_t) {}); }).number(), 0);
    }
    EXPECT_FALSE(rows->holds(4000));
    EXPECT_EQ(rows->cell(0, 1), "000001");
}

TEST_F(ListRowsBeside, AreReadByKeysThroughAConnectionAndOutliveIt) {
    fill(5000);
    std::unique_ptr<ListRows> rows;
    {
        const auto connection = connect();
        rows = connection->openList(kList);
        EXPECT_EQ(connection->openList("select fNumber from goods where fItemId<10 order by fNumber")->reading(),
                  ListReading::whole);
    }
    EXPECT_EQ(rows->reading(), ListReading::keys);
    EXPECT_EQ(rows->rowCount(), 5000U);
    EXPECT_EQ(rows->cell(4999, 1), "005000");
    EXPECT_LT(rows->memory(), 4U << 20);
}

TEST_F(ListRowsBeside, AreWholeWhereNoSnapshotCanBeHeld) {
    fill(5000);
    const auto reader = connect(";Mode=ReadOnly");
    EXPECT_EQ(reader->openList(kList)->reading(), ListReading::whole);
    const auto connection = connect();
    connection->beginTrans();
    connection->execute("delete from goods where fItemId=1");
    const auto rows = connection->openList(kList);
    EXPECT_EQ(rows->reading(), ListReading::whole);
    EXPECT_EQ(rows->rowCount(), 4999U);
    connection->rollbackTrans();
}

TEST_F(ListRowsBeside, FailAsTheWholeQueryDoes) {
    fill(5000);
    const auto connection = connect();
    for (const char* sql : {"select fNone from vGoods order by fNumber", "select fNumber from nothing order by fNumber",
                            "select fNumber from vGoods where fName=1 order by fNumber", "select from"}) {
        const Failure whole = failureOf([&] { connection->open(sql); });
        const Failure list = failureOf([&] { connection->openList(sql); });
        EXPECT_NE(whole.number(), 0) << sql;
        EXPECT_EQ(list.number(), whole.number()) << sql;
        EXPECT_EQ(list.text(), whole.text()) << sql;
    }
}

TEST_F(ListRowsBeside, EndWithWhatTheProgressThrows) {
    constexpr int kRows = 100000;
    fill(kRows, "hex(zeroblob(45)) || printf('%06d', n)");
    // Each row is asked so often that reading the keys takes seconds; the progress comes after a tenth.
    std::string sql = "select fNumber from goods where fName<>''";
    for (int i = 0; i < 20; ++i)
        sql += " and fNumber not like '%0x" + std::to_string(i) + "%'";
    sql += " order by fNumber";
    struct Stop {};
    const auto identity = DatabaseFile::parse(connectionString()).identify();
    EXPECT_THROW(openByKeys({connectionString(), identity, [] { throw Stop(); }}, sql), Stop);
    EXPECT_EQ(connect()->openList(kList)->rowCount(), static_cast<std::size_t>(kRows));
}

}  // namespace
}  // namespace orvenmod::store::sqlite::test
