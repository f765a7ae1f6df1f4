// The bill area: items gathered with quantities and handed to the host in tblItemInput.
#include <gtest/gtest.h>

#include "browser/browsertest.h"
#include "frame/appstate.h"

namespace orvenmod::test {
namespace {

using platform::EntryGrid;

const std::string kDouble = "该货品已经加入选定的货品中,是否继续加入?";
const std::string kRemove = "确定要移除当前行吗?";

class BillArea : public BrowserTest {
protected:
    void open(const Steps& steps) { stage.open(kBillPicker, steps); }
    Rows handedOver() {
        return database().rows(
            "select fItemId,fStockId,fQty,fUserId,fEntryId from tblItemInput order by fUserId,fEntryId");
    }
};

Texts billRow(User& user, int row) {
    const auto& bill = user.control<EntryGrid>("fps1");
    Texts cells;
    for (int column = 1; column <= 6; ++column)
        cells.push_back(bill.text(column, row));
    return cells;
}

int billRows(User& user) { return user.control<EntryGrid>("fps1").rowCount(); }

TEST_F(BillArea, startsEmptyWithSixColumnsOfWhichTheQuantityCanBeTyped) {
    open([](User& user) {
        const auto& bill = user.control<EntryGrid>("fps1");
        EXPECT_EQ(bill.rowCount(), 0);
        EXPECT_EQ(bill.columnCount(), 6);
        user.doubleClickRow("vsf1", 1);
        for (int column = 1; column <= 5; ++column)
            EXPECT_TRUE(bill.locked(column, 1)) << column;
        EXPECT_FALSE(bill.locked(6, 1));
    });
}

TEST_F(BillArea, aDoubleClickAddsTheItemWithItsStock) {
    database().execute("update ICItem set fModel='M6',fUnit='盒' where fItemId=101");
    open([&](User& user) {
        stage.forgetStatements();
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(stage.statements(),
                  Texts{" select fnumber,fname,fmodel,fitemid,funit from icitem  where fitemid=103   "});
        EXPECT_EQ(billRow(user, 1), (Texts{"02.001", "墙壁开关", "", "", "5", ""}));
        EXPECT_TRUE(user.window().shown());
        user.selectRow("vsf1", 1);
        user.keyOnGrid("vsf1", platform::kKeyEnter);
        EXPECT_EQ(billRows(user), 2);
        EXPECT_EQ(billRow(user, 2), (Texts{"01.01.001", "内六角螺丝", "M6", "盒", "1", ""}))
            << "the stock shows as 1,244.5 and is cut at the separator";
    });
}

TEST_F(BillArea, aRowCarriesItsItemAsATag) {
    open([](User& user) {
        user.doubleClickRow("vsf1", 3);
        const auto& bill = user.control<EntryGrid>("fps1");
        EXPECT_EQ(bill.cellTag(1, 1), "103");
        EXPECT_EQ(bill.cellTag(2, 1), "0");
    });
}

TEST_F(BillArea, theQuantityOfTheNewRowIsActive) {
    open([](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.doubleClickRow("vsf1", 4);
        EXPECT_EQ(user.control<EntryGrid>("fps1").activeColumn(), 6);
        EXPECT_EQ(user.control<EntryGrid>("fps1").activeRow(), 2);
    });
}

TEST_F(BillArea, aZeroStockShowsEmptyInTheListAndGivesZero) {
    open([](User& user) {
        EXPECT_EQ(listRows(user, 5)[1][3], "");
        user.doubleClickRow("vsf1", 2);
        EXPECT_EQ(billRow(user, 1)[4], "0");
    });
}

TEST_F(BillArea, withoutAStockColumnTheStockStaysEmpty) {
    database().execute("delete from tblFindinfoEntry where fTypeId=6003 and fFieldName='fTimeQty'");
    open([](User& user) {
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(billRow(user, 1)[4], "");
    });
}

TEST_F(BillArea, anItemIsAddedTwiceOnlyWhenTheUserSaysSo) {
    open([](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.answer(MessageKind::question, kDouble, Answer::no);
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(billRows(user), 1);
        user.answer(MessageKind::question, kDouble, Answer::yes);
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(billRows(user), 2);
        user.answer(MessageKind::question, kDouble, Answer::yes);
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(billRows(user), 3) << "a later double asks once too";
    });
    EXPECT_EQ(script().messages()[0].title, "测试套件");
}

TEST_F(BillArea, doublesAreFoundByTheValueOfTheTag) {
    open([](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.control<EntryGrid>("fps1").setCellTag(1, 1, " 0103 ");
        user.answer(MessageKind::question, kDouble, Answer::no);
        user.doubleClickRow("vsf1", 3);
    });
}

TEST_F(BillArea, anItemWithoutARowAddsNothingAndShowsNothing) {
    open([&](User& user) {
        user.doubleClickRow("vsf1", 1);
        user.control<EntryGrid>("fps1").setActiveCell(1, 1);
        database().execute("delete from ICItem where fItemId=103");
        stage.settings().remove("Orvencom", "SystemSetup", "intBillStock");
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(billRows(user), 1);
        EXPECT_EQ(user.control<EntryGrid>("fps1").activeColumn(), 6);
        EXPECT_EQ(stage.get("SystemSetup", "intBillStock"), "0");
    });
}

TEST_F(BillArea, anItemCellThatIsEmptyCountsAsZero) {
    open([&](User& user) {
        user.control<platform::ListGrid>("vsf1").setText(3, 1, "");
        stage.forgetStatements();
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(stage.lastStatement(), " select fnumber,fname,fmodel,fitemid,funit from icitem  where fitemid=0   ");
        EXPECT_EQ(billRows(user), 0);
    });
}

TEST_F(BillArea, addingSetsTheBillStockBack) {
    stage.set("SystemSetup", "intBillStock", "1");
    open([&](User& user) {
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(stage.get("SystemSetup", "intBillStock"), "0");
    });
}

TEST_F(BillArea, theRowsAreHandedToTheHost) {
    open([&](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.typeCell("fps1", 6, 1, "2.5");
        user.doubleClickRow("vsf1", 4);
        user.typeCell("fps1", 6, 2, "3");
        stage.forgetStatements();
        user.click("cmdAddItem");
        EXPECT_FALSE(user.window().shown());
    });
    const Texts sent = stage.statements();
    EXPECT_EQ(sent.at(0), "delete from tblItemInput where fuserid=7");
    EXPECT_EQ(sent.at(1).substr(0, 78),
              "insert into tblItemInput(fitemid,fstockid,fqty,fuserid,fEntryId) values(103,0,");
    EXPECT_EQ(sent.size(), 3U);
    EXPECT_EQ(stage.fItemId, "-1");
    EXPECT_EQ(stage.fNumber + stage.fName, "");
    EXPECT_EQ(handedOver(), (Rows{{"103", "0", "2.5", "7", "1"}, {"104", "0", "3", "7", "2"}}));
}

TEST_F(BillArea, anEmptyQuantityIsZero) {
    open([&](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.click("cmdAddItem");
    });
    EXPECT_EQ(stage.lastStatement(),
              "insert into tblItemInput(fitemid,fstockid,fqty,fuserid,fEntryId) values(103,0,0,7,1)");
    EXPECT_EQ(handedOver(), (Rows{{"103", "0", "0", "7", "1"}}));
}

TEST_F(BillArea, oneItemTwiceGivesTwoRows) {
    open([](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.answer(MessageKind::question, kDouble, Answer::yes);
        user.doubleClickRow("vsf1", 3);
        user.typeCell("fps1", 6, 1, "1");
        user.typeCell("fps1", 6, 2, "2");
        user.click("cmdAddItem");
    });
    EXPECT_EQ(handedOver(), (Rows{{"103", "0", "1", "7", "1"}, {"103", "0", "2", "7", "2"}}));
}

TEST_F(BillArea, aHandOverReplacesTheUsersRowsOnly) {
    database().execute("insert into tblItemInput(fItemId,fStockId,fQty,fUserId,fEntryId) values(1,0,1,7,1)");
    database().execute("insert into tblItemInput(fItemId,fStockId,fQty,fUserId,fEntryId) values(2,0,1,8,1)");
    open([](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.click("cmdAddItem");
    });
    EXPECT_EQ(handedOver(), (Rows{{"103", "0", "0", "7", "1"}, {"2", "0", "1", "8", "1"}}));
}

TEST_F(BillArea, anEmptyAreaClosesWithEmptyResultsAndLeavesTheOldRows) {
    database().execute("insert into tblItemInput(fItemId,fStockId,fQty,fUserId,fEntryId) values(1,0,1,7,1)");
    open([](User& user) {
        user.click("cmdAddItem");
        EXPECT_FALSE(user.window().shown());
    });
    EXPECT_EQ(stage.fItemId, "");
    EXPECT_EQ(handedOver(), (Rows{{"1", "0", "1", "7", "1"}}));
}

TEST_F(BillArea, closingAnotherWayLeavesTheOldRows) {
    database().execute("insert into tblItemInput(fItemId,fStockId,fQty,fUserId,fEntryId) values(1,0,1,7,1)");
    open([](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.chooseMenu("MenuFileExit");
    });
    EXPECT_EQ(stage.fItemId, "");
    EXPECT_EQ(handedOver(), (Rows{{"1", "0", "1", "7", "1"}}));
    open([](User& user) { EXPECT_EQ(billRows(user), 0); });
}

TEST_F(BillArea, theActiveRowIsRemovedWhenTheUserSaysSo) {
    open([](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.doubleClickRow("vsf1", 4);
        user.clickCell("fps1", 6, 1);
        user.answer(MessageKind::question, kRemove, Answer::no);
        user.click("cmdRemoveItem");
        EXPECT_EQ(billRows(user), 2);
        user.answer(MessageKind::question, kRemove, Answer::yes);
        user.click("cmdRemoveItem");
        EXPECT_EQ(billRows(user), 1);
        EXPECT_EQ(billRow(user, 1)[0], "03");
    });
}

TEST_F(BillArea, withoutRowsNothingIsRemovedAndNothingAsked) {
    open([](User& user) {
        user.click("cmdRemoveItem");
        user.doubleClickRow("vsf1", 3);
        user.control<EntryGrid>("fps1").setActiveCell(0, 0);
        user.click("cmdRemoveItem");
        EXPECT_EQ(billRows(user), 1);
    });
}

TEST_F(BillArea, aManagementWindowCalledFromABillHandsOverToo) {
    stage.open({.isReturn = 0, .itemCalled = 1}, [&](User& user) {
        // There a double click edits, so no user can fill the area.
        auto& bill = user.control<EntryGrid>("fps1");
        bill.setRowCount(1);
        bill.setCellTag(1, 1, "103");
        user.typeCell("fps1", 6, 1, "4");
        user.click("cmdAddItem");
        EXPECT_FALSE(user.window().shown());
    });
    EXPECT_EQ(stage.fItemId, "-1");
    EXPECT_EQ(handedOver(), (Rows{{"103", "0", "4", "7", "1"}}));
}

TEST_F(BillArea, aFailureWhileAddingIsToldAndTheRowStays) {
    database().execute("update tblFindinfoEntry set fEntryId=90 where fTypeId=6003 and fFieldName='fTimeQty'");
    open([&](User& user) {
        user.answer(MessageKind::critical, "下标越界");
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(billRows(user), 1);
        EXPECT_FALSE(appState().gConn);
    });
}

TEST_F(BillArea, aFailureWhileReadingAnItemIsTold) {
    open([&](User& user) {
        stage.faults() = {};
        stage.faults().failAt = 2;
        user.answer(MessageKind::critical, "注入的故障");
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(billRows(user), 0);
        EXPECT_FALSE(appState().gConn);
        user.doubleClickRow("vsf1", 3);
        EXPECT_EQ(billRows(user), 1);
    });
    EXPECT_EQ(script().messages()[0], (ShownMessage{MessageKind::critical, "注入的故障", "测试套件"}));
}

TEST_F(BillArea, aFailureWhileHandingOverClosesTheWindowWithPartOfTheRows) {
    open([&](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.doubleClickRow("vsf1", 4);
        stage.faults() = {};
        stage.faults().failAt = 4;  // connect, delete, insert, insert
        user.answer(MessageKind::critical, "注入的故障");
        user.click("cmdAddItem");
        EXPECT_FALSE(user.window().shown());
    });
    EXPECT_EQ(stage.fItemId, "-1");
    EXPECT_EQ(handedOver(), (Rows{{"103", "0", "0", "7", "1"}}));
    EXPECT_FALSE(appState().gConn);
}

TEST_F(BillArea, stockAndQuantityHaveTheDecimalPlacesOfTheSuite) {
    stage.set("SystemSetup", "intZeroNumber", "3");
    open([&](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.typeCell("fps1", 6, 1, "1.125");
        user.click("cmdAddItem");
    });
    EXPECT_EQ(handedOver()[0][2], "1.125");
}

}  // namespace
}  // namespace orvenmod::test
