// Lists that are read by keys: the same rows as whole ones, whoever writes beside them.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <random>
#include <span>

#include "embeddeddatabase.h"
#include "store/sqlite/keyedrows.h"
#include "support/machinelimits.h"
#include "support/otherprocess.h"

namespace orvenmod::store::sqlite::test {
namespace {

using orvenmod::test::OtherProcess;

using Table = std::vector<std::vector<std::optional<std::string>>>;

template <typename Rows>
Table tableOf(const Rows& rows) {
    Table table(rows.rowCount());
    for (std::size_t row = 0; row < table.size(); ++row) {
        for (int column = 0; column < static_cast<int>(rows.columns().size()); ++column) {
            const Value cell = rows.cell(row, column);
            table[row].push_back(cell ? std::optional<std::string>(*cell) : std::nullopt);
        }
    }
    return table;
}

std::vector<int> allColumns(const ListRows& rows) {
    std::vector<int> columns(rows.columns().size());
    std::iota(columns.begin(), columns.end(), 0);
    return columns;
}

constexpr const char* kList =
    "select fItemId,fNumber,fName,fPrice,fDay,fHName from vGoods where 1=1  order by fnumber ";

class ListRowsBeside : public EmbeddedDatabase {
protected:
    ListRowsBeside() {
        const auto connection = connect();
        connection->execute(
            "create table tblItem(fItemId int not null,fName varchar(100),fNBNumber varchar(100),"
            "constraint PK_item primary key(fItemId))");
        connection->execute(
            "create table goods(fItemId int,fNumber varchar(100),fName varchar(100),fPrice decimal(18,4),"
            "fDay datetime,fH int)");
        connection->execute("create index number on goods(fNumber)");
        connection->execute(
            "create view vGoods as select a.fItemId,b.fNBNumber,isnull(a.fNumber,'') as fNumber,a.fName,"
            "isnull(a.fPrice,0) as fPrice,isnull(a.fDay,'1900-01-01') as fDay,isnull(s.fName,'') as fHName from goods "
            "as a left join tblItem as b on a.fItemId=b.fItemId left join tblItem as s on s.fItemId=a.fH");
    }

    /// So many goods, their keys from a number on at which a table is no small one.
    void fill(int count, const std::string& number = "printf('%06d', n)") const {
        native("WITH RECURSIVE r(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM r WHERE n < " + std::to_string(count) +
               ") INSERT INTO goods(rowid, fItemId, fNumber, fName) SELECT 30000 + n, n, " + number +
               ", 'name ' || n FROM r");
    }

    std::unique_ptr<ListRows> byKeys(const std::string& sql, std::uint64_t mostLog = 1ULL << 40) const {
        const auto identity = DatabaseFile::parse(connectionString()).identify();
        return openByKeys({connectionString(), identity, nullptr}, sql, {0, 0, mostLog});
    }
    /// Some columns of all rows as a walk gives them.
    static void expectSameInWalks(const ListRows& rows, const Table& whole) {
        const int count = static_cast<int>(rows.columns().size());
        for (int first = 0; first < count; ++first) {
            const int other = (first + 1) % count;
            for (const std::vector<int>& columns : {std::vector{first}, std::vector{other, first}}) {
                std::vector<bool> met(whole.size());
                rows.forEachRow(columns, [&](std::size_t row) {
                    EXPECT_FALSE(met.at(row));
                    met[row] = true;
                    for (const int column : columns)
                        ASSERT_EQ(rows.cell(row, column), whole[row][static_cast<std::size_t>(column)]) << column;
                });
                EXPECT_EQ(std::find(met.begin(), met.end(), false), met.end());
            }
        }
    }

