#include "browser/browsertest.h"

namespace orvenmod::test {

namespace {

void addColumn(Database& database, int entry, const std::string& field, const std::string& title, int align,
               const std::string& format, const std::string& width) {
    database.execute(
        "insert into "
        "tblFindinfoEntry(fTypeId,fEntryId,fFieldName,fTitleName,fAlign,fDataFormat,fIsShow,fIsSum,fIsMerge,"
        "fIsDefault,fWidth) values(6003," +
        std::to_string(entry) + ",'" + field + "','" + title + "'," + std::to_string(align) + ",'" + format +
        "',1,0,0,1," + width + ")");
}

void addSeekField(Database& database, int entry, const std::string& field, const std::string& title, int kind) {
    database.execute(
        "insert into tblFindinfoEntry2(fTypeId,fEntryId,fFieldName,fTitleName,fNumType,fItemClassId,fIsDefault,"
        "fNumberName) values(6003," +
        std::to_string(entry) + ",'" + field + "','" + title + "'," + std::to_string(kind) + ",0,1,0)");
}

}  // namespace

void seedGoodsLists(Database& database) {
    database.execute("delete from tblFindinfoEntry where fTypeId=6003");
    addColumn(database, 1, "fNumber", "代码", 1, "", "2000");
    addColumn(database, 2, "fName", "名称", 1, "", "4000");
    addColumn(database, 3, "fModel", "规格型号", 4, "", "null");
    addColumn(database, 4, "fTimeQty", "库存数", 7, "#,###.##", "1500");
    addColumn(database, 5, "fMinQty", "最低库存", 7, "#,###.##", "1200");
    database.execute("delete from tblFindinfoEntry2 where fTypeId=6003");
    addSeekField(database, 1, "fNumber", "代码", 2);
    addSeekField(database, 2, "fName", "名称", 2);
    addSeekField(database, 3, "fMinQty", "最低库存", 1);
    addSeekField(database, 4, "fF", "建档日期", 3);
}

BrowserStage::BrowserStage(MakeScript makeScript) : Stage(makeScript) { prepare(); }
BrowserStage::BrowserStage(MakeScript makeScript, std::unique_ptr<Site> site) : Stage(makeScript, std::move(site)) {
    prepare();
}

void BrowserStage::prepare() {
    database().addGoods();
    seedGoodsLists(database());
    set("SystemSetup", "msgTitle", "测试套件");
    set("SystemSetup", "gAppPath", database().folder().path());
    set("SystemLogin", "gLoginUserId", "7");
    set("SystemLogin", "IsAdmin", "1");
}

void BrowserStage::open(const Call& call, const Steps& steps) {
    script().onWindow("frmBasicInfoList", steps);
    clsBasicInfo info;
    EXPECT_FALSE(info.mainInterface(call.itemClass, "", call.findValue, connectionString() + connectionSuffix,
                                    call.isReturn, call.itemCalled, call.paramSql));
    fItemId = info.fItemId;
    fNumber = info.fNumber;
    fName = info.fName;
    script().finish();
}

void BrowserStage::openInVain(const Call& call, const std::string& failure) {
    script().answer(MessageKind::critical, failure, Answer::ok);
    clsBasicInfo info;
    info.mainInterface(call.itemClass, "", call.findValue, connectionString() + connectionSuffix, call.isReturn,
                       call.itemCalled, call.paramSql);
    EXPECT_EQ(info.fItemId + info.fNumber + info.fName, "");
    script().finish();
}

Rows listRows(User& user, int lastColumn) {
    const auto& grid = user.control<platform::ListGrid>("vsf1");
    Rows rows;
    for (int row = 1; row < grid.rowCount(); ++row) {
        rows.emplace_back();
        for (int column = 2; column <= lastColumn; ++column)
            rows.back().push_back(grid.text(row, column));
    }
    return rows;
}

Texts codes(User& user) {
    Texts all;
    for (const auto& row : listRows(user, 2))
        all.push_back(row[0]);
    return all;
}

}  // namespace orvenmod::test
