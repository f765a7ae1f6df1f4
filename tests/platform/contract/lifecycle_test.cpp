#include <stdexcept>
#include <vector>

#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

WindowDesign buttonWindow() {
    ControlDesign button = drawn(ControlKind::button, "cmdOK");
    button.caption = "确定(&O)";
    return windowWith({button});
}

TEST_F(ToolkitContract, aWindowLoadsThenResizesThenLivesThenUnloads) {
    std::vector<std::string> story;
    const auto window = toolkit.createWindow(buttonWindow());
    window->resize = [&] { story.emplace_back("resize"); };
    window->unload = [&] { story.emplace_back("unload"); };
    script->onWindow("frmSample", [&](User& user) {
        story.emplace_back("steps");
        user.closeWindow();
    });
    EXPECT_FALSE(window->shown());
    window->showModal([&] {
        EXPECT_TRUE(window->shown());
        story.emplace_back("load");
    });
    EXPECT_FALSE(window->shown());
    ASSERT_GE(story.size(), 4U);
    EXPECT_EQ(story.front(), "load");
    EXPECT_EQ(story[1], "resize");
    EXPECT_EQ(story[story.size() - 2], "steps");
    EXPECT_EQ(story.back(), "unload");
}

TEST_F(ToolkitContract, theHourglassShowsWhileAWindowLoads) {
    const auto window = toolkit.createWindow(buttonWindow());
    script->onWindow("frmSample", [&](User& user) { EXPECT_EQ(user.window().pointer(), Pointer::arrow); });
    window->showModal([&] { EXPECT_EQ(window->pointer(), Pointer::hourglass); });
}

TEST_F(ToolkitContract, paintingDuringLongWorkTakesNoInput) {
    int clicks = 0;
    use(
        buttonWindow(),
        [&](Window& window) {
            window.get<Button>("cmdOK").click = [&] { ++clicks; };
            for (int part = 0; part < 3; ++part)
                toolkit.paintPending();
        },
        [&](User& user) {
            EXPECT_EQ(clicks, 0);
            user.click("cmdOK");
            EXPECT_EQ(clicks, 1);
        });
}

TEST_F(ToolkitContract, thePointerIsWhatCodeSetsIt) {
    use(buttonWindow(), [](User& user) {
        user.window().setPointer(Pointer::hourglass);
        EXPECT_EQ(user.window().pointer(), Pointer::hourglass);
        user.window().setPointer(Pointer::arrow);
        EXPECT_EQ(user.window().pointer(), Pointer::arrow);
    });
}

TEST_F(ToolkitContract, aFailureWhileLoadingGoesToTheCallerWithoutResizeAndUnload) {
    const auto window = toolkit.createWindow(buttonWindow());
    bool raised = false;
    window->resize = [&] { raised = true; };
    window->unload = [&] { raised = true; };
    try {
        window->showModal([] { throw std::runtime_error("列名无效"); });
        FAIL() << "the failure was lost";
    } catch (const std::runtime_error& failure) {
        EXPECT_STREQ(failure.what(), "列名无效");
    }
    EXPECT_FALSE(raised);
    EXPECT_FALSE(window->shown());
    EXPECT_EQ(window->pointer(), Pointer::arrow);
    EXPECT_TRUE(script->messages().empty());
}

TEST_F(ToolkitContract, aWindowCanBeShownAgain) {
    const auto window = toolkit.createWindow(buttonWindow());
    int unloads = 0;
    window->unload = [&] { ++unloads; };
    for (int round = 1; round <= 2; ++round) {
        script->onWindow("frmSample", [](User& user) { user.closeWindow(); });
        window->showModal([] {});
        EXPECT_EQ(unloads, round);
    }
}

TEST_F(ToolkitContract, aWindowClosedWhileItLoadsUnloadsAndTakesNoInput) {
    const auto window = toolkit.createWindow(buttonWindow());
    int unloads = 0;
    window->unload = [&] { ++unloads; };
    window->showModal([&] { window->close(); });
    EXPECT_EQ(unloads, 1);
    EXPECT_FALSE(window->shown());
}

