#include "store/copy/sides.h"

#include <sqlite3.h>

#include <algorithm>

#include "store/odbc/sessionpool.h"
#include "store/postgres/postgresstore.h"
#include "store/sqlite/sqlitestore.h"
#include "store/tsql/lexer.h"
#include "support/postgresserver.h"
#include "support/tdsserver.h"
#include "support/temporary.h"

namespace orvenmod::store::test {

namespace {

class EmbeddedSide : public Side {
public:
    ~EmbeddedSide() override { sqlite::SqliteStore::dropIdleHandles(); }
    std::unique_ptr<Connection> connect() override { return sqlite::SqliteStore().connect(connectionString()); }
    std::string connectionString() override { return "Provider=SQLite;Mode=Create;Data Source=" + file(); }
    void spoil(const std::string& native) override {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(file().c_str(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, native.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(handle);
        sqlite3_close(handle);
    }

private:
    std::string file() const { return folder_.file("side.db"); }

    orvenmod::test::TemporaryFolder folder_;
};

class PostgresSide : public Side {
public:
    ~PostgresSide() override { postgres::PostgresStore::dropIdleSessions(); }
    std::unique_ptr<Connection> connect() override { return postgres::PostgresStore().connect(connectionString()); }
    std::string connectionString() override { return database_.connectionString(); }

private:
    orvenmod::test::ServerDatabase database_;
};

/// The database of this process, emptied: a server takes seconds to make one.
class TdsSide : public Side {
public:
    explicit TdsSide(const orvenmod::test::TdsDatabase& database) : database_(database) { database_.clear(); }
    ~TdsSide() override { odbc::dropIdleSessions(); }
    std::unique_ptr<Connection> connect() override { return database_.connect(); }
    std::string connectionString() override { return database_.connectionString(); }

private:
    const orvenmod::test::TdsDatabase& database_;
};

const char* word(SideKind kind) {
    return kind == SideKind::embedded ? "embedded" : kind == SideKind::postgres ? "postgres" : "server";
}

std::string shown(const std::vector<KeyPart>& parts) {
    std::string text;
    for (const KeyPart& part : parts)
        text += " " + part.column + (part.descending ? " desc" : "");
    return text;
}

}  // namespace

void Side::spoil(const std::string&) { FAIL() << "only a file can be spoilt"; }

std::unique_ptr<Side> makeSide(SideKind kind) {
    if (kind == SideKind::embedded) return std::make_unique<EmbeddedSide>();
    if (kind == SideKind::postgres) return std::make_unique<PostgresSide>();
    std::string reason;
    const orvenmod::test::TdsDatabase* database = orvenmod::test::TdsDatabase::get(reason);
    return database == nullptr ? nullptr : std::make_unique<TdsSide>(*database);
}

void CopyRoad::SetUp() {
    from_ = makeSide(GetParam().from);
    to_ = makeSide(GetParam().to);
    if (!from_ || !to_) GTEST_SKIP() << "no server: ORVEN_TDS_SERVER names none";
    source_ = from_->connect();
    target_ = to_->connect();
}

void CopyRoad::expectSame(const std::string& sql) {
    const Recordset here = source_->open(sql);
    const Recordset there = target_->open(sql);
    ASSERT_EQ(here.rowCount(), there.rowCount()) << sql;
    ASSERT_EQ(here.columnCount(), there.columnCount()) << sql;
    for (std::size_t row = 0; row < here.rowCount(); ++row) {
        for (int column = 0; column < here.columnCount(); ++column)
            EXPECT_EQ(here.cell(row, column), there.cell(row, column))
                << sql << " row " << row << " " << here.columns()[static_cast<std::size_t>(column)].name;
    }
}

std::string nameOf(const ::testing::TestParamInfo<Road>& road) {
    return std::string(word(road.param.from)) + "_to_" + word(road.param.to);
}

std::vector<std::string> shapeOf(Connection& connection) {
    const Outline outline = connection.outline();
    std::vector<std::string> lines;
    for (const TableOutline& table : outline.tables) {
        for (const ColumnOutline& column : table.columns) {
            lines.push_back(table.name + "." + column.name + " " + tsql::lowerName(column.type) +
                            (column.nullable ? "" : " not null") +
                            (column.identity ? " identity " + std::to_string(table.nextIdentity) : "") +
                            (column.defaultValue ? " default " + *column.defaultValue : ""));
        }
        for (const KeyOutline& key : table.keys)
            lines.push_back(table.name + (key.primary ? " primary key" : " unique") + shown(key.columns));
        for (const CheckOutline& check : table.checks)
            lines.push_back(table.name + " check " + check.condition);
        for (const IndexOutline& index : table.indexes) {
            std::string text = table.name + (index.unique ? " unique" : "") + " index " + index.name;
            text += shown(index.columns);
            for (const std::string& column : index.included)
                text += " +" + column;
            lines.push_back(text);
        }
    }
    for (const ViewOutline& view : outline.views)
        lines.push_back(view.name + ": " + view.text);
    std::sort(lines.begin(), lines.end());
    return lines;
}

}  // namespace orvenmod::store::test
