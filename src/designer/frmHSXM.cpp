#include "designer/frmHSXM.h"

#include "designer/frmHSXMDetailNew.h"
#include "designer/frmHSXMDetailSetup.h"
#include "designer/frmHSXMNew.h"
#include "designer/frmHSXM_design.h"
#include "designer/frmItem.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "frame/treenodes.h"
#include "platform/listgrid.h"
#include "platform/tree.h"
#include "store/itemclass.h"

namespace orvenmod {

using platform::ListGrid;
using platform::Menu;
using platform::Tree;

namespace {

std::string fieldTypeWord(const std::string& code) {
    if (code == store::kDateField) return "日期";
    if (code == store::kTextField) return "字符类型";
    if (code == store::kCurrencyField) return "货币";
    if (code == store::kNumberField) return "数字";
    return "";
}

// The words of fIsNull and fItemType bring their tab along: another value makes no cell at all.
std::string gridRow(const store::Recordset& row) {
    std::string cells = row.text("fitemclassid");
    const auto add = [&cells](const std::string& text) { cells.append("\t").append(text); };
    add(row.text("fname"));
    add(row.text("ffieldname"));
    add(fieldTypeWord(row.text("ffieldtype")));
    add(row.text("fItemName"));
    add(row.text("fMaxNumber"));
    add(row.text("fMinNumber"));
    add(row.text("fNumberDec"));
    add(row.text("fDefaultvalue"));
    const std::string isNull = row.text("fIsNull");
    if (isNull == "0") add("能");
    if (isNull == "1") add("不能");
    const std::string itemType = row.text("fItemType");
    if (itemType == store::kItemClass) add("核算项目");
    if (itemType == store::kDictionary) add("子核算项目");
    return cells;
}

}  // namespace

frmHSXM& frmHSXM::instance() {
    static auto& window = *new frmHSXM;  // the process may end while it is shown
    return window;
}

void frmHSXM::show() { showModal(hsxmDesign()); }

void frmHSXM::connectEvents() {
    const auto onMenu = [this](const char* name, void (frmHSXM::*action)()) {
        window().get<Menu>(name).click = [this, action] { (this->*action)(); };
    };
    window().resize = [this] { Form_Resize(); };
    window().get<Tree>("tv1").nodeClick = [this](const std::string& key) { tv1_NodeClick(key); };
    window().get<ListGrid>("vsf1").mouseDown = [this](platform::MouseButton button) { vsf1_MouseDown(button); };
    window().get<platform::Toolbar>("Toolbar1").buttonClick = [this](const std::string& key) {
        Toolbar1_ButtonClick(key);
    };
    onMenu("MenuExit", &frmHSXM::MenuExit_Click);
    onMenu("MenuHSXMNew", &frmHSXM::MenuHSXMNew_Click);
    onMenu("MenuDetailNew", &frmHSXM::MenuDetailNew_Click);
    onMenu("MenuDetailSetup", &frmHSXM::MenuDetailSetup_Click);
}

void frmHSXM::Form_Load() {
    ListGrid& vsf1 = window().get<ListGrid>("vsf1");
    for (int column = 0; column < vsf1.columnCount(); ++column)
        vsf1.setHeaderAlignment(column, static_cast<int>(platform::Alignment::centre));
    getListInfo();
    positions_.assign(window().controls().size(), {});
    GetSourcePos(window(), positions_);
}

void frmHSXM::Form_Resize() { SetNewPos(window(), positions_); }

void frmHSXM::getListInfo() {
    openDB();
    auto rows = openRows("select  * from tblItemclass where fitemtype='0' order by fItemclassid");
    fillClassTree(window().get<Tree>("tv1"), "核算项目", rows);
    closeDB();
}

bool frmHSXM::findInfo(const std::string& strParam, std::int16_t /*intType*/) {
    openDB();
    return trapped([&] {
        fillGrid(strParam);
        return true;
    });
}

// Hidden fields are listed as well. The grid keeps the rows added before a failure.
void frmHSXM::fillGrid(const std::string& strParam) {
    store::Connection& connection = *appState().gConn;
    ListGrid& vsf1 = window().get<ListGrid>("vsf1");
    auto rows = connection.open(
        "select a.*,b.fItemname as fItemName from tbltableinfo as a left outer join tblItemClass as b on  "
        "a.fvalueitemid=b.fitemclassid   where  a.fitemclassid=" +
        strParam + " order by a.finterid ");
    vsf1.setRowCount(1);
    for (; !rows.eof(); rows.moveNext())
        vsf1.addRow(gridRow(rows));
    const auto itemClass = connection.open("select * from tblItemClass where fitemclassid=" + strParam);
    if (!itemClass.eof()) frmItem::instance().txtTable = itemClass.text("fItemTable");
}

void frmHSXM::tv1_NodeClick(const std::string& key) {
    frmItem::instance().txtParamSQL = keyText(key);
    findInfo(keyText(key), 0);
}

void frmHSXM::vsf1_MouseDown(platform::MouseButton button) {
    if (button == platform::MouseButton::right) window().get<Menu>("MenuDetail").popUp();
}

void frmHSXM::Toolbar1_ButtonClick(const std::string& key) {
    if (key == "New") MenuHSXMNew_Click();
    if (key == "Exit") MenuExit_Click();
}

void frmHSXM::MenuExit_Click() { window().close(); }

void frmHSXM::MenuHSXMNew_Click() {
    frmItem::instance().txtIsUpdate = std::string("0");
    frmHSXMNew::instance().show(*this);
}

// The id of the class selected in the tree; "" for none and for the root.
std::string frmHSXM::selectedClass() const {
    const std::string id = keyText(window().get<Tree>("tv1").selected());
    return id == "0" ? "" : id;
}

void frmHSXM::MenuDetailNew_Click() {
    const std::string itemClass = selectedClass();
    if (itemClass.empty()) return;
    appState().gItemClassId = toInt16(itemClass);
    frmHSXMDetailNew::instance().show(*this);
}

void frmHSXM::MenuDetailSetup_Click() {
    const std::string itemClass = selectedClass();
    if (itemClass.empty()) return;
    frmItem::instance().txtFItemClassId = itemClass;
    frmHSXMDetailSetup::instance().show();
}

}  // namespace orvenmod