    void expectSame(const std::string& sql) {
        const auto rows = byKeys(sql);
        ASSERT_NE(rows, nullptr) << sql;
        const Recordset whole = connect()->open(sql);
        if (rows->reading() == ListReading::keys) expectSameInWalks(*rows, tableOf(whole));
        EXPECT_EQ(rows->reading(), whole.rowCount() == 0 ? ListReading::whole : ListReading::keys);
        ASSERT_EQ(rows->columns().size(), whole.columns().size());
        for (std::size_t i = 0; i < whole.columns().size(); ++i) {
            EXPECT_EQ(rows->columns()[i].name, whole.columns()[i].name);
            EXPECT_EQ(rows->columns()[i].type, whole.columns()[i].type);
        }
        EXPECT_EQ(tableOf(*rows), tableOf(whole)) << sql;
    }
    void expectSameForConditions() {
        for (const char* condition :
             {"1=1", "1=0", "fNumber like 'a%'", "fName like '%1%'", "fPrice>1", "fPrice=0 or fHName='first'",
              "fNBNumber like '.1.%'", "fNBNumber='.3.' and fHName='first'", "fName is null",
              "fHName<>'' and fNumber>'B'"}) {
            const std::string list = std::string("select * from vGoods where ") + condition;
            expectSame(list + " order by fNumber");
            expectSame(list + " order by fNumber desc,fItemId");
            expectSame(list + " order by fName");
            expectSame(list + " order by fPrice,3");
        }
    }
};

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

TEST_F(ListRowsBeside, AreEachThoseOfItsOpeningWhereTwoListsAreOpenAtOnce) {
    fill(5000);
    const auto first = byKeys(kList, 1 << 20);
    const Table before = tableOf(connect()->open(kList));
    connect()->execute("update goods set fName='" + std::string(80, 'x') + "' where fItemId%2=0");
    auto second = byKeys(kList, 1 << 20);
    ASSERT_TRUE(first && second);
    const Table between = tableOf(connect()->open(kList));
    connect()->execute("update goods set fNumber=fNumber+'" + std::string(80, 'y') + "'");
    // The one is looked at and tended while the other one is gone through.
    second->forEachRow(std::vector{2}, [&](std::size_t row) {
        ASSERT_EQ(second->cell(row, 2), between[row][2]);
        if (row % 1000 != 0) return;
        first->tend();
        ASSERT_EQ(first->cell(row, 2), before[row][2]);
    });
    EXPECT_FALSE(logIsFree()) << "the second one holds it";
    EXPECT_EQ(tableOf(*first), before);
    EXPECT_EQ(tableOf(*second), between);
    second->tend();
    EXPECT_TRUE(logIsFree());
    EXPECT_EQ(tableOf(*second), between);
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

TEST_F(ListRowsBeside, AreGoneThroughInTheOrderOfTheFile) {
    fill(70000, "printf('%06d', n * 7919 % 70000)");
    const auto rows = byKeys(kList);
    ASSERT_NE(rows, nullptr);
    const Table whole = tableOf(connect()->open(kList));
    connect()->execute("update goods set fName='other'");
    Table table(rows->rowCount());
    int before = 0;
    rows->forEachRow(allColumns(*rows), [&](std::size_t row) {
        EXPECT_TRUE(rows->holds(row));
        for (int column = 0; column < static_cast<int>(rows->columns().size()); ++column)
            table[row].emplace_back(rows->cell(row, column));
        const int id = std::stoi(*table[row][0]);
        ASSERT_EQ(id, before + 1);
        before = id;
    });
    EXPECT_EQ(table, whole);
    EXPECT_LT(rows->memory(), 20U << 20);
}

TEST_F(ListRowsBeside, AreGoneThroughByAColumnWhereverTheirKeysLie) {
    fill(9000);
    native(
        "DELETE FROM goods WHERE fItemId % 100 > 90 OR fItemId BETWEEN 2000 AND 3999;"
        "UPDATE goods SET rowid = rowid * 1000000 WHERE fItemId BETWEEN 5000 AND 5099;"
        "UPDATE goods SET rowid = -rowid WHERE fItemId BETWEEN 6000 AND 6099;"
        "UPDATE goods SET rowid = 9223372036854775807 WHERE fItemId = 7;"
        "UPDATE goods SET rowid = -9223372036854775807 - 1 WHERE fItemId = 8");
    for (const char* condition : {"1=1", "fItemId%7=1", "fItemId<90", "fName like '%99%'"})
        expectSame(std::string("select fItemId,fNumber,fName from vGoods where ") + condition +
                   " order by fNumber desc");
}

TEST_F(ListRowsBeside, AreGoneThroughWholeWhereAViewMadeByHandReadsThem) {
    fill(5000);
    native("INSERT INTO tblItem SELECT fItemId, 'x', '.1.' FROM goods");
    const auto connection = connect();
    connection->execute("create table twice(fItemId int,fMore varchar(10))");
    connection->execute("insert into twice values(7,'one')");
    connection->execute("insert into twice values(7,'two')");
    connection->execute(
        "create view vTwice as select a.fNumber,t.fMore from goods as a left join twice as t on t.fItemId=a.fItemId");
    connection->execute("create view vMade as select a.fNumber,a.fName+'!' as fMore from goods as a");
    native("CREATE VIEW vForeign AS SELECT fNumber, fName AS fMore FROM goods");
    for (const char* view : {"vTwice", "vMade", "vForeign"}) {
        const std::string sql = std::string("select fNumber,fMore from ") + view + " order by fNumber";
        EXPECT_EQ(byKeys(sql), nullptr) << sql;
        const auto rows = connection->openList(sql);
        EXPECT_EQ(rows->reading(), ListReading::whole);
        expectSameInWalks(*rows, tableOf(connection->open(sql)));
    }
}

TEST_F(ListRowsBeside, GiveOtherColumnsAndRowsWithinAWalkToo) {
    fill(5000);
    const auto rows = byKeys(kList);
    ASSERT_NE(rows, nullptr);
    const Table whole = tableOf(connect()->open(kList));
    connect()->execute("update goods set fName='other'");
    std::size_t count = 0;
    rows->forEachRow(std::vector{2}, [&](std::size_t row) {
        ++count;
        ASSERT_EQ(rows->cell(row, 2), whole[row][2]);
        if (row % 1000 != 0) return;
        ASSERT_EQ(rows->cell(row, 1), whole[row][1]);
        ASSERT_EQ(rows->cell(4999 - row, 2), whole[4999 - row][2]);
        ASSERT_EQ(rows->cell(row, 2), whole[row][2]);
    });
    EXPECT_EQ(count, 5000U);
}

TEST_F(ListRowsBeside, KeepTheLogUntilAWalkThatTheyAreTendedInHasEnded) {
    fill(5000);
    const auto rows = byKeys(kList, 1);
    ASSERT_NE(rows, nullptr);
    const Table whole = tableOf(connect()->open(kList));
    connect()->execute("update goods set fName='other'");
    rows->forEachRow(std::vector{2}, [&](std::size_t row) {
        if (row == 2500) rows->tend();
        ASSERT_EQ(rows->cell(row, 2), whole[row][2]);
    });
    EXPECT_FALSE(logIsFree());
    rows->tend();
    EXPECT_TRUE(logIsFree());
    EXPECT_EQ(tableOf(*rows), whole);
}

TEST_F(ListRowsBeside, EndAWalkThroughAllWithWhatItThrows) {
    fill(5000);
    const auto rows = byKeys(kList);
    ASSERT_NE(rows, nullptr);
    const auto failing = [&](std::size_t row) {
        if (row == 4000) throw std::runtime_error("enough");
    };
    EXPECT_THROW(rows->forEachRow(allColumns(*rows), failing), std::runtime_error);
    EXPECT_FALSE(rows->holds(4000));
    std::size_t count = 0;
    rows->forEachRow({}, [&](std::size_t) { ++count; });
    EXPECT_EQ(count, 5000U);
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
    fill(100000, "'中' || (n * 7919 % 100000)");
    struct Stop {};
    const auto connection = connect();
    connection->setProgress([] { throw Stop(); });
    // Sorted by a function of this store, it takes some tenths of a second.
    EXPECT_THROW(connection->openList("select fNumber from goods order by fNumber desc,fName desc"), Stop);
    connection->setProgress(nullptr);
    EXPECT_EQ(connection->openList(kList)->rowCount(), 100000U);
}

}  // namespace
}  // namespace orvenmod::store::sqlite::test
