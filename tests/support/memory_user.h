// The scripted user of the memory toolkit. Acts only on what a user could reach: anything else fails the test and ends
// the script of that window.
#pragma once

#include <string>

#include "platform/memory/memorycontrols.h"
#include "platform/memory/memorytoolkit.h"
#include "platform/memory/memorywindow.h"
#include "support/scriptbook.h"
#include "support/user.h"

namespace orvenmod::platform::memory {
class MemoryEntryGrid;
class MemoryListGrid;
class MemoryTree;
}  // namespace orvenmod::platform::memory

namespace orvenmod::test {

/// Thrown when a step can't be done; the failure is told already.
struct ScriptStopped {};

/// The entry to choose from the next menu that pops up.
struct PopUpChoice {
    bool waiting = false;
    std::string menu;
};

class MemoryUser final : public User {
public:
    MemoryUser(platform::memory::MemoryWindow& window, ScriptBook& book, PopUpChoice& popUp)
        : window_(window), book_(book), popUp_(popUp) {}

#include "support/usersteps.inc"

private:
    [[noreturn]] void stop(const std::string& why) const;
    void requireFront() const;
    /// As the screen would paint the row.
    void lookAt(platform::memory::MemoryListGrid& grid, int row);
    void guard(const std::function<void()>& handler) { window_.toolkit().guard(handler); }
    /// The control, in reach of the user, with the focus on it where it takes one.
    template <class Kind>
    Kind& reach(const std::string& name, int index = -1) {
        requireFront();
        auto* core = window_.findCore(name, index);
        const std::string shownName = index < 0 ? name : name + "(" + std::to_string(index) + ")";
        auto* control = dynamic_cast<Kind*>(core);
        if (!control) stop("no such control for this step: " + shownName);
        if (!core->shown()) stop(shownName + " is not in sight");
        if (!core->usable()) stop(shownName + " is disabled");
        if (core->tabStop()) core->focus();
        return *control;
    }
    platform::memory::MemoryListGrid& reachRow(const std::string& grid, int row);
    platform::memory::MemoryEntryGrid& reachCell(const std::string& grid, int column, int row);
    void popUpOver(platform::Control& control, const std::string& chooseMenu);
    void typeLetters(platform::Edit& edit, const std::string& text);
    /// The mouse leaves the cell that is open; false where that refuses.
    bool leaveCell();
    platform::memory::MemoryEntryGrid* focusedGrid() const;
    bool pressInGrid(const std::string& key);
    /// A key of the open cell's field; false where it isn't one.
    bool pressInField(platform::memory::MemoryEntryGrid& grid, const std::string& key);
    bool pressInList(platform::memory::MemoryEntryGrid& grid, const std::string& key);
    /// On to the next cell that takes a value.
    void advance(platform::memory::MemoryEntryGrid& grid);
    bool pasteInto(platform::memory::MemoryEntryGrid& grid);
    bool turnPage(const std::string& shortcut);
    void focusFirstOf(const platform::memory::ControlCore& container);
    bool pressMnemonic(const std::string& shortcut);
    void pressOn(platform::memory::ControlCore& focus, const std::string& key);
    void pressOnList(platform::memory::MemoryListGrid& grid, const std::string& key);
    /// A key of the arrangement of a list; false where it isn't one.
    bool pressInArrangement(const std::string& key);
    platform::memory::MemoryListGrid* lineInFocus() const;
    void popUpWhile(const std::string& over, const std::string& chooseMenu, const std::function<void()>& act);
    void typeOnList(platform::memory::MemoryListGrid& grid, const std::string& letter);
    void pressOnTree(platform::memory::MemoryTree& tree, const std::string& key);
    void typeOnTree(platform::memory::MemoryTree& tree, const std::string& letter);
    void goTo(platform::memory::MemoryTree& tree, const std::string& key);
    void pressOnCells(platform::memory::MemoryEntryGrid& cells, const std::string& key);

    platform::memory::MemoryWindow& window_;
    ScriptBook& book_;
    PopUpChoice& popUp_;
    std::string clipboard_;
    std::string clipboardHtml_;
};

}  // namespace orvenmod::test
