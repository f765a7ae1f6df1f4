#include "browser/frmBasicInfoList.h"

#include <stdexcept>

#include "browser/frmBasicInfoList_design.h"
#include "browser/listexport.h"
#include "browser/listkeys.h"
#include "browser/listreport.h"
#include "editor/frmBasicInfo.h"
#include "frame/appstate.h"
#include "frame/classright.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/selectedrows.h"
#include "frame/services.h"
#include "frame/showing.h"
#include "frame/treenodes.h"
#include "frame/waiting.h"
#include "hierarchy/itemcommands.h"
#include "hierarchy/selecteditem.h"
#include "store/classrights.h"
#include "store/itemclass.h"
#include "transfer/frmImport.h"

namespace orvenmod {

using platform::Button;
using platform::Menu;
using platform::MouseButton;

namespace {

constexpr float kSmallestHeight = 100;  // twips; below it setPos leaves everything as it is

bool isBillMode() { return appState().gItemCalled == 1 && appState().gItemClassId == store::kGoods; }

void letPaint() { services().toolkit.paintPending(); }

StockChoice readStockChoice() {
    const std::int32_t stockId = settingInt32("ShowStock", "StockId", "0");
    return {stockId, settingInt16("ShowStock", "PerFKC", "0")};
}

}  // namespace

struct frmBasicInfoList::Shown {
    explicit Shown(std::unique_ptr<platform::Window> made)
        : window(std::move(made)),
          Frame1(window->get<platform::Frame>("Frame1")),
          Frame2(window->get<platform::Frame>("Frame2")),
          Frame3(window->get<platform::Frame>("Frame3")),
          tv1(window->get<platform::Tree>("tv1")),
          vsf1(window->get<platform::ListGrid>("vsf1")),
          fps1(window->get<platform::EntryGrid>("fps1")),
          seekBar(*window),
          bill(fps1, vsf1),
          keys(*window) {}

