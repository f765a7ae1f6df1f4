// The commands of the list: which row they take, what they ask, what they leave in list and tree.
#include "frame/appstate.h"
#include "hierarchy/hierarchytest.h"
#include "hierarchy/itemroutines.h"
#include "platform/memory/memorylistgrid.h"

namespace orvenmod::test {
namespace {

using platform::ListGrid;
using platform::Tree;

const std::string kAskDelete = "确定要删除吗？";
const std::string kAskLock = "确定要禁用吗？";
const std::string kAskUnLock = "确定要反禁用吗？";

const platform::Colour* colour(User& user, int row) {
    return dynamic_cast<platform::memory::MemoryListGrid&>(user.control<ListGrid>("vsf1")).model().rowColour(row);
}

std::string lockState(Database& database, int id) {
    return database.value("select fislock from tblItem where fitemid=" + std::to_string(id));
}

Texts ids(User& user) {
    const auto& vsf1 = user.control<ListGrid>("vsf1");
    Texts all;
    for (int row = 1; row < vsf1.rowCount(); ++row)
        all.push_back(vsf1.text(row, 1));
    return all;
}

class ItemCommandsTest : public HierarchyTest {
protected:
    void SetUp() override {
        // Every family has a field, as in any suite's catalogue.
        database().execute("delete from tblBillInfo");
        database().execute("delete from tblbillinfoentry");
        for (const int type : {1, 31, 41, 51, 61, 71}) {
            database().execute("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(" + std::to_string(type) +
                               ",'fCustId',1)");
        }
    }
    void expectRefusedRight(const std::string& command, const std::string& right) {
        appState().gIsAdmin = 0;
        stage.open([&](User& user) {
            user.clickNode("tv1", "D14");
            user.selectRow("vsf1", 1);
            stage.forgetStatements();
            user.answer(MessageKind::warning, kRefusal);
            user.click(command);
            EXPECT_EQ(stage.statements(),
                      Texts{"select fuserid from tblUserPrivillenge  where fuserid=7  and fNumber='" + right + "'"});
        });
    }
};

TEST_F(ItemCommandsTest, deleteNeedsRight06) { expectRefusedRight("MenuEditDelete", "Y306"); }
TEST_F(ItemCommandsTest, newCategoryNeedsRight01) { expectRefusedRight("MenuParentEditNew", "Y301"); }
TEST_F(ItemCommandsTest, changeOfACategoryNeedsRight02) { expectRefusedRight("MenuParentEditUpdate", "Y302"); }
TEST_F(ItemCommandsTest, deleteOfACategoryNeedsRight03) { expectRefusedRight("MenuParentEditDelete", "Y303"); }

TEST_F(ItemCommandsTest, disablingAndEnablingNeedNone) {
    appState().gIsAdmin = 0;
    stage.open([](User& user) {
        user.selectRow("vsf1", 1);
        user.answer(MessageKind::question, kAskLock, Answer::no);
        user.click("MenuLockDetail");
        user.answer(MessageKind::question, kAskUnLock, Answer::no);
        user.click("MenuUnLockDetail");
    });
}

TEST_F(ItemCommandsTest, withNoRowSelectedNothingIsAsked) {
    stage.open([this](User& user) {
        for (const char* command : {"MenuEditDelete", "MenuLockDetail", "MenuUnLockDetail"})
            user.click(command);
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

TEST_F(ItemCommandsTest, withTheHeadingAloneNothingIsAsked) {
    database().execute("delete from tblItem where fisdetail=1");
    stage.open([this](User& user) {
        for (const char* command : {"MenuEditDelete", "MenuLockDetail", "MenuUnLockDetail"})
            user.click(command);
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

TEST_F(ItemCommandsTest, noLeavesTheItem) {
    stage.open([this](User& user) {
        user.selectRow("vsf1", 1);
        user.answer(MessageKind::question, kAskDelete, Answer::no);
        user.click("MenuEditDelete");
        EXPECT_EQ(stage.statements(), Texts{});
        EXPECT_EQ(script().messages().back().title, kTitle);
    });
}

TEST_F(ItemCommandsTest, deleteTakesTheRowAndMakesTheNextOneCurrent) {
    stage.open([this](User& user) {
        user.selectRow("vsf1", 2);
        user.answer(MessageKind::question, kAskDelete, Answer::yes);
        user.answer(MessageKind::information, "数据删除成功！");
        user.click("MenuEditDelete");
        EXPECT_EQ(ids(user), (Texts{"101", "103", "104"}));
        EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 2);
        EXPECT_TRUE(user.control<ListGrid>("vsf1").isSelected(2));
        // Neither the tree nor the list is read again.
        EXPECT_EQ(stage.lastStatement(), "delete from tblItemFJ where fitemid=102");
    });
    EXPECT_EQ(stage.asked, std::vector<int>{3});
}

TEST_F(ItemCommandsTest, deleteOfTheLastRowLeavesTheCurrentRowToTheList) {
    stage.open([](User& user) {
        user.selectRow("vsf1", 4);
        user.answer(MessageKind::question, kAskDelete, Answer::yes);
        user.answer(MessageKind::information, "数据删除成功！");
        user.click("MenuEditDelete");
        EXPECT_EQ(ids(user), (Texts{"101", "102", "103"}));
        EXPECT_EQ(user.control<ListGrid>("vsf1").currentRow(), 3);
    });
}

TEST_F(ItemCommandsTest, ofSeveralSelectedRowsTheLastItemGoesAndTheCurrentRow) {
    stage.open([](User& user) {
        user.selectRow("vsf1", 3);
        user.alsoSelectRow("vsf1", 1);
        user.answer(MessageKind::question, kAskDelete, Answer::yes);
        user.answer(MessageKind::information, "数据删除成功！");
        user.click("MenuEditDelete");
        EXPECT_EQ(appState().gCurItemId, 103);
        EXPECT_EQ(ids(user), (Texts{"102", "103", "104"}));
    });
    EXPECT_EQ(database().value("select count(*) as n from tblItem where fitemid=103"), "0");
    EXPECT_EQ(database().value("select count(*) as n from tblItem where fitemid=101"), "1");
}

TEST_F(ItemCommandsTest, aRefusedDeleteLeavesTheRow) {
    database().execute("insert into tblstockbal(fItemId) values(101)");
    stage.open([](User& user) {
        user.selectRow("vsf1", 1);
        user.answer(MessageKind::question, kAskDelete, Answer::yes);
        user.answer(MessageKind::warning, "该项目在库存单据中已经使用,不能删除!");
        user.click("MenuEditDelete");
        EXPECT_EQ(ids(user).size(), 4U);
    });
}

TEST_F(ItemCommandsTest, disablingSendsItsStatementsAndReddensTheRow) {
    stage.open([this](User& user) {
        user.selectRow("vsf1", 2);
        stage.forgetStatements();
        user.answer(MessageKind::question, kAskLock, Answer::yes);
        user.answer(MessageKind::information, "禁用成功！");
        user.click("MenuLockDetail");
        EXPECT_EQ(stage.statements(),
                  (Texts{"select count(fitemid) as fitemid1 from tblItem where fisLock=1 and fitemid=102",
                         "update tblItem set fisLock=1  where fitemid=102"}));
        EXPECT_EQ(stage.operations(), (Texts{"connect", "open", "execute", "close"}));
        ASSERT_TRUE(colour(user, 2));
        EXPECT_EQ(*colour(user, 2), (platform::Colour{175, 0, 0}));
        EXPECT_FALSE(colour(user, 1));
    });
    EXPECT_EQ(lockState(database(), 102), "1");
    EXPECT_EQ(database().value("select count(*) as n from tblItem where flockerid<>0"), "0");
}

TEST_F(ItemCommandsTest, enablingGivesTheRowTheSystemsColourAgain) {
    stage.open([this](User& user) {
        user.selectRow("vsf1", 2);
        user.answer(MessageKind::question, kAskLock, Answer::yes);
        user.answer(MessageKind::information, "禁用成功！");
        user.click("MenuLockDetail");
        stage.forgetStatements();
        user.answer(MessageKind::question, kAskUnLock, Answer::yes);
        user.answer(MessageKind::information, "反禁用成功！");
        user.click("MenuUnLockDetail");
        EXPECT_EQ(stage.statements(),
                  (Texts{"select count(fitemid) as fitemid1 from tblItem where fisLock=0 and fitemid=102",
                         "update tblItem set fisLock=0  where fitemid=102"}));
        EXPECT_FALSE(colour(user, 2));
    });
    EXPECT_EQ(lockState(database(), 102), "0");
}

TEST_F(ItemCommandsTest, aDisabledRowHasTheSystemsColourAfterAReload) {
    stage.open([](User& user) {
        user.selectRow("vsf1", 2);
        user.answer(MessageKind::question, kAskLock, Answer::yes);
        user.answer(MessageKind::information, "禁用成功！");
        user.click("MenuLockDetail");
    });
    stage.open([](User& user) { EXPECT_FALSE(colour(user, 2)); });
}

TEST_F(ItemCommandsTest, disablingTwiceIsRefusedAndLeavesTheColour) {
    database().execute("update tblItem set fIsLock=1 where fItemId=102");
    stage.open([](User& user) {
        user.selectRow("vsf1", 2);
        user.answer(MessageKind::question, kAskLock, Answer::yes);
        user.answer(MessageKind::warning, "该项目已经禁用！");
        user.click("MenuLockDetail");
        EXPECT_FALSE(colour(user, 2));
    });
}

TEST_F(ItemCommandsTest, enablingWhatIsEnabledIsRefused) {
    stage.open([](User& user) {
        user.selectRow("vsf1", 2);
        user.answer(MessageKind::question, kAskUnLock, Answer::yes);
        user.answer(MessageKind::warning, "该项目未禁用！");
        user.click("MenuUnLockDetail");
    });
}

TEST_F(ItemCommandsTest, anIdThatIsGoneIsDisabledAndEnabledWithoutAWord) {
    appState().gCurItemId = 4711;
    EXPECT_TRUE(lockDetail());
    EXPECT_TRUE(unLockDetail());
}

TEST_F(ItemCommandsTest, ofSeveralSelectedRowsTheLastItemIsDisabledAndTheCurrentRowReddens) {
    stage.open([](User& user) {
        user.selectRow("vsf1", 3);
        user.alsoSelectRow("vsf1", 1);
        user.answer(MessageKind::question, kAskLock, Answer::yes);
        user.answer(MessageKind::information, "禁用成功！");
        user.click("MenuLockDetail");
        EXPECT_TRUE(colour(user, 1));
        EXPECT_FALSE(colour(user, 3));
    });
    EXPECT_EQ(lockState(database(), 103), "1");
    EXPECT_EQ(lockState(database(), 101), "0");
}

TEST_F(ItemCommandsTest, aCategoryWithAnythingBelowStays) {
    database().execute("update tblItem set fIsLock=1 where fItemId=103");
    stage.open([this](User& user) {
        user.clickNode("tv1", "D14");
        stage.forgetStatements();
        user.answer(MessageKind::question, kAskDelete, Answer::yes);
        user.answer(MessageKind::warning, "该分类下面还有明细，不能删除!");
        user.click("MenuParentEditDelete");
        EXPECT_EQ(stage.statements(), Texts{"select top 1 fitemid from tblItem where fparentid=14"});
        EXPECT_TRUE(user.control<Tree>("tv1").has("D14"));
    });
}

TEST_F(ItemCommandsTest, anEmptyCategoryGoesAndItsPlaceIsSelected) {
    database().addCategory(3, 15, "00", "空");
    stage.open([this](User& user) {
        user.clickNode("tv1", "D15");
        auto& tv1 = user.control<Tree>("tv1");
        const int index = tv1.indexOf("D15");
        stage.forgetStatements();
        user.answer(MessageKind::question, kAskDelete, Answer::yes);
        user.answer(MessageKind::information, "删除成功!");
        user.click("MenuParentEditDelete");
        EXPECT_EQ(stage.statements(), (Texts{"select top 1 fitemid from tblItem where fparentid=15",
                                             "delete from tblItem where fitemid=15"}));
        EXPECT_EQ(stage.operations(), (Texts{"connect", "open", "execute", "close"}));
        EXPECT_FALSE(tv1.has("D15"));
        EXPECT_EQ(tv1.selected(), tv1.keyAt(index));
    });
    EXPECT_EQ(stage.asked, std::vector<int>{3});
}

TEST_F(ItemCommandsTest, theLastNodeGoesAndNoneIsSelected) {
    database().addCategory(3, 15, "01.01.09", "空", 13);
    stage.open([](User& user) {
        user.clickNode("tv1", "D15");
        user.answer(MessageKind::question, kAskDelete, Answer::yes);
        user.answer(MessageKind::information, "删除成功!");
        user.click("MenuParentEditDelete");
        EXPECT_EQ(user.control<Tree>("tv1").selected(), "");
    });
}

TEST_F(ItemCommandsTest, noLeavesTheCategory) {
    database().addCategory(3, 15, "00", "空");
    stage.open([](User& user) {
        user.clickNode("tv1", "D15");
        user.answer(MessageKind::question, kAskDelete, Answer::no);
        user.click("MenuParentEditDelete");
        EXPECT_TRUE(user.control<Tree>("tv1").has("D15"));
    });
}

TEST_F(ItemCommandsTest, theRootIsNeitherDeletedNorChanged) {
    stage.open([this](User& user) {
        user.clickNode("tv1", "D0");
        stage.forgetStatements();
        user.click("MenuParentEditDelete");
        user.click("MenuParentEditUpdate");
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

TEST_F(ItemCommandsTest, withoutANodeNothingIsDeletedOrChanged) {
    stage.open([this](User& user) {
        user.control<Tree>("tv1").select("");
        user.click("MenuParentEditDelete");
        user.click("MenuParentEditUpdate");
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

TEST_F(ItemCommandsTest, newAndChangeHandTheirModeToTheDialog) {
    stage.open([this](User& user) {
        user.clickNode("tv1", "D14");
        appState().gEditMode = 1;
        script().onWindow("frmParent", [](User&) { EXPECT_EQ(appState().gEditMode, 0); });
        user.click("MenuParentEditNew");
        script().onWindow("frmParent", [](User&) {
            EXPECT_EQ(appState().gEditMode, 1);
            EXPECT_EQ(appState().gCurItemId, 14);
        });
        user.click("MenuParentEditUpdate");
    });
}

}  // namespace
}  // namespace orvenmod::test
