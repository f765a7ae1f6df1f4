#include "hierarchy/frmParent.h"

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/enterkey.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "frame/services.h"
#include "frame/treenodes.h"
#include "frame/waiting.h"
#include "hierarchy/categorysave.h"
#include "hierarchy/frmParent_design.h"

namespace orvenmod {

using platform::Button;
using platform::Edit;

namespace {

constexpr int kIdColumn = 1;
constexpr int kCodeColumn = 2;
constexpr const char* kIndent = "   ";

}  // namespace

frmParent::frmParent(ListWindow& behind)
    : behind_(behind),
      window_(services().toolkit.createWindow(parentDesign())),
      SSTab1_(window_->get<platform::Tabs>("SSTab1")),
      cmb_(window_->get<platform::Combo>("cmb", 0)),
      name_(window_->get<Edit>("txt", 0)),
      short_(window_->get<Edit>("txt", 1)),
      code_(window_->get<Edit>("txt", 2)),
      cmdOperate_(window_->get<Button>("cmdOperate")) {}

void frmParent::show() {
    connectEvents();
    window_->showModal([this] { Form_Load(); });
}

void frmParent::connectEvents() {
    window_->unload = [this] { Form_Unload(); };
    cmb_.selectionChange = [this] { cmb_Click(); };
    short_.change = [this] { shortCode_Change(); };
    moveOnByEnter({&name_, &short_, &code_});
    cmdOperate_.click = [this] { cmdOperate_Click(); };
    window_->get<Button>("cmdClose").click = [this] { window_->close(); };
}

void frmParent::Form_Load() {
    SSTab1_.setTabCaption(0, appState().gItemName + "分类");
    loadParentInfo();
    saved_ = false;
}

bool frmParent::loadParentInfo() {
    return trapped([&] {
        openDB();
        listParents();
        if (appState().gEditMode == 1) {
            cmdOperate_.setCaption("修改(&U)");
            showCategory();
        } else if (appState().gCurParentId >= 1) {
            selectParent(std::to_string(appState().gCurParentId));
        }
        return true;
    });
}

void frmParent::listParents() {
    store::Recordset rows = openRows(
        "select fitemid,fName,fdepth,isnull(fShortNumber,'') as fShortNumber,isnull(fNumber,'') as fNumber from "
        "tblItem where fisdetail=0 and fitemclassid=" +
        std::to_string(appState().gItemClassId) + " order by fnumber,fdepth ");
    cmb_.addRow({"无", "0", ""});
    for (; !rows.eof(); rows.moveNext()) {
        std::string shownText;
        for (std::int32_t level = toInt32(required(rows.field("fdepth"))); level > 1; --level)
            shownText += kIndent;
        shownText += rows.text("fname") + "(" + rows.text("fnumber") + ")";
        cmb_.addRow({shownText, rows.text("fitemid"), rows.text("fNumber")});
    }
    cmb_.select(0);
}

void frmParent::selectParent(const std::string& id) {
    for (int row = 0; row < cmb_.rowCount(); ++row) {
        if (cmb_.cell(row, kIdColumn) == id) return cmb_.select(row);
    }
}

void frmParent::showCategory() {
    const store::Recordset rows = openRows(
        " select a.fParentid,a.fname,b.fName as fParentName,isnull(a.fShortNumber,'') as fShortNumber,"
        "isnull(a.fNumber,'') as fNumber"
        " from tblItem as a left outer join tblItem as b on a.fParentid=b.fitemid"
        " where a.fitemid=" +
        std::to_string(appState().gCurItemId));
    if (rows.eof()) return;
    name_.setText(rows.text("fname"));
    code_.setText(rows.text("fNumber"));
    short_.setText(rows.text("fShortNumber"));
    selectParent(rows.text("fparentid"));
}

std::string frmParent::parentCell(int column) const {
    return cmb_.selected() < 0 ? "" : cmb_.cell(cmb_.selected(), column);
}

std::string frmParent::composedCode(const std::string& shortCode) const {
    const std::string parent = parentCell(kCodeColumn);
    return parent.empty() ? shortCode : parent + "." + shortCode;
}

void frmParent::cmb_Click() { code_.setText(composedCode(trim(short_.text()))); }

// While it is typed the short code stands in the full one with its blanks; what is saved is trimmed.
void frmParent::shortCode_Change() { code_.setText(composedCode(short_.text())); }

bool frmParent::checkInput() {
    if (trim(name_.text()).empty()) {
        showWarning("请输入分类名称!");
        name_.setFocus();
        return false;
    }
    if (trim(short_.text()).empty()) {
        showWarning("请输入分类短代码!");
        short_.setFocus();
        return false;
    }
    return true;
}

CategoryChange frmParent::entered() const {
    return {trim(name_.text()), trim(short_.text()), trim(code_.text()), parentCell(kIdColumn)};
}

bool frmParent::insertParent() { return insertCategory(entered()); }

bool frmParent::updateParent() {
    const Waiting waiting(*window_);
    return moveCategory(entered());
}

void frmParent::cmdOperate_Click() {
    if (!checkInput()) return;
    const bool stored = appState().gEditMode != 0 ? updateParent() : insertParent();
    if (!stored) return;
    showInformation("数据保存成功！");
    saved_ = true;
    appState().gEditMode = 0;
    name_.setText("");
    short_.setText("");
    short_.setFocus();
    cmdOperate_.setCaption("新增(&A)");
}

void frmParent::Form_Unload() {
    if (!saved_) return;
    const int index = selectedIndex(behind_.tv1());
    behind_.getListInfo(1);
    selectIndex(behind_.tv1(), index);
}

}  // namespace orvenmod
