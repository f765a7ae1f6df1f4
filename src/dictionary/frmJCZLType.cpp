#include "dictionary/frmJCZLType.h"

#include <string>

#include "dictionary/frmJCZLType_design.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/enterkey.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "frame/services.h"
#include "frame/treenodes.h"

namespace orvenmod {

frmJCZLType::frmJCZLType(DictionaryTree& behind)
    : behind_(behind),
      window_(services().toolkit.createWindow(dictionaryDesign())),
      txt1_(window_->get<platform::Edit>("txt1")),
      txt_(window_->get<platform::Edit>("txt")),
      cmdOK_(window_->get<platform::Button>("cmdOK")) {}

void frmJCZLType::show() {
    moveOnByEnter({&txt1_, &txt_});
    cmdOK_.click = [this] { cmdOK_Click(); };
    window_->get<platform::Button>("cmdClose").click = [this] { window_->close(); };
    window_->showModal([this] { Form_Load(); });
}

void frmJCZLType::Form_Load() {
    if (appState().gEditMode != 1) return;
    getBillInfo();
    window_->setCaption("基础资料类别修改");
    cmdOK_.setCaption("修改(&U)");
}

bool frmJCZLType::getBillInfo() {
    const auto showDictionary = [&] {
        openDB();
        const store::Recordset rows =
            openRows("select * from tblItemClass where fitemclassid=" + std::to_string(appState().gItemClassId) + " ");
        if (!rows.eof()) {
            txt1_.setText(rows.text("fitemclassid"));
            txt1_.setEnabled(false);
            txt_.setText(rows.text("fItemName"));
        }
        return true;
    };
    return trapped(showDictionary, showWarning);
}

// An empty name is told in the words of an empty id.
bool frmJCZLType::checkInput() {
    for (platform::Edit* edit : {&txt1_, &txt_}) {
        if (!trim(edit->text()).empty()) continue;
        showWarning("类别ID不能为空");
        edit->setFocus();
        return false;
    }
    return true;
}

void frmJCZLType::cmdOK_Click() {
    if (!checkInput()) return;
    if (appState().gDictTypeEditMode == 0) {
        if (insert()) showInserted();
    } else if (appState().gDictTypeEditMode == 1) {
        if (update()) showUpdated();
    }
}

void frmJCZLType::showInserted() {
    showInformation("数据保存成功！");
    const std::string key = nodeKey(trim(txt1_.text()));
    behind_.tv1().add(kRootKey, key, trim(txt_.text()), kNodeIcon);
    behind_.tv1().ensureVisible(key);
    txt1_.setText("");
    txt_.setText("");
}

void frmJCZLType::showUpdated() {
    showInformation("数据修改成功！");
    const int index = selectedIndex(behind_.tv1());
    behind_.getListInfo(1);
    selectIndex(behind_.tv1(), index);
}

bool frmJCZLType::insert() {
    const auto insertDictionary = [&] {
        openDB();
        const std::string id = trim(txt1_.text());
        const bool refused = !openRows("select fItemname from tblItemClass where fitemclassid=" + id).eof();
        if (refused) {
            showWarning("类别ID已经存在，请重新输入！");
            // In a dialog opened for a change the id is disabled, and this fails.
            txt1_.setFocus();
        } else {
            appState().gConn->execute("insert into tblItemClass(fitemclassid,fitemname,fItemType,fitemtable) values(" +
                                      id + ",'" + trim(txt_.text()) + "','1','') ");
        }
        return !refused;
    };
    return trapped(insertDictionary, showWarning);
}

bool frmJCZLType::update() {
    const auto updateDictionary = [&] {
        openDB();
        appState().gConn->execute("update tblItemClass set fitemname='" + trim(txt_.text()) +
                                  "' where fitemclassid=" + txt1_.text() + " ");
        return true;
    };
    return trapped(updateDictionary, showWarning);
}

}  // namespace orvenmod
