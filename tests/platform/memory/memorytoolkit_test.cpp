// What only the toolkit in memory offers: the driver's hooks, and designs as data that tests can list.
#include "platform/memory/memorytoolkit.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/contract/contract.h"
#include "platform/memory/memorycontrols.h"
#include "platform/memory/memorydriver.h"
#include "platform/memory/memorywindow.h"

namespace orvenmod::test {
namespace {

using namespace platform;
using namespace platform::memory;

/// Notes what it is asked, and acts where a test tells it to.
class NotingDriver final : public MemoryDriver {
public:
    void onModal(MemoryWindow& window) override {
        story.push_back("modal " + window.name());
        if (act) act(window);
    }
    Answer onMessage(MessageKind, const std::string& text, const std::string&) override {
        story.push_back("message " + text);
        return Answer::ok;
    }
    std::string onFileDialog(bool save, const std::string& filter) override {
        story.push_back((save ? "save " : "open ") + filter);
        return "C:\\suite\\物料.xls";
    }
    void onPopUp(MemoryMenu& menu) override { story.push_back("popup " + menu.name()); }
    void onDocument(const std::string& path) override { story.push_back("document " + path); }

    std::vector<std::string> story;
    std::function<void(MemoryWindow&)> act;
};

TEST(MemoryToolkit, asksItsDriverForAllThatAUserWouldDo) {
    NotingDriver driver;
    MemoryToolkit toolkit(driver);
    WindowDesign design = windowWith({{.kind = ControlKind::fileDialog, .name = "cd1"}});
    design.menus = {{.name = "MenuEdit", .caption = "编辑"}};
    const auto window = toolkit.createWindow(design);
    driver.act = [&](MemoryWindow& front) {
        EXPECT_EQ(toolkit.front(), &front);
        front.get<FileDialog>("cd1").setFilter("Excel文件(*.xls)|*.xls");
        EXPECT_TRUE(front.get<FileDialog>("cd1").showSave());
        EXPECT_EQ(front.get<FileDialog>("cd1").fileTitle(), "物料.xls");
        front.get<Menu>("MenuEdit").popUp();
        toolkit.message(MessageKind::warning, "空", "");
    };
    window->showModal([] {});
    EXPECT_EQ(toolkit.front(), nullptr);
    EXPECT_EQ(driver.story, (std::vector<std::string>{"modal frmSample", "save Excel文件(*.xls)|*.xls",
                                                      "popup MenuEdit", "message 空"}));
}

TEST(MemoryToolkit, countsHowOftenItPaints) {
    NotingDriver driver;
    MemoryToolkit toolkit(driver);
    toolkit.paintPending();
    toolkit.paintPending();
    EXPECT_EQ(toolkit.paints(), 2);
}

TEST(MemoryToolkit, leavesNoWindowInFrontAfterAFailedLoad) {
    NotingDriver driver;
    MemoryToolkit toolkit(driver);
    const auto window = toolkit.createWindow(windowWith({}));
    EXPECT_THROW(window->showModal([] { throw std::runtime_error("x"); }), std::runtime_error);
    EXPECT_EQ(toolkit.front(), nullptr);
    EXPECT_TRUE(driver.story.empty());
}

TEST(MemoryToolkit, refusesADesignThatDoesNotHoldTogether) {
    NotingDriver driver;
    MemoryToolkit toolkit(driver);
    EXPECT_THROW(toolkit.createWindow(windowWith({drawn(ControlKind::edit, "txt"), drawn(ControlKind::edit, "txt")})),
                 std::logic_error);
    ControlDesign orphan = drawn(ControlKind::edit, "txt");
    orphan.parent = "Frame9";
    EXPECT_THROW(toolkit.createWindow(windowWith({orphan})), std::logic_error);
    EXPECT_THROW(toolkit.createWindow(windowWith({drawn(ControlKind::menu, "MenuFile")})), std::logic_error);
}

TEST(MemoryToolkit, givesTheDesignBackAsData) {
    NotingDriver driver;
    MemoryToolkit toolkit(driver);
    MemoryWindow window(toolkit, windowWith({drawn(ControlKind::edit, "txtName")}));
    ASSERT_EQ(window.design().controls.size(), 1U);
    EXPECT_EQ(window.design().controls[0].name, "txtName");
}

TEST_F(ToolkitContract, aUserCannotActInAWindowThatLiesBehindAnother) {
    ControlDesign button = drawn(ControlKind::button, "cmdOK");
    WindowDesign inner = windowWith({});
    inner.name = "frmInner";
    use(
        windowWith({button}),
        [&](Window& window) {
            window.get<Button>("cmdOK").click = [&] { toolkit.createWindow(inner)->showModal([] {}); };
        },
        [&](User& outer) {
            script->onWindow("frmInner", [&outer](User&) { outer.click("cmdOK"); });
            EXPECT_NONFATAL_FAILURE(outer.click("cmdOK"), "another window lies in front");
        });
}

TEST_F(ToolkitContract, aUserCannotActInAWindowThatIsClosed) {
    EXPECT_NONFATAL_FAILURE(use(windowWith({drawn(ControlKind::button, "cmdOK")}),
                                [](User& user) {
                                    user.closeWindow();
                                    user.click("cmdOK");
                                }),
                            "the window is closed");
}

TEST_F(ToolkitContract, aMnemonicPressesItsButton) {
    ControlDesign button = drawn(ControlKind::button, "cmdFind");
    button.caption = "搜索(&F)";
    int clicks = 0;
    use(
        windowWith({drawn(ControlKind::edit, "txtSearch"), button}),
        [&](Window& window) { window.get<Button>("cmdFind").click = [&] { ++clicks; }; },
        [](User& user) {
            user.press("Alt+F");
            user.control<Button>("cmdFind").setEnabled(false);
            user.press("Alt+F");
        });
    EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace orvenmod::test
