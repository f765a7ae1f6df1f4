// What a copy from store to store asks: reading in parts, loading, and what a database holds.
#include <algorithm>

#include "contract.h"

namespace orvenmod::store::test {
namespace {

constexpr int kMany = 10000;

void fill(Connection& connection) {
    std::vector<std::string> statements;
    for (int i = 100; i < 100 + kMany; ++i)
        statements.push_back("insert into t(id,c) values(" + std::to_string(i) + ",'n" + std::to_string(i) + "')");
    connection.beginTrans();
    connection.executeAll(statements);
    connection.commitTrans();
}

TEST_F(StoreContract, ReadsManyRowsInPartsOfAFewThousand) {
    fill(*connection_);
    int next = 100;
    std::size_t largest = 0;
    connection_->read("select id,c from t where id>=100 order by id", [&](const Recordset& rows) {
        largest = std::max(largest, rows.rowCount());
        for (std::size_t row = 0; row < rows.rowCount(); ++row, ++next)
            ASSERT_EQ(rows.cell(row, 1), "n" + std::to_string(next));
    });
    EXPECT_EQ(next, 100 + kMany);
    EXPECT_LE(largest, kRowsPerPart);
}

TEST_F(StoreContract, ReadsNoPartOfAnEmptyTable) {
    int parts = 0;
    connection_->read("select id from t where id=99", [&](const Recordset&) { ++parts; });
    EXPECT_EQ(parts, 0);
}

TEST_F(StoreContract, EndsAQueryWhoseReaderThrowsAndGoesOn) {
    fill(*connection_);
    struct Enough {};
    EXPECT_THROW(connection_->read("select id from t", [](const Recordset&) { throw Enough(); }), Enough);
    EXPECT_EQ(value("select count(*) from t"), std::to_string(kMany + 2));
}

TEST_F(StoreContract, RefusesToReadWhatIsNoQuery) {
    EXPECT_NE(numberOf([&] { connection_->read("select nosuch from t", [](const Recordset&) {}); }), 0);
    EXPECT_NE(numberOf([&] { connection_->read("delete from t", [](const Recordset&) {}); }), 0);
}

class Moving : public StoreContract {
protected:
    const TableOutline& table(const std::string& name) {
        outline_ = connection_->outline();
        const auto found = std::find_if(outline_.tables.begin(), outline_.tables.end(),
                                        [&](const TableOutline& candidate) { return candidate.name == name; });
        if (found == outline_.tables.end()) throw std::runtime_error("no table " + name);
        return *found;
    }
    static std::string shown(const std::vector<KeyPart>& parts) {
        std::string text;
        for (const KeyPart& part : parts)
            text += (text.empty() ? "" : ",") + part.column + (part.descending ? " desc" : "");
        return text;
    }

