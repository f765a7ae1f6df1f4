// Lists that are read by keys, gone through as their rows lie in the file.
#include <gtest/gtest.h>

#include <stdexcept>

#include "listrowsbeside.h"
#include "store/sqlite/handlepool.h"
#include "store/sqlite/rowwalk.h"
#include "store/tsql/keyedlist.h"

namespace orvenmod::store::sqlite::test {
namespace {

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

TEST_F(ListRowsBeside, AreGoneThroughByColumnsHoweverTheyAreNamed) {
    fill(700);
    native(
        "INSERT INTO tblItem SELECT fItemId, iif(fItemId % 4 = 0, NULL, 'item ' || fItemId), '.1.' FROM goods WHERE "
        "fItemId % 3 = 0; UPDATE goods SET fH = fItemId % 11, fPrice = iif(fItemId % 5 = 0, NULL, fItemId * 1.25), "
        "fDay = "
        "iif(fItemId % 7 = 0, NULL, '2026-11-22 00:00:00')");
    const auto connection = connect();
    connection->execute(
        "create view vNames as select a.fItemId as [Order],b.FNAME as fname,A.fName as [x.y],isnull(s.fName,'-') as "
        "[a \"b],null as fNothing,7 as fSeven,'it''s' as fText,isnull(a.fH,0) as fH,a.fItemId as fAgain,a.fNumber from "
        "Goods as a left join tblitem as b on b.fItemId=a.fItemId left join tblItem as s on s.fItemId=b.fItemId and "
        "s.fName<>'item 9'");
    for (const char* sql : {"select * from vNames order by fNumber",
                            "select FNAME,[X.Y],[order],[order],fName as again from VNAMES order by 1,3",
                            "select v.[a \"b],v.fNothing,v.fSeven,v.fText as [orven.key2] from vNames as v where "
                            "v.fH>3 order by v.fnumber desc",
                            "select n.fName as fNumber,n.fNumber as fName,n.fPrice from goods n order by fNumber,2",
                            "select fH,fH as fH,fDay from goods where fH like '1%' order by fH,fItemId",
                            "select vNames.fAgain,fSeven from vNames where fname is null order by fseven,fAgain desc"})
        expectSame(sql);
}

// As a damaged file joins it, whose index tells each row to be the only one.
TEST_F(ListRowsBeside, AreGoneThroughOnceEachWhereAJoinGivesOneTwice) {
    native(
        "INSERT INTO t(rowid, id) VALUES(1, 10), (2, 20), (3, 30); CREATE TABLE twice(id int);"
        "INSERT INTO twice VALUES(10), (10), (30), (30)");
    const auto database = takeHandle(connectionString());
    tsql::Translation walk = tsql::keyedWalk("select id from t order by id", database->catalog(), std::vector{0});
    walk.statements[0] =
        "SELECT t.id, t.rowid FROM t LEFT JOIN twice ON twice.id = t.id WHERE t.rowid BETWEEN ?1 AND ?2 ORDER BY "
        "t.rowid";
    // Nothing behind them is taken for one of them.
    const std::vector<std::int64_t> keys = {1, 2, 3, 0};
    const Recordset rows = RowWalk(*database, walk).read(std::span(keys).first(3));
    ASSERT_EQ(rows.rowCount(), 3U);
    EXPECT_EQ(rows.cell(0, 0), "10");
    EXPECT_EQ(rows.cell(2, 0), "30");
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

}  // namespace
}  // namespace orvenmod::store::sqlite::test
