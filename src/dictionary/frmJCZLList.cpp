#include "dictionary/frmJCZLList.h"

#include <stdexcept>
#include <string>

#include "dictionary/entrylist.h"
#include "dictionary/frmJCBasicInfo.h"
#include "dictionary/frmJCZL.h"
#include "dictionary/frmJCZLList_design.h"
#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "frame/selectedrows.h"
#include "frame/services.h"
#include "frame/showing.h"
#include "platform/controls.h"
#include "platform/window.h"
#include "store/classrights.h"

namespace orvenmod {

namespace {

constexpr int kClose = 0;
constexpr int kNew = 1;
constexpr int kUpdate = 2;
constexpr int kDelete = 3;

}  // namespace

struct frmJCZLList::Loaded {
    explicit Loaded(std::unique_ptr<platform::Window> made)
        : window(std::move(made)), vsf1(window->get<platform::ListGrid>("vsf1")), entries(vsf1) {}

    std::unique_ptr<platform::Window> window;
    platform::ListGrid& vsf1;
    EntryList entries;
};

frmJCZLList::frmJCZLList() = default;
frmJCZLList::~frmJCZLList() = default;

frmJCZLList& frmJCZLList::instance() {
    static auto& window = *new frmJCZLList;  // the process may end while it is shown
    return window;
}

frmJCZLList::Loaded& frmJCZLList::form() { return whileShown(form_, "frmJCZLList"); }

void frmJCZLList::unload() { form_.reset(); }

platform::Window& frmJCZLList::make() {
    form_ = std::make_unique<Loaded>(services().toolkit.createWindow(entryListDesign()));
    for (int index = kClose; index <= kDelete; ++index) {
        form().window->get<platform::Button>("cmd", index).click = [this, index] { cmd_Click(index); };
    }
    form().vsf1.doubleClick = [this] { vsf1_DblClick(); };
    return *form().window;
}

EntryWindow& frmJCZLList::other() { return frmJCBasicInfo::instance(); }

platform::ListGrid& frmJCZLList::vsf1() { return form().vsf1; }

void frmJCZLList::Form_Load() {
    getDetail(appState().gItemClassId);
    form().window->setCaption(appState().gItemName);
}

bool frmJCZLList::getDetail(const std::int32_t& fItemClassId, const std::int16_t& fType) {
    const auto readEntries = [&] {
        openDB();
        form().entries.read(fItemClassId);
        if (fType == 0) {
            const store::Recordset rows =
                openRows("select * from tblItemclass where fitemclassid=" + std::to_string(fItemClassId) +
                         " and fitemtype='1' ");
            if (!rows.eof()) appState().gItemName = rows.text("fitemname");
        }
        return true;
    };
    return trapped(readEntries, showWarning);
}

void frmJCZLList::cmd_Click(int Index) {
    switch (Index) {
        case kClose:
            form().window->close();
            break;
        case kNew:
            if (!isEntryRightGranted(store::right::kNewDetail)) return;
            appState().gEditMode = 0;
            frmJCZL().show();
            break;
        case kUpdate:
            if (isEntryRightGranted(store::right::kUpdateDetail)) form().entries.updateRow();
            break;
        case kDelete:
            if (isEntryRightGranted(store::right::kDeleteDetail)) form().entries.deleteRow();
            break;
        default:
            break;
    }
}

void frmJCZLList::vsf1_DblClick() {
    if (form().vsf1.rowCount() <= 1) return;
    if (appState().gItemCalled == 1) return returnSelected();
    cmd_Click(kUpdate);
}

void frmJCZLList::returnSelected() {
    returnLastSelected(form().vsf1, EntryList::kIdColumn);
    form().window->close();
}

}  // namespace orvenmod
