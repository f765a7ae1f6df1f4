// The category dialog: what it shows, how it composes a code, what it refuses and what it stores.
#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "hierarchy/hierarchytest.h"

namespace orvenmod::test {
namespace {

using platform::Button;
using platform::Combo;
using platform::Edit;
using platform::Label;

std::string text(User& user, int index) { return user.control<Edit>("txt", index).text(); }

Texts parents(User& user) {
    const auto& cmb = user.control<Combo>("cmb", 0);
    Texts all;
    for (int row = 0; row < cmb.rowCount(); ++row)
        all.push_back(cmb.cell(row, 0));
    return all;
}

void fill(User& user, const std::string& name, const std::string& shortCode) {
    user.type("txt", name, 0);
    user.type("txt", shortCode, 1);
}

void save(User& user) {
    user.answer(MessageKind::information, kSaved);
    user.click("cmdOperate");
}

class CategoryDialog : public HierarchyTest {};

TEST_F(CategoryDialog, captionsAreThoseOfANewCategory) {
    stage.openNew([](User& user) {
        EXPECT_EQ(user.window().caption(), "分类");
        EXPECT_EQ(user.control<platform::Tabs>("SSTab1").tabCaption(0), "货品分类");
        EXPECT_EQ(user.control<Label>("Label1", 0).caption(), "所属分类：");
        EXPECT_EQ(user.control<Label>("Label1", 1).caption(), "分类短代码：");
        EXPECT_EQ(user.control<Label>("Label1", 2).caption(), "分类名称：");
        EXPECT_EQ(user.control<Label>("Label1", 3).caption(), "分类代码：");
        EXPECT_EQ(user.control<Button>("cmdOperate").caption(), "新增(&A)");
        EXPECT_EQ(user.control<Button>("cmdClose").caption(), "关闭(&C)");
    });
}

TEST_F(CategoryDialog, aChangeHasItsOwnCaption) {
    stage.openUpdate(12, [](User& user) { EXPECT_EQ(user.control<Button>("cmdOperate").caption(), "修改(&U)"); });
}

TEST_F(CategoryDialog, theParentsAreListedByCodeAndIndentedByDepth) {
    database().addCategory(3, 15, "01.01.09", "内六角", 13);
    stage.openNew([](User& user) {
        EXPECT_EQ(parents(user), (Texts{"无", "五金(01)", "   螺丝(01.01)", "      内六角(01.01.09)", "电器(02)"}));
    });
}

TEST_F(CategoryDialog, theParentsOfAnotherClassAreNotListed) {
    database().addCategory(1, 30, "99", "华东");
    stage.openNew([](User& user) { EXPECT_EQ(parents(user).size(), 4U); });
}

TEST_F(CategoryDialog, loadingReadsTheCategoriesOnce) {
    stage.open([this](User& list) {
        list.clickNode("tv1", "D0");
        stage.forgetStatements();
        script().onWindow("frmParent", [](User&) {});
        list.click("MenuParentEditNew");
        EXPECT_EQ(
            stage.statements(),
            Texts{"select fitemid,fName,fdepth,isnull(fShortNumber,'') as fShortNumber,isnull(fNumber,'') as fNumber "
                  "from tblItem where fisdetail=0 and fitemclassid=3 order by fnumber,fdepth "});
    });
}

TEST_F(CategoryDialog, loadingAChangeReadsTheCategoryToo) {
    stage.open([this](User& list) {
        list.clickNode("tv1", "D13");
        stage.forgetStatements();
        script().onWindow("frmParent", [](User&) {});
        list.click("MenuParentEditUpdate");
        ASSERT_EQ(stage.statements().size(), 2U);
        EXPECT_EQ(stage.statements()[1],
                  " select a.fParentid,a.fname,b.fName as fParentName,isnull(a.fShortNumber,'') as fShortNumber,"
                  "isnull(a.fNumber,'') as fNumber from tblItem as a left outer join tblItem as b on "
                  "a.fParentid=b.fitemid where a.fitemid=13");
    });
}

TEST_F(CategoryDialog, fromTheRootTheParentIsNone) {
    stage.openNew([](User& user) {
        EXPECT_EQ(user.control<Combo>("cmb", 0).selected(), 0);
        EXPECT_EQ(parents(user)[0], "无");
    });
}

TEST_F(CategoryDialog, fromACategoryItIsTheParent) {
    stage.open([this](User& list) {
        list.clickNode("tv1", "D13");
        script().onWindow("frmParent", [](User& user) { EXPECT_EQ(user.control<Combo>("cmb", 0).selected(), 2); });
        list.click("MenuParentEditNew");
    });
}

TEST_F(CategoryDialog, aSelectedNodeOfAnotherClassLeavesNoParent) {
    stage.open([this](User& list) {
        appState().gCurParentId = 4711;
        script().onWindow("frmParent", [](User& user) { EXPECT_EQ(user.control<Combo>("cmb", 0).selected(), 0); });
        list.click("MenuParentEditNew");
    });
}

TEST_F(CategoryDialog, aChangeShowsTheCategoryAndItsParent) {
    stage.openUpdate(13, [](User& user) {
        EXPECT_EQ(text(user, 0), "螺丝");
        EXPECT_EQ(text(user, 1), "01");
        EXPECT_EQ(text(user, 2), "01.01");
        EXPECT_EQ(user.control<Combo>("cmb", 0).selected(), 1);
    });
}

TEST_F(CategoryDialog, aChangeRecomposesACodeThatWasWrittenByHand) {
    database().execute("update tblItem set fNumber='X9' where fItemId=13");
    stage.openUpdate(13, [](User& user) { EXPECT_EQ(text(user, 2), "01.01"); });
}

TEST_F(CategoryDialog, aChangeOfACategoryThatIsGoneShowsEmptyFields) {
    stage.open([this](User& list) {
        list.clickNode("tv1", "D14");
        database().execute("delete from tblItem where fItemId=14");
        script().onWindow("frmParent", [](User& user) {
            EXPECT_EQ(text(user, 0), "");
            EXPECT_EQ(user.control<Combo>("cmb", 0).selected(), 0);
        });
        list.click("MenuParentEditUpdate");
    });
}

TEST_F(CategoryDialog, theCodeIsComposedFromTheParentsAndTheShortCode) {
    stage.openNew([](User& user) {
        user.type("txt", "07", 1);
        EXPECT_EQ(text(user, 2), "07");
        user.pick("cmb", 2, 0);
        EXPECT_EQ(text(user, 2), "01.01.07");
        user.type("txt", "08", 1);
        EXPECT_EQ(text(user, 2), "01.01.08");
        user.pick("cmb", 0, 0);
        EXPECT_EQ(text(user, 2), "08");
    });
}

TEST_F(CategoryDialog, blanksAroundTheShortCodeShowWhileItIsTypedAndNotAfterAPick) {
    stage.openNew([](User& user) {
        user.type("txt", " 0 7 ", 1);
        EXPECT_EQ(text(user, 2), " 0 7 ");
        user.pick("cmb", 1, 0);
        EXPECT_EQ(text(user, 2), "01.0 7");
        user.type("txt", " 0 7 ", 1);
        EXPECT_EQ(text(user, 2), "01. 0 7 ");
    });
}

TEST_F(CategoryDialog, theCodeIsStoredTrimmedAtItsOwnEndsOnly) {
    stage.openNew([](User& user) {
        user.pick("cmb", 1, 0);
        fill(user, " 名 称 ", " 0 7 ");
        save(user);
    });
    EXPECT_EQ(database().rows("select fnumber,fshortnumber,fname from tblItem where fitemid=105"),
              (Rows{{"01. 0 7", "0 7", "名 称"}}));
}

TEST_F(CategoryDialog, enterMovesOnToTheNextControl) {
    stage.openNew([](User& user) {
        auto& shortCode = user.control<Edit>("txt", 1);
        shortCode.setFocus();
        user.press("Enter");
        EXPECT_TRUE(user.control<Edit>("txt", 0).hasFocus());
        user.press("Enter");
        EXPECT_TRUE(user.control<Edit>("txt", 2).hasFocus());
        user.press("Enter");
        EXPECT_TRUE(user.control<Button>("cmdOperate").hasFocus());
    });
}

TEST_F(CategoryDialog, anEmptyNameIsRefused) {
    stage.openNew([this](User& user) {
        fill(user, "  ", "07");
        stage.forgetStatements();
        user.answer(MessageKind::warning, "请输入分类名称!");
        user.click("cmdOperate");
        EXPECT_TRUE(user.control<Edit>("txt", 0).hasFocus());
        EXPECT_EQ(stage.statements(), Texts{});
        EXPECT_EQ(script().messages().back().title, kTitle);
    });
}

TEST_F(CategoryDialog, anEmptyShortCodeIsRefused) {
    stage.openNew([this](User& user) {
        fill(user, "新类", " ");
        stage.forgetStatements();
        user.answer(MessageKind::warning, "请输入分类短代码!");
        user.click("cmdOperate");
        EXPECT_TRUE(user.control<Edit>("txt", 1).hasFocus());
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

TEST_F(CategoryDialog, anEmptyFullCodeIsStored) {
    stage.openNew([](User& user) {
        fill(user, "新类", "07");
        user.type("txt", "", 2);
        save(user);
    });
    EXPECT_EQ(database().value("select fnumber from tblItem where fitemid=105"), "");
}

TEST_F(CategoryDialog, aTopCategorySendsItsStatementsInOrder) {
    stage.openNew([this](User& user) {
        fill(user, "新类", "07");
        stage.forgetStatements();
        save(user);
        EXPECT_EQ(
            stage.statements(),
            (Texts{"select fitemid from tblitem where fnumber='07' and fitemclassid=3",
                   "select fmaxNum from tblMaxNum where fTablename='tblItem'",
                   "update tblMaxnum set fMaxnum=fMaxNum+1  where fTablename='tblItem' ",
                   "insert into tblitem(fitemid,fshortnumber,fnumber,fname,fitemclassid,fparentid,fisdetail,fdepth,"
                   "fstatus,fcheckerid,fislock,flockerid,ffullname,fnbnumber) values(105,'07','07','新类',3,0,0,1,0,"
                   "0,0,0,'','.105.')"}));
    });
    EXPECT_EQ(database().rows("select * from tblItem where fitemid=105"),
              (Rows{{"105", "07", "07", "新类", "3", "0", "0", "1", "0", "0", "0", "0", "", ".105."}}));
}

TEST_F(CategoryDialog, aCategoryUnderAParentReadsItsPathAndDepth) {
    stage.openNew([this](User& user) {
        user.pick("cmb", 2, 0);
        fill(user, "新类", "07");
        stage.forgetStatements();
        save(user);
        ASSERT_EQ(stage.statements().size(), 5U);
        EXPECT_EQ(stage.statements()[3], "select fnbnumber,fdepth from tblItem where fitemid=13");
        EXPECT_EQ(
            stage.statements()[4],
            "insert into tblitem(fitemid,fshortnumber,fnumber,fname,fitemclassid,fparentid,fisdetail,fdepth,fstatus,"
            "fcheckerid,fislock,flockerid,ffullname,fnbnumber) values(105,'07','01.01.07','新类',3,13,0,3,0,0,0,0,'',"
            "'.12.13.105.')");
    });
}

TEST_F(CategoryDialog, theFirstRowOfAllCreatesTheCounter) {
    database().execute("delete from tblItem");
    database().execute("delete from tblMaxNum");
    stage.openNew([this](User& user) {
        fill(user, "新类", "07");
        stage.forgetStatements();
        save(user);
        EXPECT_EQ(stage.statements()[2], "insert into tblMaxNum(fMaxNum,fTableName) values(1,'tblItem')");
    });
    EXPECT_EQ(database().value("select fmaxnum from tblMaxNum where ftablename='tblItem'"), "1");
    EXPECT_EQ(stage.items(), (Rows{{"1", "07", ".1.", "1", "0", "07", "新类"}}));
}

TEST_F(CategoryDialog, aCodeOfTheClassIsRefused) {
    stage.openNew([this](User& user) {
        fill(user, "新类", "02");
        stage.forgetStatements();
        user.answer(MessageKind::warning, "代码不能重复!");
        user.click("cmdOperate");
        EXPECT_EQ(stage.statements().size(), 1U);
        EXPECT_EQ(text(user, 0), "新类");
    });
    EXPECT_EQ(stage.asked, std::vector<int>{3});
}

TEST_F(CategoryDialog, aCodeOfAnotherClassIsFree) {
    database().addCategory(1, 30, "77", "华东");
    stage.openNew([](User& user) {
        fill(user, "新类", "77");
        save(user);
    });
    EXPECT_EQ(database().value("select count(*) as n from tblItem where fnumber='77'"), "2");
}

TEST_F(CategoryDialog, afterASaveItIsReadyForTheNextOne) {
    stage.openNew([](User& user) {
        user.pick("cmb", 1, 0);
        fill(user, "新类", "07");
        save(user);
        EXPECT_EQ(text(user, 0), "");
        EXPECT_EQ(text(user, 1), "");
        EXPECT_EQ(text(user, 2), "01.");
        EXPECT_TRUE(user.control<Edit>("txt", 1).hasFocus());
        EXPECT_EQ(user.control<Combo>("cmb", 0).selected(), 1);
    });
}

TEST_F(CategoryDialog, twoSavesMakeTwoSistersAndReadTheTreeOnce) {
    stage.open([this](User& list) {
        list.clickNode("tv1", "D12");
        script().onWindow("frmParent", [](User& user) {
            fill(user, "甲", "07");
            save(user);
            fill(user, "乙", "08");
            save(user);
        });
        list.click("MenuParentEditNew");
        EXPECT_TRUE(list.control<platform::Tree>("tv1").has("D106"));
        EXPECT_EQ(list.control<platform::Tree>("tv1").parent("D105"), "D12");
    });
    EXPECT_EQ(stage.asked, (std::vector<int>{3, 1}));
    EXPECT_EQ(database().rows("select fitemid,fnumber,fnbnumber from tblItem where fitemid>104 order by fitemid"),
              (Rows{{"105", "01.07", ".12.105."}, {"106", "01.08", ".12.106."}}));
}

TEST_F(CategoryDialog, closingWithoutASaveReadsNothing) {
    stage.openNew([this](User& user) {
        fill(user, "新类", "07");
        stage.forgetStatements();
        user.click("cmdClose");
    });
    EXPECT_EQ(stage.asked, std::vector<int>{3});
    EXPECT_EQ(stage.statements(), Texts{});
}

TEST_F(CategoryDialog, afterASaveTheNodeOfTheSamePlaceIsSelected) {
    stage.open([this](User& list) {
        list.clickNode("tv1", "D13");  // the third node: root, 12, 13 by depth then code? see its index
        const int index = list.control<platform::Tree>("tv1").indexOf("D13");
        script().onWindow("frmParent", [](User& user) {
            fill(user, "甲", "00");
            user.pick("cmb", 0, 0);
            save(user);
        });
        list.click("MenuParentEditNew");
        auto& tv1 = list.control<platform::Tree>("tv1");
        EXPECT_EQ(tv1.selected(), tv1.keyAt(index));
        EXPECT_NE(tv1.selected(), "D13");
    });
}

TEST_F(CategoryDialog, aPlaceBeyondTheNewTreeSelectsNothing) {
    stage.open([this](User& list) {
        list.clickNode("tv1", "D13");
        script().onWindow("frmParent", [this](User& user) {
            fill(user, "甲", "00");
            save(user);
            database().execute("delete from tblItem where fisdetail=0");
        });
        list.click("MenuParentEditNew");
        EXPECT_EQ(list.control<platform::Tree>("tv1").selected(), "");
    });
}

TEST_F(CategoryDialog, afterAChangeTheNextSaveIsAnInsert) {
    stage.openUpdate(14, [](User& user) {
        user.type("txt", "家电", 0);
        save(user);
        EXPECT_EQ(appState().gEditMode, 0);
        EXPECT_EQ(appState().gCurItemId, 14);
        EXPECT_EQ(user.control<Button>("cmdOperate").caption(), "新增(&A)");
        fill(user, "灯具", "05");
        save(user);
    });
    EXPECT_EQ(database().rows("select fname from tblItem where fitemid in (14,105) order by fitemid"),
              (Rows{{"家电"}, {"灯具"}}));
}

TEST_F(CategoryDialog, aQuoteInTheNameFailsWithTheStoresTextAndLosesTheIdOnly) {
    stage.openNew([this](User& user) {
        fill(user, "5'件", "07");
        stage.forgetStatements();
        const Rows before = stage.items();
        user.answer(MessageKind::critical, "字符串 ')' 后的引号不完整。");
        user.click("cmdOperate");
        EXPECT_EQ(stage.items(), before);
        EXPECT_EQ(text(user, 0), "5'件");
    });
    EXPECT_EQ(database().value("select fmaxnum from tblMaxNum where ftablename='tblItem'"), "105");
}

TEST_F(CategoryDialog, aCodeOfMoreThanAHundredCharactersIsRefusedByItsColumn) {
    stage.openNew([](User& user) {
        fill(user, "新类", std::string(101, '7'));
        user.answer(MessageKind::critical, "将在表“tblItem”的列“fShortNumber”中截断字符串或二进制数据。截断值:“" +
                                               std::string(100, '7') + "”。");
        user.click("cmdOperate");
    });
    EXPECT_EQ(database().value("select count(*) as n from tblItem where fitemid=105"), "0");
}

TEST_F(CategoryDialog, underAParentDeletedMeanwhileDepthAndPathStayEmpty) {
    stage.openNew([this](User& user) {
        user.pick("cmb", 3, 0);
        fill(user, "新类", "07");
        database().execute("delete from tblItem where fitemid=14");
        save(user);
        // The tree that is read again has no place for it.
        user.answer(MessageKind::critical, "找不到元素：D14");
    });
    closeDB();
    EXPECT_EQ(database().rows("select fnumber,fparentid,fdepth,fnbnumber from tblItem where fitemid=105"),
              (Rows{{"02.07", "14", "0", ""}}));
}

TEST_F(CategoryDialog, anIdBeyondTheCounterIsAFailure) {
    database().execute("update tblMaxNum set fMaxNum=2147483647 where fTableName='tblItem'");
    stage.openNew([](User& user) {
        fill(user, "新类", "07");
        user.answer(MessageKind::critical, "将 expression 转换为数据类型 int 时出现算术溢出错误。");
        user.click("cmdOperate");
    });
    EXPECT_EQ(database().value("select count(*) as n from tblItem where fnumber='07'"), "0");
}

TEST_F(CategoryDialog, withoutItsCategoriesItOpensAllTheSame) {
    stage.open([this](User& list) {
        list.clickNode("tv1", "D0");
        stage.faults().count = 0;
        stage.faults().failAt = 2;  // 1 connects
        list.answer(MessageKind::critical, kFault);
        script().onWindow("frmParent", [this](User& user) {
            stage.faults().failAt = 0;
            EXPECT_EQ(user.control<Combo>("cmb", 0).rowCount(), 0);
            fill(user, "新类", "07");
            EXPECT_EQ(text(user, 2), "07");
            user.answer(MessageKind::critical, "类型不匹配");
            user.click("cmdOperate");
        });
        list.click("MenuParentEditNew");
    });
    EXPECT_EQ(database().value("select count(*) as n from tblItem where fnumber='07'"), "0");
}

}  // namespace
}  // namespace orvenmod::test
