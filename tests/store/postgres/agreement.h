// Both translated stores side by side: the same rows to the digit, or the same number and words of a failure.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "store/postgres/postgresstore.h"
#include "store/sqlite/sqlitestore.h"
#include "support/postgresserver.h"
#include "support/temporary.h"

namespace orvenmod::store::postgres::test {

using Texts = std::vector<std::string>;

inline const Texts kSetup = {
    "create table t(id int not null primary key, n int, i bigint, s smallint, y tinyint, b bit, c varchar(20), "
    "w nvarchar(10), h char(6), x text, f float, r real, m decimal(18,4), k decimal(9,2), q money, d datetime, e date, "
    "l smalldatetime, g time, z varbinary(10))",
    "insert into t values(1,10,10000000000,300,7,1,'Abc','客户 a','ab','long',1.5,2.5,12.3456,3.10,'1.25',"
    "'2026-01-02 03:04:05.120','2026-02-28','2026-01-02 03:04:00','03:04:05',0x4142)",
    "insert into t values(2,-3,-7,-300,0,0,'abd  ','Ａb','客户','',-0.25,0,-4,0,-5,'1900-01-01','1899-12-31',"
    "'1900-01-01','00:00:00',0x)",
    "insert into t values(3,0,0,0,255,1,'12','3','  7','12.5',1e10,1e-5,0,99.99,0,'2024-02-29 23:59:59.997',"
    "'2024-02-29','2024-02-29 23:59:00','23:59:59',0x4344)",
    "insert into t(id) values(4)",
    "create table u(id int, c varchar(10), n int)",
    "insert into u values(1,'ABC',10)",
    "insert into u values(2,'abc ',20)",
    "insert into u values(3,'客户',null)",
    "insert into u values(4,null,5)",
};

class Agreement : public ::testing::Test {
protected:
    Agreement()
        : embedded_(sqlite::SqliteStore().connect("Provider=SQLite;Mode=Create;Data Source=" + folder_.file("a.db"))),
          server_(PostgresStore().connect(database_.connectionString())) {}
    ~Agreement() override {
        embedded_.reset();
        server_.reset();
        sqlite::SqliteStore::dropIdleHandles();
        PostgresStore::dropIdleSessions();
    }

    void SetUp() override {
        for (const std::string& sql : kSetup)
            both(sql);
    }

    // Of floats the stores calculate the last digits in ways of their own.
    static std::string rounded(std::string_view cell) {
        const bool number = cell.find('.') != cell.npos && cell.find_first_not_of("-.0123456789") == cell.npos;
        if (!number) return std::string(cell);
        char digits[40];
        std::snprintf(digits, sizeof digits, "%.14g", std::strtod(std::string(cell).c_str(), nullptr));
        return digits;
    }

    enum class Digits { sure, all };

    static std::string answer(Connection& connection, const std::string& sql, Digits digits = Digits::sure) {
        try {
            const bool query = sql.starts_with("select") && sql.find(" into ") == std::string::npos;
            if (!query) return std::to_string(connection.execute(sql));
            const Recordset rows = connection.open(sql);
            std::string text;
            for (std::size_t row = 0; row < rows.rowCount(); ++row) {
                for (int i = 0; i < rows.columnCount(); ++i) {
                    const Value value = rows.cell(row, i);
                    const auto shown = [&] { return digits == Digits::all ? std::string(*value) : rounded(*value); };
                    text += (value ? "'" + shown() + "'" : "null") + "|";
                }
                text += "\n";
            }
            return text;
        } catch (const Failure& failure) {
            return std::to_string(failure.number()) + " " + failure.text();
        }
    }

    void both(const std::string& sql, Digits digits = Digits::sure) {
        const std::string wanted = answer(*embedded_, sql, digits);
        const std::string got = answer(*server_, sql, digits);
        EXPECT_EQ(got, wanted) << sql;
    }

    orvenmod::test::TemporaryFolder folder_;
    orvenmod::test::ServerDatabase database_;
    std::unique_ptr<Connection> embedded_;
    std::unique_ptr<Connection> server_;
};

}  // namespace orvenmod::store::postgres::test
