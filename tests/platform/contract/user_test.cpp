// The scripted user can do only what a user can, and whatever wasn't laid out fails the test.
#include <gtest/gtest-spi.h>

#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

WindowDesign formWindow() {
    ControlDesign off = drawn(ControlKind::button, "cmdOff"), hidden = drawn(ControlKind::edit, "txtHidden", 500),
                  tabs = drawn(ControlKind::tabs, "SSTab1", 1000, 1500),
                  behind = drawn(ControlKind::edit, "txtBehind", 500),
                  cells = drawn(ControlKind::entryGrid, "fps1", 2600, 1500);
    off.enabled = false;
    hidden.visible = false;
    tabs.pages = {"甲", "乙"};
    behind.parent = "SSTab1";
    behind.page = 1;
    cells.columns = {{.title = "项目", .locked = true}, {.title = "内码", .hidden = true}};
    WindowDesign design = windowWith({off, hidden, tabs, behind, cells});
    design.menus = {{.name = "MenuEdit", .caption = "编辑"},
                    {.name = "MenuLock", .caption = "禁用", .parent = "MenuEdit", .enabled = false}};
    return design;
}

class ScriptedUser : public ToolkitContract {
protected:
    void attempt(const std::function<void(User&)>& step) {
        use(
            formWindow(),
            [](Window& window) {
                window.get<EntryGrid>("fps1").setRowCount(1);
                window.get<Tabs>("SSTab1").setTab(0);
            },
            step);
    }
};

TEST_F(ScriptedUser, cannotClickADisabledButton) {
    EXPECT_NONFATAL_FAILURE(attempt([](User& user) { user.click("cmdOff"); }), "cmdOff");
}

TEST_F(ScriptedUser, cannotTypeIntoAHiddenEdit) {
    EXPECT_NONFATAL_FAILURE(attempt([](User& user) { user.type("txtHidden", "x"); }), "txtHidden");
}

TEST_F(ScriptedUser, cannotReachAControlOnAnotherTab) {
    EXPECT_NONFATAL_FAILURE(attempt([](User& user) { user.type("txtBehind", "x"); }), "txtBehind");
}

TEST_F(ScriptedUser, cannotChooseADisabledMenu) {
    EXPECT_NONFATAL_FAILURE(attempt([](User& user) { user.chooseMenu("MenuLock"); }), "MenuLock");
}

TEST_F(ScriptedUser, cannotTypeIntoALockedCell) {
    EXPECT_NONFATAL_FAILURE(attempt([](User& user) { user.typeCell("fps1", 1, 1, "x"); }), "fps1");
}

TEST_F(ScriptedUser, cannotReachAHiddenColumn) {
    EXPECT_NONFATAL_FAILURE(attempt([](User& user) { user.typeCell("fps1", 2, 1, "x"); }), "fps1");
}

TEST_F(ScriptedUser, cannotUseWhatIsNotThere) {
    EXPECT_NONFATAL_FAILURE(attempt([](User& user) { user.click("cmdNone"); }), "cmdNone");
}

TEST_F(ScriptedUser, failsTheTestForAnUnexpectedBoxAndAnswersNo) {
    Answer answer = Answer::yes;
    EXPECT_NONFATAL_FAILURE(answer = toolkit.message(MessageKind::question, "删除吗？", ""), "删除吗？");
    EXPECT_EQ(answer, Answer::no);
}

TEST_F(ScriptedUser, failsTheTestForAWindowWithoutAScriptAndClosesIt) {
    const auto window = toolkit.createWindow(formWindow());
    int unloads = 0;
    window->unload = [&] { ++unloads; };
    EXPECT_NONFATAL_FAILURE(window->showModal([] {}), "frmSample");
    EXPECT_EQ(unloads, 1);
}

TEST_F(ScriptedUser, failsTheTestForAnUnexpectedFileDialogAndCancelsIt) {
    const auto window = toolkit.createWindow(windowWith({{.kind = ControlKind::fileDialog, .name = "cd1"}}));
    bool chosen = true;
    EXPECT_NONFATAL_FAILURE(chosen = window->get<FileDialog>("cd1").showOpen(), "file dialog");
    EXPECT_FALSE(chosen);
}

TEST_F(ScriptedUser, failsTheTestForAScriptThatNeverRan) {
    script->onWindow("frmNever", [](User&) {});
    EXPECT_NONFATAL_FAILURE(script->finish(), "frmNever");
}

TEST_F(ScriptedUser, failsTheTestForABoxThatWasNeverShown) {
    script->answer(MessageKind::warning, "没有显示", Answer::ok);
    EXPECT_NONFATAL_FAILURE(script->finish(), "没有显示");
}

}  // namespace
}  // namespace orvenmod::test
