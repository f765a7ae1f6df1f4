#include <stdexcept>
#include <vector>

#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

WindowDesign menuWindow() {
    ControlDesign list = drawn(ControlKind::listGrid, "vsf1", 500, 2000);
    list.columns = {{.title = "代码"}};
    WindowDesign design = windowWith({drawn(ControlKind::tree, "tv1"), list});
    design.menus = {
        {.name = "MenuFile", .caption = "文件(&F)"},
        {.name = "MenuFileSave", .caption = "保存", .parent = "MenuFile", .shortcut = "Ctrl+S"},
        {.name = "MenuFileBar", .caption = "-", .parent = "MenuFile"},
        {.name = "MenuFileExit", .caption = "退出", .parent = "MenuFile", .shortcut = "Ctrl+X"},
        {.name = "MenuEdit", .caption = "编辑(&E)"},
        {.name = "MenuNewAfterSave", .caption = "保存后新增", .parent = "MenuEdit", .checked = true, .checkable = true},
        {.name = "MenuLockDetail", .caption = "禁用", .parent = "MenuEdit", .enabled = false},
    };
    design.toolbar = "Toolbar1";
    design.toolButtons = {{.key = "Excel", .caption = "Excel", .icon = "excel"},
                          {.key = "Exit", .caption = "关闭", .icon = "exit", .separatorBefore = true}};
    return design;
}

TEST_F(ToolkitContract, choosingAMenuRaisesItsEvent) {
    std::vector<std::string> chosen;
    use(
        menuWindow(),
        [&](Window& window) { window.get<Menu>("MenuFileSave").click = [&] { chosen.emplace_back("save"); }; },
        [&](User& user) {
            user.chooseMenu("MenuFileSave");
            EXPECT_EQ(chosen.size(), 1U);
            user.press("Ctrl+S");
            EXPECT_EQ(chosen.size(), 2U);
        });
}

TEST_F(ToolkitContract, theShortcutOfADisabledMenuDoesNothing) {
    int chosen = 0;
    use(
        menuWindow(),
        [&](Window& window) {
            window.get<Menu>("MenuFileExit").click = [&] { ++chosen; };
            window.get<Menu>("MenuFileExit").setEnabled(false);
            EXPECT_FALSE(window.get<Menu>("MenuFileExit").enabled());
        },
        [&](User& user) {
            user.press("Ctrl+X");
            EXPECT_EQ(chosen, 0);
            user.control<Menu>("MenuFileExit").setEnabled(true);
            user.press("Ctrl+X");
            EXPECT_EQ(chosen, 1);
        });
}

TEST_F(ToolkitContract, aMenusCaptionAndMarkAreReadAndWritten) {
    use(menuWindow(), [](User& user) {
        auto& menu = user.control<Menu>("MenuNewAfterSave");
        EXPECT_EQ(menu.caption(), "保存后新增");
        menu.setCaption("存后新增(&N)");
        EXPECT_EQ(menu.caption(), "存后新增(&N)");
        EXPECT_TRUE(menu.checked());
        menu.setChecked(false);
        EXPECT_FALSE(menu.checked());
        EXPECT_FALSE(user.control<Menu>("MenuLockDetail").enabled());
        EXPECT_TRUE(user.control<Menu>("MenuLockDetail").visible());
    });
}

TEST_F(ToolkitContract, theMarkOfAMenuIsLeftToItsHandler) {
    use(
        menuWindow(),
        [](Window& window) {
            auto& menu = window.get<Menu>("MenuNewAfterSave");
            menu.click = [&menu] { menu.setChecked(!menu.checked()); };
        },
        [](User& user) {
            user.chooseMenu("MenuNewAfterSave");
            EXPECT_FALSE(user.control<Menu>("MenuNewAfterSave").checked());
            user.chooseMenu("MenuNewAfterSave");
            EXPECT_TRUE(user.control<Menu>("MenuNewAfterSave").checked());
        });
}

TEST_F(ToolkitContract, aHiddenMenuKeepsItsShortcutFromWorking) {
    int chosen = 0;
    use(
        menuWindow(),
        [&](Window& window) {
            window.get<Menu>("MenuFileSave").click = [&] { ++chosen; };
            window.get<Menu>("MenuFileSave").setVisible(false);
            EXPECT_FALSE(window.get<Menu>("MenuFileSave").visible());
        },
        [&](User& user) {
            user.press("Ctrl+S");
            EXPECT_EQ(chosen, 0);
        });
}

