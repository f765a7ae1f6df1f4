#include "platform/memory/memorycontrols.h"

#include <stdexcept>

#include "platform/memory/memorydriver.h"
#include "platform/memory/memorytoolkit.h"
#include "platform/memory/memorywindow.h"
#include "platform/partialfile.h"

namespace orvenmod::platform::memory {

namespace {

ControlDesign menuAsControl(const MenuDesign& menu) {
    ControlDesign design{.kind = ControlKind::menu, .name = menu.name};
    design.visible = menu.visible;
    design.enabled = menu.enabled;
    design.parent = menu.parent;
    return design;
}

}  // namespace

void MemoryEdit::setText(const std::string& text) {
    text_ = text;
    if (focused()) window().unmark();
    change.raise();
}

void MemoryCombo::select(int row) {
    model_.select(row);
    selectionChange.raise();
}

MemoryTabs::MemoryTabs(MemoryWindow& window, const ControlDesign& design) : MemoryControl(window, design) {
    for (const std::string_view caption : design.pages)
        pages_.push_back({std::string(caption)});
}

void MemoryTabs::setTab(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= pages_.size()) throw std::out_of_range("下标越界");
    tab_ = index;
}

void MemoryTabs::setTabCaption(int index, const std::string& caption) {
    pages_.at(static_cast<std::size_t>(index)).caption = caption;
}

void MemoryTabs::setTabEnabled(int index, bool enabled) {
    pages_.at(static_cast<std::size_t>(index)).enabled = enabled;
}

MemoryToolbar::MemoryToolbar(MemoryWindow& window, const ControlDesign& design,
                             const std::vector<ToolButtonDesign>& buttons)
    : MemoryControl(window, design) {
    for (const ToolButtonDesign& each : buttons)
        buttons_.push_back({std::string(each.key)});
}

void MemoryToolbar::setButtonVisible(const std::string& key, bool visible) { button(key).visible = visible; }
bool MemoryToolbar::buttonVisible(const std::string& key) const { return button(key).visible; }
void MemoryToolbar::setButtonEnabled(const std::string& key, bool enabled) { button(key).enabled = enabled; }
bool MemoryToolbar::buttonEnabled(const std::string& key) const { return button(key).enabled; }

const MemoryToolbar::ToolButton* MemoryToolbar::findButton(const std::string& key) const {
    for (const ToolButton& each : buttons_) {
        if (each.key == key) return &each;
    }
    return nullptr;
}

const MemoryToolbar::ToolButton& MemoryToolbar::button(const std::string& key) const {
    if (const ToolButton* found = findButton(key)) return *found;
    throw std::runtime_error("找不到元素：" + key);
}

MemoryToolbar::ToolButton& MemoryToolbar::button(const std::string& key) {
    return const_cast<ToolButton&>(std::as_const(*this).button(key));
}

MemoryMenu::MemoryMenu(MemoryWindow& window, const MenuDesign& design)
    : MemoryControl(window, menuAsControl(design)),
      menuDesign_(design),
      caption_(design.caption),
      checked_(design.checked) {}

void MemoryMenu::popUp() { toolkit().driver().onPopUp(*this); }

bool MemoryMenu::choosable(const MemoryMenu* top) const {
    for (const ControlCore* each = this; each != top; each = each->parent) {
        if (!each) return false;  // lies in another menu
        if (!each->state.visible || !each->state.enabled) return false;
    }
    return true;
}

std::string MemoryFileDialog::fileTitle() const { return path_.substr(path_.find_last_of("/\\") + 1); }

bool MemoryFileDialog::ask(Purpose purpose) {
    const bool save = purpose == Purpose::saving;
    for (;;) {
        const std::string chosen = toolkit().driver().onFileDialog(save, filter_);
        if (chosen.empty()) return false;
        if (!save || !isReadOnly(chosen)) {
            path_ = chosen;
            return true;
        }
        toolkit().message(MessageKind::warning, readOnlyRefusal(chosen), "另存为");
    }
}

}  // namespace orvenmod::platform::memory
