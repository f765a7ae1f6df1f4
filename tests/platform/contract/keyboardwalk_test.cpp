#include "support/keyboardwalk.h"

#include <gtest/gtest-spi.h>

#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

WindowDesign wholeWindow() {
    ControlDesign label = drawn(ControlKind::label, "Label1"), edit = drawn(ControlKind::edit, "txtName", 400),
                  frame = drawn(ControlKind::frame, "Frame1", 800, 2400), combo = drawn(ControlKind::combo, "PC"),
                  picker = drawn(ControlKind::datePicker, "dtp", 500),
                  tree = drawn(ControlKind::tree, "tv1", 1000, 800),
                  tabs = drawn(ControlKind::tabs, "SSTab1", 3300, 2000),
                  list = drawn(ControlKind::listGrid, "vsf1", 400), behind = drawn(ControlKind::entryGrid, "fps1", 400),
                  off = drawn(ControlKind::button, "cmdOff", 5400), button = drawn(ControlKind::button, "cmdOK", 5400);
    label.caption = "名称：";
    edit.accessibleName = "";
    combo.parent = picker.parent = tree.parent = "Frame1";
    combo.index = 0;
    list.parent = behind.parent = "SSTab1";
    behind.page = 1;
    tabs.pages = {"甲", "乙"};
    list.columns = behind.columns = {{.title = "代码"}};
    off.enabled = false;
    button.left = 4000;
    button.caption = "确定";
    return windowWith({label, edit, frame, combo, picker, tree, tabs, list, behind, off, button});
}

TEST_F(ToolkitContract, everyControlOfAWindowIsReachedByKeyboard) { walkByKeyboard(*script, wholeWindow()); }

TEST_F(ToolkitContract, aControlWithoutANameFailsTheWalk) {
    ControlDesign edit = drawn(ControlKind::edit, "txtName");
    edit.accessibleName = "";
    EXPECT_NONFATAL_FAILURE(walkByKeyboard(*script, windowWith({edit})), "txtName");
}

}  // namespace
}  // namespace orvenmod::test
