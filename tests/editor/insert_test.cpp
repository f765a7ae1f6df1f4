// A new item stored.
#include "editor/editortest.h"

namespace orvenmod::test {
namespace {

class EditorInsert : public EditorTest {
protected:
    void save(User& user) {
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    }
};

TEST_F(EditorInsert, sendsItsStatementsInOrder) {
    stage.openNew(
        [this](User& user) {
            typeName(user, "垫圈");
            user.typeCell("fps1", kValue, kModelRow, "M6");
            user.pickCell("fps1", kValue, kSupplierRow, 1);
            stage.forgetStatements();
            save(user);
            const Texts sent = stage.statements();
            ASSERT_GE(sent.size(), 7U);
            EXPECT_EQ(sent[0], "select * from tblItem where fnumber='01.01.003' and fitemclassid=3");
            EXPECT_EQ(sent[1], "select * from tblItem where fname='垫圈' and fitemclassid=3 and fisdetail=1 ");
            EXPECT_EQ(sent[2], "select * from tblMaxnum where ftablename='tblItem'");
            EXPECT_EQ(sent[3], "update tblMaxNum set  fmaxnum=fmaxnum+1  where ftablename='tblItem'");
            EXPECT_EQ(
                sent[4],
                "select fnbnumber,fdepth,fitemid from tblItem where fitemid=13 and fitemclassid=3 and fisdetail=0 ");
            EXPECT_EQ(
                sent[5],
                "insert into ICItem(fitemid,fNumber,fName,fModel,fMinQty,fF,fH) values(203,'01.01.003','垫圈','M6','0',"
                "'1900-01-01',202)");
            EXPECT_EQ(
                sent[6],
                "insert into tblItem(fitemid,fnumber,fname,fitemclassid,fparentid,fisDetail,fdepth,fislock,fNBNumber,"
                "fshortnumber) values(203,'01.01.003','垫圈',3,13,1,3,0,'.12.13.203.','003')");
        },
        13);
    EXPECT_EQ(item(203), (Rows{{"01.01.003", "垫圈", "3", "13", "1", "3", "0", ".12.13.203.", "003"}}));
    EXPECT_EQ(goods(203), (Rows{{"01.01.003", "垫圈", "M6", "0", "1900-01-01 00:00:00", "202"}}));
    EXPECT_EQ(appState().gCurItemId, 203);
    EXPECT_EQ(script().messages().back(), (ShownMessage{MessageKind::information, "数据保存成功!", kTitle}));
}

TEST_F(EditorInsert, theTransactionHoldsJustTheRows) {
    stage.openNew([this](User& user) {
        typeName(user, "垫圈");
        stage.forgetStatements();
        save(user);
        const Texts all = stage.operations();
        const Texts inTransaction(std::find(all.begin(), all.end(), "begin"),
                                  std::find(all.begin(), all.end(), "commit"));
        EXPECT_EQ(inTransaction, (Texts{"begin", "execute", "execute"}));
    });
}

TEST_F(EditorInsert, theFirstItemOfADatabaseMakesTheCounter) {
    database().execute("delete from tblMaxNum");
    stage.openNew([this](User& user) {
        typeName(user, "垫圈");
        database().execute("delete from tblItem");
        database().execute("delete from ICItem");
        stage.forgetStatements();
        save(user);
        EXPECT_EQ(stage.statements().at(3), "insert into tblMaxNum(ftablename,fMaxNum) values('tblItem',1)");
    });
    EXPECT_EQ(item(1).at(0).at(7), ".1.");
    EXPECT_EQ(database().value("select fMaxNum from tblMaxNum where fTableName='tblItem'"), "1");
}

TEST_F(EditorInsert, theListIsRefreshedWhenTheWindowCloses) {
    stage.openNew([this](User& user) {
        typeName(user, "垫圈");
        save(user);
        EXPECT_EQ(stage.list.refreshes, Texts{});
    });
    EXPECT_EQ(stage.list.refreshes, Texts{" and fNBNumber like '.12.%'"});
}

TEST_F(EditorInsert, afterASaveTheNextItemStartsInTheSameCategory) {
    stage.openNew(
        [this](User& user) {
            typeName(user, "垫圈");
            user.typeCell("fps1", kValue, kModelRow, "M6");
            user.pickCell("fps1", kValue, kSupplierRow, 0);
            save(user);
            EXPECT_EQ(values(user), (Texts{"004", "01.01.004", "", "", "", "", "", "    螺丝(01.01)"}));
            EXPECT_EQ(chosenId(user, kSupplierRow), "");
            EXPECT_EQ(user.control<EntryGrid>("fps1").activeRow(), kShortCodeRow);
            EXPECT_EQ(appState().gEditMode, 0);
            EXPECT_EQ(user.window().caption(), "货品新增");
        },
        13);
}

TEST_F(EditorInsert, withoutTheOptionTheItemStaysForAChange) {
    stage.openNew([this](User& user) {
        user.chooseMenu("MenuNewAfterSave");
        EXPECT_FALSE(user.control<platform::Menu>("MenuNewAfterSave").checked());
        EXPECT_EQ(appState().gNoNewAfterSave, 1);
        typeName(user, "垫圈");
        save(user);
        EXPECT_EQ(value(user, kNameRow), "垫圈");
        EXPECT_EQ(appState().gEditMode, 1);
        EXPECT_EQ(user.window().caption(), "货品新增");
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
        user.chooseMenu("MenuNewAfterSave");
        EXPECT_TRUE(user.control<platform::Menu>("MenuNewAfterSave").checked());
        EXPECT_EQ(appState().gNoNewAfterSave, 0);
    });
    EXPECT_EQ(database().value("select count(*) from tblItem where fItemId>202"), "1");
}

TEST_F(EditorInsert, aCodeOfACategoryIsTaken) {
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kShortCodeRow, "01");
        typeName(user, "垫圈");
        user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
        user.clickTool("Save");
        EXPECT_EQ(value(user, kNameRow), "垫圈");
    });
    EXPECT_EQ(script().messages().back(), (ShownMessage{MessageKind::warning, "代码已经存在,保存不成功!", kTitle}));
    EXPECT_EQ(database().value("select fMaxNum from tblMaxNum where fTableName='tblItem'"), "202");
    EXPECT_EQ(stage.list.refreshes, Texts{});
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorInsert, aDoubledNameIsAsked) {
    stage.openNew([](User& user) {
        typeName(user, " 螺母");
        user.answer(MessageKind::question, "螺母名称已经存在,是否继续!", Answer::no);
        user.clickTool("Save");
        user.answer(MessageKind::question, "螺母名称已经存在,是否继续!", Answer::yes);
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(item(203).at(0).at(1), " 螺母") << "stored as the grid has it";
}

TEST_F(EditorInsert, aCategoryThatIsGoneLeavesTheItemWithoutAPlace) {
    stage.openNew(
        [this](User& user) {
            typeName(user, "灯泡");
            database().execute("delete from tblItem where fItemId=14");
            save(user);
        },
        14);
    EXPECT_EQ(item(203), (Rows{{"02.002", "灯泡", "3", "0", "1", "0", "0", "", "002"}}));
}

TEST_F(EditorInsert, anEmptyShortCodeIsRefusedOnlyWhereTheFieldAsks) {
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kShortCodeRow, "");
        typeName(user, "垫圈");
        user.answer(MessageKind::warning, "短代码不能为空!");
        user.clickTool("Save");
    });
    database().execute(
        "update tblTableInfo set fIsNull=0 where fItemClassId=3 and fFieldName in ('fShortNumber','fNumber')");
    stage.openNew([this](User& user) {
        user.typeCell("fps1", kValue, kShortCodeRow, "");
        typeName(user, "垫圈");
        save(user);
    });
    EXPECT_EQ(item(203).at(0).at(0), "");
}

