// frmHSXMDetailNew: what it refuses, and what the store refuses. Nothing is left behind.
#include "designer/designertest.h"

namespace orvenmod::test {
namespace {

class NewFieldRefusedTest : public DesignerTest {
protected:
    NewFieldRefusedTest() { stage.withClass({"50", "设备"}); }

    void inForm(const std::string& itemClass, const Steps& steps) {
        open([&](User& user) {
            user.clickNode("tv1", "D" + itemClass);
            stage.inNewField(user, steps);
        });
    }

    /// Saves in vain: these boxes, a database as before, a form as typed, a store let go.
    void refused(const FieldInput& made, const Texts& boxes, const std::string& itemClass = "50") {
        SCOPED_TRACE(made.name + " / " + made.field);
        inForm(itemClass, [&](User& dialog) {
            typeField(dialog, made);
            const std::string before = database().dump();
            for (const std::string& box : boxes)
                dialog.answer(MessageKind::critical, box);
            dialog.clickTool("Save");
            EXPECT_TRUE(dialog.window().shown());
            EXPECT_EQ(dialog.control<platform::EntryGrid>("fps1").text(2, 1), made.name);
            EXPECT_EQ(database().dump(), before);
        });
    }
};

TEST_F(NewFieldRefusedTest, emptyCellsAreRefusedInOrderEachBecomingTheActiveCell) {
    inForm("50", [&](User& dialog) {
        auto& grid = dialog.control<platform::EntryGrid>("fps1");
        const auto refuse = [&](const std::string& text, int row) {
            stage.forgetStatements();
            dialog.answer(MessageKind::critical, text);
            dialog.clickTool("Save");
            EXPECT_EQ(grid.activeRow(), row) << text;
            EXPECT_EQ(grid.activeColumn(), 2) << text;
            EXPECT_TRUE(stage.statements().empty());
        };
        dialog.pickCell("fps1", 2, 3, 2);
        dialog.typeCell("fps1", 2, 2, " ");
        refuse("名称不能为空", 1);
        dialog.typeCell("fps1", 2, 1, "重量");
        refuse("字段名不能为空", 2);
        dialog.typeCell("fps1", 2, 2, "fWeight");
        refuse("小数点位数不能为空!", 4);
        dialog.typeCell("fps1", 2, 4, "0");
        refuse("最大值不能为空!", 5);
        dialog.typeCell("fps1", 2, 5, "1");
        refuse("最小值不能为空!", 6);
    });
    stage.finish();
}

TEST_F(NewFieldRefusedTest, numberCellsTakeOnlyWhatTheirLimitsAllow) {
    inForm("50", [](User& dialog) {
        auto& grid = dialog.control<platform::EntryGrid>("fps1");
        dialog.pickCell("fps1", 2, 3, 2);
        dialog.typeCell("fps1", 2, 4, "11");
        EXPECT_EQ(grid.refusal(), "请输入 0 到 10 之间的整数");
        dialog.press("Esc");
        dialog.typeCell("fps1", 2, 5, "99999999.99");
        EXPECT_EQ(grid.text(2, 5), "99999999.99");
        dialog.typeCell("fps1", 2, 5, "100000000");
        EXPECT_EQ(grid.refusal(), "请输入 -99999999.99 到 99999999.99 之间的数");
        dialog.press("Esc");
        EXPECT_EQ(grid.text(2, 5), "99999999.99");
        dialog.typeCell("fps1", 2, 6, "-99999999.99");
        EXPECT_EQ(grid.text(2, 6), "-99999999.99");
    });
}

TEST_F(NewFieldRefusedTest, aMinimumAboveTheMaximumIsTaken) {
    FieldInput made = numberField("重量", "fWeight");
    made.maximum = "1";
    made.minimum = "2";
    open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.makeField(user, made);
    });
    EXPECT_EQ(database().rows("select FMaxNumber,FMinNumber from tblTableInfo where fFieldName='fWeight'"),
              (Rows{{"1", "2"}}));
}

TEST_F(NewFieldRefusedTest, aFieldThatExistsIsRefusedByTheStore) {
    refused({.name = "又", .field = "FNAME"}, {"各表中的列名必须唯一。在表 'tblSelfA1' 中多次指定了列名 'FNAME'。"});
    stage.finish();
}

