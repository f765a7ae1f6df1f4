// The scripted user: drives real windows of either toolkit and answers their boxes. A scenario is written once:
//
//     script.onWindow("frmBasicInfoList", [&](User& user) {
//         user.clickNode("tv1", "D12");
//         user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
//         user.chooseMenu("MenuEditDelete");
//     });
//     basicInfo.mainInterface(...);
//     script.finish();
//
// Every window that opens modally takes the next onWindow of its name; a window without a script, a box without an
// answer, and a script that was never run fail the test. A window still open when its script ends is closed as by its
// title bar. Where a cell of an entry grid refuses to be left, a step that would leave it does nothing, as for a user.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/entrygrid.h"
#include "platform/listgrid.h"
#include "platform/settings.h"
#include "platform/toolkit.h"
#include "platform/tree.h"

namespace orvenmod::test {

/// A box that was shown.
struct ShownMessage {
    platform::MessageKind kind;
    std::string text;
    std::string title;
    bool operator==(const ShownMessage&) const = default;
};

class User {
public:
    virtual ~User() = default;

    /// The window that this user works in; its controls tell their state.
    virtual platform::Window& window() = 0;
    template <class Kind>
    Kind& control(const std::string& name, int index = -1) {
        return window().get<Kind>(name, index);
    }

    virtual void click(const std::string& button, int index = -1) = 0;
    virtual void clickTool(const std::string& key) = 0;
    virtual void chooseMenu(const std::string& menu) = 0;  ///< a disabled or hidden one fails the test
    /// As press, where a menu pops up: then that entry of it, "" for none.
    virtual void pressForMenu(const std::string& shortcut, const std::string& chooseMenu) = 0;
    virtual void press(const std::string& shortcut) = 0;  ///< "Ctrl+A", "Enter", "Tab" ... at the focus
    virtual void type(const std::string& edit, const std::string& text, int index = -1) = 0;  ///< replaces the text
    virtual void pick(const std::string& combo, int row, int index = -1) = 0;
    virtual void pickDate(const std::string& picker, const platform::Date& date) = 0;
    virtual void clickNode(const std::string& tree, const std::string& key) = 0;
    virtual void rightClick(const std::string& control,
                            const std::string& chooseMenu) = 0;  ///< then that entry of the popup, "" for none
    virtual void rightClickNode(const std::string& tree, const std::string& key, const std::string& chooseMenu) = 0;
    virtual void rightClickRow(const std::string& grid, int row, const std::string& chooseMenu) = 0;
    virtual void selectRow(const std::string& grid, int row) = 0;               ///< click: current, the only selected
    virtual void alsoSelectRow(const std::string& grid, int row) = 0;           ///< Ctrl+click
    virtual void doubleClickRow(const std::string& grid, int row) = 0;          ///< 0 double clicks the heading
    virtual void selectCell(const std::string& grid, int row, int column) = 0;  ///< click on a cell of the row
    virtual void clickHeading(const std::string& grid, int column) = 0;
    virtual void rightClickHeading(const std::string& grid, int column, const std::string& chooseMenu) = 0;
    virtual void dragHeading(const std::string& grid, int column, int ontoColumn) = 0;  ///< into the place of the other
    virtual void keyOnGrid(const std::string& grid, int key) = 0;
    /// Clicks the cell, types all of its text and presses Enter; then it is active, or open where it refuses.
    virtual void typeCell(const std::string& grid, int column, int row, const std::string& text) = 0;
    virtual void typeKeys(const std::string& text) = 0;  ///< at the focus, which stays where it is
    virtual void paste(const std::string& text) = 0;     ///< the same by the clipboard and Ctrl+V
    virtual std::string copied() = 0;                    ///< what the clipboard holds
    virtual std::string copiedHtml() = 0;                ///< the same as HTML, "" for none
    virtual std::vector<std::string> openedList() = 0;   ///< what the list of the open cell shows, empty for none
    virtual void pickCell(const std::string& grid, int column, int row, int item) = 0;
    virtual void clickCell(const std::string& grid, int column,
                           int row) = 0;  ///< a button, a check box, or makes it active
    virtual void chooseTab(const std::string& tabs, int tab) = 0;
    virtual void closeWindow() = 0;                            ///< by the title bar
    virtual void resizeWindow(float width, float height) = 0;  ///< inner size, twips
    virtual void rest() = 0;                                   ///< until the windows that are shown tick

    /// Expects a box and tells its answer; boxes come in the order of these calls.
    virtual void answer(platform::MessageKind kind, const std::string& text, platform::Answer answer) = 0;
    void answer(platform::MessageKind kind, const std::string& text) { answer(kind, text, platform::Answer::ok); }
    /// The next file dialog: "" cancels.
    virtual void chooseFile(const std::string& path) = 0;
    /// Cancels the next long work as soon as so much of it is done.
    virtual void cancelProgress(int done) = 0;
};

/// The scripts of one test. Made for a toolkit by newMemoryScript / newQtScript.
class Script {
public:
    virtual ~Script() = default;

    virtual platform::Toolkit& toolkit() = 0;
    virtual void onWindow(const std::string& name, std::function<void(User&)> steps) = 0;
    /// As User::answer, for boxes shown outside any window.
    virtual void answer(platform::MessageKind kind, const std::string& text, platform::Answer answer) = 0;
    /// As User::cancelProgress, for work before a window is there.
    virtual void cancelProgress(int done) = 0;
    /// Every box shown so far, in order.
    virtual const std::vector<ShownMessage>& messages() const = 0;
    virtual void forgetMessages() = 0;
    /// Documents opened with the desktop's programs.
    virtual const std::vector<std::string>& documents() const = 0;
    /// Fails the test for scripts or answers left over.
    virtual void finish() = 0;
};

std::unique_ptr<Script> newMemoryScript();
std::unique_ptr<Script> newQtScript();

/// How gtest prints a maker of scripts in a test's name: as an address the name would change at each run.
inline void PrintTo(std::unique_ptr<Script> (*)(), std::ostream* out) { *out << "script"; }

}  // namespace orvenmod::test
