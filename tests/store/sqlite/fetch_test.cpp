#include <gtest/gtest.h>
#include <sqlite3.h>

#include "embeddeddatabase.h"

namespace orvenmod::store::sqlite::test {
namespace {

class Fetch : public EmbeddedDatabase {
protected:
    Fetch() : connection_(connect()) {
        connection_->execute("create table v(i bigint, m decimal(18,4), f float, d datetime, b bit, x varbinary(10))");
    }
    std::string shown(const std::string& column, const std::string& stored) {
        connection_->execute("delete from v");
        connection_->execute("insert into v(" + column + ") values(" + stored + ")");
        return value(*connection_, "select " + column + " from v");
    }
    void foreignly(const std::string& text) {
        sqlite3* handle = nullptr;
        sqlite3_open(file().c_str(), &handle);
        EXPECT_EQ(sqlite3_exec(handle, text.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(handle);
    }

    std::unique_ptr<Connection> connection_;
};

TEST_F(Fetch, GivesNumbersInPlainDecimal) {
    EXPECT_EQ(shown("i", "9223372036854775807"), "9223372036854775807");
    EXPECT_EQ(shown("m", "10"), "10");
    EXPECT_EQ(shown("m", "12.5000"), "12.5");
    EXPECT_EQ(shown("m", "-0.00004"), "0");
    EXPECT_EQ(shown("f", "0.1"), "0.1");
    EXPECT_EQ(shown("f", "1e20"), "100000000000000000000");
    EXPECT_EQ(shown("f", "1e-7"), "0.0000001");
    EXPECT_EQ(shown("b", "5"), "1");
}

TEST_F(Fetch, GivesASumOfDecimalsWithoutTheDoublesRest) {
    connection_->execute("insert into v(m) values(0.1)");
    connection_->execute("insert into v(m) values(0.2)");
    EXPECT_EQ(value(*connection_, "select sum(m) from v"), "0.3");
}

TEST_F(Fetch, GivesDatesInOneForm) {
    EXPECT_EQ(shown("d", "'20260102'"), "2026-01-02 00:00:00");
    EXPECT_EQ(shown("d", "'2026-01-02 03:04:05.5'"), "2026-01-02 03:04:05.500");
}

TEST_F(Fetch, TellsTheTypesOfItsColumns) {
    const Recordset rows = connection_->open("select i,m,f,d,b,x from v");
    const ColumnType wanted[] = {ColumnType::integer, ColumnType::decimal, ColumnType::real,
                                 ColumnType::date,    ColumnType::integer, ColumnType::binary};
    for (std::size_t i = 0; i < std::size(wanted); ++i)
        EXPECT_EQ(rows.columns()[i].type, wanted[i]) << i;
}

TEST_F(Fetch, ReadsADateThatAnotherProgramWroteInItsOwnForm) {
    foreignly("INSERT INTO v(d) VALUES('2026-01-02')");
    EXPECT_EQ(value(*connection_, "select d from v"), "2026-01-02 00:00:00");
    foreignly("UPDATE v SET d = 'someday'");
    EXPECT_EQ(value(*connection_, "select d from v"), "someday");
}

TEST_F(Fetch, ReadsTablesAndViewsThatAnotherProgramMade) {
    foreignly("CREATE TABLE foreigner(a INTEGER, b VARCHAR(20), c NUMERIC, d)");
    foreignly("INSERT INTO foreigner VALUES(1, 'x', 1.5, NULL)");
    foreignly("CREATE VIEW looked AS SELECT a, b FROM foreigner");
    EXPECT_EQ(value(*connection_, "select c from foreigner where b='X' and a='1'"), "1.5");
    EXPECT_EQ(value(*connection_, "select b from looked where a=1"), "x");
}

TEST_F(Fetch, GivesBinaryContentsAsTheyAre) { EXPECT_EQ(shown("x", "0x00FF41"), std::string("\0\xFF\x41", 3)); }

}  // namespace
}  // namespace orvenmod::store::sqlite::test
