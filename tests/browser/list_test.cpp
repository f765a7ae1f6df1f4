// The list as the user sees it, and the statements behind it.
#include <gtest/gtest.h>

#include "browser/browsertest.h"
#include "browser/frmBasicInfoList.h"
#include "frame/appstate.h"

namespace orvenmod::test {
namespace {

using platform::ListGrid;
using platform::Tree;

const std::string kLookup = "select * from tblItemClass where fitemclassid=3";
const std::string kStanding = "select isnull(fsql,'') as fsql from tblFindSeek where fuserid=7 and ftypeid=6003";
const std::string kHidden =
    "select fFieldName,ftype from tblUserVisible where fUserid=7 and fType in (1) and fbilltypeid=6003";
const std::string kCategories =
    "select fitemid,fname,fparentid,fdepth,fNBNumber,fnumber from tblItem where fisdetail=0 and fitemclassid=3 order "
    "by fdepth,fnumber,fname";
const std::string kSpecStart =
    "select fFieldName,fTitlename,fAlign,fDataFormat,fWidth,fentryid from tblFindinfoEntry where ftypeid=6003";
const std::string kManagementSpec = kSpecStart + " and fFIeldName<>'fTimeQty' order by fentryid ";
const std::string kPickerSpec = kSpecStart + " order by fentryid ";
const std::string kManagementList =
    "select fitemid,fNumber,fName,fModel,fMinQty from  vICItem where 1=1  order by fnumber ";
const std::string kSeekFields =
    "select a.*,isnull(b.fItemType,0) as fItemType from tblFindInfoentry2 as a  left outer join tblItemclass as b on "
    "a.fitemclassid=b.fitemclassid  where a.ftypeid=6003 order by a.fentryid";

std::string stockList(const std::string& inner, const std::string& bracket = " (select ", const std::string& stock = "",
                      const std::string& only = "") {
    return " select a.fitemid,a.fNumber,a.fName,a.fModel,isnull(b.fQty,0) as fTimeQty,a.fMinQty from " + bracket +
           "fitemid,fNumber,fName,fModel,fTimeQty,fMinQty from  vICItem where 1=1 " + inner +
           ") as a left outer join (select sum(fqty) as fqty,fitemid from tbltimestock " + stock +
           " group by fitemid ) as b on a.fitemid=b.fitemid " + only + " order by a.fnumber ";
}

class List : public BrowserTest {
protected:
    /// The statements of an opening whose user does nothing.
    Texts statementsOfOpening(const Call& call) {
        Texts sent;
        stage.open(call, [&](User&) { sent = stage.statements(); });
        return sent;
    }
    /// The last statement that steps in the open window send.
    std::string lastStatement(const Call& call, const Steps& steps) {
        std::string last;
        stage.open(call, [&](User& user) {
            steps(user);
            last = stage.lastStatement();
        });
        return last;
    }
    std::string listOf(const Call& call) { return statementsOfOpening(call).end()[-2]; }
};

TEST_F(List, openingReadsClassConditionTreeColumnsRowsAndSearchFields) {
    EXPECT_EQ(statementsOfOpening(kManagement),
              (Texts{kLookup, kStanding, kCategories, kManagementSpec, kManagementList, kSeekFields}));
}

TEST_F(List, onlyAdminFlagZeroReadsHiddenColumns) {
    stage.set("SystemLogin", "IsAdmin", "0");
    EXPECT_EQ(statementsOfOpening(kManagement),
              (Texts{kLookup, kStanding, kHidden, kCategories, kManagementSpec, kManagementList, kSeekFields}));
    stage.forgetStatements();
    stage.set("SystemLogin", "IsAdmin", "2");
    EXPECT_EQ(statementsOfOpening(kManagement),
              (Texts{kLookup, kStanding, kCategories, kManagementSpec, kManagementList, kSeekFields}));
}

TEST_F(List, anAdministratorSeesColumnsThatAreHiddenFromHim) {
    database().hideColumn(7, 3, "fModel");
    EXPECT_EQ(listOf(kManagement), kManagementList);
}

TEST_F(List, aPlainUserDoesNotSeeHiddenColumns) {
    stage.set("SystemLogin", "IsAdmin", "0");
    database().hideColumn(7, 3, "fModel");
    database().hideColumn(7, 3, "fMinQty");
    database().hideColumn(7, 2, "fName");
    database().hideColumn(8, 3, "fName");
    const Texts sent = statementsOfOpening(kManagement);
    EXPECT_EQ(sent[4], kSpecStart +
                           " and fFIeldName<>'fTimeQty' and fFieldName<>'fModel'  and fFieldName<>'fMinQty'  "
                           "order by fentryid ");
    EXPECT_EQ(sent[5], "select fitemid,fNumber,fName from  vICItem where 1=1  order by fnumber ");
}

TEST_F(List, aHiddenCodeMovesTheColumnsThatAPickReads) {
    stage.set("SystemLogin", "IsAdmin", "0");
    database().hideColumn(7, 3, "fNumber");
    database().hideColumn(7, 3, "fTimeQty");
    stage.open(kPicker, [](User& user) { user.doubleClickRow("vsf1", 1); });
    EXPECT_EQ(stage.fItemId, "101");
    EXPECT_EQ(stage.fNumber, "内六角螺丝");
    EXPECT_EQ(stage.fName, "");
}

TEST_F(List, aClassWithoutColumnsShowsOneHiddenColumn) {
    database().execute("delete from tblFindinfoEntry where fTypeId=6003");
    stage.open(kManagement, [&](User& user) {
        const auto& grid = user.control<ListGrid>("vsf1");
        EXPECT_EQ(stage.statements()[4], "select fitemid from  vICItem where 1=1  order by fnumber ");
        EXPECT_EQ(grid.columnCount(), 2);
        EXPECT_TRUE(grid.columnHidden(1));
        EXPECT_EQ(grid.rowCount(), 5);
    });
}

TEST_F(List, aPickerOfGoodsSumsTheStockOfAllWarehouses) {
    EXPECT_EQ(listOf(kPicker), stockList(""));
    stage.open(kPicker, [](User& user) {
        EXPECT_EQ(listRows(user, 5), (Rows{{"01.01.001", "内六角螺丝", "", "1,244.5"},
                                           {"01.01.002", "螺母", "", ""},
                                           {"02.001", "墙壁开关", "", "5"},
                                           {"03", "劳保手套", "", ""}}));
    });
}

TEST_F(List, theHostCanChooseTheWarehouse) {
    stage.set("ShowStock", "StockId", "2");
    stage.open(kPicker, [&](User& user) {
        EXPECT_EQ(stage.statements()[4], stockList("", " (select ", " where fstockid=2"));
        EXPECT_EQ(listRows(user, 5)[0][3], "10");
    });
}

TEST_F(List, theHostCanAskForWhatIsInStockOnly) {
    stage.set("ShowStock", "PerFKC", "-1");
    stage.open(kPicker, [&](User& user) {
        EXPECT_EQ(stage.statements()[4], stockList("", " (select ", "", " where isnull(b.fqty,0)>0 "));
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "02.001"}));
    });
}

