#include "dictionary/entrywindow.h"

#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "frame/showing.h"

namespace orvenmod {

void EntryWindow::show() {
    platform::Window& window = make();
    // However the window ends, it and the one loaded unseen for it end here.
    const AtEnd atEnd([this] {
        unload();
        other().unload();
    });
    window.showModal([this] { Form_Load(); });
}

EntryWindow& EntryWindow::loaded() {
    if (isLoaded()) return *this;
    make();
    try {
        Form_Load();
    } catch (...) {
        unload();
        throw;
    }
    return *this;
}

bool isEntryRightGranted(const char* digits) { return isHaveRight(appState().gRightPrefix + digits); }

}  // namespace orvenmod
