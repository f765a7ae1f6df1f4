#include "hierarchy/hierarchytest.h"

#include "frame/appstate.h"
#include "frame/mdlMain.h"

namespace orvenmod::test {

namespace {

using platform::ControlDesign;
using platform::ControlKind;

constexpr const char* kCommands[] = {"MenuEditDelete",    "MenuLockDetail",       "MenuUnLockDetail",
                                     "MenuParentEditNew", "MenuParentEditUpdate", "MenuParentEditDelete"};

const platform::WindowDesign& plainDesign() {
    static const platform::WindowDesign design = [] {
        platform::WindowDesign made;
        made.name = "frmPlainList";
        made.caption = "Plain list";
        made.width = 12000;
        made.height = 6000;
        ControlDesign list{.kind = ControlKind::listGrid,
                           .name = "vsf1",
                           .left = 4000,
                           .width = 8000,
                           .height = 5000,
                           .accessibleName = "list",
                           .fixedColumns = 1};
        list.columns = {
            {.title = "", .hidden = true}, {.title = "", .hidden = true}, {.title = "code"}, {.title = "name"}};
        made.controls = {
            {.kind = ControlKind::tree, .name = "tv1", .width = 3900, .height = 5000, .accessibleName = "tree"}, list};
        float left = 0;
        for (const char* name : kCommands) {
            made.controls.push_back({.kind = ControlKind::button,
                                     .name = name,
                                     .caption = name,
                                     .left = left,
                                     .top = 5100,
                                     .width = 1900,
                                     .height = 375});
            left += 2000;
        }
        return made;
    }();
    return design;
}

}  // namespace

PlainList::PlainList() : window_(services().toolkit.createWindow(plainDesign())), commands_(*this) {
    const auto onClick = [this](const char* name, void (ItemCommands::*command)()) {
        window_->get<platform::Button>(name).click = [this, command] { (commands_.*command)(); };
    };
    onClick("MenuEditDelete", &ItemCommands::MenuEditDelete_Click);
    onClick("MenuLockDetail", &ItemCommands::MenuLockDetail_Click);
    onClick("MenuUnLockDetail", &ItemCommands::MenuUnLockDetail_Click);
    onClick("MenuParentEditNew", &ItemCommands::MenuParentEditNew_Click);
    onClick("MenuParentEditUpdate", &ItemCommands::MenuParentEditUpdate_Click);
    onClick("MenuParentEditDelete", &ItemCommands::MenuParentEditDelete_Click);
    tv1().nodeClick = [](const std::string& key) { appState().gCurParentId = std::stoi(key.substr(1)); };
}

void PlainList::show() {
    window_->showModal([this] { getListInfo(3); });
}

void PlainList::getListInfo(std::int16_t intType) {
    asked.push_back(intType);
    openDB();
    if (intType != 2) fillTree();
    if (intType != 1) fillList();
    closeDB();
}

void PlainList::fillTree() {
    store::Recordset rows = appState().gConn->open(
        "select fitemid,fname,fparentid from tblItem where fisdetail=0 and "
        "fitemclassid=" +
        std::to_string(appState().gItemClassId) + " order by fdepth,fnumber");
    tv1().clear();
    tv1().add("", "D0", appState().gItemName, "Folder");
    for (; !rows.eof(); rows.moveNext())
        tv1().add("D" + rows.text("fparentid"), "D" + rows.text("fitemid"), rows.text("fname"), "Folder");
}

void PlainList::fillList() {
    store::Recordset rows =
        appState().gConn->open("select fitemid,fnumber,fname from tblItem where fisdetail=1 and fitemclassid=" +
                               std::to_string(appState().gItemClassId) + " order by fnumber");
    vsf1().setRowCount(1);
    for (; !rows.eof(); rows.moveNext())
        vsf1().addRow("\t" + rows.text("fitemid") + "\t" + rows.text("fnumber") + "\t" + rows.text("fname"));
}

HierarchyStage::HierarchyStage(MakeScript makeScript) : Stage(makeScript) {
    database().addGoods();
    database().execute("update tblItem set fShortNumber='01' where fItemId in (12,13)");
    database().execute("update tblItem set fShortNumber='02' where fItemId=14");
    database().execute("update tblItem set fShortNumber='001' where fItemId in (101,103)");
    database().execute("update tblItem set fShortNumber='002' where fItemId=102");
    database().execute("update tblItem set fShortNumber='03' where fItemId=104");
    database().execute("delete from tblMaxNum");
    database().execute("insert into tblMaxNum(fTableName,fMaxNum) values('tblItem',104)");
    AppState& state = appState();
    state.gConnStr = connectionString();
    state.gMsgTitle = kTitle;
    state.gIsAdmin = 1;
    state.gLoginUserId = 7;
    state.gRightPrefix = "Y";
    state.gItemClassId = 3;
    state.gItemName = "货品";
    state.gItemTable = "ICItem";
}

void HierarchyStage::open(const Steps& steps) {
    script().onWindow("frmPlainList", [this, &steps](User& user) {
        forgetStatements();
        steps(user);
    });
    PlainList list;
    list.show();
    asked = list.asked;
    script().finish();
}

void HierarchyStage::openDialog(const std::string& button, const std::string& node, const Steps& steps) {
    open([&](User& user) {
        user.clickNode("tv1", node);
        script().onWindow("frmParent", steps);
        user.click(button);
    });
}

void HierarchyStage::openNew(const Steps& steps) { openDialog("MenuParentEditNew", "D0", steps); }

void HierarchyStage::openUpdate(int category, const Steps& steps) {
    openDialog("MenuParentEditUpdate", "D" + std::to_string(category), steps);
}

void HierarchyStage::catalogueOneFieldAFamily() {
    database().execute("delete from tblBillInfo");
    database().execute("delete from tblbillinfoentry");
    for (const char* type : {"1", "31", "41", "51", "61", "71"}) {
        database().execute(std::string("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(") + type +
                           ",'fCustId',1)");
    }
}

Rows HierarchyStage::items() {
    return database().rows(
        "select fitemid,fnumber,fnbnumber,fdepth,fparentid,fshortnumber,fname from tblItem where fitemclassid=3 order "
        "by "
        "fitemid");
}

Rows HierarchyStage::goods() { return database().rows("select fitemid,fnumber from ICItem order by fitemid"); }

std::string rollbackFailure(Stage& stage) {
    openDB();
    std::string text;
    try {
        rollbackTrans();
    } catch (const store::Failure& failure) {
        text = failure.text();
    }
    closeDB();
    stage.forgetStatements();
    EXPECT_NE(text, "");
    return text;
}

}  // namespace orvenmod::test
