#include <fstream>
#include <stdexcept>
#include <vector>

#include "platform/contract/contract.h"
#include "support/temporary.h"

namespace orvenmod::test {
namespace {

using namespace platform;

// The smallest picture that all readers take: one white pixel.
constexpr unsigned char kBitmap[] = {'B', 'M', 58, 0, 0, 0, 0, 0, 0,  0, 54, 0, 0, 0, 40,  0,   0,   0, 1, 0,
                                     0,   0,   1,  0, 0, 0, 1, 0, 24, 0, 0,  0, 0, 0, 4,   0,   0,   0, 0, 0,
                                     0,   0,   0,  0, 0, 0, 0, 0, 0,  0, 0,  0, 0, 0, 255, 255, 255, 0};

TEST_F(ToolkitContract, aControlStandsWhereItIsDrawnAndMoves) {
    ControlDesign button = drawn(ControlKind::button, "cmdOK");
    button.left = 150;
    button.top = 300;
    button.tag = "r";
    use(windowWith({button}), [](User& user) {
        auto& control = user.control<Button>("cmdOK");
        EXPECT_FLOAT_EQ(control.left(), 150);
        EXPECT_FLOAT_EQ(control.top(), 300);
        EXPECT_FLOAT_EQ(control.width(), 3000);
        EXPECT_FLOAT_EQ(control.height(), 400);
        control.setLeft(450);
        control.setTop(600);
        control.setWidth(1500);
        control.setHeight(315);
        EXPECT_NEAR(control.left(), 450, 15);
        EXPECT_NEAR(control.top(), 600, 15);
        EXPECT_NEAR(control.width(), 1500, 15);
        EXPECT_NEAR(control.height(), 315, 15);
        EXPECT_EQ(control.tag(), "r");
        control.setTag("l");
        EXPECT_EQ(control.tag(), "l");
    });
}

TEST_F(ToolkitContract, aComboKeepsItsHeight) {
    use(windowWith({drawn(ControlKind::combo, "PC")}), [](User& user) {
        auto& combo = user.control<Combo>("PC");
        const float before = combo.height();
        combo.setHeight(0);
        EXPECT_FLOAT_EQ(combo.height(), before);
    });
}

TEST_F(ToolkitContract, captionsAreReadAndWritten) {
    ControlDesign frame = drawn(ControlKind::frame, "Frame1"), label = drawn(ControlKind::label, "Label1", 500),
                  button = drawn(ControlKind::button, "cmdFind", 1000);
    frame.caption = "单据选定的物料";
    label.caption = "查询条件：";
    button.caption = "搜索(&F)";
    use(windowWith({frame, label, button}), [](User& user) {
        EXPECT_EQ(user.control<Frame>("Frame1").caption(), "单据选定的物料");
        EXPECT_EQ(user.control<Label>("Label1").caption(), "查询条件：");
        EXPECT_EQ(user.control<Button>("cmdFind").caption(), "搜索(&F)");
        user.control<Frame>("Frame1").setCaption("甲");
        user.control<Label>("Label1").setCaption("乙");
        user.control<Button>("cmdFind").setCaption("丙(&F)");
        EXPECT_EQ(user.control<Frame>("Frame1").caption(), "甲");
        EXPECT_EQ(user.control<Label>("Label1").caption(), "乙");
        EXPECT_EQ(user.control<Button>("cmdFind").caption(), "丙(&F)");
    });
}

TEST_F(ToolkitContract, visibilityIsTheControlsOwn) {
    ControlDesign frame = drawn(ControlKind::frame, "Frame1", 0, 3000), edit = drawn(ControlKind::edit, "txtSearch");
    edit.parent = "Frame1";
    use(windowWith({frame, edit}), [](User& user) {
        user.control<Frame>("Frame1").setVisible(false);
        EXPECT_FALSE(user.control<Frame>("Frame1").visible());
        EXPECT_TRUE(user.control<Edit>("txtSearch").visible());
        user.control<Edit>("txtSearch").setVisible(false);
        user.control<Frame>("Frame1").setVisible(true);
        EXPECT_FALSE(user.control<Edit>("txtSearch").visible());
        EXPECT_TRUE(user.control<Edit>("txtSearch").enabled());
        user.control<Edit>("txtSearch").setEnabled(false);
        EXPECT_FALSE(user.control<Edit>("txtSearch").enabled());
    });
}

TEST_F(ToolkitContract, aClickRaisesTheButtonsEvent) {
    int clicks = 0;
    use(
        windowWith({drawn(ControlKind::button, "cmdOK")}),
        [&](Window& window) { window.get<Button>("cmdOK").click = [&] { ++clicks; }; },
        [](User& user) {
            user.click("cmdOK");
            user.click("cmdOK");
        });
    EXPECT_EQ(clicks, 2);
}

TEST_F(ToolkitContract, writingAnEditRaisesChangeAlsoWithTheSameText) {
    int changes = 0;
    use(
        windowWith({drawn(ControlKind::edit, "txtSearch")}),
        [&](Window& window) { window.get<Edit>("txtSearch").change = [&] { ++changes; }; },
        [&](User& user) {
            auto& edit = user.control<Edit>("txtSearch");
            edit.setText("螺丝's");
            edit.setText("螺丝's");
            EXPECT_EQ(edit.text(), "螺丝's");
            EXPECT_EQ(changes, 2);
        });
}

TEST_F(ToolkitContract, aFailureOfAHandlerGoesToTheCodeThatWrote) {
    ControlDesign edit = drawn(ControlKind::edit, "txtSearch"), combo = drawn(ControlKind::combo, "PC", 500);
    use(windowWith({edit, combo}), [](User& user) {
        user.control<Edit>("txtSearch").change = [] { throw std::runtime_error("甲"); };
        user.control<Combo>("PC").selectionChange = [] { throw std::runtime_error("乙"); };
        user.control<Combo>("PC").addRow({"无"});
        EXPECT_THROW(user.control<Edit>("txtSearch").setText("x"), std::runtime_error);
        EXPECT_THROW(user.control<Combo>("PC").select(0), std::runtime_error);
    });
    EXPECT_TRUE(script->messages().empty());
}

TEST_F(ToolkitContract, typingReplacesTheTextLetterByLetter) {
    std::vector<std::string> texts;
    use(
        windowWith({drawn(ControlKind::edit, "txtSearch")}),
        [&](Window& window) {
            auto& edit = window.get<Edit>("txtSearch");
            edit.setText("old");
            edit.change = [&] { texts.push_back(edit.text()); };
        },
        [](User& user) {
            user.type("txtSearch", "螺丝A");
            EXPECT_EQ(user.control<Edit>("txtSearch").text(), "螺丝A");
            EXPECT_TRUE(user.control<Edit>("txtSearch").hasFocus());
            user.type("txtSearch", "");
            EXPECT_EQ(user.control<Edit>("txtSearch").text(), "");
        });
    EXPECT_EQ(texts, (std::vector<std::string>{"螺", "螺丝", "螺丝A", ""}));
}

TEST_F(ToolkitContract, theEnterKeyReachesTheEdit) {
    std::vector<int> keys;
    use(
        windowWith({drawn(ControlKind::edit, "txtSearch")}),
        [&](Window& window) { window.get<Edit>("txtSearch").keyDown = [&](int key) { keys.push_back(key); }; },
        [](User& user) {
            user.control<Edit>("txtSearch").setFocus();
            user.press("Enter");
        });
    EXPECT_EQ(keys, (std::vector<int>{kKeyEnter}));
}

TEST_F(ToolkitContract, aDatePickerTakesADay) {
    use(windowWith({drawn(ControlKind::datePicker, "dtp")}), [](User& user) {
        auto& picker = user.control<DatePicker>("dtp");
        picker.setValue({2024, 2, 29});
        EXPECT_EQ(toText(picker.value()), "2024-02-29");
        user.pickDate("dtp", {2026, 11, 20});
        EXPECT_EQ(picker.value(), (Date{2026, 11, 20}));
    });
}

TEST_F(ToolkitContract, aPictureIsOfDotsAndNoneThatDraws) {
    const TemporaryFolder folder;
    std::ofstream(folder.file("drawn.jpg"))
        << "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect width='9' height='9'/></svg>";
    use(windowWith({drawn(ControlKind::picture, "pict1", 0, 3000)}), [&](User& user) {
        auto& picture = user.control<Picture>("pict1");
        EXPECT_FALSE(picture.show(folder.file("drawn.jpg")));
        EXPECT_TRUE(picture.empty());
    });
}

TEST_F(ToolkitContract, aPictureShowsAFileThatIsOneAndIsEmptyOtherwise) {
    const TemporaryFolder folder;
    std::ofstream(folder.file("white.bmp"), std::ios::binary)
        .write(reinterpret_cast<const char*>(kBitmap), sizeof kBitmap);
    std::ofstream(folder.file("text.bmp")) << "this is a text and no picture at all";
    use(windowWith({drawn(ControlKind::picture, "pict1", 0, 3000)}), [&](User& user) {
        auto& picture = user.control<Picture>("pict1");
        EXPECT_TRUE(picture.empty());
        EXPECT_TRUE(picture.show(folder.file("white.bmp")));
        EXPECT_FALSE(picture.empty());
        EXPECT_FALSE(picture.show(folder.file("text.bmp")));
        EXPECT_TRUE(picture.empty());
        EXPECT_TRUE(picture.show(folder.file("white.bmp")));
        EXPECT_FALSE(picture.show(folder.file("missing.bmp")));
        EXPECT_TRUE(picture.empty());
        EXPECT_TRUE(picture.show(folder.file("white.bmp")));
        picture.clear();
        EXPECT_TRUE(picture.empty());
    });
}

}  // namespace
}  // namespace orvenmod::test
