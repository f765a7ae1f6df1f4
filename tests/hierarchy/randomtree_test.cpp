// Thousands of random edits beside a plain tree in memory: after each, paths, depths, parents and codes of both tables
// agree with it.
#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>

#include "frame/appstate.h"
#include "hierarchy/categorysave.h"
#include "hierarchy/hierarchytest.h"
#include "hierarchy/itemroutines.h"
#include "hierarchy/plaintree.h"

namespace orvenmod::test {
namespace {

class RandomTree : public HierarchyTest {
protected:
    void SetUp() override {
        database().execute("delete from tblItem");
        database().execute("delete from ICItem");
        database().execute("delete from tblMaxNum");
        database().execute("delete from tblBillInfo");
        database().execute("delete from tblbillinfoentry");
        for (const int type : {1, 31, 41, 51, 61, 71}) {
            database().execute("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(" + std::to_string(type) +
                               ",'fCustId',1)");
        }
        seed = std::getenv("ORVEN_SEED") ? static_cast<unsigned>(std::atoi(std::getenv("ORVEN_SEED")))
                                         : std::random_device()();
        random.seed(seed);
    }

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }

    /// Some node of that sort, 0 where there is none.
    int pick(bool detail) {
        std::vector<int> found;
        for (const auto& [id, node] : tree.nodes)
            if (node.detail == detail) found.push_back(id);
        return found.empty() ? 0 : found[static_cast<std::size_t>(below(static_cast<int>(found.size())))];
    }
    int parent() { return below(4) == 0 ? 0 : pick(false); }
    std::string shortCode() {
        static const std::vector<std::string> kCodes = {"01", "02", "03", "1", "A", "a b", "甲", "X.Y", "007", "Z9"};
        return kCodes[static_cast<std::size_t>(below(static_cast<int>(kCodes.size())))] + std::to_string(below(30));
    }

    void insertCategoryOp() {
        const int top = tree.nodes.size() > 150 ? 0 : parent();
        const std::string code = shortCode();
        const CategoryChange wanted{"类" + code, code, tree.composed(top, code), std::to_string(top)};
        if (wanted.code.size() > 90) return;
        if (tree.isTaken(wanted.code)) {
            script().answer(MessageKind::warning, "代码不能重复!", Answer::ok);
            EXPECT_FALSE(insertCategory(wanted));
            return;
        }
        EXPECT_TRUE(insertCategory(wanted));
        tree.nodes[++tree.lastId] = {top, false, code, wanted.code, wanted.name};
    }

    void insertItemOp() {
        if (tree.lastId == 0) return;
        const int top = parent();
        const std::string code = shortCode();
        const std::string full = tree.composed(top, code);
        if (full.size() > 90 || tree.isTaken(full)) return;
        const int id = ++tree.lastId;
        tree.nodes[id] = {top, true, code, full, "物" + code};
        database().execute("update tblMaxNum set fMaxNum=" + std::to_string(id) + " where fTableName='tblItem'");
        database().addItem(3, id, full, "物" + code, top);
        database().execute("update tblItem set fShortNumber='" + code + "' where fItemId=" + std::to_string(id));
    }

    void changeOp() {
        const int id = pick(false);
        if (id == 0) return;
        const Node& node = tree.nodes.at(id);
        const int top = below(3) == 0 ? node.parent : parent();
        const std::string code = below(3) == 0 ? node.shortCode : shortCode();
        std::string full = tree.composed(top, code);
        if (below(10) == 0) full = "H" + std::to_string(below(1000));  // written by hand
        if (full.size() > 60) return;
        appState().gCurItemId = id;
        const CategoryChange wanted{"类" + full, code, full, std::to_string(top)};
        const auto codes = tree.recoded(id, full);
        if (codes && std::ranges::any_of(*codes, [](const auto& each) { return each.second.size() > 90; })) return;
        const bool taken = tree.isTaken(full, id);
        const bool inItself = tree.isBelow(top, id);
        if (taken || inItself) {
            script().answer(MessageKind::warning,
                            taken ? "代码不能重复!" : "新分类设置不正确，不能设置在原有分类及其以下分类，请检查！",
                            Answer::ok);
        } else if (!codes) {
            script().answer(MessageKind::critical, "无效的过程调用或参数", Answer::ok);
        }
        const bool stored = !taken && !inItself && codes;
        EXPECT_EQ(moveCategory(wanted), stored);
        if (!stored) return;
        for (const auto& [other, moved] : *codes)
            tree.nodes[other].code = moved;
        tree.nodes[id].parent = top;
        tree.nodes[id].shortCode = code;
        tree.nodes[id].name = wanted.name;
    }