TEST_F(List, anotherStockSwitchShowsAllItems) {
    stage.set("ShowStock", "PerFKC", "1");
    EXPECT_EQ(listOf(kPicker), stockList(""));
}

TEST_F(List, managementLeavesTheStockColumnOut) {
    stage.open(kManagement, [](User& user) {
        EXPECT_EQ(user.control<ListGrid>("vsf1").columnCount(), 6);
        EXPECT_EQ(appState().gListColumns, "fitemid,fNumber,fName,fModel,fMinQty");
    });
}

TEST_F(List, aPickerOfGoodsWithoutAStockColumnIsPlain) {
    database().execute("delete from tblFindinfoEntry where fTypeId=6003 and fFieldName='fTimeQty'");
    EXPECT_EQ(listOf(kPicker), kManagementList);
}

TEST_F(List, aPickerOfAnotherClassIsPlain) {
    database().addItem(1, 201, "K1", "客户甲");
    const Texts sent = statementsOfOpening({.itemClass = 1, .isReturn = 1});
    EXPECT_EQ(sent.end()[-2].substr(0, 28), "select fitemid,fNumber,fName");
    EXPECT_NE(sent.end()[-2].find(" from  vtblCustomer where 1=1  order by fnumber "), std::string::npos);
}

TEST_F(List, anotherReturnFlagThanOneAndZeroKeepsTheStockColumnInThePlainForm) {
    EXPECT_EQ(listOf({.isReturn = 2}),
              "select fitemid,fNumber,fName,fModel,fTimeQty,fMinQty from  vICItem where 1=1  order by fnumber ");
}

TEST_F(List, everyQueryBearsTheStandingConditionAndTheHostsFilter) {
    database().setStandingCondition(7, 3, " and fItemId<104");
    const Call call{.paramSql = " and fItemId>101"};
    stage.open(call, [&](User& user) {
        EXPECT_EQ(stage.statements()[4],
                  "select fitemid,fNumber,fName,fModel,fMinQty from  vICItem where 1=1  and "
                  "fItemId<104 and fItemId>101 order by fnumber ");
        EXPECT_EQ(codes(user), (Texts{"01.01.002", "02.001"}));
        user.clickNode("tv1", "D14");
        EXPECT_EQ(stage.lastStatement(),
                  "select fitemid,fNumber,fName,fModel,fMinQty from  vICItem where 1=1  and "
                  "fItemId<104 and fNBNumber like '.14.%' and fItemId>101 order by fnumber ");
        user.click("cmdFind");
        EXPECT_EQ(stage.lastStatement(),
                  "select fitemid,fNumber,fName,fModel,fMinQty from  vICItem where 1=1  and "
                  "fItemId<104 and fItemId>101 order by fnumber ");
    });
}

