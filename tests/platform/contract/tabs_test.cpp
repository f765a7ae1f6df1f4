#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

WindowDesign tabsWindow() {
    ControlDesign tabs = drawn(ControlKind::tabs, "SSTab1", 0, 4000), first = drawn(ControlKind::edit, "txtFirst", 500),
                  second = drawn(ControlKind::edit, "txtSecond", 500);
    tabs.pages = {"基本信息", "附件", "物料图片"};
    first.parent = second.parent = "SSTab1";
    second.page = 1;
    return windowWith({tabs, first, second});
}

TEST_F(ToolkitContract, tabsStartOnTheirFirstPage) {
    use(tabsWindow(), [](User& user) {
        auto& tabs = user.control<Tabs>("SSTab1");
        EXPECT_EQ(tabs.tab(), 0);
        EXPECT_EQ(tabs.tabCaption(2), "物料图片");
        tabs.setTabCaption(2, "图片");
        EXPECT_EQ(tabs.tabCaption(2), "图片");
    });
}

TEST_F(ToolkitContract, onlyTheControlsOfTheOpenPageTakeTheFocus) {
    use(tabsWindow(), [](User& user) {
        EXPECT_NO_THROW(user.control<Edit>("txtFirst").setFocus());
        EXPECT_THROW(user.control<Edit>("txtSecond").setFocus(), std::runtime_error);
        user.chooseTab("SSTab1", 1);
        EXPECT_EQ(user.control<Tabs>("SSTab1").tab(), 1);
        EXPECT_NO_THROW(user.control<Edit>("txtSecond").setFocus());
        EXPECT_THROW(user.control<Edit>("txtFirst").setFocus(), std::runtime_error);
        EXPECT_TRUE(user.control<Edit>("txtFirst").visible());
    });
}

TEST_F(ToolkitContract, codeOpensAPage) {
    use(tabsWindow(), [](User& user) {
        user.control<Tabs>("SSTab1").setTab(1);
        user.type("txtSecond", "x");
        EXPECT_EQ(user.control<Edit>("txtSecond").text(), "x");
    });
}

TEST_F(ToolkitContract, aPageCanBeMadeUnavailable) {
    use(tabsWindow(), [](User& user) {
        auto& tabs = user.control<Tabs>("SSTab1");
        EXPECT_TRUE(tabs.tabEnabled(2));
        tabs.setTabEnabled(2, false);
        EXPECT_FALSE(tabs.tabEnabled(2));
        EXPECT_TRUE(tabs.tabEnabled(1));
    });
}

TEST_F(ToolkitContract, keysTurnThePagesAndPassUnavailableOnes) {
    use(tabsWindow(), [](User& user) {
        auto& tabs = user.control<Tabs>("SSTab1");
        user.control<Edit>("txtFirst").setFocus();
        user.press("Ctrl+PageDown");
        EXPECT_EQ(tabs.tab(), 1);
        EXPECT_TRUE(user.control<Edit>("txtSecond").hasFocus());
        user.press("Ctrl+PageDown");
        EXPECT_EQ(tabs.tab(), 2);
        EXPECT_TRUE(tabs.hasFocus()) << "nothing lies on that page";
        user.press("Ctrl+PageDown");
        EXPECT_EQ(tabs.tab(), 0) << "the pages go round";
        tabs.setTabEnabled(2, false);
        user.press("Ctrl+PageUp");
        EXPECT_EQ(tabs.tab(), 1);
        user.press("Ctrl+PageUp");
        EXPECT_EQ(tabs.tab(), 0);
        EXPECT_TRUE(user.control<Edit>("txtFirst").hasFocus());
    });
}

}  // namespace
}  // namespace orvenmod::test
