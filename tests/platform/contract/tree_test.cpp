#include <stdexcept>
#include <vector>

#include "platform/contract/contract.h"

namespace orvenmod::test {
namespace {

using namespace platform;

WindowDesign treeWindow() { return windowWith({drawn(ControlKind::tree, "tv1", 0, 5000)}); }

void fill(Window& window) {
    auto& tree = window.get<Tree>("tv1");
    tree.add("", "D0", "物料", "root");
    tree.add("D0", "D7", "螺丝", "folder");
    tree.add("D0", "D3", "螺母", "folder");
    tree.add("D7", "D9", "不锈钢", "folder");
}

TEST_F(ToolkitContract, aTreeKnowsItsNodesByKeyAndByTheOrderOfAdding) {
    use(treeWindow(), fill, [](User& user) {
        auto& tree = user.control<Tree>("tv1");
        EXPECT_EQ(tree.count(), 4);
        EXPECT_TRUE(tree.has("D9"));
        EXPECT_FALSE(tree.has("D8"));
        EXPECT_EQ(tree.text("D3"), "螺母");
        EXPECT_EQ(tree.parent("D9"), "D7");
        EXPECT_EQ(tree.parent("D0"), "");
        EXPECT_EQ(tree.indexOf("D3"), 3);
        EXPECT_EQ(tree.keyAt(4), "D9");
        EXPECT_THROW(tree.keyAt(5), std::out_of_range);
        EXPECT_THROW(tree.keyAt(0), std::out_of_range);
        EXPECT_THROW(tree.text("D8"), std::runtime_error);
        EXPECT_THROW(tree.indexOf("D8"), std::runtime_error);
    });
}

TEST_F(ToolkitContract, aNodeWithoutItsParentOrWithATakenKeyIsRefused) {
    use(treeWindow(), fill, [](User& user) {
        auto& tree = user.control<Tree>("tv1");
        EXPECT_THROW(tree.add("D99", "D10", "孤儿", ""), std::runtime_error);
        EXPECT_THROW(tree.add("D0", "D7", "又一个", ""), std::runtime_error);
        EXPECT_EQ(tree.count(), 4);
        EXPECT_FALSE(tree.has("D10"));
        EXPECT_EQ(tree.text("D7"), "螺丝");
    });
}

TEST_F(ToolkitContract, removingANodeTakesAllBelowItAndMovesTheIndexesUp) {
    use(treeWindow(), fill, [](User& user) {
        auto& tree = user.control<Tree>("tv1");
        tree.select("D9");
        tree.remove("D7");
        EXPECT_EQ(tree.count(), 2);
        EXPECT_FALSE(tree.has("D7"));
        EXPECT_FALSE(tree.has("D9"));
        EXPECT_EQ(tree.indexOf("D3"), 2);
        EXPECT_EQ(tree.keyAt(2), "D3");
        EXPECT_THROW(tree.remove("D7"), std::runtime_error);
        tree.add("D0", "D7", "再来", "");
        EXPECT_EQ(tree.indexOf("D7"), 3);
    });
}

TEST_F(ToolkitContract, aClearedTreeHoldsNothing) {
    use(treeWindow(), fill, [](User& user) {
        auto& tree = user.control<Tree>("tv1");
        tree.select("D3");
        tree.clear();
        EXPECT_EQ(tree.count(), 0);
        EXPECT_EQ(tree.selected(), "");
        tree.add("", "D0", "又是", "");
        EXPECT_EQ(tree.indexOf("D0"), 1);
    });
}

TEST_F(ToolkitContract, ensureVisibleOpensTheNodesAbove) {
    use(treeWindow(), fill, [](User& user) {
        auto& tree = user.control<Tree>("tv1");
        EXPECT_FALSE(tree.expanded("D0"));
        tree.ensureVisible("D9");
        EXPECT_TRUE(tree.expanded("D0"));
        EXPECT_TRUE(tree.expanded("D7"));
        EXPECT_FALSE(tree.expanded("D9"));
        EXPECT_THROW(tree.ensureVisible("D8"), std::runtime_error);
    });
}

TEST_F(ToolkitContract, selectingByCodeRaisesNothing) {
    int clicks = 0;
    use(treeWindow(), fill, [&](User& user) {
        auto& tree = user.control<Tree>("tv1");
        tree.nodeClick = [&](const std::string&) { ++clicks; };
        EXPECT_EQ(tree.selected(), "");
        tree.select("D3");
        EXPECT_EQ(tree.selected(), "D3");
        tree.select("");
        EXPECT_EQ(tree.selected(), "");
        EXPECT_THROW(tree.select("D8"), std::runtime_error);
        EXPECT_EQ(clicks, 0);
    });
}

TEST_F(ToolkitContract, aClickOnANodeSelectsItAndRaisesItsKey) {
    std::vector<std::string> keys;
    use(
        treeWindow(),
        [&](Window& window) {
            fill(window);
            window.get<Tree>("tv1").nodeClick = [&](const std::string& key) {
                keys.push_back(key + "/" + window.get<Tree>("tv1").selected());
            };
        },
        [](User& user) {
            user.clickNode("tv1", "D9");
            user.clickNode("tv1", "D0");
        });
    EXPECT_EQ(keys, (std::vector<std::string>{"D9/D9", "D0/D0"}));
}

TEST_F(ToolkitContract, aRightClickOnANodeIsAClickOnItFirst) {
    std::vector<std::string> story;
    use(
        treeWindow(),
        [&](Window& window) {
            fill(window);
            auto& tree = window.get<Tree>("tv1");
            tree.nodeClick = [&](const std::string& key) { story.push_back(key); };
            tree.mouseDown = [&](MouseButton button) {
                if (button == MouseButton::right) story.push_back("menu of " + tree.selected());
            };
        },
        [](User& user) {
            user.clickNode("tv1", "D7");
            user.rightClickNode("tv1", "D9", "");
            user.rightClickNode("tv1", "D9", "");
        });
    EXPECT_EQ(story, (std::vector<std::string>{"D7", "D9", "menu of D9", "menu of D9"}));
}

TEST_F(ToolkitContract, theArrowKeysMoveThroughTheTree) {
    std::vector<std::string> keys;
    use(
        treeWindow(),
        [&](Window& window) {
            fill(window);
            window.get<Tree>("tv1").ensureVisible("D3");
            window.get<Tree>("tv1").nodeClick = [&](const std::string& key) { keys.push_back(key); };
        },
        [](User& user) {
            user.clickNode("tv1", "D0");
            user.press("Down");
            user.press("Down");
            user.press("Up");
        });
    EXPECT_EQ(keys, (std::vector<std::string>{"D0", "D7", "D3", "D7"}));
}

TEST_F(ToolkitContract, tenThousandNodesKeepTheirOrderThroughRemovals) {
    use(treeWindow(), [](User& user) {
        auto& tree = user.control<Tree>("tv1");
        tree.add("", "D0", "物料", "");
        for (int id = 1; id <= 10000; ++id) {
            tree.add(id % 100 == 1 ? "D0" : "D" + std::to_string(id - (id - 1) % 100), "D" + std::to_string(id), "类",
                     "");
        }
        EXPECT_EQ(tree.count(), 10001);
        tree.remove("D1");
        EXPECT_EQ(tree.count(), 9901);
        EXPECT_EQ(tree.indexOf("D101"), 2);
        EXPECT_EQ(tree.keyAt(9901), "D10000");
    });
}

}  // namespace
}  // namespace orvenmod::test
