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

    /// Two rows with numbers below those that the column would give, and then one with the next of these.
    void loadNumbers() {
        connection_->execute("create table n(id int identity(1001,1), c varchar(10))");
        connection_->beginTrans();
        connection_->openLoader("n", {"id", "c"})
            ->add(rowsOf({{"id", ColumnType::integer}, {"c"}}, {{"5", "a"}, {"9", "b"}}));
        connection_->commitTrans();
        connection_->execute("insert into n(c) values('next')");
    }
    /// A table `first` of these columns, and `second` of what the outline tells of them, with a row of its defaults.
    void makeAgainWithDefaults(const std::string& definitions) {
        connection_->execute("create table first(" + definitions + ")");
        std::string columns = "a int";
        for (const ColumnOutline& column : table("first").columns) {
            if (column.defaultValue)
                columns += "," + column.name + " " + column.type + " default " + *column.defaultValue;
        }
        connection_->execute("create table second(" + columns + ")");
        connection_->execute("insert into second(a) values(1)");
    }

    Outline outline_;
};

TEST_F(Moving, TellsColumnsAsTheyWereDeclared) {
    NEEDS_THE_DIALECT();
    connection_->execute(
        "create table shown(id int identity(7,1), name varchar(30) not null default 'x''y', price decimal(18,4) "
        "null default 1.5, made datetime default getdate(), photo image, note nvarchar(max))");
    const TableOutline& shown = table("shown");
    ASSERT_EQ(shown.columns.size(), 6U);
    EXPECT_TRUE(shown.columns[0].identity);
    EXPECT_EQ(shown.columns[0].type, "int");
    EXPECT_EQ(shown.columns[1].name, "name");
    EXPECT_EQ(shown.columns[1].type, "varchar(30)");
    EXPECT_FALSE(shown.columns[1].nullable);
    EXPECT_EQ(shown.columns[2].type, "decimal(18,4)");
    EXPECT_TRUE(shown.columns[2].nullable);
    EXPECT_FALSE(shown.columns[4].defaultValue.has_value());
    EXPECT_EQ(shown.columns[5].type, "nvarchar(max)");
}

TEST_F(Moving, TellsTheNumberThatAnIdentityColumnGivesFirst) {
    NEEDS_THE_DIALECT();
    connection_->execute("create table n(id int identity(7,1), c varchar(10))");
    EXPECT_EQ(table("n").nextIdentity, 7);
}

TEST_F(Moving, TellsTheNumberThatAnIdentityColumnGivesNext) {
    NEEDS_THE_DIALECT();
    connection_->execute("create table n(id int identity(7,1), c varchar(10))");
    connection_->execute("insert into n(c) values('first')");
    EXPECT_EQ(table("n").nextIdentity, 8);
}

TEST_F(Moving, TellsNamesAsTheyWereDeclared) {
    NEEDS_THE_DIALECT();
    connection_->execute(
        "create table Shown(fId int not null, fName varchar(30), constraint K_shown primary key(fId), constraint "
        "C_name check(fName<>'no'))");
    connection_->execute("create index ix_Name on Shown(fName)");
    const TableOutline& shown = table("Shown");
    EXPECT_EQ(shown.columns.at(1).name, "fName");
    EXPECT_EQ(shown.keys.at(0).name, "K_shown");
    EXPECT_EQ(shown.checks.at(0).name, "C_name");
    EXPECT_EQ(shown.indexes.at(0).name, "ix_Name");
}

// A server words a default in its own way: what counts is what it gives.
TEST_F(Moving, TellsDefaultsSoThatTheyCanBeMadeAgain) {
    NEEDS_THE_DIALECT();
    makeAgainWithDefaults(
        "a int, b varchar(10) default 'x''y', d varchar(10) default convert(varchar(4),'abcdef'), e int default (2+3), "
        "f datetime default '2026-01-02'");
    EXPECT_EQ(value("select b from second"), "x'y");
    EXPECT_EQ(value("select d from second"), "abcd");
    EXPECT_EQ(value("select e from second"), "5");
    EXPECT_EQ(value("select f from second"), "2026-01-02 00:00:00");
}

TEST_F(Moving, TellsTheDefaultsOfDecimalsWithTheirPlaces) {
    NEEDS_THE_DIALECT();
    makeAgainWithDefaults("a int, c decimal(9,2) default -1.5");
    EXPECT_EQ(value("select c from second"), "-1.5");
}

