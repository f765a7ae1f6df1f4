// A table of goods with a view over it, whose lists are read by keys.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

#include "embeddeddatabase.h"
#include "store/sqlite/keyedrows.h"

namespace orvenmod::store::sqlite::test {

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

inline std::vector<int> allColumns(const ListRows& rows) {
    std::vector<int> columns(rows.columns().size());
    std::iota(columns.begin(), columns.end(), 0);
    return columns;
}

inline constexpr const char* kList =
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

}  // namespace orvenmod::store::sqlite::test
