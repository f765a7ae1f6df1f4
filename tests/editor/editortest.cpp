#include "editor/editortest.h"

#include <fstream>

#include "editor/frmBasicInfo.h"
#include "frame/services.h"

namespace orvenmod::test {

namespace {

void seed(Database& database) {
    database.addGoods();
    database.execute("update tblItem set fShortNumber='001' where fItemId in (101,103)");
    database.execute("update tblItem set fShortNumber='002' where fItemId=102");
    database.execute("update tblItem set fShortNumber='03' where fItemId=104");
    database.execute("update tblItem set fShortNumber='01' where fItemId in (12,13)");
    database.execute("update tblItem set fShortNumber='02' where fItemId=14");
    database.addItem(2, 201, "01", "华东供应");
    database.addItem(2, 202, "02", "华南供应");
    database.execute("delete from tblMaxNum");
    database.execute("insert into tblMaxNum(fTableName,fMaxNum) values('tblItem',202)");
    database.execute(
        "update tblTableInfo set fIsVisible=0 where fItemClassId=3 and fFieldName not in "
        "('fShortNumber','fNumber','fName','fModel','fMinQty','fF','fH')");
}

}  // namespace

void chooseGoods(const std::string& connectionString) {
    AppState& state = appState();
    state.gConnStr = connectionString;
    state.gMsgTitle = kTitle;
    state.gIsAdmin = 1;
    state.gRightPrefix = "Y";
    state.gLoginUserId = 7;
    state.gItemClassId = 3;
    state.gItemName = "货品";
    state.gItemTable = "ICItem";
    state.gViewName = "vICItem";
    state.gListFilter = " and fNBNumber like '.12.%'";
}

EditorStage::EditorStage(MakeScript makeScript) : Stage(makeScript) { prepare(); }
EditorStage::EditorStage(MakeScript makeScript, std::unique_ptr<Site> site) : Stage(makeScript, std::move(site)) {
    prepare();
}

void EditorStage::prepare() {
    seed(database());
    chooseGoods(connectionString());
}

void EditorStage::open(const Steps& steps) {
    script().onWindow("frmBasicInfo", steps);
    forgetStatements();
    frmBasicInfo::instance().show(&list);
    script().finish();
}

void EditorStage::openNew(const Steps& steps, int category) {
    appState().gEditMode = 0;
    appState().gCurParentId = category;
    open(steps);
}

void EditorStage::openItem(int item, const Steps& steps) {
    appState().gEditMode = 1;
    appState().gCurItemId = item;
    open(steps);
}

std::string EditorStage::makeFile(const std::string& name, const std::string& content) {
    std::string path = database().folder().file(name);
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

void EditorStage::storeAttachment(int entry, const std::string& fileName, const std::string& content) {
    const auto connection = services().store.connect(connectionString());
    const auto rows = connection->openTable("tblItemFJ");
    rows->addNew();
    rows->set("fItemId", "101");
    rows->set("fEntryId", std::to_string(entry));
    rows->set("fName", "附件");
    rows->set("fFileName", fileName);
    rows->setBinary("fFJ", std::as_bytes(std::span(content)));
    rows->update();
    connection->close();
}

const std::string& redBitmap() {
    static const std::string bitmap(
        "BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\4\0\0\0\0\0\0\0\0\0\0\0"
        "\0\0\0\0\0\0\0\0\0\0\xFF\0",
        58);
    return bitmap;
}

Texts values(User& user) {
    Texts all;
    const auto& grid = user.control<EntryGrid>("fps1");
    for (int row = 1; row <= grid.rowCount(); ++row)
        all.push_back(grid.text(kValue, row));
    return all;
}

std::string value(User& user, int row) { return user.control<EntryGrid>("fps1").text(kValue, row); }

std::string chosenId(User& user, int row) { return user.control<EntryGrid>("fps1").text(kChosenId, row); }

void typeName(User& user, const std::string& name) { user.typeCell("fps1", kValue, kNameRow, name); }

Rows EditorTest::item(int id) {
    return database().rows(
        "select fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,fNBNumber,fShortNumber from tblItem "
        "where fItemId=" +
        std::to_string(id));
}

Rows EditorTest::goods(int id) {
    return database().rows("select fNumber,fName,fModel,fMinQty,fF,fH from ICItem where fItemId=" + std::to_string(id));
}

}  // namespace orvenmod::test