TEST_F(NewFieldRefusedTest, fieldNamesThatAreNoneAreRefusedByTheStore) {
    refused({.name = "甲", .field = "select"}, {"关键字 'select' 附近有语法错误。"});
    refused({.name = "甲", .field = "1st"}, {"'1' 附近有语法错误。"});
    refused({.name = "甲", .field = "f'x"}, {"字符串 ','', 1)' 后的引号不完整。"});
    stage.finish();
}

TEST_F(NewFieldRefusedTest, aChineseFieldNameIsOneLikeAnyOther) {
    open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.makeField(user, {.name = "品牌", .field = "品牌"});
    });
    EXPECT_TRUE(database().rows("select 品牌 from vtblSelfA1").empty());
    stage.finish();
}

TEST_F(NewFieldRefusedTest, aQuoteInACaptionOrADefaultIsRefusedByTheStore) {
    refused({.name = "O'Neil", .field = "f1"}, {"字符串 ','', 1)' 后的引号不完整。"});
    refused({.name = "甲", .field = "f1", .fallback = "a'b"}, {"字符串 ','', 1)' 后的引号不完整。"});
    stage.finish();
}

TEST_F(NewFieldRefusedTest, aClassWithoutFieldRowsFailsBeforeTheTransactionAndTheRollbackFailsToo) {
    database().execute("delete from tblTableInfo where fItemClassId=50");
    refused({.name = "甲", .field = "f1"}, {"无效使用 Null", kNoTransaction});
    EXPECT_EQ(appState().gConn, nullptr);
}

TEST_F(NewFieldRefusedTest, aClassThatIsGoneFailsBeforeTheTransaction) {
    inForm("50", [&](User& dialog) {
        database().execute("delete from tblItemClass where fItemClassId=50");
        typeField(dialog, {.name = "甲", .field = "f1"});
        dialog.answer(MessageKind::critical,
                      "BOF 或 EOF 中有一个是“真”，或者当前的记录已被删除，所需的操作要求一个当前的记录。");
        dialog.answer(MessageKind::critical, kNoTransaction);
        dialog.clickTool("Save");
    });
    EXPECT_EQ(database().rows("select * from tblSelfA1").size(), 0U);
}

TEST_F(NewFieldRefusedTest, aClassWithoutAViewNameOrWithoutItsViewIsRefused) {
    database().execute("update tblItemClass set fViewName=null where fItemClassId=50");
    refused({.name = "甲", .field = "f1"}, {"关键字 'view' 附近有语法错误。"});
    database().execute("update tblItemClass set fViewName='vNowhere' where fItemClassId=50");
    refused({.name = "甲", .field = "f1"}, {"无法对视图“vNowhere”执行删除，因为它不存在，或者您没有所需的权限。"});
    stage.finish();
}

TEST_F(NewFieldRefusedTest, aClassWhoseTypeIdPassesSixteenBitsFailsBehindTheChangedTable) {
    stage.withClass({"30000", "大类"});
    refused({.name = "甲", .field = "f1"}, {"溢出"}, "30000");
    stage.finish();
}

TEST_F(NewFieldRefusedTest, aFormThatCouldNotBeLoadedCantSave) {
    open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.faults() = {.failAt = 2};
        user.answer(MessageKind::critical, kFault);
        stage.inNewField(user, [&](User& dialog) {
            stage.faults() = {};
            EXPECT_EQ(dialog.control<platform::EntryGrid>("fps1").text(2, 2), "");
            EXPECT_EQ(appState().gConn, nullptr);
            dialog.typeCell("fps1", 2, 1, "甲");
            dialog.typeCell("fps1", 2, 2, "f1");
            dialog.answer(MessageKind::critical, "下标越界");
            dialog.answer(MessageKind::critical, kNoTransaction);
            dialog.clickTool("Save");
        });
    });
}

TEST_F(NewFieldRefusedTest, aFailingProposalAfterASaveIsShownAndTheFormGoesOn) {
    inForm("50", [&](User& dialog) {
        typeField(dialog, {.name = "甲"});
        database().execute("insert into tblMaxbillno(fTypeId,fPreLetter,fBillNo) values(1001,'A',32766)");
        dialog.answer(MessageKind::information, kFieldSaved);
        dialog.answer(MessageKind::critical, "溢出");
        dialog.clickTool("Save");
        EXPECT_EQ(dialog.control<platform::EntryGrid>("fps1").text(2, 2), "");
    });
    stage.finish();
}

}  // namespace
}  // namespace orvenmod::test
