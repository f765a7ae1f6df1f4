// The editor worked by keys alone, from its opening to its close.
#include <QApplication>
#include <QWidget>

#include "editor/editortest.h"
#include "support/letters.h"
#include "support/qt_user.h"

namespace orvenmod::test {
namespace {

using platform::Button;
using platform::Picture;
using platform::Tabs;

class EditorKeyboard : public testing::Test {
protected:
    void TearDown() override { stage.finish(); }

    /// Types at the focus, as a keyboard or an input method does, and presses Enter.
    static void enter(User& user, const std::string& text) {
        for (const std::string& letter : lettersOf(text))
            pressLetter(*QApplication::activeModalWidget()->focusWidget(), letter);
        settle();
        user.press("Enter");
    }

    EditorStage stage{newQtScript};
};

TEST_F(EditorKeyboard, anItemWithAllItHasIsAddedWithoutAMouse) {
    const std::string file = stage.makeFile("总图.txt", "plan");
    const std::string picture = stage.makeFile("照片.bmp", redBitmap());
    stage.openNew([&](User& user) {
        user.press("Enter");
        for (const char* typed : {"垫圈", "M6", "12.5", "2026-3-4", "华南", "电器"})
            enter(user, typed);
        EXPECT_EQ(values(user), (Texts{"002", "02.002", "垫圈", "M6", "12.5", "2026-03-04", "华南供应", "电器(02)"}));
        user.press("Ctrl+PageDown");
        EXPECT_EQ(user.control<Tabs>("SSTab1").tab(), 1);
        EXPECT_TRUE(user.control<Button>("cmdAddFJ").hasFocus());
        user.chooseFile(file);
        user.press("Alt+A");
        enter(user, "图纸");
        user.press("Ctrl+PageDown");
        user.chooseFile(picture);
        user.press("Alt+A");
        EXPECT_FALSE(user.control<Picture>("pict1").empty());
        user.answer(MessageKind::information, "数据保存成功!");
        user.press("Alt+F");
        user.press("Enter");
        EXPECT_TRUE(user.control<EntryGrid>("fps1").hasFocus()) << "the next item is typed at once";
        user.press("Alt+F");
        user.press("Down");
        user.press("Enter");
        EXPECT_FALSE(user.window().shown());
    });
    EXPECT_EQ(stage.database().rows("select fNumber,fName,fModel,fMinQty,fF,fH from ICItem where fItemId=203"),
              (Rows{{"02.002", "垫圈", "M6", "12.5", "2026-03-04 00:00:00", "202"}}));
    EXPECT_EQ(stage.database().rows("select fName,fFileName from tblItemFJ where fItemId=203"),
              (Rows{{"图纸", "总图.txt"}}));
    EXPECT_EQ(stage.database().value("select fHZ from ICItemPhoto where fItemId=203"), ".bmp");
}

TEST_F(EditorKeyboard, anAttachmentIsOpenedAndDeletedWithoutAMouse) {
    stage.storeAttachment(4, "说明.txt", "text");
    stage.openItem(101, [this](User& user) {
        user.press("Ctrl+PageDown");
        user.press("Tab");
        auto& rows = user.control<EntryGrid>("fps2");
        EXPECT_TRUE(rows.hasFocus());
        user.press("Home");
        user.press("Right");
        EXPECT_EQ(rows.activeColumn(), 2);
        user.press("Space");
        EXPECT_EQ(stage.script().documents().size(), 1U);
        user.press("Left");
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.press("Enter");
        EXPECT_EQ(rows.rowCount(), 0);
    });
    EXPECT_EQ(stage.database().value("select count(*) from tblItemFJ"), "0");
}

TEST_F(EditorKeyboard, tabTakesTheChoiceThatIsMeantAndLeaves) {
    stage.openNew([](User& user) {
        user.clickCell("fps1", kValue, kSupplierRow);
        pressLetter(*QApplication::focusWidget(), "南");
        user.press("Tab");
        EXPECT_EQ(value(user, kSupplierRow), "华南供应");
        EXPECT_TRUE(user.control<Tabs>("SSTab1").hasFocus());
    });
}

TEST_F(EditorKeyboard, aTabThatIsClickedTakesTheKeyboardAlong) {
    stage.openNew([](User& user) {
        user.chooseTab("SSTab1", 1);
        EXPECT_TRUE(user.control<Button>("cmdAddFJ").hasFocus());
        user.chooseTab("SSTab1", 0);
        EXPECT_TRUE(user.control<EntryGrid>("fps1").hasFocus());
    });
}

TEST_F(EditorKeyboard, theToolbarIsReachedByF6) {
    stage.openItem(102, [](User& user) {
        user.press("F6");
        user.press("Right");
        user.press("Enter");
        EXPECT_EQ(user.window().caption(), "货品新增") << "copied";
        EXPECT_TRUE(user.control<EntryGrid>("fps1").hasFocus());
        user.press("F6");
        EXPECT_FALSE(user.control<EntryGrid>("fps1").hasFocus());
        user.press("F6");
        EXPECT_TRUE(user.control<EntryGrid>("fps1").hasFocus());
    });
}

TEST_F(EditorKeyboard, theOptionOfTheNextItemIsSwitchedByItsMenu) {
    stage.openNew([](User& user) {
        user.press("Alt+E");
        user.press("Enter");
        EXPECT_FALSE(user.control<platform::Menu>("MenuNewAfterSave").checked());
        EXPECT_EQ(appState().gNoNewAfterSave, 1);
    });
}

}  // namespace
}  // namespace orvenmod::test