TEST_F(Moving, TellsKeysChecksAndIndexes) {
    NEEDS_THE_DIALECT();
    connection_->execute(
        "create table k(a int not null, b varchar(10) not null, c int, d varchar(20), primary key(a,b desc), "
        "unique(c), check(d<>'no' and c>0))");
    connection_->execute("create unique index ix_d on k(d desc,a)");
    connection_->execute("create index ix_e on k(c) include(d,b)");
    const TableOutline& k = table("k");
    ASSERT_EQ(k.keys.size(), 2U);
    const auto primary = std::find_if(k.keys.begin(), k.keys.end(), [](const auto& key) { return key.primary; });
    ASSERT_NE(primary, k.keys.end());
    EXPECT_EQ(shown(primary->columns), "a,b desc");
    EXPECT_EQ(shown(k.keys[primary == k.keys.begin() ? 1 : 0].columns), "c");
    EXPECT_EQ(k.checks.size(), 1U);
    ASSERT_EQ(k.indexes.size(), 2U);
    EXPECT_TRUE(k.indexes[0].unique);
    EXPECT_EQ(shown(k.indexes[0].columns), "d desc,a");
    EXPECT_FALSE(k.indexes[1].unique);
    EXPECT_EQ(shown(k.indexes[1].columns), "c");
    EXPECT_EQ(k.indexes[1].included, (std::vector<std::string>{"d", "b"}));
}

TEST_F(Moving, TellsAViewInItsOwnWords) {
    NEEDS_THE_DIALECT();
    connection_->execute("create view v as select  id,c from t where c like 'n[1-3]%'");
    EXPECT_EQ(connection_->outline().views.at(0).text, "create view v as select  id,c from t where c like 'n[1-3]%'");
}

TEST_F(Moving, TellsAViewInItsLastWordsAfterItWasAltered) {
    NEEDS_THE_DIALECT();
    connection_->execute("create view v as select id,c from t");
    connection_->execute("alter view v as select id as  n from t");
    const ViewOutline altered = connection_->outline().views.at(0);
    connection_->execute("drop view v");
    connection_->execute(altered.text);
    EXPECT_EQ(altered.name, "v");
    EXPECT_NE(altered.text.find("select id as  n from t"), std::string::npos);
    EXPECT_EQ(value("select max(n) from v"), "2");
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

TEST_F(Moving, LoadsManyRowsOfEveryLength) {
    NEEDS_THE_DIALECT();
    connection_->execute("create table m(id int not null primary key, c varchar(8000), n nvarchar(20))");
    std::vector<std::string> texts;
    Recordset rows({{"id", ColumnType::integer}, {"c"}, {"n"}});
    for (int i = 0; i < 1200; ++i) {
        texts.push_back(i % 400 == 399 ? std::string(7000, 'l') : std::string(static_cast<std::size_t>(i % 50), 's'));
        rows.addText(std::to_string(i));
        rows.addText(texts.back());
        if (i % 3 == 0) {
            rows.addNull();
        } else {
            rows.addText(i % 3 == 1 ? "甲²𠀀" : "plain");
        }
        rows.endRow();
    }
    connection_->beginTrans();
    connection_->openLoader("m", {"id", "c", "n"})->add(rows);
    connection_->commitTrans();
    const Recordset stored = connection_->open("select c,n from m order by id");
    ASSERT_EQ(stored.rowCount(), texts.size());
    for (std::size_t row = 0; row < texts.size(); ++row) {
        ASSERT_EQ(stored.cell(row, 0), texts[row]) << row;
        ASSERT_EQ(stored.cell(row, 1), rows.cell(row, 2)) << row;
    }
}

TEST_F(Moving, LoadsTheNumbersOfAnIdentityColumn) {
    NEEDS_THE_DIALECT();
    loadNumbers();
    EXPECT_EQ(value("select min(id) from n"), "5");
    EXPECT_EQ(value("select max(id) from n where c<>'next'"), "9");
}

TEST_F(Moving, CountsOnAtTheBeginningOfAnIdentityColumnAfterLowerNumbersWereLoaded) {
    NEEDS_THE_DIALECT();
    loadNumbers();
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
    EXPECT_EQ(numberOf([&] { connection_->openLoader("t", {"nosuch"}); }), 207);
}

}  // namespace
}  // namespace orvenmod::store::test
