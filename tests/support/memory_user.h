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

    platform::Window& window() override { return window_; }

    void click(const std::string& button, int index) override;
    void clickTool(const std::string& key) override;
    void chooseMenu(const std::string& menu) override;
    void press(const std::string& shortcut) override;
    void type(const std::string& edit, const std::string& text, int index) override;
    void pick(const std::string& combo, int row, int index) override;
    void pickDate(const std::string& picker, const platform::Date& date) override;
    void clickNode(const std::string& tree, const std::string& key) override;
    void rightClick(const std::string& control, const std::string& chooseMenu) override;
    void rightClickNode(const std::string& tree, const std::string& key, const std::string& chooseMenu) override;
    void rightClickRow(const std::string& grid, int row, const std::string& chooseMenu) override;
    void selectRow(const std::string& grid, int row) override;
    void alsoSelectRow(const std::string& grid, int row) override;
    void doubleClickRow(const std::string& grid, int row) override;
    void keyOnGrid(const std::string& grid, int key) override;
    void typeCell(const std::string& grid, int column, int row, const std::string& text) override;
    void typeKeys(const std::string& text) override;
    void paste(const std::string& text) override;
    std::string copied() override { return clipboard_; }
    std::vector<std::string> openedList() override;
    void pickCell(const std::string& grid, int column, int row, int item) override;
    void clickCell(const std::string& grid, int column, int row) override;
    void chooseTab(const std::string& tabs, int tab) override;
    void closeWindow() override;
    void resizeWindow(float width, float height) override;
    void answer(platform::MessageKind kind, const std::string& text, platform::Answer answer) override;
    using User::answer;
    void chooseFile(const std::string& path) override { book_.addFile(path); }
    void cancelProgress(int done) override { book_.addCancel(done); }

private:
    [[noreturn]] void stop(const std::string& why) const;
    void requireFront() const;
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
    void typeOnList(platform::memory::MemoryListGrid& grid, const std::string& letter);
    void pressOnTree(platform::memory::MemoryTree& tree, const std::string& key);
    void typeOnTree(platform::memory::MemoryTree& tree, const std::string& letter);
    void goTo(platform::memory::MemoryTree& tree, const std::string& key);
    void pressOnCells(platform::memory::MemoryEntryGrid& cells, const std::string& key);

    platform::memory::MemoryWindow& window_;
    ScriptBook& book_;
    PopUpChoice& popUp_;
    std::string clipboard_;
};

}  // namespace orvenmod::test