    // What the editor does when an item changes its category.
    void moveItemOp() {
        const int id = pick(true);
        if (id == 0) return;
        Node& node = tree.nodes.at(id);
        const int top = parent();
        const std::string full = tree.composed(top, node.shortCode);
        if (full.size() > 90 || tree.isTaken(full, id)) return;
        node.parent = top;
        node.code = full;
        const std::string number = std::to_string(id);
        database().execute("update tblItem set fNumber='" + full + "',fParentId=" + std::to_string(top) +
                           ",fDepth=" + std::to_string(tree.depth(id)) + ",fNBNumber='" + tree.path(id) +
                           "' where fItemId=" + number);
        database().execute("update ICItem set fNumber='" + full + "' where fItemId=" + number);
    }

    void deleteCategoryOp() {
        const int id = pick(false);
        if (id == 0) return;
        const bool refused = tree.hasChildren(id);
        if (refused) script().answer(MessageKind::warning, "该分类下面还有明细，不能删除!", Answer::ok);
        EXPECT_EQ(delParent(id), !refused);
        if (!refused) tree.nodes.erase(id);
    }

    void deleteItemOp() {
        const int id = pick(true);
        if (id == 0) return;
        appState().gCurItemId = id;
        const Node& node = tree.nodes.at(id);
        const bool refused = node.locked;
        if (refused) script().answer(MessageKind::warning, node.name + "已经禁用,不能删除!", Answer::ok);
        EXPECT_EQ(delDetail(), !refused);
        if (!refused) tree.nodes.erase(id);
    }

    void lockOp() {
        const int id = pick(true);
        if (id == 0) return;
        appState().gCurItemId = id;
        bool& locked = tree.nodes.at(id).locked;
        const bool wanted = below(2) == 0;
        if (wanted == locked) {
            script().answer(MessageKind::warning, wanted ? "该项目已经禁用！" : "该项目未禁用！", Answer::ok);
        }
        EXPECT_EQ(wanted ? lockDetail() : unLockDetail(), wanted != locked);
        locked = wanted;
    }

    unsigned seed = 0;
    std::mt19937 random;
    PlainTree tree;
};

TEST_F(RandomTree, agreesWithAPlainTreeAfterEveryEdit) {
    SCOPED_TRACE("ORVEN_SEED=" + std::to_string(seed));
    std::printf("seed %u\n", seed);
    constexpr int kEdits = 3000;
    for (int edit = 0; edit < kEdits; ++edit) {
        SCOPED_TRACE("edit " + std::to_string(edit));
        const int dice = below(100);
        if (dice < 20) {
            insertCategoryOp();
        } else if (dice < 40) {
            insertItemOp();
        } else if (dice < 65) {
            changeOp();
        } else if (dice < 75) {
            moveItemOp();
        } else if (dice < 85) {
            deleteCategoryOp();
        } else if (dice < 92) {
            deleteItemOp();
        } else {
            lockOp();
        }
        ASSERT_EQ(stage.items(), tree.items());
        ASSERT_EQ(stage.goods(), tree.details());
        if (HasFailure()) return;
    }
    EXPECT_GT(tree.nodes.size(), 20U);
}

}  // namespace
}  // namespace orvenmod::test
