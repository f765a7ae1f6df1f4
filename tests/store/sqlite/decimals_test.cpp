// What a decimal that no double has looks like in the file, and to other programs.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "embeddeddatabase.h"

namespace orvenmod::store::sqlite::test {
namespace {

class Decimals : public EmbeddedDatabase {
protected:
    Decimals() : connection_(connect()) { connection_->execute("create table v(id int, m decimal(18,6))"); }

    /// By a program that knows nothing of us.
    std::string foreignly(const std::string& text) {
        sqlite3* handle = nullptr;
        sqlite3_open(file().c_str(), &handle);
        std::string cells;
        const auto add = [](void* to, int count, char** values, char**) {
            for (int i = 0; i < count; ++i)
                *static_cast<std::string*>(to) += std::string(values[i] == nullptr ? "null" : values[i]) + "|";
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(handle, text.c_str(), add, &cells, nullptr), SQLITE_OK) << text;
        sqlite3_close(handle);
        return cells;
    }
    void store(const std::string& values) { connection_->execute("insert into v(id,m) values(" + values + ")"); }

    std::unique_ptr<Connection> connection_;
};

TEST_F(Decimals, StayNumbersInTheFileWhereADoubleHasThem) {
    store("1,12.5");
    store("2,100000000000");
    store("3,4503599627.370495");
    store("4,99999999999.999999");
    EXPECT_EQ(foreignly("SELECT typeof(m) FROM v ORDER BY id"), "real|integer|real|text|");
    EXPECT_EQ(foreignly("SELECT m FROM v WHERE id = 4"), "99999999999.999999d|");
}

TEST_F(Decimals, AreNumbersToTheArithmeticOfAnotherProgram) {
    store("1,99999999999.999999");
    EXPECT_EQ(foreignly("SELECT sum(m), m * 2, round(m, 1) FROM v"), "100000000000.0|200000000000.0|100000000000.0|");
}

TEST_F(Decimals, ThatAnotherProgramStoredAreReadComparedAndAddedWithOurs) {
    foreignly("INSERT INTO v VALUES(1, 2.5), (2, '7.25'), (3, 3.3000000000000003), (4, 1e11)");
    store("5,99999999999.999999");
    const Recordset rows = connection_->open("select m from v where m>2.5 order by m");
    ASSERT_EQ(rows.rowCount(), 4U);
    EXPECT_EQ(rows.cell(0, 0), "3.3");
    EXPECT_EQ(rows.cell(1, 0), "7.25");
    EXPECT_EQ(rows.cell(2, 0), "99999999999.999999");
    EXPECT_EQ(rows.cell(3, 0), "100000000000");
    EXPECT_EQ(value(*connection_, "select sum(m) from v"), "200000000013.049999");
}

TEST_F(Decimals, ThatAreNoneAreShownAndOrderedWithoutAFailure) {
    foreignly("INSERT INTO v VALUES(1, 'soon'), (2, 1e300), (3, x'0102')");
    store("4,-99999999999.999999");
    EXPECT_EQ(connection_->open("select m from v where m>0 or m<=0 order by m").rowCount(), 4U);
    EXPECT_EQ(value(*connection_, "select m from v where id=1"), "soon");
}

TEST_F(Decimals, OfAViewAreReadByAnotherProgram) {
    connection_->execute("create view w as select id,m,m+1 as n from v where m<0 or m>5");
    store("1,-99999999999.999999");
    store("2,99999999999.999999");
    store("3,2");
    EXPECT_EQ(foreignly("SELECT id FROM w ORDER BY id"), "1|2|");
    EXPECT_EQ(value(*connection_, "select m from w where id=1"), "-99999999999.999999");
}

TEST_F(Decimals, OfADefaultAndACheckKeepTheirDigits) {
    connection_->execute("create table k(id int, m decimal(18,6) default 99999999999.999999 check (m<200000000000))");
    connection_->execute("insert into k(id) values(1)");
    EXPECT_EQ(value(*connection_, "select m from k"), "99999999999.999999");
    EXPECT_NE(failureOf([&] { connection_->execute("insert into k values(2,200000000000)"); }).number(), 0);
    connection_->execute("create table n(id int, m decimal(18,6) default -99999999999.999999)");
    connection_->execute("insert into n(id) values(1)");
    EXPECT_EQ(value(*connection_, "select m from n"), "-99999999999.999999");
}

TEST_F(Decimals, AreOrderedWithOrdinaryNumbersWithoutAKeyForEach) {
    for (const char* values : {"1,99999999999.999999", "2,-99999999999.999999", "3,0.5", "4,7", "5,null", "6,-3"})
        store(values);
    const auto ids = [this](const std::string& condition) {
        const Recordset rows = connection_->open("select id from v where " + condition + " order by id");
        std::string text;
        for (std::size_t i = 0; i < rows.rowCount(); ++i)
            text += rows.cell(i, 0).value_or("");
        return text;
    };
    EXPECT_EQ(ids("m>0.5"), "14");
    EXPECT_EQ(ids("m>=0.5"), "134");
    EXPECT_EQ(ids("m<7"), "236");
    EXPECT_EQ(ids("m<=7"), "2346");
    EXPECT_EQ(ids("not m<7"), "14");
    EXPECT_EQ(ids("7>m"), "236");
    EXPECT_EQ(ids("m between -3 and 7"), "346");
    EXPECT_EQ(ids("m not between -3 and 7"), "12");
    EXPECT_EQ(ids("m between 99999999999.999998 and 100000000000"), "1");
}

TEST_F(Decimals, AreFoundByAnIndexWhereTheyAreEqual) {
    connection_->execute("create table k(m decimal(18,6) not null primary key)");
    connection_->execute("insert into k values(99999999999.999999)");
    EXPECT_NE(failureOf([&] { connection_->execute("insert into k values('99999999999.999999')"); }).number(), 0);
    EXPECT_NE(foreignly("EXPLAIN QUERY PLAN SELECT * FROM k WHERE m = '99999999999.999999d'").find("SEARCH"),
              std::string::npos);
}

}  // namespace
}  // namespace orvenmod::store::sqlite::test
