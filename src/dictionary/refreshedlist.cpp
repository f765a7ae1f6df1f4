#include "dictionary/refreshedlist.h"

#include "dictionary/entrylist.h"
#include "dictionary/frmJCBasicInfo.h"
#include "dictionary/frmJCZLList.h"
#include "frame/appstate.h"

namespace orvenmod {

void refreshEntryList() {
    EntryWindow& window =
        appState().gItemCalled != 0 ? frmJCZLList::instance().loaded() : frmJCBasicInfo::instance().loaded();
    const int row = window.vsf1().currentRow();
    window.refreshEntries(appState().gItemClassId);
    EntryList(window.vsf1()).markRow(row);
}

}  // namespace orvenmod
