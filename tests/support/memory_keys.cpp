// What the keys do in the memory toolkit: menu shortcuts first, then mnemonics, then the control in focus.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "platform/memory/memoryentrygrid.h"
#include "platform/memory/memorylistgrid.h"
#include "platform/memory/memorytree.h"
#include "support/memory_user.h"

namespace orvenmod::test {

using namespace platform;
using namespace platform::memory;

namespace {

/// The letter behind '&', 0 for none.
char mnemonicOf(const std::string& caption) {
    const std::size_t at = caption.find('&');
    if (at == std::string::npos || at + 1 >= caption.size()) return 0;
    return static_cast<char>(std::toupper(static_cast<unsigned char>(caption[at + 1])));
}

/// The nodes that show, from the top.
void collectShown(const model::TreeModel& model, std::size_t parent, std::vector<std::string>& keys) {
    for (const std::size_t child : model.children(parent)) {
        keys.push_back(model.node(child).key);
        if (model.node(child).expanded) collectShown(model, child, keys);
    }
}

}  // namespace

void MemoryUser::press(const std::string& shortcut) {
    requireFront();
    for (MemoryMenu* menu : window_.menus()) {
        if (menu->menuDesign().shortcut != shortcut || !menu->choosable(nullptr)) continue;
        if (!leaveCell()) return;
        guard([menu] { menu->click.raise(); });
        return;
    }
    if (pressInGrid(shortcut) || !leaveCell()) return;
    if (turnPage(shortcut) || pressMnemonic(shortcut)) return;
    if (shortcut == "Tab" || shortcut == "Shift+Tab") {
        window_.moveFocus(shortcut != "Tab");
    } else if (ControlCore* focus = window_.focused()) {
        pressOn(*focus, shortcut);
    }
}

bool MemoryUser::turnPage(const std::string& shortcut) {
    if (shortcut != "Ctrl+PageDown" && shortcut != "Ctrl+PageUp") return false;
    for (Control* each : window_.controls()) {
        auto* tabs = dynamic_cast<MemoryTabs*>(each);
        if (!tabs || !tabs->usable()) continue;
        const int count = static_cast<int>(tabs->design().pages.size());
        const int step = shortcut == "Ctrl+PageDown" ? 1 : count - 1;
        int next = (tabs->tab() + step) % count;
        while (!tabs->tabEnabled(next))
            next = (next + step) % count;
        tabs->setTab(next);
        tabs->focus();
        focusFirstOf(*tabs);
        return true;
    }
    return false;
}

void MemoryUser::focusFirstOf(const ControlCore& container) {
    for (Control* each : window_.controls()) {
        auto* core = dynamic_cast<ControlCore*>(each);
        if (core && core->parent == &container && core->tabStop()) return core->focus();
    }
}

bool MemoryUser::pressMnemonic(const std::string& shortcut) {
    if (shortcut.size() != 5 || shortcut.rfind("Alt+", 0) != 0) return false;
    for (Control* each : window_.controls()) {
        auto* button = dynamic_cast<MemoryButton*>(each);
        if (!button || !button->usable() || mnemonicOf(button->caption()) != shortcut.back()) continue;
        button->focus();
        guard([button] { button->click.raise(); });
        return true;
    }
    return false;
}

void MemoryUser::pressOn(ControlCore& focus, const std::string& key) {
    Control& control = focus.control();
    if (key == "Up" || key == "Down") return moveRow(control, key == "Up" ? -1 : 1);
    auto* cells = dynamic_cast<EntryGrid*>(&control);
    if (cells && key == "Space" && cells->activeRow() > 0) {
        return clickCell(cells->name(), cells->activeColumn(), cells->activeRow());
    }
    auto* button = dynamic_cast<Button*>(&control);
    if (button && (key == "Enter" || key == "Space")) return guard([button] { button->click.raise(); });
    if (key != "Enter") return;
    if (auto* edit = dynamic_cast<Edit*>(&control)) guard([edit] { edit->keyDown.raise(kKeyEnter); });
    if (auto* grid = dynamic_cast<ListGrid*>(&control)) guard([grid] { grid->keyDown.raise(kKeyEnter); });
}

void MemoryUser::moveRow(Control& control, int step) {
    if (auto* grid = dynamic_cast<ListGrid*>(&control)) {
        const int row = std::clamp(grid->currentRow() + step, 1, std::max(grid->rowCount() - 1, 1));
        if (row < grid->rowCount()) grid->setCurrentRow(row);
    } else if (auto* combo = dynamic_cast<Combo*>(&control)) {
        const int row = combo->selected() + step;
        if (row >= 0 && row < combo->rowCount()) guard([combo, row] { combo->select(row); });
    } else if (auto* tree = dynamic_cast<MemoryTree*>(&control)) {
        std::vector<std::string> keys;
        collectShown(tree->model(), model::TreeModel::kRoot, keys);
        const auto here = std::find(keys.begin(), keys.end(), tree->selected());
        const auto next = here == keys.end() ? 0 : (here - keys.begin()) + step;
        if (next < 0 || next >= static_cast<std::ptrdiff_t>(keys.size())) return;
        const std::string key = keys[static_cast<std::size_t>(next)];
        tree->select(key);
        guard([tree, &key] { tree->nodeClick.raise(key); });
    }
}

}  // namespace orvenmod::test
