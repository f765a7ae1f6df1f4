#include "sampledata.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "hierarchy/itemusage.h"
#include "store/schema.h"
#include "store/sqlite/sqlitestore.h"
#include "support/database.h"

namespace orvenmod::sample {
namespace {

using test::TemporaryFolder;

/// A database with some goods, made once: the tests only read it.
class Sample : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder_ = std::make_unique<TemporaryFolder>();
        connection_ = make("suite.db", 300);
    }
    static void TearDownTestSuite() {
        connection_.reset();
        store::sqlite::SqliteStore::dropIdleHandles();
        folder_.reset();
    }

    static std::unique_ptr<store::Connection> make(const std::string& name, int goods) {
        store::sqlite::SqliteStore store;
        auto connection = store.connect(test::connectionStringFor(folder_->file(name)) + ";Mode=Create");
        store::createSchema(*connection);
        fillSampleData(*connection, goods);
        return connection;
    }

    static std::vector<std::string> column(const std::string& sql, store::Connection& connection = *connection_) {
        std::vector<std::string> cells;
        const auto rows = connection.open(sql);
        for (std::size_t row = 0; row < rows.rowCount(); ++row)
            cells.emplace_back(rows.cell(row, 0).value_or("NULL"));
        return cells;
    }
    static std::string value(const std::string& sql) { return column(sql).at(0); }

    static std::unique_ptr<TemporaryFolder> folder_;
    static std::unique_ptr<store::Connection> connection_;
};

std::unique_ptr<TemporaryFolder> Sample::folder_;
std::unique_ptr<store::Connection> Sample::connection_;

TEST_F(Sample, hasTheGoodsAskedForInATreeOfThreeLevels) {
    EXPECT_EQ(value("select count(*) from ICItem"), "300");
    EXPECT_EQ(value("select count(*) from tblItem where fItemClassId=3 and fIsDetail=1 and fDepth=4"), "300");
    EXPECT_EQ(value("select max(fDepth) from tblItem where fItemClassId=3 and fIsDetail=0"), "3");
}

TEST_F(Sample, givesEveryItemTheCodeAndPathThatItsParentBegins) {
    EXPECT_EQ(value("select count(*) from tblItem as a left outer join tblItem as b on a.fParentId=b.fItemId "
                    "where a.fParentId<>0 and (a.fNumber<>b.fNumber+'.'+a.fShortNumber or "
                    "a.fNBNumber<>b.fNBNumber+cast(a.fItemId as varchar(10))+'.' or a.fDepth<>b.fDepth+1)"),
              "0");
}

TEST_F(Sample, givesNoCodeTwiceWithinAClass) {
    EXPECT_EQ(column("select fNumber from tblItem group by fItemClassId,fNumber having count(*)>1").size(), 0U);
}

TEST_F(Sample, leavesTheCountersAtTheHighestIds) {
    EXPECT_EQ(value("select fMaxNum from tblMaxNum where fTableName='tblItem'"),
              value("select max(fItemId) from tblItem"));
    EXPECT_EQ(value("select fMaxNum from tblMaxNum where fTableName='tblSubType'"),
              value("select max(fItemId) from tblSubType"));
}

TEST_F(Sample, keepsStockByBatchAndPosition) {
    EXPECT_GT(std::stoi(value("select count(*) from tblTimeStock")), 100);
    EXPECT_EQ(value("select count(*) from vTimeStock where fStockIdName='' or fItemIdName='' or fStockPlaceIdName='' "
                    "or fBatchNo=''"),
              "0");
}

TEST_F(Sample, showsStockInTheFormThatTheBillAreaReadsWhole) {
    EXPECT_EQ(value("select fDataFormat from tblFindinfoEntry where fTypeId=6003 and fFieldName='fTimeQty'"), "");
}