TEST_F(ToolkitContract, aWindowStillOpenWhenTheScriptEndsIsClosed) {
    int unloads = 0;
    use(
        buttonWindow(), [&](Window& window) { window.unload = [&] { ++unloads; }; }, [](User&) {});
    EXPECT_EQ(unloads, 1);
}

TEST_F(ToolkitContract, closeFromAnEventEndsTheWindowAfterTheEvent) {
    std::vector<std::string> story;
    use(
        buttonWindow(),
        [&](Window& window) {
            window.get<Button>("cmdOK").click = [&] {
                window.close();
                story.emplace_back("after close");
            };
            window.unload = [&] { story.emplace_back("unload"); };
        },
        [](User& user) { user.click("cmdOK"); });
    EXPECT_EQ(story, (std::vector<std::string>{"after close", "unload"}));
}

TEST_F(ToolkitContract, aFailureThatEscapesAnEventIsShownAndTheWindowLivesOn) {
    toolkit.setFailureTitle([] { return std::string("进销存"); });
    int clicks = 0;
    use(
        buttonWindow(),
        [&](Window& window) {
            window.get<Button>("cmdOK").click = [&] {
                if (++clicks == 1) throw std::runtime_error("语法错误");
            };
        },
        [&](User& user) {
            user.answer(MessageKind::critical, "语法错误");
            user.click("cmdOK");
            EXPECT_TRUE(user.window().shown());
            user.click("cmdOK");
        });
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(script->messages(), (std::vector<ShownMessage>{{MessageKind::critical, "语法错误", "进销存"}}));
}

TEST_F(ToolkitContract, aFailureInUnloadIsShownAndTheWindowStaysClosed) {
    use(
        buttonWindow(), [](Window& window) { window.unload = [] { throw std::runtime_error("写不进文件"); }; },
        [](User& user) {
            user.answer(MessageKind::critical, "写不进文件");
            user.closeWindow();
        });
    EXPECT_EQ(script->messages().size(), 1U);
}

TEST_F(ToolkitContract, aWindowTicksWhileItIsShown) {
    const auto window = toolkit.createWindow(buttonWindow());
    int ticks = 0;
    window->tick = [&] { ++ticks; };
    for (int round = 1; round <= 2; ++round) {
        script->onWindow("frmSample", [&](User& user) {
            ticks = 0;
            user.rest();
            EXPECT_EQ(ticks, 1);
            user.rest();
            user.closeWindow();
            user.rest();
            EXPECT_EQ(ticks, 2);
        });
        window->showModal([] {});
        EXPECT_EQ(ticks, 2);
    }
}

TEST_F(ToolkitContract, aWindowTicksUnderAnother) {
    WindowDesign inner = windowWith({});
    inner.name = "frmInner";
    int ticks = 0;
    use(
        buttonWindow(),
        [&](Window& window) {
            window.tick = [&] { ++ticks; };
            window.get<Button>("cmdOK").click = [&] { toolkit.createWindow(inner)->showModal([] {}); };
        },
        [&](User& user) {
            script->onWindow("frmInner", [&](User& innerUser) {
                innerUser.rest();
                EXPECT_EQ(ticks, 1);
            });
            user.click("cmdOK");
        });
    EXPECT_EQ(ticks, 1);
}

TEST_F(ToolkitContract, aFailureInATickIsShownAndTheWindowLivesOn) {
    int ticks = 0;
    use(
        buttonWindow(),
        [&](Window& window) {
            window.tick = [&] {
                if (++ticks == 1) throw std::runtime_error("磁盘已满");
            };
        },
        [&](User& user) {
            user.answer(MessageKind::critical, "磁盘已满");
            user.rest();
            user.rest();
            EXPECT_EQ(ticks, 2);
        });
}

TEST_F(ToolkitContract, resizingByTheUserRaisesResizeWithTheNewSize) {
    std::vector<float> widths;
    use(
        buttonWindow(), [&](Window& window) { window.resize = [&] { widths.push_back(window.innerWidth()); }; },
        [&](User& user) {
            widths.clear();
            user.resizeWindow(12000, 7500);
            EXPECT_NEAR(user.window().innerWidth(), 12000, 15);
            EXPECT_NEAR(user.window().innerHeight(), 7500, 15);
        });
    ASSERT_FALSE(widths.empty());
    EXPECT_NEAR(widths.back(), 12000, 15);
}

