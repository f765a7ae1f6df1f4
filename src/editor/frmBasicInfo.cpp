#include "editor/frmBasicInfo.h"

#include <vector>

#include "editor/attachments.h"
#include "editor/fieldgrid.h"
#include "editor/frmBasicInfo_design.h"
#include "editor/itemload.h"
#include "editor/itemstore.h"
#include "editor/photo.h"
#include "frame/appstate.h"
#include "frame/lockedcolour.h"
#include "frame/mdlMain.h"
#include "frame/scaling.h"
#include "frame/services.h"
#include "frame/showing.h"

namespace orvenmod {

using platform::Button;
using platform::EntryGrid;
using platform::FileDialog;
using platform::Menu;

namespace {

constexpr int kFieldsTab = 0;
constexpr int kAttachmentsTab = 1;
constexpr int kPhotoTab = 2;

void forgetPhoto() {
    appState().gPhotoPath = "";
    appState().gPhotoCleared = 0;
}

}  // namespace

struct frmBasicInfo::Shown {
    explicit Shown(std::unique_ptr<platform::Window> made)
        : window(std::move(made)),
          SSTab1(window->get<platform::Tabs>("SSTab1")),
          fps1(window->get<EntryGrid>("fps1")),
          fields(fps1),
          attachments(window->get<EntryGrid>("fps2"), window->get<FileDialog>("cd2")),
          photo(window->get<platform::Picture>("pict1"), window->get<FileDialog>("cd1")),
          store(fields, photo, attachments) {}

