#include "designer/frmHSXMNew.h"

#include "designer/frmHSXMNew_design.h"
#include "designer/frmItem.h"
#include "designer/newclass.h"
#include "designer/proposedname.h"
#include "designer/saving.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/enterkey.h"
#include "frame/mdlMain.h"
#include "frame/services.h"

namespace orvenmod {

using platform::Button;
using platform::Edit;

namespace {

bool isEmptyOrZero(const std::string& text) { return text.empty() || text == "0"; }

}  // namespace

frmHSXMNew& frmHSXMNew::instance() {
    static auto& window = *new frmHSXMNew;  // the process may end while it is shown
    return window;
}

void frmHSXMNew::show(ClassBrowser& opener) {
    opener_ = &opener;
    showModal(hsxmNewDesign());
}

void frmHSXMNew::connectEvents() {
    moveOnByEnter({&window().get<Edit>("txtType"), &window().get<Edit>("txt", 0), &window().get<Edit>("txt", 1)});
    window().get<Button>("cmdOK").click = [this] { cmdOK_Click(); };
    window().get<Button>("cmdClose").click = [this] { window().close(); };
}

void frmHSXMNew::Form_Load() { proposeTableName(); }

void frmHSXMNew::proposeTableName() {
    const auto propose = [this] {
        openDB();
        window().get<Edit>("txt", 1).setText(proposedTableName());
        return true;
    };
    trapped(propose, showWarning);
}

bool frmHSXMNew::refuse(const std::string& text, const char* name, int index) {
    showWarning(text);
    window().get<Edit>(name, index).setFocus();
    return false;
}

bool frmHSXMNew::checkInput() {
    const std::string type = trim(editText("txtType"));
    if (isEmptyOrZero(type)) return refuse("类别不能为空或为零！", "txtType", -1);
    if (isEmptyOrZero(trim(editText("txt", 0)))) return refuse("名称不能为空！", "txt", 0);
    if (isEmptyOrZero(trim(editText("txt", 1)))) return refuse("表名不能为空！", "txt", 1);
    if (!isNumeric(type)) return refuse("类别必须为数字类型", "txtType", -1);
    return true;
}

// The query for duplicates stands before the trap: a quote in the name fails it, and the failure goes up.
bool frmHSXMNew::insert() {
    const NewClass made{trim(editText("txtType")), trim(editText("txt", 0)), trim(editText("txt", 1))};
    openDB();
    store::Connection& connection = *appState().gConn;
    if (!connection.open(duplicateQuery(made)).eof()) {
        showCritical("输入选项有重名！请核对");
        closeDB();
        return false;
    }
    return saved([&] {
        connection.beginTrans();
        connection.executeAll(classStatements(made));
        // Only now does the id have to be a number of 32 bits: the store has judged it first.
        connection.executeAll(classRows(made, toInt32(made.id)));
        connection.commitTrans();
    });
}

void frmHSXMNew::cmdOK_Click() {
    if (frmItem::instance().txtIsUpdate != "0") return;
    if (!checkInput() || !insert()) return;
    showInformation("数据保存成功！");
    opener_->getListInfo();
    window().close();
}

}  // namespace orvenmod