TEST_F(Sample, namesInItsCatalogueOnlyColumnsThatTheBillsHave) {
    struct Family {
        const char* types;
        const char* head;
        const char* entry;
    };
    for (const auto& [types, head, entry] : {Family{"fTypeId<10", "icstockbill", "icstockbillEntry"},
                                             {"fTypeId in (31,32)", "icorderbill", "icorderbillentry"},
                                             {"fTypeId in (41,42)", "icnoticebill", "icnoticebillEntry"},
                                             {"fTypeId in (51,52)", "tblMoney", ""},
                                             {"fTypeId in (61,62)", "ICMoney", "ICMoneyEntry"},
                                             {"fTypeId in (71,72)", "tblFP", "tblFPEntry"}}) {
        const auto fields = column(std::string("select fFieldName from tblBillInfo where ") + types);
        EXPECT_FALSE(fields.empty()) << types;
        for (const std::string& field : fields) {
            EXPECT_NO_THROW(connection_->open("select top 1 " + field + " from " + head)) << head;
        }
        for (const std::string& field : column(std::string("select fFieldName from tblbillinfoentry where ") + types)) {
            EXPECT_NO_THROW(connection_->open("select top 1 " + field + " from " + entry)) << entry;
        }
        EXPECT_NE(value(std::string("select count(*) from ") + head), "0") << head;
    }
}

TEST_F(Sample, tellsOfEveryKindOfGoodsWhichBillsUseIt) {
    appState().gConn = make("usage.db", 30);
    const auto goods = column("select fItemId from ICItem order by fItemId", *appState().gConn);
    int orders = 0;
    for (const std::string& id : goods) {
        const auto usage = itemUsage(std::stoi(id));
        const std::string bills = "select distinct fInterId from icorderbillentry where fItemId=" + id;
        EXPECT_EQ(usage.at(1).bills, std::to_string(column(bills, *appState().gConn).size())) << id;
        orders += std::stoi(usage.at(1).bills);
    }
    closeDB();
    EXPECT_GT(orders, 0);
}

TEST_F(Sample, leavesSomeGoodsWithoutBillsAndBalances) {
    EXPECT_NE(
        value("select count(*) from ICItem where fItemId not in (select fItemId from icstockbillEntry) and fItemId "
              "not in (select fItemId from tblstockbal)"),
        "0");
}

TEST_F(Sample, hasUsersOfDifferentRights) {
    EXPECT_EQ(column("select fName from tblUser order by fUserId"),
              (std::vector<std::string>{"管理员", "张会计", "小李", "王仓管"}));
    EXPECT_EQ(value("select count(*) from tblUserPrivillenge where fUserId=2"),
              value("select count(*) from tblSystemPrivillenge where fIsDetail=1"));
    EXPECT_EQ(value("select count(*) from tblUserPrivillenge where fUserId=3 and fNumber='Y305'"), "0");
    EXPECT_NE(value("select count(*) from tblUserVisible where fUserId=3 and fBillTypeId=6003"), "0");
    const std::string standing = value("select fSql from tblFindSeek where fUserId=4 and fTypeId=6003");
    const int seen = std::stoi(value("select count(*) from vICItem where 1=1 " + standing));
    EXPECT_GT(seen, 0);
    EXPECT_LT(seen, 300);
}

TEST_F(Sample, isTheSameEachTime) {
    const auto again = make("again.db", 300);
    for (const char* sql :
         {"select fName+fModel+fNumber from ICItem order by fItemId",
          "select fBatchNo from tblTimeStock order by fItemId,fStockPlaceId,fBatchNo,fQty",
          "select fBillNo from icstockbill order by fInterId", "select fPhone from tblCustomer order by fItemId"}) {
        EXPECT_EQ(column(sql), column(sql, *again)) << sql;
    }
}

TEST_F(Sample, addsNothingWhereItFails) {
    store::sqlite::SqliteStore store;
    const auto connection = store.connect(test::connectionStringFor(folder_->file("broken.db")) + ";Mode=Create");
    store::createSchema(*connection);
    connection->execute("create table tblUser(fUserId int)");
    EXPECT_THROW(fillSampleData(*connection, 20), store::Failure);
    EXPECT_FALSE(connection->inTransaction());
    EXPECT_EQ(column("select count(*) from tblItem", *connection).at(0), "0");
}

}  // namespace
}  // namespace orvenmod::sample