TEST_F(List, theConditionsStandInsideTheStockForm) {
    database().setStandingCondition(7, 3, " and fItemId<104");
    stage.open({.isReturn = 1, .paramSql = " and fItemId>101", .findValue = " 0 "}, [&](User& user) {
        EXPECT_EQ(stage.statements()[4],
                  stockList(" and fItemId<104 and fItemId>101 and (fNumber like '%0%' or fname like '%0%') "));
        user.clickNode("tv1", "D12");
        EXPECT_EQ(stage.lastStatement(), stockList(" and fItemId<104 and fNBNumber like '.12.%' and fItemId>101"));
        user.pick("PC", 2, 0);
        user.type("txtSearch", "螺", -1);
        user.click("cmdFind");
        EXPECT_EQ(stage.lastStatement(),
                  stockList(" and fItemId<104 and (  fName like '%螺%' ) and fItemId>101", "(select "));
    });
}

TEST_F(List, aStandingConditionOfNullAddsNothing) {
    database().execute("insert into tblFindSeek(fUserId,fTypeId) values(7,6003)");
    EXPECT_EQ(listOf(kManagement), kManagementList);
}

TEST_F(List, theHostsFilterMustBringItsOwnAnd) {
    stage.openInVain({.paramSql = "fItemId>101"}, "'fItemId' 附近有语法错误。");
}

TEST_F(List, theSearchTextOfTheHostNarrowsTheFirstListOnly) {
    stage.open({.findValue = "  螺 "}, [&](User& user) {
        EXPECT_EQ(stage.statements()[4],
                  "select fitemid,fNumber,fName,fModel,fMinQty from  vICItem where 1=1  and "
                  "(fNumber like '%螺%' or fname like '%螺%')  order by fnumber ");
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002"}));
        EXPECT_EQ(user.control<platform::Edit>("txtSearch").text(), "  螺 ");
        user.clickNode("tv1", "D0");
        EXPECT_EQ(stage.lastStatement(), kManagementList);
        EXPECT_EQ(codes(user).size(), 4U);
    });
}

TEST_F(List, aNodeShowsItsWholeSubtree) {
    stage.open(kManagement, [&](User& user) {
        stage.forgetStatements();
        user.clickNode("tv1", "D12");
        EXPECT_EQ(stage.statements(),
                  (Texts{"select fNBNumber from tblItem where fitemid=12",
                         "select fitemid,fNumber,fName,fModel,fMinQty from  vICItem where 1=1  and fNBNumber like "
                         "'.12.%' order by fnumber "}));
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002"}));
        EXPECT_EQ(appState().gTreeFilter, " and fNBNumber like '.12.%'");
        EXPECT_EQ(appState().gListFilter, " and fNBNumber like '.12.%'");
        EXPECT_EQ(appState().gCurParentId, 12);
    });
}

TEST_F(List, idsInAPathHaveNoFixedWidth) {
    database().addCategory(3, 1, "05", "办公");
    database().addItem(3, 106, "05.001", "订书机", 1);
    stage.open(kManagement, [](User& user) {
        user.clickNode("tv1", "D1");
        EXPECT_EQ(codes(user), Texts{"05.001"}) << "not those under .12.";
    });
}

TEST_F(List, theRootLiftsTheTreeFilter) {
    stage.open(kManagement, [&](User& user) {
        user.clickNode("tv1", "D14");
        stage.forgetStatements();
        user.clickNode("tv1", "D0");
        EXPECT_EQ(stage.statements(), Texts{kManagementList});
        EXPECT_EQ(appState().gTreeFilter, "");
        EXPECT_EQ(appState().gListFilter, "");
        EXPECT_EQ(appState().gCurParentId, 0);
    });
}

TEST_F(List, aNodeWhoseRowIsGoneLeavesTheTreeFilterAsItWas) {
    stage.open(kManagement, [&](User& user) {
        user.clickNode("tv1", "D12");
        database().execute("delete from tblItem where fItemId=14");
        user.clickNode("tv1", "D14");
        EXPECT_EQ(appState().gTreeFilter, " and fNBNumber like '.12.%'");
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002"}));
    });
}

TEST_F(List, anotherTypeThanOneLeavesTheTreeFilterAlone) {
    stage.open(kManagement, [&](User& user) {
        user.clickNode("tv1", "D12");
        appState().gTreeFilter = " and fItemId=104";
        stage.forgetStatements();
        EXPECT_TRUE(frmBasicInfoList::instance().findInfo(2));
        EXPECT_EQ(stage.statements().size(), 1U);
        EXPECT_EQ(codes(user), Texts{"03"});
        EXPECT_EQ(appState().gListFilter, " and fItemId=104");
    });
}

