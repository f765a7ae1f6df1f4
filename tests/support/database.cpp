#include "support/database.h"

#include <stdexcept>

#include "store/tsql/failurenumbers.h"
#include "store/tsql/messages.h"

namespace orvenmod::test {

namespace {

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

Database::Database()
    : site_(newSite(folder_.file("suite.db"))), connection_(stores().connect(site_->connectionString())) {}

std::string Database::file() const {
    if (testStore() != TestStore::sqlite) throw std::logic_error("a server's database is no file");
    return folder_.file("suite.db");
}

std::string Database::busyText() const {
    if (testStore() == TestStore::sqlite) return "数据库“" + file() + "”正被另一个程序写入，请稍后重试。";
    return store::tsql::worded(store::tsql::Language::chinese, store::tsql::kLockTimeout, {}).text();
}

void Database::execute(const std::string& sql) { connection_->execute(sql); }

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
