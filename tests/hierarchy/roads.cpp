#include "hierarchy/roads.h"

#include "frame/appstate.h"
#include "frame/services.h"
#include "hierarchy/frmItemUsage_design.h"
#include "hierarchy/frmParent_design.h"
#include "platform/progress.h"
#include "support/keyboardwalk.h"

namespace orvenmod::test {

void HierarchyRoads::SetUp() { stage.catalogueOneFieldAFamily(); }

namespace {

using platform::Button;
using platform::Combo;
using platform::Edit;
using platform::ListGrid;
using platform::Tree;

/// Notes the pointer of a window each time that the windows may paint.
class WatchedToolkit : public platform::Toolkit {
public:
    explicit WatchedToolkit(platform::Toolkit& target) : target_(target) {}

    std::unique_ptr<platform::Window> createWindow(const platform::WindowDesign& design) override {
        return target_.createWindow(design);
    }
    std::unique_ptr<platform::Report> createReport() override { return target_.createReport(); }
    Answer message(MessageKind kind, const std::string& text, const std::string& title) override {
        return target_.message(kind, text, title);
    }
    bool warnOffering(const std::string& text, const std::string& title, const std::string& further) override {
        return target_.warnOffering(text, title, further);
    }
    void sendTab() override { target_.sendTab(); }
    void openDocument(const std::string& path) override { target_.openDocument(path); }
    void paintPending() override {
        target_.paintPending();
        if (watched != nullptr) pointers.push_back(watched->pointer());
    }
    std::unique_ptr<platform::Progress> createProgress(const std::string& text, const std::string& title,
                                                       int whole) override {
        return target_.createProgress(text, title, whole);
    }

