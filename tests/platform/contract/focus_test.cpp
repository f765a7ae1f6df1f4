#include <stdexcept>
#include <vector>

#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

WindowDesign editsWindow() {
    ControlDesign label = drawn(ControlKind::label, "Label1"), frame = drawn(ControlKind::frame, "Frame1", 0, 2000),
                  first = drawn(ControlKind::edit, "txtFirst"), second = drawn(ControlKind::edit, "txtSecond", 500),
                  third = drawn(ControlKind::button, "cmdThird", 3000), off = drawn(ControlKind::edit, "txtOff", 3500);
    label.caption = "编码：";
    first.parent = second.parent = "Frame1";
    off.enabled = false;
    return windowWith({label, frame, first, off, second, third});
}

TEST_F(ToolkitContract, theFirstControlThatTakesTheFocusHasIt) {
    use(editsWindow(), [](User& user) { EXPECT_TRUE(user.control<Edit>("txtFirst").hasFocus()); });
}

TEST_F(ToolkitContract, setFocusMovesTheFocus) {
    use(editsWindow(), [](User& user) {
        user.control<Button>("cmdThird").setFocus();
        EXPECT_TRUE(user.control<Button>("cmdThird").hasFocus());
        EXPECT_FALSE(user.control<Edit>("txtFirst").hasFocus());
    });
}

TEST_F(ToolkitContract, setFocusOnADisabledOrInvisibleControlFails) {
    use(editsWindow(), [](User& user) {
        try {
            user.control<Edit>("txtOff").setFocus();
            ADD_FAILURE() << "a disabled control took the focus";
        } catch (const std::runtime_error& failure) {
            EXPECT_STREQ(failure.what(), "无效的过程调用或参数");
        }
        user.control<Edit>("txtSecond").setVisible(false);
        EXPECT_THROW(user.control<Edit>("txtSecond").setFocus(), std::runtime_error);
        user.control<Edit>("txtSecond").setVisible(true);
        user.control<Frame>("Frame1").setVisible(false);
        EXPECT_THROW(user.control<Edit>("txtSecond").setFocus(), std::runtime_error);
    });
}

TEST_F(ToolkitContract, sendTabMovesTheFocusOnInTheOrderOfTheDesign) {
    use(editsWindow(), [&](User& user) {
        user.control<Edit>("txtFirst").setFocus();
        toolkit.sendTab();
        EXPECT_TRUE(user.control<Edit>("txtSecond").hasFocus());
        toolkit.sendTab();
        EXPECT_TRUE(user.control<Button>("cmdThird").hasFocus());
        toolkit.sendTab();
        EXPECT_TRUE(user.control<Edit>("txtFirst").hasFocus());
    });
}

TEST_F(ToolkitContract, theTabKeyMovesTheFocusBothWays) {
    use(editsWindow(), [](User& user) {
        user.control<Edit>("txtFirst").setFocus();
        user.press("Tab");
        EXPECT_TRUE(user.control<Edit>("txtSecond").hasFocus());
        user.press("Shift+Tab");
        EXPECT_TRUE(user.control<Edit>("txtFirst").hasFocus());
        user.press("Shift+Tab");
        EXPECT_TRUE(user.control<Button>("cmdThird").hasFocus());
    });
}

TEST_F(ToolkitContract, anEditThatTheKeyboardComesToIsTypedOver) {
    use(editsWindow(), [](User& user) {
        auto& first = user.control<Edit>("txtFirst");
        auto& second = user.control<Edit>("txtSecond");
        first.setText("旧");
        second.setText("旧");
        user.control<Button>("cmdThird").setFocus();
        first.setFocus();
        user.typeKeys("新1");
        EXPECT_EQ(first.text(), "新1");
        user.press("Tab");
        user.typeKeys("2");
        EXPECT_EQ(second.text(), "2");
    });
}

TEST_F(ToolkitContract, typingGoesOnBehindATextThatCodeWritesIntoTheEditInFocus) {
    use(editsWindow(), [](User& user) {
        auto& second = user.control<Edit>("txtSecond");
        second.setFocus();
        second.setText("9");
        user.typeKeys("001");
        EXPECT_EQ(second.text(), "9001");
    });
}

TEST_F(ToolkitContract, upAndDownReachTheHandlerOfAnEdit) {
    std::vector<int> keys;
    use(
        editsWindow(),
        [&](Window& window) { window.get<Edit>("txtFirst").keyDown = [&](int key) { keys.push_back(key); }; },
        [](User& user) {
            user.press("Down");
            user.press("Up");
        });
    EXPECT_EQ(keys, (std::vector<int>{kKeyDown, kKeyUp}));
}

TEST_F(ToolkitContract, theEnterKeyInAnEditCanSendTheFocusOn) {
    use(
        editsWindow(),
        [&](Window& window) {
            window.get<Edit>("txtFirst").keyDown = [&](int key) {
                if (key == kKeyEnter) toolkit.sendTab();
            };
        },
        [](User& user) {
            user.type("txtFirst", "A1");
            user.press("Enter");
            EXPECT_TRUE(user.control<Edit>("txtSecond").hasFocus());
            EXPECT_EQ(user.control<Edit>("txtFirst").text(), "A1");
        });
}

TEST_F(ToolkitContract, aFocusedControlThatIsDisabledOrHiddenLosesTheFocus) {
    use(editsWindow(), [](User& user) {
        user.control<Edit>("txtFirst").setFocus();
        user.control<Edit>("txtFirst").setEnabled(false);
        EXPECT_FALSE(user.control<Edit>("txtFirst").hasFocus());
        user.control<Edit>("txtSecond").setFocus();
        user.control<Frame>("Frame1").setVisible(false);
        EXPECT_FALSE(user.control<Edit>("txtSecond").hasFocus());
    });
}

TEST_F(ToolkitContract, gridsTreesAndPickersLetTheTabKeyPass) {
    ControlDesign list = drawn(ControlKind::listGrid, "vsf1", 500, 900),
                  cells = drawn(ControlKind::entryGrid, "fps1", 1500, 900),
                  picker = drawn(ControlKind::datePicker, "dtp", 2500),
                  last = drawn(ControlKind::edit, "txtLast", 3000);
    list.columns = {{.title = "代码"}, {.title = "名称"}};
    cells.columns = {{.title = "项目"}, {.title = "值"}};
    use(
        windowWith({drawn(ControlKind::tree, "tv1"), list, cells, picker, last}),
        [](Window& window) {
            window.get<ListGrid>("vsf1").addRow("1\t2");
            window.get<EntryGrid>("fps1").setRowCount(1);
            window.get<Tree>("tv1").add("", "D0", "全部", "");
        },
        [](User& user) {
            std::vector<std::string> order;
            user.control<Tree>("tv1").setFocus();
            for (int step = 0; step < 4; ++step) {
                user.press("Tab");
                for (Control* each : user.window().controls()) {
                    if (each->hasFocus()) order.push_back(each->name());
                }
            }
            EXPECT_EQ(order, (std::vector<std::string>{"vsf1", "fps1", "dtp", "txtLast"}));
        });
}

}  // namespace
}  // namespace orvenmod::test
