#include "dictionary/frmJCZL.h"

#include "dictionary/frmJCZL_design.h"
#include "dictionary/refreshedlist.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/enterkey.h"
#include "frame/idcounter.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "frame/services.h"

namespace orvenmod {

namespace {

constexpr IdCounter kEntryIds = {"select * from tblMaxnum where ftablename='tblSubType'",
                                 "insert into tblMaxNum(ftablename,fMaxNum) values('tblSubType',1)",
                                 "update tblMaxNum set  fmaxnum=fmaxnum+1  where ftablename='tblSubType'"};

std::string sameCodeStatement(const std::string& code) {
    return "select fnumber from tblSubType where fnumber='" + code +
           "' and fitemclassid=" + std::to_string(appState().gItemClassId);
}

}  // namespace

frmJCZL::frmJCZL()
    : window_(services().toolkit.createWindow(entryDesign())),
      code_(window_->get<platform::Edit>("txt", 0)),
      name_(window_->get<platform::Edit>("txt", 1)),
      cmdOK_(window_->get<platform::Button>("cmdOK")) {}

void frmJCZL::show() {
    moveOnByEnter({&code_, &name_});
    cmdOK_.click = [this] { cmdOK_Click(); };
    window_->get<platform::Button>("cmdClose").click = [this] { window_->close(); };
    window_->showModal([this] { Form_Load(); });
}

void frmJCZL::Form_Load() {
    if (appState().gEditMode != 1) {
        window_->setCaption(appState().gItemName + "新增");
        return;
    }
    window_->setCaption(appState().gItemName + "修改");
    cmdOK_.setCaption("修改(&U)");
    getDetailInfo();
}

bool frmJCZL::getDetailInfo() {
    const auto showEntry = [&] {
        openDB();
        const store::Recordset rows =
            openRows("select fname,fnumber from tblSubType where fitemid=" + std::to_string(appState().gCurItemId));
        if (!rows.eof()) {
            code_.setText(rows.text("fnumber"));
            name_.setText(rows.text("fname"));
        }
        return true;
    };
    return trapped(showEntry, showWarning);
}

void frmJCZL::cmdOK_Click() {
    if (appState().gEditMode != 0) {
        if (!updateDetail()) return;
        showInformation("数据修改成功！");
    } else {
        if (!insertDetail()) return;
        showInformation("数据保存成功！");
        code_.setText("");
        name_.setText("");
        code_.setFocus();
    }
    refreshEntryList();
}

// A new entry is refused by critical boxes, a change by warnings; the wording is the same.
bool frmJCZL::checkInput(void (*showRefusal)(const std::string&)) {
    if (trim(code_.text()).empty()) {
        showRefusal("代码不能为空！");
        code_.setFocus();
        return false;
    }
    if (trim(name_.text()).empty()) {
        showRefusal("名称不能为空！");
        name_.setFocus();
        return false;
    }
    return true;
}

bool frmJCZL::insertDetail() {
    const std::string code = trim(code_.text());
    const std::string name = trim(name_.text());
    return trapped([&] {
        if (!checkInput(showCritical)) return false;
        openDB();
        const bool refused = !openRows(sameCodeStatement(code)).eof();
        if (refused) {
            showCritical("代码已经存在,保存不成功!");
        } else {
            const std::string id = std::to_string(takeId(kEntryIds));
            appState().gConn->execute("insert into tblSubType (fitemid,fnumber,fname,fitemclassid) values(" + id +
                                      ",'" + code + "','" + name + "'," + std::to_string(appState().gItemClassId) +
                                      ")");
        }
        return !refused;
    });
}

bool frmJCZL::updateDetail() {
    const std::string code = trim(code_.text());
    const std::string name = trim(name_.text());
    const std::string id = std::to_string(appState().gCurItemId);
    return trapped([&] {
        if (!checkInput(showWarning)) return false;
        openDB();
        const bool refused = !openRows(sameCodeStatement(code) + " and fitemid<>" + id).eof();
        if (refused) {
            showWarning("代码已经存在,保存不成功!");
        } else {
            appState().gConn->execute("update  tblSubType set fnumber='" + code + "',fname='" + name +
                                      "' where fitemid=" + id);
        }
        return !refused;
    });
}

}  // namespace orvenmod
