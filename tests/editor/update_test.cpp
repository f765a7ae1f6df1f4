// A stored item changed.
#include "editor/editortest.h"

namespace orvenmod::test {
namespace {

class EditorUpdate : public EditorTest {
protected:
    void save(User& user) {
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    }
};

TEST_F(EditorUpdate, sendsItsStatementsInOrder) {
    stage.openItem(101, [this](User& user) {
        typeName(user, "内六角");
        user.pickCell("fps1", kValue, kSupplierRow, 0);
        stage.forgetStatements();
        save(user);
        const Texts sent = stage.statements();
        ASSERT_GE(sent.size(), 7U);
        EXPECT_EQ(sent[0], "select fislock as fislock1 from tblItem where fitemid=101");
        EXPECT_EQ(sent[1], "select * from tblItem where fnumber='01.01.001' and fitemclassid=3 and fitemid<>101");
        EXPECT_EQ(sent[2],
                  "select * from tblItem where fname='内六角' and fitemclassid=3 and fitemid<>101 and fisdetail=1 ");
        EXPECT_EQ(sent[3],
                  "select fnbnumber,fdepth,fitemid from tblItem where fitemid=13 and fitemclassid=3 and fisdetail=0 ");
        EXPECT_EQ(
            sent[4],
            "update ICItem set  fNumber='01.01.001', fName='内六角', fModel='', fMinQty='0', fF='1900-01-01',fH=201 "
            "where fitemid=101");
        EXPECT_EQ(sent[5],
                  "update tblItem set fnumber='01.01.001',fname='内六角',fparentid=13,fdepth=3,fNBNumber='.12.13.101.',"
                  "fShortNumber='001'  where fitemid=101");
        EXPECT_EQ(sent[6], "delete from icitemphoto where fitemid=101");
    });
    EXPECT_EQ(goods(101).at(0).at(5), "201");
    EXPECT_EQ(script().messages().back(), (ShownMessage{MessageKind::information, "数据修改成功!", kTitle}));
    EXPECT_EQ(stage.list.refreshes, Texts{" and fNBNumber like '.12.%'"});
}

TEST_F(EditorUpdate, aDisabledItemIsRefused) {
    database().execute("update tblItem set fIsLock=1 where fItemId=101");
    stage.openItem(101, [](User& user) {
        typeName(user, "内六角");
        user.answer(MessageKind::warning, "该项目已经禁用!不能修改");
        user.clickTool("Save");
    });
    EXPECT_EQ(script().messages().back(), (ShownMessage{MessageKind::warning, "该项目已经禁用!不能修改", kTitle}));
    EXPECT_EQ(item(101).at(0).at(1), "内六角螺丝");
}

TEST_F(EditorUpdate, theItemsOwnCodeAndNameAreNoDoubles) {
    stage.openItem(101, [this](User& user) { save(user); });
}

TEST_F(EditorUpdate, anotherItemsCodeAndNameAre) {
    stage.openItem(101, [this](User& user) {
        user.typeCell("fps1", kValue, kShortCodeRow, "002");
        user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
        user.clickTool("Save");
        user.typeCell("fps1", kValue, kShortCodeRow, "001");
        typeName(user, "螺母");
        user.answer(MessageKind::question, "螺母名称已经存在,是否继续!", Answer::no);
        user.clickTool("Save");
        user.answer(MessageKind::question, "螺母名称已经存在,是否继续!", Answer::yes);
        save(user);
    });
}

TEST_F(EditorUpdate, movesToAnotherCategoryWithANewCode) {
    stage.openItem(101, [this](User& user) {
        user.pickCell("fps1", kValue, kCategoryRow, 3);
        save(user);
    });
    EXPECT_EQ(item(101), (Rows{{"02.002", "内六角螺丝", "3", "14", "1", "2", "0", ".14.101.", "002"}}));
    EXPECT_EQ(goods(101).at(0).at(0), "02.002");
}

TEST_F(EditorUpdate, blanksCountAsAnEmptyNumberAndNamesAreTrimmed) {
    stage.openItem(101, [this](User& user) {
        typeName(user, " 内六角 ");
        user.control<EntryGrid>("fps1").setText(kValue, kMinQtyRow, "  ");
        save(user);
    });
    EXPECT_EQ(item(101).at(0).at(1), "内六角");
    EXPECT_EQ(goods(101).at(0).at(3), "0");
}

TEST_F(EditorUpdate, anItemThatIsGoneIsSavedWithoutAWord) {
    stage.openItem(101, [this](User& user) {
        database().execute("delete from tblItem where fItemId=101");
        database().execute("delete from ICItem where fItemId=101");
        save(user);
    });
    EXPECT_EQ(item(101), Rows{});
    EXPECT_EQ(goods(101), Rows{});
}

TEST_F(EditorUpdate, aHiddenFieldKeepsItsValue) {
    database().execute("update ICItem set fA='好牌' where fItemId=101");
    stage.openItem(101, [this](User& user) { save(user); });
    EXPECT_EQ(database().value("select fA from ICItem where fItemId=101"), "好牌");
}

TEST_F(EditorUpdate, attachmentsAreToldApartByTheirTag) {
    const std::string file = stage.makeFile("new.txt", "new");
    database().execute("insert into tblItemFJ(fItemId,fEntryId,fName,fFileName) values(101,4,'图纸','a.pdf')");
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.typeCell("fps2", 3, 1, "总图 ");
        user.chooseFile(file);
        user.click("cmdAddFJ");
        user.typeCell("fps2", 3, 2, "说明");
        stage.forgetStatements();
        save(user);
        const Texts sent = stage.statements();
        EXPECT_NE(
            std::find(sent.begin(), sent.end(), "update tblItemFJ set fName='总图' where fitemid=101 and fentryid=4"),
            sent.end());
    });
    EXPECT_EQ(database().rows("select fEntryId,fName,fFileName from tblItemFJ where fItemId=101 order by fEntryId"),
              (Rows{{"2", "说明", "new.txt"}, {"4", "总图", "a.pdf"}}));
}

TEST_F(EditorUpdate, rowsOfANewItemThatStaysAreStoredTwice) {
    const std::string file = stage.makeFile("new.txt", "new");
    stage.openNew([&](User& user) {
        user.chooseMenu("MenuNewAfterSave");
        typeName(user, "垫圈");
        user.chooseTab("SSTab1", 1);
        user.chooseFile(file);
        user.click("cmdAddFJ");
        user.typeCell("fps2", 3, 1, "说明");
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
        save(user);
    });
    EXPECT_EQ(database().rows("select fEntryId from tblItemFJ where fItemId=203"), (Rows{{"1"}, {"1"}}));
}

TEST_F(EditorUpdate, anItemWithoutALockIsNotLocked) {
    database().execute("update tblItem set fIsLock=null where fItemId=101");
    stage.openItem(101, [this](User& user) { save(user); });
}

TEST_F(EditorUpdate, theCodeOfTheNewCategoryIsTestedToo) {
    database().addItem(3, 105, "02.002", "插座");
    stage.openItem(101, [](User& user) {
        user.pickCell("fps1", kValue, kCategoryRow, 3);
        EXPECT_EQ(value(user, kCodeRow), "02.002");
        user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(item(101).at(0).at(0), "01.01.001");
}

}  // namespace
}  // namespace orvenmod::test