TEST_F(EditorInsert, aFieldThatIsHiddenStaysOutOfTheStatement) {
    database().execute("update tblTableInfo set fIsVisible=0 where fItemClassId=3 and fFieldName='fModel'");
    stage.openNew([this](User& user) {
        typeName(user, "垫圈");
        save(user);
    });
    EXPECT_EQ(goods(203).at(0).at(2), "NULL");
}

TEST_F(EditorInsert, aCopyIsSavedAsANewItem) {
    database().execute("insert into tblItemFJ(fItemId,fEntryId,fName,fFileName) values(101,1,'图纸','a.pdf')");
    stage.openItem(101, [this](User& user) {
        user.clickTool("Copy");
        EXPECT_EQ(appState().gEditMode, 0);
        EXPECT_EQ(user.window().caption(), "货品新增");
        EXPECT_EQ(user.control<EntryGrid>("fps2").rowCount(), 0);
        EXPECT_EQ(value(user, kShortCodeRow), "003");
        EXPECT_EQ(value(user, kCodeRow), "01.01.003");
        user.answer(MessageKind::question, "内六角螺丝名称已经存在,是否继续!", Answer::yes);
        save(user);
    });
    EXPECT_EQ(item(203).at(0).at(0), "01.01.003");
    EXPECT_EQ(item(101).at(0).at(0), "01.01.001");
    EXPECT_EQ(database().value("select count(*) from tblItemFJ where fItemId=203"), "0");
}

TEST_F(EditorInsert, newEmptiesTheFields) {
    stage.openItem(101, [](User& user) {
        user.clickTool("New");
        EXPECT_EQ(appState().gEditMode, 0);
        EXPECT_EQ(user.window().caption(), "货品新增");
        EXPECT_EQ(values(user), (Texts{"003", "01.01.003", "", "", "", "", "", "    螺丝(01.01)"}));
        EXPECT_EQ(appState().gPhotoPath, "");
    });
}

TEST_F(EditorInsert, aPhotoIsForGoodsAlone) {
    appState().gItemClassId = 2;
    appState().gItemTable = "tblSupplier";
    stage.openNew([this](User& user) {
        typeName(user, "华北供应");
        appState().gPhotoPath = stage.makeFile("a.bmp", redBitmap());
        save(user);
    });
    EXPECT_EQ(database().value("select fName from tblSupplier where fItemId=203"), "华北供应");
    EXPECT_EQ(database().value("select count(*) from ICItemPhoto"), "0");
}

TEST_F(EditorInsert, aCategoryOfMinusOneIsNone) {
    stage.openNew([this](User& user) {
        typeName(user, "垫圈");
        user.control<EntryGrid>("fps1").setText(kChosenId, kCategoryRow, "-1");
        save(user);
    });
    EXPECT_EQ(item(203).at(0).at(7), ".203.");
    EXPECT_EQ(item(203).at(0).at(3), "0");
}

TEST_F(EditorInsert, blanksAreNoEmptyNumber) {
    stage.openNew([this](User& user) {
        typeName(user, "垫圈");
        user.control<EntryGrid>("fps1").setText(kValue, kMinQtyRow, "  ");
        user.control<EntryGrid>("fps1").setText(kValue, kDayRow, " ");
        stage.forgetStatements();
        user.answer(MessageKind::critical, "从数据类型 varchar 转换为 numeric 时出错。");
        user.clickTool("Save");
        EXPECT_EQ(
            stage.lastStatement(),
            "insert into ICItem(fitemid,fNumber,fName,fModel,fMinQty,fF,fH) values(203,'04','垫圈','','  ',' ',0)");
    });
}

}  // namespace
}  // namespace orvenmod::test