TEST_F(ToolkitContract, aUserGrowsAWindowNoFurtherThanItsMeasuresCount) {
    use(buttonWindow(), [](User& user) {
        user.resizeWindow(50000, 40000);
        EXPECT_EQ(user.window().innerWidth(), kLargestInner);
        EXPECT_EQ(user.window().innerHeight(), kLargestInner);
    });
}

TEST_F(ToolkitContract, setInnerSizeRaisesResizeWhileTheWindowIsShown) {
    const auto window = toolkit.createWindow(buttonWindow());
    int resizes = 0;
    window->resize = [&] { ++resizes; };
    window->setInnerSize(6000, 4500);
    EXPECT_EQ(resizes, 0);
    EXPECT_NEAR(window->innerWidth(), 6000, 15);
    script->onWindow("frmSample", [&](User&) {
        resizes = 0;
        window->setInnerSize(7500, 6000);
        EXPECT_GE(resizes, 1);
    });
    window->showModal([] {});
}

TEST_F(ToolkitContract, aModalWindowOpensOverAnother) {
    WindowDesign inner = windowWith({drawn(ControlKind::edit, "txtName")});
    inner.name = "frmInner";
    std::string typed;
    use(
        buttonWindow(),
        [&](Window& window) {
            window.get<Button>("cmdOK").click = [&] {
                const auto dialog = toolkit.createWindow(inner);
                dialog->unload = [&] { typed = dialog->get<Edit>("txtName").text(); };
                dialog->showModal([] {});
            };
        },
        [&](User& user) {
            script->onWindow("frmInner", [](User& innerUser) {
                innerUser.type("txtName", "螺丝");
                innerUser.closeWindow();
            });
            user.click("cmdOK");
            EXPECT_TRUE(user.window().shown());
            EXPECT_EQ(typed, "螺丝");
        });
}

TEST_F(ToolkitContract, aFailureWhileAnInnerWindowLoadsReachesTheEventThatOpenedIt) {
    WindowDesign inner = windowWith({});
    inner.name = "frmInner";
    std::string caught;
    use(
        buttonWindow(),
        [&](Window& window) {
            window.get<Button>("cmdOK").click = [&] {
                const auto dialog = toolkit.createWindow(inner);
                try {
                    dialog->showModal([] { throw std::runtime_error("无此表"); });
                } catch (const std::runtime_error& failure) {
                    caught = failure.what();
                }
            };
        },
        [](User& user) { user.click("cmdOK"); });
    EXPECT_EQ(caught, "无此表");
}

TEST_F(ToolkitContract, controlsAreHandedOutByNameIndexAndKind) {
    ControlDesign first = drawn(ControlKind::edit, "txt"), second = drawn(ControlKind::edit, "txt", 500);
    first.index = 0;
    second.index = 1;
    WindowDesign design = windowWith({first, second});
    design.menus = {{.name = "MenuFile", .caption = "文件(&F)"}};
    const auto window = toolkit.createWindow(design);
    EXPECT_EQ(window->find("txt"), nullptr);
    EXPECT_EQ(window->find("nothing"), nullptr);
    EXPECT_EQ(window->find("txt", 1)->index(), 1);
    EXPECT_EQ(window->get<Edit>("txt", 1).kind(), ControlKind::edit);
    EXPECT_THROW(window->get<Button>("txt", 1), std::logic_error);
    EXPECT_THROW(window->get<Edit>("txt", 2), std::logic_error);
    ASSERT_EQ(window->controls().size(), 3U);
    EXPECT_EQ(window->controls()[1], window->find("txt", 1));
    EXPECT_EQ(window->controls()[2]->kind(), ControlKind::menu);
    EXPECT_EQ(window->caption(), "样窗");
    window->setCaption("物料");
    EXPECT_EQ(window->caption(), "物料");
}

}  // namespace
}  // namespace orvenmod::test
