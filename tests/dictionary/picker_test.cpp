// The list of one dictionary: management and picker.
#include "dictionary/dictionarytest.h"
#include "frame/appstate.h"

namespace orvenmod::test {
namespace {

using platform::Button;
using platform::ListGrid;

class DictionaryPicker : public DictionaryTest {
protected:
    static Texts picked() { return {appState().gRetItemId, appState().gRetNumber, appState().gRetName}; }
    void expectRefused(int button, const std::string& right) {
        appState().gIsAdmin = 0;
        stage.openList(501, 1, [&](User& user) {
            user.selectRow("vsf1", 1);
            stage.forgetStatements();
            user.answer(MessageKind::warning, kRefusal);
            user.click("cmd", button);
            EXPECT_EQ(stage.statements(),
                      Texts{"select fuserid from tblUserPrivillenge  where fuserid=7  and fNumber='" + right + "'"});
        });
    }
};

TEST_F(DictionaryPicker, captionsAndColumnsAreThoseOfTheDesign) {
    stage.openList(501, 1, [](User& user) {
        EXPECT_EQ(user.window().caption(), "单位");
        EXPECT_EQ(user.control<Button>("cmd", 0).caption(), "关闭(&C)");
        EXPECT_EQ(user.control<Button>("cmd", 1).caption(), "新增(&A)");
        EXPECT_EQ(user.control<Button>("cmd", 2).caption(), "修改(&U)");
        EXPECT_EQ(user.control<Button>("cmd", 3).caption(), "删除(&D)");
        const auto& vsf1 = user.control<ListGrid>("vsf1");
        EXPECT_EQ(vsf1.columnCount(), 10);
        EXPECT_EQ((Texts{vsf1.text(0, 0), vsf1.text(0, 1), vsf1.text(0, 2), vsf1.text(0, 9)}),
                  (Texts{"内部ID", "代码", "名称", ""}));
        EXPECT_EQ((Texts{vsf1.text(1, 0), vsf1.text(1, 1), vsf1.text(1, 2), vsf1.text(1, 3), vsf1.text(1, 9)}),
                  (Texts{"1", "01", "个", "", ""}));
        EXPECT_TRUE(vsf1.columnHidden(0));
        EXPECT_EQ(vsf1.columnWidth(0), 900);
        EXPECT_EQ(vsf1.columnWidth(1), 2415);
        EXPECT_EQ(vsf1.columnWidth(2), 2175);
        EXPECT_EQ(vsf1.columnWidth(9), 900);
    });
}

TEST_F(DictionaryPicker, loadingReadsTheEntriesAndTheName) {
    stage.openList(501, 1, [this](User& user) {
        EXPECT_EQ(stage.statements(),
                  (Texts{"select fitemid,fname,fnumber from tblSubType where fitemclassid=501 order by fnumber ",
                         "select * from tblItemclass where fitemclassid=501 and fitemtype='1' "}));
        EXPECT_EQ(listRows(user), (Rows{{"1", "01", "个"}, {"2", "02", "箱"}, {"3", "03", "吨"}}));
    });
}

TEST_F(DictionaryPicker, aTabWithinATextPartsItOverTheColumns) {
    database().execute("update tblSubType set fNumber='0\t1',fName='大\t\t个' where fItemId=1");
    stage.openList(501, 1, [](User& user) {
        const auto& vsf1 = user.control<ListGrid>("vsf1");
        Texts shown;
        for (int column = 0; column < vsf1.columnCount(); ++column)
            shown.push_back(vsf1.text(1, column));
        EXPECT_EQ(shown, (Texts{"1", "0", "1", "大", "", "个", "", "", "", ""}));
        user.doubleClickRow("vsf1", 1);
    });
    EXPECT_EQ(picked(), (Texts{"1", "0", "1"}));
}

TEST_F(DictionaryPicker, aClassThatIsNoDictionaryKeepsTheLastName) {
    appState().gItemName = "上次";
    stage.openList(3, 1, [](User& user) {
        EXPECT_EQ(user.window().caption(), "上次");
        EXPECT_EQ(listRows(user), Rows{});
    });
}

TEST_F(DictionaryPicker, aFailedReadIsToldByAWarningAndTheWindowOpens) {
    stage.faults().failAt = 2;
    script().answer(MessageKind::warning, kFault, Answer::ok);
    stage.openList(501, 1, [this](User& user) {
        stage.faults().failAt = 0;
        EXPECT_EQ(listRows(user), Rows{});
    });
}

TEST_F(DictionaryPicker, aDoubleClickPicks) {
    stage.openList(501, 1, [](User& user) {
        user.doubleClickRow("vsf1", 2);
        EXPECT_FALSE(user.window().shown());
    });
    EXPECT_EQ(picked(), (Texts{"2", "02", "箱"}));
}

TEST_F(DictionaryPicker, ofSeveralSelectedRowsTheLastIsPicked) {
    stage.openList(501, 1, [](User& user) {
        user.selectRow("vsf1", 1);
        user.alsoSelectRow("vsf1", 3);
        user.control<ListGrid>("vsf1").doubleClick.raise();
    });
    EXPECT_EQ(picked(), (Texts{"3", "03", "吨"}));
}

TEST_F(DictionaryPicker, aDoubleClickOnAnEmptyListDoesNothing) {
    database().execute("delete from tblSubType");
    stage.openList(501, 1, [](User& user) {
        user.doubleClickRow("vsf1", 0);
        EXPECT_TRUE(user.window().shown());
    });
    EXPECT_EQ(picked(), (Texts{"", "", ""}));
}

TEST_F(DictionaryPicker, closingPicksNothing) {
    stage.openList(501, 1, [](User& user) {
        user.selectRow("vsf1", 2);
        user.click("cmd", 0);
        EXPECT_FALSE(user.window().shown());
    });
    EXPECT_EQ(picked(), (Texts{"", "", ""}));
}

TEST_F(DictionaryPicker, onlyADoubleClickPicks) {
    stage.openList(501, 1, [](User& user) {
        user.selectRow("vsf1", 2);
        user.keyOnGrid("vsf1", platform::kKeyEnter);
        EXPECT_TRUE(user.window().shown());
    });
    EXPECT_EQ(picked(), (Texts{"", "", ""}));
}

TEST_F(DictionaryPicker, inManagementADoubleClickOpensTheEntry) {
    stage.openList(501, 0, [this](User& user) {
        script().onWindow("frmJCZL", [](User&) {
            EXPECT_EQ(appState().gCurItemId, 2);
            EXPECT_EQ(appState().gEditMode, 1);
        });
        user.doubleClickRow("vsf1", 2);
        EXPECT_TRUE(user.window().shown());
    });
    EXPECT_EQ(picked(), (Texts{"", "", ""}));
}

TEST_F(DictionaryPicker, withoutARowNothingIsChangedOrDeleted) {
    database().execute("delete from tblSubType");
    stage.openList(501, 1, [this](User& user) {
        stage.forgetStatements();
        user.click("cmd", 2);
        user.click("cmd", 3);
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

TEST_F(DictionaryPicker, aNewEntryNeedsRight04) { expectRefused(1, "Z04"); }
TEST_F(DictionaryPicker, aChangeNeedsRight05) { expectRefused(2, "Z05"); }
TEST_F(DictionaryPicker, aDeleteNeedsRight06) { expectRefused(3, "Z06"); }

TEST_F(DictionaryPicker, aGrantedRightIsEnough) {
    appState().gIsAdmin = 0;
    database().grant(7, "Z04");
    stage.openList(501, 1, [this](User& user) {
        script().onWindow("frmJCZL", [](User&) { EXPECT_EQ(appState().gEditMode, 0); });
        user.click("cmd", 1);
    });
}

}  // namespace
}  // namespace orvenmod::test
