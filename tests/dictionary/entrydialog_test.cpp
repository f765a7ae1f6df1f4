// The dialog of entries: its captions, its refusals in two kinds of box, what it stores and which list it refreshes.
#include "dictionary/dictionarytest.h"
#include "frame/appstate.h"

namespace orvenmod::test {
namespace {

using platform::Button;
using platform::Edit;
using platform::Label;
using platform::ListGrid;

const std::string kNoCode = "代码不能为空！";
const std::string kNoName = "名称不能为空！";
const std::string kTaken = "代码已经存在,保存不成功!";

class EntryDialog : public DictionaryTest {
protected:
    /// Over the picker of dictionary 501, whose list is the one that is refreshed.
    void openNew(const Steps& steps) {
        stage.openList(501, 1, [&](User& list) {
            script().onWindow("frmJCZL", steps);
            list.click("cmd", 1);
        });
    }
    void openUpdate(int row, const Steps& steps) {
        stage.openList(501, 1, [&](User& list) {
            list.selectRow("vsf1", row);
            script().onWindow("frmJCZL", steps);
            list.click("cmd", 2);
        });
    }
    static void fill(User& user, const std::string& code, const std::string& name) {
        user.type("txt", code, 0);
        user.type("txt", name, 1);
    }
};

TEST_F(EntryDialog, captionsBearTheNameOfTheDictionary) {
    openNew([](User& user) {
        EXPECT_EQ(user.window().caption(), "单位新增");
        EXPECT_EQ(user.control<Label>("Label1", 0).caption(), "代码：");
        EXPECT_EQ(user.control<Label>("Label1", 1).caption(), "名称：");
        EXPECT_EQ(user.control<Button>("cmdOK").caption(), "新增(&A)");
        EXPECT_EQ(user.control<Button>("cmdClose").caption(), "关闭(&C)");
        user.click("cmdClose");
        EXPECT_FALSE(user.window().shown());
    });
}

TEST_F(EntryDialog, aChangeReadsItsEntry) {
    openUpdate(2, [this](User& user) {
        EXPECT_EQ(user.window().caption(), "单位修改");
        EXPECT_EQ(user.control<Button>("cmdOK").caption(), "修改(&U)");
        EXPECT_EQ(user.control<Edit>("txt", 0).text(), "02");
        EXPECT_EQ(user.control<Edit>("txt", 1).text(), "箱");
        EXPECT_EQ(stage.lastStatement(), "select fname,fnumber from tblSubType where fitemid=2");
    });
}

TEST_F(EntryDialog, aChangeOfAnEntryThatIsGoneShowsEmptyFieldsAndStoresNothing) {
    stage.openList(501, 1, [this](User& list) {
        list.selectRow("vsf1", 3);
        database().execute("delete from tblSubType where fItemId=3");
        script().onWindow("frmJCZL", [](User& user) {
            EXPECT_EQ(user.control<Edit>("txt", 0).text(), "");
            fill(user, "09", "件");
            user.answer(MessageKind::information, kChanged);
            user.click("cmdOK");
        });
        list.click("cmd", 2);
        EXPECT_EQ(listRows(list), (Rows{{"1", "01", "个"}, {"2", "02", "箱"}}));
    });
    EXPECT_EQ(stage.entries().size(), 3U);
}

TEST_F(EntryDialog, enterMovesOnToTheNextControl) {
    openNew([](User& user) {
        user.control<Edit>("txt", 0).setFocus();
        user.press("Enter");
        EXPECT_TRUE(user.control<Edit>("txt", 1).hasFocus());
        user.press("Enter");
        EXPECT_TRUE(user.control<Button>("cmdOK").hasFocus());
    });
}

TEST_F(EntryDialog, aNewEntryIsRefusedByCriticalBoxes) {
    openNew([this](User& user) {
        fill(user, " ", "件");
        stage.forgetStatements();
        user.answer(MessageKind::critical, kNoCode);
        user.click("cmdOK");
        EXPECT_TRUE(user.control<Edit>("txt", 0).hasFocus());
        fill(user, "04", " ");
        user.answer(MessageKind::critical, kNoName);
        user.click("cmdOK");
        EXPECT_TRUE(user.control<Edit>("txt", 1).hasFocus());
        EXPECT_EQ(stage.statements(), Texts{});
        fill(user, " 02 ", "件");
        user.answer(MessageKind::critical, kTaken);
        user.click("cmdOK");
        EXPECT_EQ(stage.statements(), Texts{"select fnumber from tblSubType where fnumber='02' and fitemclassid=501"});
        EXPECT_EQ(stage.operations(), (Texts{"connect", "open", "close"}));
        EXPECT_EQ(script().messages().back().title, kTitle);
    });
    EXPECT_EQ(stage.entries().size(), 4U);
}

TEST_F(EntryDialog, aChangeIsRefusedByWarnings) {
    openUpdate(1, [this](User& user) {
        fill(user, " ", "件");
        stage.forgetStatements();
        user.answer(MessageKind::warning, kNoCode);
        user.click("cmdOK");
        EXPECT_TRUE(user.control<Edit>("txt", 0).hasFocus());
        fill(user, "04", " ");
        user.answer(MessageKind::warning, kNoName);
        user.click("cmdOK");
        EXPECT_TRUE(user.control<Edit>("txt", 1).hasFocus());
        EXPECT_EQ(stage.statements(), Texts{});
        fill(user, "02", "件");
        user.answer(MessageKind::warning, kTaken);
        user.click("cmdOK");
        EXPECT_EQ(stage.statements(),
                  Texts{"select fnumber from tblSubType where fnumber='02' and fitemclassid=501 and fitemid<>1"});
    });
    EXPECT_EQ(stage.entries()[0][1], "01");
}

TEST_F(EntryDialog, aNewEntrySendsItsStatementsAndShowsInTheList) {
    stage.openList(501, 1, [this](User& list) {
        list.selectRow("vsf1", 2);
        script().onWindow("frmJCZL", [this](User& user) {
            fill(user, " 04 ", " 件 ");
            stage.forgetStatements();
            user.answer(MessageKind::information, kSaved);
            user.click("cmdOK");
            EXPECT_EQ(stage.statements(),
                      (Texts{"select fnumber from tblSubType where fnumber='04' and fitemclassid=501",
                             "select * from tblMaxnum where ftablename='tblSubType'",
                             "update tblMaxNum set  fmaxnum=fmaxnum+1  where ftablename='tblSubType'",
                             "insert into tblSubType (fitemid,fnumber,fname,fitemclassid) values(5,'04','件',501)",
                             "select fitemid,fname,fnumber from tblSubType where fitemclassid=501 order by fnumber "}));
            EXPECT_EQ(user.control<Edit>("txt", 0).text(), "");
            EXPECT_EQ(user.control<Edit>("txt", 1).text(), "");
            EXPECT_TRUE(user.control<Edit>("txt", 0).hasFocus());
        });
        list.click("cmd", 1);
        EXPECT_EQ(listRows(list), (Rows{{"1", "01", "个"}, {"2", "02", "箱"}, {"3", "03", "吨"}, {"5", "04", "件"}}));
        EXPECT_EQ(list.control<ListGrid>("vsf1").currentRow(), 2);
        EXPECT_TRUE(list.control<ListGrid>("vsf1").isSelected(2));
    });
    EXPECT_EQ(database().value("select fmaxnum from tblMaxNum where ftablename='tblSubType'"), "5");
}

TEST_F(EntryDialog, theFirstEntryOfAllCreatesTheCounter) {
    database().execute("delete from tblSubType");
    database().execute("delete from tblMaxNum");
    openNew([this](User& user) {
        fill(user, "01", "个");
        stage.forgetStatements();
        user.answer(MessageKind::information, kSaved);
        user.click("cmdOK");
        EXPECT_EQ(stage.statements()[2], "insert into tblMaxNum(ftablename,fMaxNum) values('tblSubType',1)");
    });
    EXPECT_EQ(stage.entries(), (Rows{{"1", "01", "个", "501"}}));
}

TEST_F(EntryDialog, aCodeOfAnotherDictionaryIsFree) {
    stage.openList(502, 1, [this](User& list) {
        script().onWindow("frmJCZL", [](User& user) {
            fill(user, "03", "绿");
            user.answer(MessageKind::information, kSaved);
            user.click("cmdOK");
        });
        list.click("cmd", 1);
    });
    EXPECT_EQ(stage.entries().back(), (std::vector<std::string>{"5", "03", "绿", "502"}));
}

TEST_F(EntryDialog, aChangeMayKeepItsCodeAndLeavesTheFields) {
    openUpdate(2, [this](User& user) {
        fill(user, "02", " 大箱 ");
        stage.forgetStatements();
        user.answer(MessageKind::information, kChanged);
        user.click("cmdOK");
        EXPECT_EQ(stage.statements(),
                  (Texts{"select fnumber from tblSubType where fnumber='02' and fitemclassid=501 and fitemid<>2",
                         "update  tblSubType set fnumber='02',fname='大箱' where fitemid=2",
                         "select fitemid,fname,fnumber from tblSubType where fitemclassid=501 order by fnumber "}));
        EXPECT_EQ(user.control<Edit>("txt", 1).text(), " 大箱 ");
    });
    EXPECT_EQ(stage.entries()[1][2], "大箱");
}

TEST_F(EntryDialog, aQuoteIsTheStoresFailureInACriticalBox) {
    openNew([](User& user) {
        fill(user, "04", "5'");
        user.answer(MessageKind::critical, "字符串 '5'',501)' 后的引号不完整。");
        user.click("cmdOK");
        EXPECT_EQ(user.control<Edit>("txt", 0).text(), "04");
    });
    openUpdate(1, [](User& user) {
        fill(user, "0'4", "件");
        user.answer(MessageKind::critical, "字符串 ' and fitemclassid=501 and fitemid<>1' 后的引号不完整。");
        user.click("cmdOK");
    });
    EXPECT_EQ(stage.entries()[0][1], "01");
    EXPECT_EQ(stage.entries().size(), 4U);
}

TEST_F(EntryDialog, aCodeAndANameOfMoreThanAHundredCharactersAreRefusedByTheirColumns) {
    const auto refused = [](const std::string& column) {
        return "将在表“tblSubType”的列“" + column + "”中截断字符串或二进制数据。截断值:“" + std::string(100, '7') +
               "”。";
    };
    openUpdate(1, [&](User& user) {
        fill(user, std::string(101, '7'), "件");
        user.answer(MessageKind::critical, refused("fNumber"));
        user.click("cmdOK");
        fill(user, "04", std::string(101, '7'));
        user.answer(MessageKind::critical, refused("fName"));
        user.click("cmdOK");
    });
    openNew([&](User& user) {
        fill(user, "04", std::string(101, '7'));
        user.answer(MessageKind::critical, refused("fName"));
        user.click("cmdOK");
    });
    EXPECT_EQ(stage.entries().size(), 4U);
    EXPECT_EQ(stage.entries()[0], (std::vector<std::string>{"1", "01", "个", "501"}));
}

TEST_F(EntryDialog, fromTheManagerTheUnseenPickerIsRefreshedAndTheVisibleListIsNot) {
    stage.openManager([this](User& manager) {
        manager.clickNode("tv1", "D501");
        script().onWindow("frmJCZL", [this](User& user) {
            EXPECT_EQ(user.window().caption(), "单位(501)新增");
            fill(user, "04", "件");
            stage.forgetStatements();
            user.answer(MessageKind::information, kSaved);
            user.click("cmdOK");
            const Texts all = stage.statements();
            // The picker is loaded first, then refreshed.
            EXPECT_EQ((Texts{all.begin() + 4, all.end()}),
                      (Texts{"select fitemid,fname,fnumber from tblSubType where fitemclassid=501 order by fnumber ",
                             "select * from tblItemclass where fitemclassid=501 and fitemtype='1' ",
                             "select fitemid,fname,fnumber from tblSubType where fitemclassid=501 order by fnumber "}));
            fill(user, "05", "盒");
            stage.forgetStatements();
            user.answer(MessageKind::information, kSaved);
            user.click("cmdOK");
            EXPECT_EQ(stage.statements().size(), 5U);
        });
        manager.chooseMenu("MenuJCZLNew");
        EXPECT_EQ(listRows(manager).size(), 3U);
        manager.clickNode("tv1", "D501");
        EXPECT_EQ(listRows(manager).size(), 5U);
    });
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EntryDialog, fromTheListThatIsNoPickerTheUnseenManagerIsRefreshed) {
    stage.openList(501, 0, [this](User& list) {
        script().onWindow("frmJCZL", [this](User& user) {
            fill(user, "04", "件");
            stage.forgetStatements();
            user.answer(MessageKind::information, kSaved);
            user.click("cmdOK");
            const Texts all = stage.statements();
            EXPECT_EQ(
                (Texts{all.begin() + 4, all.end()}),
                (Texts{"select fitemclassid,fitemname from tblItemclass where fitemtype='1' order by fitemclassid ",
                       "select fitemid,fname,fnumber from tblSubType where fitemclassid=501 order by fnumber "}));
        });
        list.click("cmd", 1);
        EXPECT_EQ(listRows(list).size(), 3U);
    });
}

}  // namespace
}  // namespace orvenmod::test
