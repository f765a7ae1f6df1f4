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

}  // namespace
}  // namespace orvenmod::test
