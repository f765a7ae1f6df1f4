#include "support/database.h"

#include <filesystem>
#include <stdexcept>

#include "store/schema.h"
#include "store/sqlite/sqlitestore.h"

namespace orvenmod::test {

namespace {

std::unique_ptr<store::Connection> connectTo(const std::string& connectionString) {
    return store::sqlite::SqliteStore().connect(connectionString);
}

// The schema is made once a process; each test works on a copy.
const std::string& emptyDatabase() {
    static const TemporaryFolder folder;
    static const std::string file = [] {
        const std::string path = folder.file("empty.db");
        const auto connection = connectTo(connectionStringFor(path) + ";Mode=Create");
        store::createSchema(*connection);
        connection->close();
        // What is left to another connection would not be in the copies.
        store::sqlite::SqliteStore::dropIdleHandles();
        return path;
    }();
    return file;
}

const char* tableOf(int itemClass) {
    switch (itemClass) {
        case 1:
            return "tblCustomer";
        case 2:
            return "tblSupplier";
        case 3:
            return "ICItem";
        case 11:
            return "tblAccount";
        default:
            throw std::logic_error("no class with a fixed role");
    }
}

std::string quoted(const std::string& text) { return "'" + text + "'"; }

}  // namespace

std::string connectionStringFor(const std::string& file) { return "Provider=SQLite;Data Source=" + file; }

Database::Database() {
    std::filesystem::copy_file(emptyDatabase(), file());
    connection_ = connectTo(connectionString());
}

void Database::execute(const std::string& sql) { connection_->execute(sql); }

Rows Database::rows(const std::string& sql) {
    const store::Recordset found = connection_->open(sql);
    Rows all(found.rowCount());
    for (std::size_t row = 0; row < found.rowCount(); ++row) {
        for (int column = 0; column < found.columnCount(); ++column) {
            all[row].emplace_back(found.cell(row, column).value_or("NULL"));
        }
    }
    return all;
}

std::string Database::value(const std::string& sql) { return rows(sql).at(0).at(0); }

void Database::addCategory(int itemClass, int id, const std::string& number, const std::string& name, int parent) {
    addRow(itemClass, id, number, name, parent, false);
}

void Database::addItem(int itemClass, int id, const std::string& number, const std::string& name, int parent) {
    addRow(itemClass, id, number, name, parent, true);
    execute(std::string("insert into ") + tableOf(itemClass) + "(fItemId,fNumber,fName) values(" + std::to_string(id) +
            "," + quoted(number) + "," + quoted(name) + ")");
}

void Database::addRow(int itemClass, int id, const std::string& number, const std::string& name, int parent,
                      bool detail) {
    std::string path = ".";
    std::string depth = "1";
    if (parent != 0) {
        const auto above = rows("select fNBNumber,fDepth+1 from tblItem where fItemId=" + std::to_string(parent)).at(0);
        path = above[0];
        depth = above[1];
    }
    execute(
        "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,fNBNumber) "
        "values(" +
        std::to_string(id) + "," + quoted(number) + "," + quoted(name) + "," + std::to_string(itemClass) + "," +
        std::to_string(parent) + "," + (detail ? "1" : "0") + "," + depth + ",0," +
        quoted(path + std::to_string(id) + ".") + ")");
}

void Database::addStock(int item, int stock, const std::string& quantity) {
    execute("insert into tblTimeStock(fItemId,fStockId,fQty) values(" + std::to_string(item) + "," +
            std::to_string(stock) + "," + quantity + ")");
}

void Database::grant(int user, const std::string& right) {
    execute("insert into tblUserPrivillenge(fUserId,fNumber) values(" + std::to_string(user) + "," + quoted(right) +
            ")");
}

void Database::hideColumn(int user, int itemClass, const std::string& field) {
    execute("insert into tblUserVisible(fUserId,fFieldName,fType,fBillTypeId) values(" + std::to_string(user) + "," +
            quoted(field) + ",1," + std::to_string(itemClass + 6000) + ")");
}

void Database::setStandingCondition(int user, int itemClass, const std::string& condition) {
    execute("insert into tblFindSeek(fUserId,fTypeId,fSql) values(" + std::to_string(user) + "," +
            std::to_string(itemClass + 6000) + "," + quoted(condition) + ")");
}

void Database::addGoods() {
    addCategory(3, 12, "01", "五金");
    addCategory(3, 13, "01.01", "螺丝", 12);
    addCategory(3, 14, "02", "电器");
    addItem(3, 101, "01.01.001", "内六角螺丝", 13);
    addItem(3, 102, "01.01.002", "螺母", 13);
    addItem(3, 103, "02.001", "墙壁开关", 14);
    addItem(3, 104, "03", "劳保手套");
    addStock(101, 1, "1234.5");
    addStock(101, 2, "10");
    addStock(102, 1, "0");
    addStock(103, 2, "5");
}

}  // namespace orvenmod::test
