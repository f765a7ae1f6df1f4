// A quantity in the bill area goes to the host as typed, or not at all.
#include "browser/roads.h"

namespace orvenmod::test {
namespace {

using platform::EntryGrid;

TEST_P(Roads, aQuantityWithMoreDecimalsThanTheSettingIsRefused) {
    stage.set("SystemSetup", "intZeroNumber", "0");
    stage.open(kBillPicker, [this](User& user) {
        auto& bill = user.control<EntryGrid>("fps1");
        user.doubleClickRow("vsf1", 3);
        user.clickCell("fps1", 6, 1);
        user.typeKeys("2.5");
        stage.forgetStatements();
        user.click("cmdAddItem");
        EXPECT_TRUE(user.window().shown());
        EXPECT_EQ(bill.refusal(), "请输入整数");
        EXPECT_EQ(bill.openText(), "2.5");
        user.doubleClickRow("vsf1", 4);
        EXPECT_EQ(bill.rowCount(), 1) << "the cell isn't left for another item";
        user.chooseMenu("MenuFileExit");
        EXPECT_TRUE(user.window().shown());
        EXPECT_EQ(stage.statements(), Texts{});
        user.press("Esc");
        user.typeKeys("2５");
        user.click("cmdAddItem");
    });
    EXPECT_EQ(stage.database().rows("select fItemId,fQty from tblItemInput"), (Rows{{"103", "25"}}));
}

TEST_P(Roads, aRefusedQuantityHoldsBackEveryCommandOfTheBill) {
    stage.set("SystemSetup", "intZeroNumber", "0");
    stage.open(kBillPicker, [this](User& user) {
        auto& bill = user.control<EntryGrid>("fps1");
        user.doubleClickRow("vsf1", 3);
        user.typeKeys("2.5");
        stage.forgetStatements();
        user.click("cmdRemoveItem");
        user.press("Ctrl+X");
        user.press("Enter");
        user.press("Tab");
        user.rightClickRow("vsf1", 4, "");
        user.clickNode("tv1", "D12");
        user.closeWindow();
        EXPECT_TRUE(user.window().shown());
        EXPECT_EQ(bill.openText(), "2.5");
        EXPECT_EQ(bill.refusal(), "请输入整数");
        EXPECT_TRUE(bill.hasFocus());
        EXPECT_EQ(stage.statements(), Texts{});
        user.press("Backspace");
        user.press("Backspace");
        user.answer(MessageKind::question, "确定要移除当前行吗?", Answer::no);
        user.click("cmdRemoveItem");
        EXPECT_EQ(bill.text(6, 1), "2");
        user.doubleClickRow("vsf1", 4);
        EXPECT_EQ(bill.activeRow(), 2);
        user.typeKeys("7");
        user.answer(MessageKind::question, "确定要移除当前行吗?", Answer::yes);
        user.click("cmdRemoveItem");
        EXPECT_EQ(bill.rowCount(), 1);
        user.click("cmdAddItem");
    });
    EXPECT_EQ(stage.database().rows("select fItemId,fQty from tblItemInput"), (Rows{{"103", "2"}}));
}

TEST_P(Roads, aQuantityThatIsStillOpenGoesAlongWithTheBill) {
    stage.open(kBillPicker, [](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.typeKeys("１，２３４");
        user.doubleClickRow("vsf1", 4);
        user.typeKeys("3.");
        user.click("cmdAddItem");
    });
    EXPECT_EQ(stage.database().rows("select fQty from tblItemInput order by fEntryId"), (Rows{{"1234"}, {"3"}}));
}

}  // namespace
}  // namespace orvenmod::test
