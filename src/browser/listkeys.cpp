#include "browser/listkeys.h"

#include "frame/services.h"
#include "platform/keys.h"

namespace orvenmod {

ListKeys::ListKeys(platform::Window& window)
    : vsf1_(window.get<platform::ListGrid>("vsf1")),
      fps1_(window.get<platform::EntryGrid>("fps1")),
      txtSearch_(window.get<platform::Edit>("txtSearch")),
      dtp_(window.get<platform::DatePicker>("dtp")) {}

void ListKeys::connect() {
    txtSearch_.keyDown = [this](int key) { txtSearch_KeyDown(key); };
    vsf1_.typed = [this](const std::string& text) { vsf1_Typed(text); };
    fps1_.leftByEnter = [this] { fps1_LeftByEnter(); };
}

void ListKeys::toListOrSearch() {
    if (vsf1_.rowCount() > 1)
        vsf1_.setFocus();
    else if (txtSearch_.visible())
        txtSearch_.setFocus();
    else
        dtp_.setFocus();
}

void ListKeys::txtSearch_KeyDown(int key) {
    if (key == platform::kKeyEnter) services().toolkit.sendTab();
    if ((key == platform::kKeyUp || key == platform::kKeyDown) && vsf1_.rowCount() > 1) vsf1_.setFocus();
}

// The rest of what is being typed follows into the edit by itself.
void ListKeys::vsf1_Typed(const std::string& text) {
    if (!txtSearch_.visible()) return;
    txtSearch_.setFocus();
    txtSearch_.setText(text);
}

// A quantity that is only corrected moves nothing on.
void ListKeys::fps1_LeftByEnter() {
    if (standsOnLastAdded() && vsf1_.currentRow() + 1 < vsf1_.rowCount()) vsf1_.setCurrentRow(vsf1_.currentRow() + 1);
    toListOrSearch();
}

bool ListKeys::standsOnLastAdded() const {
    return vsf1_.currentRow() > 0 && fps1_.rowCount() > 0 &&
           vsf1_.text(vsf1_.currentRow(), 1) == fps1_.cellTag(1, fps1_.rowCount());
}

}  // namespace orvenmod