    Outline outline_;
};

TEST_F(Moving, TellsColumnsAsTheyWereDeclared) {
    NEEDS_THE_DIALECT();
    connection_->execute(
        "create table Shown(fId int identity(7,1), fName varchar(30) not null default 'x''y', fPrice decimal(18,4) "
        "null default 1.5, fMade datetime default getdate(), fPhoto image, fNote nvarchar(max))");
    const TableOutline& shown = table("Shown");
    ASSERT_EQ(shown.columns.size(), 6U);
    EXPECT_EQ(shown.nextIdentity, 7);
    EXPECT_TRUE(shown.columns[0].identity);
    EXPECT_EQ(shown.columns[0].type, "int");
    EXPECT_EQ(shown.columns[1].name, "fName");
    EXPECT_EQ(shown.columns[1].type, "varchar(30)");
    EXPECT_FALSE(shown.columns[1].nullable);
    EXPECT_EQ(shown.columns[2].type, "decimal(18,4)");
    EXPECT_TRUE(shown.columns[2].nullable);
    EXPECT_FALSE(shown.columns[4].defaultValue.has_value());
    EXPECT_EQ(shown.columns[5].type, "nvarchar(max)");
}

// A server words a default in its own way: what counts is what it gives.
TEST_F(Moving, TellsDefaultsSoThatTheyCanBeMadeAgain) {
    NEEDS_THE_DIALECT();
    connection_->execute(
        "create table first(a int, b varchar(10) default 'x''y', c decimal(9,2) default -1.5, d varchar(10) default "
        "convert(varchar(4),'abcdef'), e int default (2+3), f datetime default '2026-01-02')");
    std::string columns = "a int";
    for (const ColumnOutline& column : table("first").columns) {
        if (column.defaultValue) columns += "," + column.name + " " + column.type + " default " + *column.defaultValue;
    }
    connection_->execute("create table second(" + columns + ")");
    connection_->execute("insert into second(a) values(1)");
    EXPECT_EQ(value("select b from second"), "x'y");
    EXPECT_EQ(value("select c from second"), "-1.5");
    EXPECT_EQ(value("select d from second"), "abcd");
    EXPECT_EQ(value("select e from second"), "5");
    EXPECT_EQ(value("select f from second"), "2026-01-02 00:00:00");
}

TEST_F(Moving, TellsKeysChecksAndIndexes) {
    NEEDS_THE_DIALECT();
    connection_->execute(
        "create table k(a int not null, b varchar(10) not null, c int, d varchar(20), constraint K_ab primary key(a,b "
        "desc), constraint U_c unique(c), constraint C_d check(d<>'no' and c>0))");
    connection_->execute("create unique index ix_d on k(d desc,a)");
    connection_->execute("create index ix_c on k(c) include(d,b)");
    const TableOutline& k = table("k");
    ASSERT_EQ(k.keys.size(), 2U);
    const auto primary = std::find_if(k.keys.begin(), k.keys.end(), [](const auto& key) { return key.primary; });
    ASSERT_NE(primary, k.keys.end());
    EXPECT_EQ(primary->name, "K_ab");
    EXPECT_EQ(shown(primary->columns), "a,b desc");
    EXPECT_EQ(shown(k.keys[primary == k.keys.begin() ? 1 : 0].columns), "c");
    ASSERT_EQ(k.checks.size(), 1U);
    EXPECT_EQ(k.checks[0].name, "C_d");
    ASSERT_EQ(k.indexes.size(), 2U);
    EXPECT_EQ(k.indexes[0].name, "ix_d");
    EXPECT_TRUE(k.indexes[0].unique);
    EXPECT_EQ(shown(k.indexes[0].columns), "d desc,a");
    EXPECT_FALSE(k.indexes[1].unique);
    EXPECT_EQ(shown(k.indexes[1].columns), "c");
    EXPECT_EQ(k.indexes[1].included, (std::vector<std::string>{"d", "b"}));
}

TEST_F(Moving, TellsAViewInItsOwnWordsAlsoAfterItWasAltered) {
    NEEDS_THE_DIALECT();
    connection_->execute("create view v as select  id,c from t where c like 'n[1-3]%'");
    EXPECT_EQ(connection_->outline().views.at(0).text, "create view v as select  id,c from t where c like 'n[1-3]%'");
    connection_->execute("alter view v as select id as  n from t");
    const ViewOutline altered = connection_->outline().views.at(0);
    connection_->execute("drop view v");
    connection_->execute(altered.text);
    EXPECT_EQ(altered.name, "v");
    EXPECT_NE(altered.text.find("select id as  n from t"), std::string::npos);
    EXPECT_EQ(value("select max(n) from v"), "2");
}

Recordset rowsOf(std::vector<Column> columns, const std::vector<std::vector<const char*>>& cells) {
    Recordset rows(std::move(columns));
    for (const auto& row : cells) {
        for (const char* cell : row) {
            if (cell == nullptr) {
                rows.addNull();
            } else {
                rows.addText(cell);
            }
        }
        rows.endRow();
    }
    return rows;
}

TEST_F(Moving, LoadsRowsAsTheyAre) {
    NEEDS_THE_DIALECT();
    connection_->beginTrans();
    connection_->openLoader("t", {"d", "c", "id"})
        ->add(rowsOf({{"d", ColumnType::date}, {"c"}, {"id", ColumnType::integer}},
                     {{"2026-01-02 03:04:05.123", "尾 ", "11"}, {nullptr, "", nullptr}}));
    connection_->commitTrans();
    EXPECT_EQ(value("select d from t where id=11"), "2026-01-02 03:04:05.123");
    EXPECT_EQ(value("select c from t where id=11"), "尾 ");
    EXPECT_EQ(value("select count(*) from t where id is null and d is null and c=''"), "1");
}

TEST_F(Moving, LoadsTheNumbersOfAnIdentityColumnAndCountsOnAtItsBeginning) {
    NEEDS_THE_DIALECT();
    connection_->execute("create table n(id int identity(1001,1), c varchar(10))");
    connection_->beginTrans();
    connection_->openLoader("n", {"id", "c"})
        ->add(rowsOf({{"id", ColumnType::integer}, {"c"}}, {{"5", "a"}, {"9", "b"}}));
    connection_->commitTrans();
    connection_->execute("insert into n(c) values('next')");
    EXPECT_EQ(value("select min(id) from n"), "5");
    EXPECT_EQ(value("select id from n where c='next'"), "1001");
    EXPECT_EQ(table("n").nextIdentity, 1002);
}

TEST_F(Moving, TellsTheRowThatCouldNotBeLoaded) {
    NEEDS_THE_DIALECT();
    connection_->beginTrans();
    const auto loader = connection_->openLoader("t", {"id", "c"});
    const Recordset rows =
        rowsOf({{"id", ColumnType::integer}, {"c"}}, {{"1", "a"}, {"2", "b"}, {"3", "longer than ten"}, {"4", "d"}});
    try {
        loader->add(rows);
        ADD_FAILURE() << "it was stored";
    } catch (const RowFailure& failure) {
        EXPECT_EQ(failure.row(), 2U);
        EXPECT_TRUE(failure.column() == 1 || failure.column() == RowFailure::kUnknown);
    }
    connection_->rollbackTrans();
    EXPECT_EQ(value("select count(*) from t"), "2");
}

TEST_F(Moving, RefusesToLoadATableOrAFieldThatIsNotThere) {
    NEEDS_THE_DIALECT();
    EXPECT_EQ(numberOf([&] { connection_->openLoader("nosuch", {"id"}); }), 208);
    EXPECT_NE(numberOf([&] { connection_->openLoader("t", {"nosuch"}); }), 0);
}

}  // namespace
}  // namespace orvenmod::store::test