TEST_F(ToolkitContract, aMenuOutsideTheBarPopsUpAllTheSame) {
    int chosen = 0;
    use(
        menuWindow(),
        [&](Window& window) {
            window.get<Menu>("MenuFile").setVisible(false);
            window.get<Menu>("MenuFileSave").click = [&] { ++chosen; };
            window.get<ListGrid>("vsf1").mouseDown = [&window](MouseButton) { window.get<Menu>("MenuFile").popUp(); };
        },
        [&](User& user) {
            user.rightClick("vsf1", "MenuFileSave");
            EXPECT_EQ(chosen, 1);
        });
}

TEST_F(ToolkitContract, aRightClickPopsAMenuUp) {
    std::vector<std::string> story;
    use(
        menuWindow(),
        [&](Window& window) {
            window.get<Tree>("tv1").add("", "D0", "全部", "");
            window.get<ListGrid>("vsf1").addRow("1");
            window.get<ListGrid>("vsf1").mouseDown = [&](MouseButton button) {
                if (button != MouseButton::right) return;
                window.get<Menu>("MenuFile").popUp();
                story.emplace_back("after");
            };
            window.get<Tree>("tv1").mouseDown = [&](MouseButton button) {
                if (button == MouseButton::right) window.get<Menu>("MenuEdit").popUp();
            };
            window.get<Menu>("MenuFileSave").click = [&] { story.emplace_back("save"); };
            window.get<Menu>("MenuNewAfterSave").click = [&] { story.emplace_back("mark"); };
        },
        [&](User& user) {
            user.rightClick("vsf1", "MenuFileSave");
            EXPECT_EQ(story.size(), 2U);
            user.rightClick("vsf1", "");
            EXPECT_EQ(story.size(), 3U);
            EXPECT_EQ(story.back(), "after");
            user.rightClick("tv1", "MenuNewAfterSave");
            EXPECT_EQ(story.back(), "mark");
        });
}

TEST_F(ToolkitContract, aFailureOfAMenuInAPopUpIsShown) {
    use(
        menuWindow(),
        [](Window& window) {
            window.get<ListGrid>("vsf1").mouseDown = [&window](MouseButton) { window.get<Menu>("MenuFile").popUp(); };
            window.get<Menu>("MenuFileSave").click = [] { throw std::runtime_error("写不进"); };
        },
        [](User& user) {
            user.answer(MessageKind::critical, "写不进");
            user.rightClick("vsf1", "MenuFileSave");
            EXPECT_TRUE(user.window().shown());
        });
}

TEST_F(ToolkitContract, aToolbarButtonRaisesItsKey) {
    std::vector<std::string> keys;
    use(
        menuWindow(),
        [&](Window& window) {
            window.get<Toolbar>("Toolbar1").buttonClick = [&](const std::string& key) { keys.push_back(key); };
        },
        [](User& user) {
            user.clickTool("Excel");
            user.clickTool("Exit");
        });
    EXPECT_EQ(keys, (std::vector<std::string>{"Excel", "Exit"}));
}

TEST_F(ToolkitContract, toolbarButtonsAreHiddenAndDisabledByTheirKey) {
    use(menuWindow(), [](User& user) {
        auto& toolbar = user.control<Toolbar>("Toolbar1");
        EXPECT_TRUE(toolbar.hasButton("Excel"));
        EXPECT_FALSE(toolbar.hasButton("Previ"));
        EXPECT_TRUE(toolbar.buttonVisible("Excel"));
        EXPECT_TRUE(toolbar.buttonEnabled("Excel"));
        toolbar.setButtonVisible("Excel", false);
        EXPECT_FALSE(toolbar.buttonVisible("Excel"));
        EXPECT_TRUE(toolbar.buttonVisible("Exit"));
        toolbar.setButtonEnabled("Exit", false);
        EXPECT_FALSE(toolbar.buttonEnabled("Exit"));
        EXPECT_THROW(toolbar.setButtonEnabled("Previ", false), std::runtime_error);
    });
}

}  // namespace
}  // namespace orvenmod::test