    std::unique_ptr<platform::Window> window;
    platform::Tabs& SSTab1;
    EntryGrid& fps1;
    FieldGrid fields;
    Attachments attachments;
    Photo photo;
    ItemStore store;
    bool isSaved = false;
    std::vector<ControlPos> ctlPos;
};

frmBasicInfo& frmBasicInfo::instance() {
    static auto& window = *new frmBasicInfo;  // the process may end while it is shown
    return window;
}

frmBasicInfo::Shown& frmBasicInfo::shown() { return whileShown(shown_, "frmBasicInfo"); }

void frmBasicInfo::show(ListHost* host) {
    const auto make = [this, host] {
        host_ = host;
        return std::make_unique<Shown>(services().toolkit.createWindow(basicInfoDesign()));
    };
    showOnce(shown_, make, [this] {
        const AtEnd atEnd(forgetPhoto);
        forgetPhoto();
        connectEvents();
        shown_->window->showModal([this] { Form_Load(); });
    });
}

void frmBasicInfo::addAttachment(const std::string& caption, const std::string& fileName) {
    shown().attachments.add(caption, fileName, "");
}

void frmBasicInfo::connectEvents() {
    Shown& form = shown();
    platform::Window& window = *form.window;
    window.resize = [this] { Form_Resize(); };
    window.unload = [this] { Form_Unload(); };
    window.tick = [&form] { form.fields.tend(); };
    form.fps1.comboSelectionChange = [&form](int column, int row) { form.fields.fps1_ComboSelChange(column, row); };
    form.fps1.comboCloseUp = [&form](int column, int row, int item) {
        form.fields.fps1_ComboCloseUp(column, row, item);
    };
    form.fps1.editChange = [&form](int column, int row) { form.fields.fps1_EditChange(column, row); };
    window.get<EntryGrid>("fps2").buttonClick = [&form](int column, int row) {
        form.attachments.fps2_ButtonClicked(column, row);
    };
    window.get<Button>("cmdAddFJ").click = [&form] { form.attachments.cmdAddFJ_Click(); };
    window.get<Button>("cmdAdd").click = [&form] { form.photo.cmdAdd_Click(); };
    window.get<Button>("cmdClear").click = [&form] { form.photo.cmdClear_Click(); };
    window.get<Menu>("MenuFileSave").click = [this] { MenuFileSave_Click(); };
    window.get<Menu>("MenuFileClose").click = [&window] { window.close(); };
    window.get<Menu>("MenuNewAfterSave").click = [this] { MenuNewAfterSave_Click(); };
    window.get<platform::Toolbar>("Toolbar1").buttonClick = [this](const std::string& key) {
        Toolbar1_ButtonClick(key);
    };
}

void frmBasicInfo::Form_Load() {
    Shown& form = shown();
    form.fields.initFps();
    if (appState().gEditMode == 1) {
        getBasicInfo(form.fields, form.photo, form.attachments);
        form.window->setCaption(appState().gItemName + "修改");
    } else {
        form.fields.proposeCodes();
        form.window->setCaption(appState().gItemName + "新增");
    }
    form.fields.activateFirst();
    form.fps1.setFocus();
    form.ctlPos.resize(form.window->controls().size());
    GetSourcePos(*form.window, form.ctlPos);
    form.fps1.setLockedColour(kLockedColour);
    if (appState().gItemClassId != kPhotoClass) {
        form.SSTab1.setTabEnabled(kPhotoTab, false);
    }
}

void frmBasicInfo::Form_Resize() { SetNewPos(*shown().window, shown().ctlPos); }

void frmBasicInfo::Form_Unload() {
    shown().attachments.removeOpened();
    if (shown().isSaved && host_) host_->findInfo2(appState().gListFilter);
}

void frmBasicInfo::MenuFileSave_Click() {
    AppState& state = appState();
    if (!checkEmpty()) return;
    const bool isNew = state.gEditMode == 0;
    if (!(isNew ? shown().store.insert() : shown().store.update())) {
        if (const int row = shown().store.refusedRow(); row != 0) showField(row);
        return;
    }
    shown().isSaved = true;
    showInformation(isNew ? "数据保存成功!" : "数据修改成功!");
    forgetPhoto();
    if (state.gNoNewAfterSave == 0) clearControlValue();
    state.gEditMode = state.gNoNewAfterSave == 0 ? 0 : 1;
}

void frmBasicInfo::MenuNewAfterSave_Click() {
    auto& menu = shown().window->get<Menu>("MenuNewAfterSave");
    menu.setChecked(!menu.checked());
    appState().gNoNewAfterSave = menu.checked() ? 0 : 1;
}

void frmBasicInfo::Toolbar1_ButtonClick(const std::string& key) {
    if (key == "Exit") return shown().window->close();
    if (key == "Save") return MenuFileSave_Click();
    if (key == "New") return newItem();
    if (key == "Copy") copyItem();
}

void frmBasicInfo::newItem() {
    appState().gEditMode = 0;
    clearControlValue();
    shown().window->setCaption(appState().gItemName + "新增");
    appState().gPhotoPath = "";
    shown().photo.clear();
}

void frmBasicInfo::copyItem() {
    appState().gEditMode = 0;
    shown().attachments.clear();
    shown().window->setCaption(appState().gItemName + "新增");
    shown().fields.renewCodes();
    showField(kShortCodeRow);
}

void frmBasicInfo::clearControlValue() {
    Shown& form = shown();
    form.fields.clearFields();
    forgetPhoto();
    form.fields.renewCodes();
    form.photo.clear();
    form.attachments.clear();
    showField(kShortCodeRow);
}

bool frmBasicInfo::checkEmpty() {
    Shown& form = shown();
    if (const int row = form.fields.checkFields(); row != 0) {
        // A code that can't be typed is composed from the short one.
        showField(row == kCodeRow && form.fps1.locked(kValue, row) ? kShortCodeRow : row);
        return false;
    }
    if (const int row = form.attachments.checkCaptions(); row != 0) {
        form.SSTab1.setTab(kAttachmentsTab);
        form.attachments.showCaption(row);
        return false;
    }
    return true;
}

// The first row isn't there where the layout failed before it.
void frmBasicInfo::showField(int row) {
    Shown& form = shown();
    form.SSTab1.setTab(kFieldsTab);
    if (row <= form.fps1.rowCount()) form.fps1.setActiveCell(kValue, row);
    form.fps1.setFocus();
}

}  // namespace orvenmod