    std::unique_ptr<platform::Window> window;
    platform::Frame& Frame1;
    platform::Frame& Frame2;
    platform::Frame& Frame3;
    platform::Tree& tv1;
    platform::ListGrid& vsf1;
    platform::EntryGrid& fps1;
    std::unique_ptr<ItemList> list;
    std::unique_ptr<ListReport> report;
    SeekBar seekBar;
    BillArea bill;
    ListKeys keys;
    int headingColumn = 0;  // whose menu was asked
    std::vector<ControlPos> positions;
};

frmBasicInfoList& frmBasicInfoList::instance() {
    static auto& window = *new frmBasicInfoList;  // the process may end while it is shown
    return window;
}

frmBasicInfoList::Shown& frmBasicInfoList::shown() { return whileShown(shown_, "frmBasicInfoList"); }

void frmBasicInfoList::show() {
    const auto make = [] { return std::make_unique<Shown>(services().toolkit.createWindow(basicInfoListDesign())); };
    showOnce(shown_, make, [this] {
        connectEvents();
        connectMenus();
        hideFrame3();
        shown_->window->showModal([this] { Form_Load(); });
    });
}

void frmBasicInfoList::connectEvents() {
    platform::Window& window = *shown().window;
    const auto onClick = [&window](const char* name, auto action) { window.get<Button>(name).click = action; };
    window.resize = [this] { Form_Resize(); };
    window.unload = [this] { Form_Unload(); };
    window.tick = [this] { shown().list->tend(); };
    onClick("cmdAddType", [this] { ItemCommands(*this).MenuParentEditNew_Click(); });
    onClick("cmdUpdateParent", [this] { ItemCommands(*this).MenuParentEditUpdate_Click(); });
    onClick("cmdAddDetail", [this] { MenuEditNew_Click(); });
    onClick("cmdUpdateDetail", [this] { MenuEditUpdate_Click(); });
    onClick("cmdFind", [this] { cmdFind_Click(); });
    onClick("cmdClear", [this] { shown().seekBar.clearCell(); });
    onClick("cmdAddItem", [this] { cmdAddItem_Click(); });
    onClick("cmdRemoveItem", [this] { shown().bill.removeItem(); });
    window.get<platform::Combo>("PC", 0).selectionChange = [this] { shown().seekBar.PC_SelChange(0); };
    window.get<platform::Combo>("PC", 1).selectionChange = [this] { shown().seekBar.PC_SelChange(1); };
    shown().keys.connect();
    window.get<platform::Toolbar>("Toolbar1").buttonClick = [this](const std::string& key) {
        Toolbar1_ButtonClick(key);
    };
    shown().tv1.nodeClick = [this](const std::string& key) { tv1_NodeClick(key); };
    shown().vsf1.doubleClick = [this] { vsf1_DblClick(); };
    shown().vsf1.keyDown = [this](int key) {
        if (key == platform::kKeyEnter) vsf1_DblClick();
    };
}

void frmBasicInfoList::connectMenus() {
    platform::Window& window = *shown().window;
    const auto onClick = [&window](const char* name, auto action) { window.get<Menu>(name).click = action; };
    const auto popUp = [&window](const char* name) {
        return [&window, name](MouseButton button) {
            if (button == MouseButton::right) window.get<Menu>(name).popUp();
        };
    };
    onClick("MenuFileExit", [&window] { window.close(); });
    onClick("MenuParentEditNew", [this] { ItemCommands(*this).MenuParentEditNew_Click(); });
    onClick("MenuParentEditUpdate", [this] { ItemCommands(*this).MenuParentEditUpdate_Click(); });
    onClick("MenuParentEditDelete", [this] { ItemCommands(*this).MenuParentEditDelete_Click(); });
    onClick("MenuEditNew", [this] { MenuEditNew_Click(); });
    onClick("MenuEditUpdate", [this] { MenuEditUpdate_Click(); });
    onClick("MenuEditDelete", [this] { ItemCommands(*this).MenuEditDelete_Click(); });
    onClick("MenuImport", [this] { MenuImport_Click(); });
    onClick("MenuLockDetail", [this] { ItemCommands(*this).MenuLockDetail_Click(); });
    onClick("MenuUnLockDetail", [this] { ItemCommands(*this).MenuUnLockDetail_Click(); });
    shown().tv1.mouseDown = popUp("MenuParentEdit");
    shown().vsf1.mouseDown = popUp("MenuEdit");
    onClick("MenuItemUsage", [this] { ItemCommands(*this).MenuItemUsage_Click(); });
    connectHeading();
}

void frmBasicInfoList::connectHeading() {
    const auto onClick = [this](const char* name, auto action) {
        shown().window->get<Menu>(name).click = [this, action] { action(shown()); };
    };
    shown().vsf1.headingMenu = [this](int column) {
        shown().headingColumn = column;
        shown().window->get<Menu>("MenuHeading").popUp();
    };
    onClick("MenuHeadingUp", [](Shown& form) { form.vsf1.sort(form.headingColumn, platform::SortOrder::ascending); });
    onClick("MenuHeadingDown",
            [](Shown& form) { form.vsf1.sort(form.headingColumn, platform::SortOrder::descending); });
    onClick("MenuHeadingLeft", [](Shown& form) { form.list->columns().move(form.headingColumn, -1); });
    onClick("MenuHeadingRight", [](Shown& form) { form.list->columns().move(form.headingColumn, 1); });
    onClick("MenuHeadingWider", [](Shown& form) { form.list->columns().widen(form.headingColumn, 1); });
    onClick("MenuHeadingNarrower", [](Shown& form) { form.list->columns().widen(form.headingColumn, -1); });
    onClick("MenuHeadingReset", [](Shown& form) { form.list->columns().reset(); });
}

void frmBasicInfoList::Form_Load() {
    Shown& form = shown();
    form.list = std::make_unique<ItemList>(form.vsf1, form.tv1, readStockChoice());
    form.report = std::make_unique<ListReport>(services().toolkit.createReport(), form.vsf1, letPaint);
    appState().gIniPath = appState().gAppPath + "\\setupInfo.ini";
    buildCaptions();
    form.list->columns().load();
    getListInfo(3);
    form.seekBar.addToFpsA();
    form.bill.setDecimals(appState().gZeroNumber);
    form.positions.resize(form.window->controls().size());
    GetSourcePos(*form.window, form.positions);
    if (form.vsf1.rowCount() >= 2) form.vsf1.setCurrentRow(1);
    if (appState().gIsReturn == 1) form.keys.toListOrSearch();
}

void frmBasicInfoList::buildCaptions() {
    platform::Window& window = *shown().window;
    const std::string& name = appState().gItemName;
    window.setCaption(name);
    window.get<Button>("cmdAddDetail").setCaption("增加" + name);
    window.get<Button>("cmdUpdateDetail").setCaption("修改" + name);
    window.get<Menu>("MenuEdit").setCaption(name + "编辑(&E)");
    window.get<Menu>("MenuEditNew").setCaption("新增" + name);
    window.get<Menu>("MenuEditUpdate").setCaption("修改" + name);
    window.get<Menu>("MenuEditDelete").setCaption("删除" + name);
    window.get<Menu>("MenuLockDetail").setCaption("禁用" + name);
    window.get<Menu>("MenuUnLockDetail").setCaption("反禁用" + name);
}

void frmBasicInfoList::Form_Resize() {
    SetNewPos(*shown().window, shown().positions);
    setPos();
}

void frmBasicInfoList::hideFrame3() {
    if (!isBillMode()) shown().Frame3.setVisible(false);
}

void frmBasicInfoList::setPos() {
    Shown& form = shown();
    if (form.window->innerHeight() <= kSmallestHeight) return;
    hideFrame3();
    form.tv1.setHeight(form.Frame2.height() - kAboveGrids);
    form.tv1.setWidth(form.Frame1.width() - kBesideTree);
    form.vsf1.setWidth(form.Frame2.width() - kBesideList);
    form.Frame3.setTop(form.Frame2.height() - form.Frame3.height());
    form.Frame3.setWidth(form.Frame2.width());
    form.fps1.setWidth(form.Frame3.width() - kBesideBill);
    const float billHeight = form.Frame3.visible() ? form.Frame3.height() : 0;
    form.vsf1.setHeight(form.Frame2.height() - billHeight - kAboveGrids);
}

void frmBasicInfoList::Form_Unload() {
    SetIniS(kIniSection, seekFieldKey(), std::to_string(shown().seekBar.selectedField()));
    saveSetting("ShowStock", "StockId", "0");
    saveSetting("ShowStock", "PerFKC", "0");
    shown().report.reset();
    shown().list->columns().save();
}

platform::Tree& frmBasicInfoList::tv1() { return shown().tv1; }

platform::ListGrid& frmBasicInfoList::vsf1() { return shown().vsf1; }

void frmBasicInfoList::getListInfo(std::int16_t intType) { shown().list->getListInfo(intType); }

bool frmBasicInfoList::findInfo(std::int16_t intType) { return shown().list->findInfo(intType, treeItemId_); }

bool frmBasicInfoList::findInfo2(const std::string& strParamSQL) { return shown().list->findInfo2(strParamSQL); }

void frmBasicInfoList::tv1_NodeClick(const std::string& key) {
    treeItemId_ = keyNumber(key);
    appState().gCurParentId = treeItemId_;
    findInfo(1);
}

void frmBasicInfoList::vsf1_DblClick() {
    const platform::ListGrid& vsf1 = shown().vsf1;
    if (vsf1.rowCount() <= 1) return;
    if (appState().gIsReturn != 1) return MenuEditUpdate_Click();
    if (!isBillMode()) return returnSelected();
    const std::string id = vsf1.text(vsf1.currentRow(), kItemIdColumn);
    shown().bill.addFPSItem(id.empty() ? 0 : toInt32(id), shown().list->timeQtyEntryId());
}

void frmBasicInfoList::returnSelected() {
    returnLastSelected(shown().vsf1, kItemIdColumn);
    shown().window->close();
}

void frmBasicInfoList::cmdFind_Click() {
    std::string text = shown().seekBar.buildSeekSQLA();
    if (!text.empty()) text += ")";
    appState().gListFilter = text;
    findInfo2(text);
    shown().keys.toListOrSearch();
}

void frmBasicInfoList::cmdAddItem_Click() {
    if (!shown().bill.empty()) {
        appState().gRetItemId = "-1";
        shown().bill.addToBill();
    }
    shown().window->close();
}

void frmBasicInfoList::Toolbar1_ButtonClick(const std::string& key) {
    if (key == "Excel") {
        exportAndTell();
    } else if (key == "Preview") {
        shown().report->printPreview();
    } else if (key == "Print") {
        shown().report->print();
    } else if (key == "Exit") {
        shown().window->close();
    }
}

void frmBasicInfoList::exportAndTell() {
    const Waiting waiting(*shown().window);
    if (exportToExcel()) {
        services().toolkit.message(platform::MessageKind::information, "导出成功!", appState().gMsgTitle);
    }
}

bool frmBasicInfoList::exportToExcel() {
    auto& cd1 = shown().window->get<platform::FileDialog>("cd1");
    const ItemList& list = *shown().list;
    return orvenmod::exportToExcel(services().toolkit, cd1, shown().vsf1,
                                   [&list](int column) { return list.holdsNumbers(column); });
}

void frmBasicInfoList::MenuEditNew_Click() {
    if (!isClassRightGranted(store::right::kNewDetail)) return;
    appState().gEditMode = 0;
    frmBasicInfo::instance().show(this);
}

void frmBasicInfoList::MenuImport_Click() {
    if (isClassRightGranted(store::right::kNewDetail)) frmImport::instance().show(*this);
}

void frmBasicInfoList::MenuEditUpdate_Click() {
    if (!isClassRightGranted(store::right::kUpdateDetail)) return;
    if (!takeSelectedItem(shown().vsf1)) return;
    appState().gEditMode = 1;
    frmBasicInfo::instance().show(this);
}

}  // namespace orvenmod
