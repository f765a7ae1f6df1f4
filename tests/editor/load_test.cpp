// A stored item in the editor.
#include "editor/editortest.h"

namespace orvenmod::test {
namespace {

class EditorLoad : public EditorTest {};

TEST_F(EditorLoad, showsFieldsReferencesAndCategory) {
    database().execute("update ICItem set fModel='M6',fMinQty=10,fF='2026-03-04',fH=202 where fItemId=101");
    stage.openItem(101, [this](User& user) {
        const Texts shown = values(user);
        EXPECT_EQ(shown,
                  (Texts{"001", "01.01.001", "内六角螺丝", "M6", "10", "2026-03-04", "华南供应", "    螺丝(01.01)"}));
        EXPECT_EQ(chosenId(user, kSupplierRow), "202");
        EXPECT_EQ(chosenId(user, kCategoryRow), "13");
        EXPECT_EQ(appState().gCurParentId, 13);
        EXPECT_EQ(user.window().caption(), "货品修改");
        EXPECT_EQ(stage.statements().at(3), "select * from vICItem where fitemid=101");
        EXPECT_EQ(stage.statements().at(4), "select * from ICItemPhoto where fitemid=101");
        EXPECT_EQ(stage.statements().at(5), "select fentryid,fName,fFileName from tblItemFJ where fitemid=101");
    });
}

TEST_F(EditorLoad, anEmptyDateAndNumberShowAsTheValuesThatStandForThem) {
    stage.openItem(101, [](User& user) {
        EXPECT_EQ(value(user, kDayRow), "1900-01-01");
        EXPECT_EQ(value(user, kMinQtyRow), "0");
    });
}

TEST_F(EditorLoad, anItemAtTheTopSelectsNoCategory) {
    stage.openItem(104, [](User& user) {
        EXPECT_EQ(chosenId(user, kCategoryRow), "0");
        EXPECT_EQ(value(user, kCategoryRow), "()");
        EXPECT_EQ(user.control<EntryGrid>("fps1").text(kCategoryCode, kCategoryRow), "");
        EXPECT_EQ(user.control<EntryGrid>("fps1").selectedItem(kValue, kCategoryRow), -1);
    });
}

TEST_F(EditorLoad, aReferenceWhoseEntryIsGoneSelectsNothing) {
    database().execute("update ICItem set fH=999 where fItemId=101");
    stage.openItem(101, [](User& user) {
        EXPECT_EQ(value(user, kSupplierRow), "");
        EXPECT_EQ(chosenId(user, kSupplierRow), "999");
        EXPECT_EQ(user.control<EntryGrid>("fps1").selectedItem(kValue, kSupplierRow), -1);
    });
}

TEST_F(EditorLoad, anItemThatIsGoneIsReported) {
    script().answer(MessageKind::warning, "数据读取错误！", Answer::ok);
    stage.openItem(999, [](User& user) {
        EXPECT_EQ(value(user, kNameRow), "");
        EXPECT_EQ(user.control<EntryGrid>("fps1").rowCount(), kCategoryRow);
    });
    EXPECT_EQ(script().messages().back(), (ShownMessage{MessageKind::warning, "数据读取错误！", kTitle}));
}

TEST_F(EditorLoad, anItemWithoutAParentFailsAfterItsFields) {
    database().execute("update tblItem set fParentId=null where fItemId=101");
    script().answer(MessageKind::critical, "无效使用 Null", Answer::ok);
    stage.openItem(101, [](User& user) {
        EXPECT_EQ(value(user, kNameRow), "内六角螺丝");
        EXPECT_EQ(user.control<EntryGrid>("fps2").rowCount(), 0);
    });
}

TEST_F(EditorLoad, aViewThatFailsShowsItsTextAndTheWindowOpens) {
    appState().gViewName = "vMissing";
    script().answer(MessageKind::critical, "对象名 'vMissing' 无效。", Answer::ok);
    stage.openItem(101, [](User& user) { EXPECT_EQ(value(user, kNameRow), ""); });
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorLoad, attachmentsAreListedWithoutTheirContents) {
    database().execute("insert into tblItemFJ(fItemId,fEntryId,fName,fFileName) values(101,4,'图纸','a.pdf')");
    stage.openItem(101, [](User& user) {
        const auto& rows = user.control<EntryGrid>("fps2");
        ASSERT_EQ(rows.rowCount(), 1);
        EXPECT_EQ(rows.text(3, 1), "图纸");
        EXPECT_EQ(rows.text(4, 1), "a.pdf");
        EXPECT_EQ(rows.text(5, 1), "");
        EXPECT_EQ(rows.cellTag(1, 1), "4");
    });
}

TEST_F(EditorLoad, anItemWithoutAttachmentsHasNoRows) {
    stage.openItem(101, [](User& user) { EXPECT_EQ(user.control<EntryGrid>("fps2").rowCount(), 0); });
}

}  // namespace
}  // namespace orvenmod::test
