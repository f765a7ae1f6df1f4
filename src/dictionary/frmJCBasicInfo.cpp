#include "dictionary/frmJCBasicInfo.h"

#include <stdexcept>
#include <vector>

#include "dictionary/entrylist.h"
#include "dictionary/frmJCBasicInfo_design.h"
#include "dictionary/frmJCZL.h"
#include "dictionary/frmJCZLList.h"
#include "dictionary/listexport.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "frame/scaling.h"
#include "frame/services.h"
#include "frame/showing.h"
#include "frame/treenodes.h"
#include "store/classrights.h"

namespace orvenmod {

using platform::Menu;
using platform::MouseButton;

struct frmJCBasicInfo::Loaded {
    explicit Loaded(std::unique_ptr<platform::Window> made)
        : window(std::move(made)),
          tv1(window->get<platform::Tree>("tv1")),
          vsf1(window->get<platform::ListGrid>("vsf1")),
          cd1(window->get<platform::FileDialog>("cd1")),
          entries(vsf1) {}

    std::unique_ptr<platform::Window> window;
    platform::Tree& tv1;
    platform::ListGrid& vsf1;
    platform::FileDialog& cd1;
    EntryList entries;
    std::vector<ControlPos> positions;
};

frmJCBasicInfo::frmJCBasicInfo() = default;
frmJCBasicInfo::~frmJCBasicInfo() = default;

frmJCBasicInfo& frmJCBasicInfo::instance() {
    static auto& window = *new frmJCBasicInfo;  // the process may end while it is shown
    return window;
}

frmJCBasicInfo::Loaded& frmJCBasicInfo::form() { return whileShown(form_, "frmJCBasicInfo"); }

void frmJCBasicInfo::unload() { form_.reset(); }

platform::Window& frmJCBasicInfo::make() {
    form_ = std::make_unique<Loaded>(services().toolkit.createWindow(dictionariesDesign()));
    connectEvents();
    connectMenus();
    return *form().window;
}

EntryWindow& frmJCBasicInfo::other() { return frmJCZLList::instance(); }

platform::Tree& frmJCBasicInfo::tv1() { return form().tv1; }
platform::ListGrid& frmJCBasicInfo::vsf1() { return form().vsf1; }

void frmJCBasicInfo::connectEvents() {
    platform::Window& window = *form().window;
    const auto popUp = [&window](const char* name) {
        return [&window, name](MouseButton button) {
            if (button == MouseButton::right) window.get<Menu>(name).popUp();
        };
    };
    window.resize = [this] { Form_Resize(); };
    form().tv1.nodeClick = [this](const std::string& key) { tv1_NodeClick(key); };
    form().tv1.mouseDown = popUp("MenuJCZL");
    form().vsf1.mouseDown = popUp("MenuEdit");
    form().vsf1.doubleClick = [this] { MenuUpdateJCZL_Click(); };
    window.get<platform::Toolbar>("Toolbar1").buttonClick = [this](const std::string& key) {
        Toolbar1_ButtonClick(key);
    };
}

void frmJCBasicInfo::connectMenus() {
    platform::Window& window = *form().window;
    const auto onClick = [&window](const char* name, auto action) { window.get<Menu>(name).click = action; };
    onClick("MenuClose", [&window] { window.close(); });
    onClick("MenuJCZLNew1", [this] { MenuJCZLNew1_Click(); });
    onClick("MenuJCZLUpdate1", [this] { MenuJCZLUpdate1_Click(); });
    onClick("MenuJCZLNew", [this] { MenuJCZLNew_Click(); });
    onClick("MenuUpdateJCZL", [this] { MenuUpdateJCZL_Click(); });
    onClick("MenuDelJCZL", [this] { MenuDelJCZL_Click(); });
}

void frmJCBasicInfo::Form_Load() {
    getListInfo(0);
    form().positions.resize(form().window->controls().size());
    GetSourcePos(*form().window, form().positions);
}

void frmJCBasicInfo::Form_Resize() { SetNewPos(*form().window, form().positions); }

void frmJCBasicInfo::getListInfo(const std::int16_t&) {
    openDB();
    store::Recordset rows =
        openRows("select fitemclassid,fitemname from tblItemclass where fitemtype='1' order by fitemclassid ");
    fillClassTree(form().tv1, "基础资料", rows);
    closeDB();
}

void frmJCBasicInfo::tv1_NodeClick(const std::string& key) {
    if (key.empty()) return showCritical("请选择基础资料");
    appState().gItemClassId = toInt16(keyText(key));
    appState().gItemName = form().tv1.text(key);
    getDetail(appState().gItemClassId);
}

bool frmJCBasicInfo::getDetail(const std::int16_t& fItemClassId) {
    const auto readEntries = [&] {
        openDB();
        form().entries.read(fItemClassId);
        return true;
    };
    return trapped(readEntries, showWarning);
}

void frmJCBasicInfo::Toolbar1_ButtonClick(const std::string& key) {
    platform::Window& window = *form().window;
    if (key == "Exit") return window.close();
    if (key != "Excel") return;
    window.setPointer(platform::Pointer::hourglass);
    if (exportToExcel()) showInformation("导出成功!");
    window.setPointer(platform::Pointer::arrow);
}

bool frmJCBasicInfo::exportToExcel() {
    platform::FileDialog& cd1 = form().cd1;
    cd1.setFilter("Excel文件(*.xls)|*.xls");
    if (!cd1.showSave() || cd1.fileName().empty()) return false;
    exportList(form().vsf1, cd1.fileName());
    return true;
}

void frmJCBasicInfo::MenuJCZLNew1_Click() {
    if (!isEntryRightGranted(store::right::kNewCategory)) return;
    appState().gDictTypeEditMode = 0;
    frmJCZLType(*this).show();
}

// The class of the selected node into gItemClassId; false without a node, and for the root.
bool frmJCBasicInfo::takeSelectedClass(const char* refusalOfRoot) {
    const std::string key = form().tv1.selected();
    if (key.empty()) {
        showCritical("请选择基础资料");
        return false;
    }
    appState().gItemClassId = toInt16(keyText(key));
    if (appState().gItemClassId != 0) return true;
    showWarning(refusalOfRoot);
    return false;
}

void frmJCBasicInfo::MenuJCZLUpdate1_Click() {
    if (!isEntryRightGranted(store::right::kUpdateCategory) || !takeSelectedClass("请选择基础资料类别进行修改")) return;
    appState().gEditMode = 1;
    frmJCZLType(*this).show();
}

void frmJCBasicInfo::MenuJCZLNew_Click() {
    if (!isEntryRightGranted(store::right::kNewDetail) || !takeSelectedClass("请选择基础资料类别进行新增")) return;
    appState().gEditMode = 0;
    frmJCZL().show();
}

void frmJCBasicInfo::MenuUpdateJCZL_Click() {
    if (isEntryRightGranted(store::right::kUpdateDetail)) form().entries.updateRow();
}

void frmJCBasicInfo::MenuDelJCZL_Click() {
    if (isEntryRightGranted(store::right::kDeleteDetail)) form().entries.deleteRow();
}

}  // namespace orvenmod