TEST_F(List, aSearchReplacesTheTreeFilter) {
    stage.open(kManagement, [&](User& user) {
        user.clickNode("tv1", "D14");
        user.pick("PC", 2, 0);
        user.type("txtSearch", "螺", -1);
        user.click("cmdFind");
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002"}));
    });
}

TEST_F(List, theTreeHoldsARootAndEveryCategoryExpanded) {
    stage.open(kManagement, [](User& user) {
        const auto& tree = user.control<Tree>("tv1");
        EXPECT_EQ(tree.count(), 4);
        EXPECT_EQ(tree.text("D0"), "货品");
        EXPECT_EQ(tree.parent("D0"), "");
        EXPECT_EQ(tree.text("D12"), "五金(01)");
        EXPECT_EQ(tree.parent("D12"), "D0");
        EXPECT_EQ(tree.text("D13"), "螺丝(01.01)");
        EXPECT_EQ(tree.parent("D13"), "D12");
        EXPECT_TRUE(tree.expanded("D0"));
        EXPECT_TRUE(tree.expanded("D12"));
    });
}

TEST_F(List, rebuildingTheTreeAloneLeavesTheGridAndBlanksItsZerosAgain) {
    stage.open(kManagement, [&](User& user) {
        auto& grid = user.control<ListGrid>("vsf1");
        database().addCategory(3, 15, "04", "劳保");
        database().addItem(3, 105, "04.001", "安全帽", 15);
        grid.setText(1, 5, "0.00");
        stage.forgetStatements();
        frmBasicInfoList::instance().getListInfo(1);
        EXPECT_EQ(stage.statements(), (Texts{kStanding, kCategories}));
        EXPECT_TRUE(user.control<Tree>("tv1").has("D15"));
        EXPECT_EQ(grid.rowCount(), 5);
        EXPECT_EQ(grid.text(1, 5), "");
    });
}

TEST_F(List, rebuildingTheListAloneLeavesTheTree) {
    stage.open(kManagement, [&](User& user) {
        database().addCategory(3, 15, "04", "劳保");
        database().addItem(3, 105, "04.001", "安全帽", 15);
        frmBasicInfoList::instance().getListInfo(2);
        EXPECT_FALSE(user.control<Tree>("tv1").has("D15"));
        EXPECT_EQ(codes(user).size(), 5U);
    });
}

TEST_F(List, columnsAreDressedByTheSpec) {
    stage.open(kPicker, [](User& user) {
        const auto& grid = user.control<ListGrid>("vsf1");
        EXPECT_TRUE(grid.columnHidden(0));
        EXPECT_TRUE(grid.columnHidden(1));
        EXPECT_EQ(grid.text(0, 1), "空");
        EXPECT_EQ(grid.columnWidth(1), 10);
        EXPECT_EQ(grid.text(0, 2), "代码");
        EXPECT_EQ(grid.columnWidth(2), 2000);
        EXPECT_EQ(grid.columnAlignment(2), 1);
        EXPECT_FALSE(grid.columnHidden(2));
        EXPECT_EQ(grid.columnAlignment(4), 4);
        EXPECT_EQ(grid.columnWidth(4), 2000) << "a width of null is 2000";
        EXPECT_EQ(grid.text(0, 5), "库存数");
        EXPECT_EQ(grid.columnFormat(5), "#,###.##");
        EXPECT_EQ(grid.columnAlignment(5), 7);
        EXPECT_EQ(grid.columnFormat(4), "");
    });
}

TEST_F(List, zerosShowAsEmptyCellsInNumericColumnsOnly) {
    database().execute("update ICItem set fMinQty=0 where fItemId=101");
    database().execute("update ICItem set fMinQty=-0.5 where fItemId=102");
    database().execute("update ICItem set fModel='0' where fItemId=101");
    stage.open(kManagement, [](User& user) {
        EXPECT_EQ(listRows(user, 5), (Rows{{"01.01.001", "内六角螺丝", "0", ""},
                                           {"01.01.002", "螺母", "", "-0.5"},
                                           {"02.001", "墙壁开关", "", ""},
                                           {"03", "劳保手套", "", ""}}));
    });
}

TEST_F(List, everyRefreshBlanksTheZerosAgain) {
    stage.open(kManagement, [](User& user) {
        user.clickNode("tv1", "D14");
        EXPECT_EQ(listRows(user, 5), (Rows{{"02.001", "墙壁开关", "", ""}}));
        user.click("cmdFind");
        EXPECT_EQ(listRows(user, 5)[0][3], "");
    });
}

}  // namespace
}  // namespace orvenmod::test
