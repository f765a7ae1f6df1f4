// What a save finds where its clerk hasn't left the cell.
#include "editor/cellroads.h"

namespace orvenmod::test {
namespace {

std::string refusal(User& user) { return user.control<EntryGrid>("fps1").refusal(); }

TEST_P(EditorCellRoads, aPartOfACategorysNameMovesTheItemAsItIsSaved) {
    stage.openNew([](User& user) {
        typeName(user, "垫圈");
        user.clickCell("fps1", kValue, kCategoryRow);
        user.typeKeys("01.01");
        user.answer(MessageKind::information, "数据保存成功!");
        user.press("Ctrl+S");
    });
    EXPECT_EQ(database().rows("select fNumber,fShortNumber,fParentId,fNBNumber from tblItem where fItemId=203"),
              (Rows{{"01.01.003", "003", "13", ".12.13.203."}}));
}

TEST_P(EditorCellRoads, aLimitOfZeroOnTheWrongSideOfTheOtherWasLeftEmpty) {
    setField("fMinQty", "fNumberDec=0,FMaxNumber=0,FMinNumber=10");
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kMinQtyRow, "5");
        EXPECT_EQ(refusal(user), "请输入不小于 10 的整数");
        user.press("Esc");
        user.typeCell("fps1", kValue, kMinQtyRow, "20");
        EXPECT_EQ(refusal(user), "");
    });
    setField("fMinQty", "fNumberDec=0,FMaxNumber=-10,FMinNumber=0");
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kMinQtyRow, "-5");
        EXPECT_EQ(refusal(user), "请输入不大于 -10 的整数");
        user.press("Esc");
        user.typeCell("fps1", kValue, kMinQtyRow, "-20");
        EXPECT_EQ(refusal(user), "");
    });
}

TEST_P(EditorCellRoads, aDayThatNoServerKeepsIsRefused) {
    stage.openNew([this](User& user) {
        typeName(user, "垫圈");
        user.clickCell("fps1", kValue, kDayRow);
        user.typeKeys("0202-3-4");
        stage.forgetStatements();
        user.press("Ctrl+S");
        EXPECT_EQ(refusal(user), "请输入日期，如 2026-03-04");
        EXPECT_EQ(stage.statements(), Texts{});
        user.press("Esc");
    });
}

TEST_P(EditorCellRoads, anEmptiedSupplierThatMustBeFilledLeadsBackToItsCell) {
    setField("fH", "fIsNull=1");
    database().execute("update ICItem set fH=202 where fItemId=101");
    stage.openItem(101, [](User& user) {
        user.clickCell("fps1", kValue, kSupplierRow);
        user.press("Delete");
        user.chooseTab("SSTab1", 1);
        user.answer(MessageKind::warning, "主供应商不能为空!");
        user.press("Ctrl+S");
        EXPECT_EQ(user.control<platform::Tabs>("SSTab1").tab(), 0);
        user.typeKeys("南");
        user.answer(MessageKind::information, "数据修改成功!");
        user.press("Ctrl+S");
    });
    EXPECT_EQ(stored("fH", 101), "202");
}

TEST_P(EditorCellRoads, aTextThatItsColumnCannotHoldIsToldAndStaysInItsCell) {
    const std::string tooLong(300, 'x');
    stage.openNew([&](User& user) {
        typeName(user, "垫圈");
        user.clickCell("fps1", kValue, kModelRow);
        user.paste(tooLong);
        user.answer(MessageKind::critical,
                    "将在表“ICItem”的列“fModel”中截断字符串或二进制数据。截断值:“" + std::string(100, 'x') + "”。");
        user.press("Ctrl+S");
        EXPECT_EQ(value(user, kModelRow), tooLong);
    });
    EXPECT_EQ(database().value("select count(*) from tblItem where fItemId>202"), "0");
}

TEST_P(EditorCellRoads, theNameOfAnAttachmentThatGoesIsNotMissed) {
    stage.storeAttachment(4, "a.txt", "a");
    stage.openItem(101, [](User& user) {
        user.chooseTab("SSTab1", 1);
        user.clickCell("fps2", 3, 1);
        user.typeKeys("图纸");
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.clickCell("fps2", 1, 1);
        EXPECT_EQ(user.control<EntryGrid>("fps2").rowCount(), 0);
        EXPECT_FALSE(user.control<EntryGrid>("fps2").cellOpen());
        user.answer(MessageKind::information, "数据修改成功!");
        user.press("Ctrl+S");
    });
    EXPECT_EQ(database().value("select count(*) from tblItemFJ"), "0");
}

}  // namespace
}  // namespace orvenmod::test