    platform::Window* watched = nullptr;
    std::vector<platform::Pointer> pointers;

private:
    platform::Toolkit& target_;
};

TEST_P(HierarchyRoads, theDialogIsWorkedByKeyboard) { walkByKeyboard(stage.script(), parentDesign()); }

TEST_P(HierarchyRoads, theUsageIsReadByKeyboard) { walkByKeyboard(stage.script(), itemUsageDesign()); }

TEST_P(HierarchyRoads, aClerkGrowsTheTree) {
    stage.open([this](User& list) {
        list.clickNode("tv1", "D13");
        stage.script().onWindow("frmParent", [](User& user) {
            EXPECT_EQ(user.control<platform::Tabs>("SSTab1").tabCaption(0), "货品分类");
            EXPECT_EQ(user.control<Combo>("cmb", 0).selected(), 2);
            user.type("txt", " 07", 1);
            EXPECT_EQ(user.control<Edit>("txt", 2).text(), "01.01. 07");
            user.press("Enter");
            EXPECT_TRUE(user.control<Edit>("txt", 0).hasFocus());
            user.answer(MessageKind::warning, "请输入分类名称!");
            user.click("cmdOperate");
            user.type("txt", "灯具", 0);
            user.pick("cmb", 3, 0);
            EXPECT_EQ(user.control<Edit>("txt", 2).text(), "02.07");
            user.answer(MessageKind::information, kSaved);
            user.click("cmdOperate");
            EXPECT_TRUE(user.control<Edit>("txt", 1).hasFocus());
            user.click("cmdClose");
        });
        list.click("MenuParentEditNew");
        EXPECT_EQ(list.control<Tree>("tv1").parent("D105"), "D14");
    });
    EXPECT_EQ(stage.database().value("select fnbnumber from tblItem where fitemid=105"), ".14.105.");
}

TEST_P(HierarchyRoads, aClerkMovesACategory) {
    stage.openUpdate(13, [](User& user) {
        EXPECT_EQ(user.control<Button>("cmdOperate").caption(), "修改(&U)");
        EXPECT_EQ(user.control<Edit>("txt", 2).text(), "01.01");
        user.pick("cmb", 2, 0);
        user.answer(MessageKind::warning, "新分类设置不正确，不能设置在原有分类及其以下分类，请检查！");
        user.click("cmdOperate");
        user.pick("cmb", 3, 0);
        user.answer(MessageKind::information, kSaved);
        user.click("cmdOperate");
    });
    EXPECT_EQ(stage.goods()[0], (std::vector<std::string>{"101", "02.01.001"}));
    EXPECT_EQ(stage.asked, std::vector<int>({3, 1})) << "the tree is read again when the dialog closes";
}

TEST_P(HierarchyRoads, aLongMoveShowsTheHourglassAndLetsTheWindowsPaint) {
    stage.database().execute("begin transaction");
    for (int id = 1001; id <= 1250; ++id)
        stage.database().addItem(3, id, "01.01." + std::to_string(id), "件", 13);
    stage.database().execute("commit");
    Services& before = services();
    WatchedToolkit toolkit(before.toolkit);
    Services watching{before.store, toolkit, before.settings, before.iniFiles, before.folders, before.clock};
    useServices(&watching);
    stage.openUpdate(13, [&](User& user) {
        toolkit.watched = &user.window();
        user.pick("cmb", 3, 0);
        user.answer(MessageKind::information, kSaved);
        user.click("cmdOperate");
        EXPECT_EQ(user.window().pointer(), platform::Pointer::arrow);
        toolkit.watched = nullptr;
    });
    useServices(&before);
    // 253 rows were moved.
    EXPECT_EQ(toolkit.pointers, std::vector<platform::Pointer>(2, platform::Pointer::hourglass));
    EXPECT_EQ(stage.goods().back(), (std::vector<std::string>{"1250", "02.01.1250"}));
}

TEST_P(HierarchyRoads, aMoveThatFailsTakesTheHourglassAway) {
    stage.database().execute("update tblItem set fNumber='frei' where fItemId=102");
    stage.openUpdate(13, [](User& user) {
        user.pick("cmb", 3, 0);
        user.answer(MessageKind::critical, "无效的过程调用或参数");
        user.click("cmdOperate");
        EXPECT_EQ(user.window().pointer(), platform::Pointer::arrow);
    });
}

TEST_P(HierarchyRoads, aFailureAndItsRollbacksAreBothShown) {
    const std::string second = rollbackFailure(stage);
    stage.database().execute("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(71,'fGoneId',1)");
    stage.open([&](User& user) {
        user.selectRow("vsf1", 1);
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.answer(MessageKind::critical, "列名 'fGoneId' 无效。");
        user.answer(MessageKind::critical, second);
        user.click("MenuEditDelete");
        EXPECT_TRUE(user.window().shown());
        appState().gConn.reset();
    });
}

TEST_P(HierarchyRoads, itemsAreDeletedDisabledAndEnabled) {
    stage.open([](User& user) {
        user.selectRow("vsf1", 2);
        user.answer(MessageKind::question, "确定要禁用吗？", Answer::yes);
        user.answer(MessageKind::information, "禁用成功！");
        user.click("MenuLockDetail");
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.answer(MessageKind::warning, "螺母已经禁用,不能删除!");
        user.click("MenuEditDelete");
        user.answer(MessageKind::question, "确定要反禁用吗？", Answer::yes);
        user.answer(MessageKind::information, "反禁用成功！");
        user.click("MenuUnLockDetail");
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.answer(MessageKind::information, "数据删除成功！");
        user.click("MenuEditDelete");
        EXPECT_EQ(user.control<ListGrid>("vsf1").rowCount(), 4);
        EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 2);
    });
}

TEST_P(HierarchyRoads, categoriesAreDeletedWhenTheyAreEmpty) {
    stage.database().addCategory(3, 15, "00", "空");
    stage.open([](User& user) {
        user.clickNode("tv1", "D14");
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.answer(MessageKind::warning, "该分类下面还有明细，不能删除!");
        user.click("MenuParentEditDelete");
        user.clickNode("tv1", "D15");
        const int index = user.control<Tree>("tv1").indexOf("D15");
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.answer(MessageKind::information, "删除成功!");
        user.click("MenuParentEditDelete");
        EXPECT_EQ(user.control<Tree>("tv1").selected(), user.control<Tree>("tv1").keyAt(index));
    });
}

}  // namespace
}  // namespace orvenmod::test
