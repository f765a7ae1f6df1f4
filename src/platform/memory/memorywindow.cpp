// The focus is settled when it is asked for: code may hide or switch off the control that has it, and no event tells.
// It goes on then to the next control that can have it.
#include "platform/memory/memorywindow.h"

#include <algorithm>
#include <stdexcept>

#include "platform/memory/memorycontrols.h"
#include "platform/memory/memorydriver.h"
#include "platform/memory/memoryentrygrid.h"
#include "platform/memory/memorylistgrid.h"
#include "platform/memory/memorypicture.h"
#include "platform/memory/memorytoolkit.h"
#include "platform/memory/memorytree.h"

namespace orvenmod::platform::memory {

MemoryWindow::MemoryWindow(MemoryToolkit& toolkit, const WindowDesign& design)
    : toolkit_(toolkit),
      design_(design),
      name_(design.name),
      caption_(design.caption),
      width_(design.width),
      height_(design.height) {
    addControls();
    addMenus();
    resolveParents();
}

void MemoryWindow::setInnerSize(float width, float height) {
    width_ = width;
    height_ = height;
    if (shown_ && loaded_) resize.raise();
}

Control* MemoryWindow::find(const std::string& name, int index) const {
    ControlCore* core = findCore(name, index);
    return core ? &core->control() : nullptr;
}

void MemoryWindow::showModal(const std::function<void()>& load) {
    if (shown_) throw std::logic_error("the window is shown already: " + name_);
    shown_ = true;
    loaded_ = false;
    focused_ = nullptr;
    const MemoryToolkit::Front front(toolkit_, *this);
    pointer_ = Pointer::hourglass;
    try {
        if (load) load();
    } catch (...) {
        shown_ = false;
        pointer_ = Pointer::arrow;
        throw;
    }
    pointer_ = Pointer::arrow;
    loaded_ = true;
    if (shown_) toolkit_.guard([this] { resize.raise(); });
    if (shown_) toolkit_.driver().onModal(*this);
    shown_ = false;
    toolkit_.guard([this] { unload.raise(); });
}

void MemoryWindow::passTick() {
    if (shown_ && loaded_) toolkit_.guard([this] { tick.raise(); });
}

ControlCore* MemoryWindow::findCore(const std::string& name, int index) const {
    for (const auto& core : cores_) {
        if (core->state.name == name && core->design().index == index) return core.get();
    }
    return nullptr;
}

ControlCore* MemoryWindow::focused() const {
    if (!focused_ || !focused_->tabStop()) focused_ = nextStop(focused_, FocusWay::on);
    return focused_;
}

void MemoryWindow::setFocused(ControlCore* core) {
    if (core != focused_) marked_ = true;
    focused_ = core;
}

void MemoryWindow::moveFocus(FocusWay way) { setFocused(nextStop(focused(), way)); }

bool MemoryWindow::takeOver() {
    return std::all_of(controls_.begin(), controls_.end(), [](Control* each) {
        auto* grid = dynamic_cast<MemoryEntryGrid*>(each);
        return grid == nullptr || grid->takeOver();
    });
}

void MemoryWindow::addControls() {
    const bool toolbarDrawn = std::any_of(design_.controls.begin(), design_.controls.end(),
                                          [this](const ControlDesign& each) { return each.name == design_.toolbar; });
    for (const ControlDesign& each : design_.controls)
        add(make(each));
    if (!design_.toolbar.empty() && !toolbarDrawn) {
        add(make(ControlDesign{.kind = ControlKind::toolbar, .name = design_.toolbar}));
    }
}

void MemoryWindow::addMenus() {
    for (const MenuDesign& each : design_.menus) {
        auto menu = std::make_unique<MemoryMenu>(*this, each);
        menus_.push_back(menu.get());
        // Separators have no name, and any number of them may lie in a menu.
        if (each.caption == "-" && each.name.empty()) {
            controls_.push_back(menu.get());
            cores_.push_back(std::move(menu));
        } else {
            add(std::move(menu));
        }
    }
}

void MemoryWindow::resolveParents() {
    for (const auto& core : cores_) {
        if (core->design().parent.empty()) continue;
        const auto it = std::find_if(cores_.begin(), cores_.end(),
                                     [&](const auto& each) { return each->state.name == core->design().parent; });
        if (it == cores_.end()) throw std::logic_error("no such container: " + std::string(core->design().parent));
        core->parent = it->get();
    }
}

void MemoryWindow::add(std::unique_ptr<ControlCore> core) {
    if (findCore(core->state.name, core->design().index))
        throw std::logic_error("the name is taken: " + core->state.name);
    controls_.push_back(&core->control());
    cores_.push_back(std::move(core));
}

std::unique_ptr<ControlCore> MemoryWindow::make(const ControlDesign& design) {
    switch (design.kind) {
        case ControlKind::frame:
            return std::make_unique<MemoryFrame>(*this, design);
        case ControlKind::label:
            return std::make_unique<MemoryLabel>(*this, design);
        case ControlKind::button:
            return std::make_unique<MemoryButton>(*this, design);
        case ControlKind::edit:
            return std::make_unique<MemoryEdit>(*this, design);
        case ControlKind::combo:
            return std::make_unique<MemoryCombo>(*this, design);
        case ControlKind::datePicker:
            return std::make_unique<MemoryDatePicker>(*this, design);
        case ControlKind::tree:
            return std::make_unique<MemoryTree>(*this, design);
        case ControlKind::listGrid:
            return std::make_unique<MemoryListGrid>(*this, design);
        case ControlKind::entryGrid:
            return std::make_unique<MemoryEntryGrid>(*this, design);
        case ControlKind::tabs:
            return std::make_unique<MemoryTabs>(*this, design);
        case ControlKind::picture:
            return std::make_unique<MemoryPicture>(*this, design);
        case ControlKind::toolbar:
            return std::make_unique<MemoryToolbar>(*this, design, design_.toolButtons);
        case ControlKind::fileDialog:
            return std::make_unique<MemoryFileDialog>(*this, design);
        case ControlKind::imageList:
        case ControlKind::dataControl:
            return std::make_unique<MemoryPlain>(*this, design);
        case ControlKind::menu:
            break;
    }
    throw std::logic_error("menus are drawn apart from the controls: " + std::string(design.name));
}

ControlCore* MemoryWindow::nextStop(const ControlCore* from, FocusWay way) const {
    const bool back = way == FocusWay::back;
    const std::size_t count = cores_.size();
    std::size_t at = back ? 0 : count - 1;
    for (std::size_t each = 0; from && each < count; ++each) {
        if (cores_[each].get() == from) at = each;
    }
    for (std::size_t step = 0; step < count; ++step) {
        at = (back ? at + count - 1 : at + 1) % count;
        if (cores_[at]->tabStop()) return cores_[at].get();
    }
    return nullptr;
}

}  // namespace orvenmod::platform::memory
