// What a host gets from CreateSchema, on the store of this binary.
#include "store/schema.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "store/contract/contract.h"
#include "store/schema/columns.h"

namespace orvenmod::test {
namespace {

using store::Connection;
using store::Failure;

class Schema : public testing::Test {
protected:
    void SetUp() override {
        std::string reason;
        store::test::StoreUnderTest* store = store::test::storeUnderTest(reason);
        if (store == nullptr) GTEST_SKIP() << reason;
        connection_ = store->freshDatabase();
    }

    Connection& connection() { return *connection_; }

    std::vector<std::vector<std::string>> rows(const std::string& sql) {
        const auto found = connection_->open(sql);
        std::vector<std::vector<std::string>> all;
        for (std::size_t row = 0; row < found.rowCount(); ++row) {
            all.emplace_back();
            for (int column = 0; column < found.columnCount(); ++column) {
                all.back().emplace_back(found.cell(row, column).value_or("NULL"));
            }
        }
        return all;
    }
    std::string value(const std::string& sql) { return rows(sql).at(0).at(0); }

    int refusal() {
        try {
            store::createSchema(connection());
        } catch (const Failure& failure) {
            return failure.number();
        }
        return 0;
    }

private:
    std::unique_ptr<Connection> connection_;
};

TEST_F(Schema, hasEveryColumnThatTheSystemReadsOrWrites) {
    store::createSchema(connection());
    for (const ExpectedTable& table : expectedTables()) {
        EXPECT_NO_THROW(connection().open("select " + table.columns + " from " + table.name)) << table.name;
    }
}

TEST_F(Schema, givesEveryFixedClassAViewWithTheColumnsThatItsReadersNeed) {
    store::createSchema(connection());
    const std::string common =
        "select fItemId,fNumber,fName,fIsLock,fParentId,fParentIdName,fParentDepth,fNBNumber,fParentIdNumber,"
        "fShortNumber";
    const std::map<std::string, std::string> own = {
        {"1", ",fAmount"}, {"2", ",fAmount"}, {"3", ",fTimeQty"}, {"11", ",fAmount"}};
    const auto classes =
        rows("select fItemClassId,fViewName,fItemTable,fItemType from tblItemClass order by fItemClassId");
    ASSERT_EQ(classes.size(), own.size());
    for (const auto& row : classes) {
        EXPECT_EQ(row[1], "v" + row[2]);
        EXPECT_EQ(row[3], "0");
        EXPECT_EQ(rows(common + own.at(row[0]) + " from " + row[1]).size(), 0U) << row[1];
    }
}

TEST_F(Schema, hasFixedClassesButNoItemsAndNoCounters) {
    store::createSchema(connection());
    for (const char* table : {"tblItem", "ICItem", "tblCustomer", "tblSubType", "tblMaxNum", "tblMaxbillno",
                              "tblTimeStock", "tblUserPrivillenge"}) {
        EXPECT_EQ(value(std::string("select count(*) from ") + table), "0") << table;
    }
}

TEST_F(Schema, listsCodeAndNameFirstAndNumbersItsColumnsWithoutGaps) {
    store::createSchema(connection());
    for (const char* list : {"6001", "6002", "6003", "6011"}) {
        const auto columns = rows(std::string("select fEntryId,fFieldName from tblFindinfoEntry where fTypeId=") +
                                  list + " order by fEntryId");
        ASSERT_GE(columns.size(), 3U) << list;
        EXPECT_EQ(columns[0][1], "fNumber");
        EXPECT_EQ(columns[1][1], "fName");
        for (std::size_t i = 0; i < columns.size(); ++i)
            EXPECT_EQ(columns[i][0], std::to_string(i + 1)) << list;
    }
}

TEST_F(Schema, namesInItsListsSearchesAndDescriptionsOnlyColumnsThatTheViewsHave) {
    store::createSchema(connection());
    for (const char* table : {"tblFindinfoEntry", "tblFindinfoEntry2", "tblViewDesc"}) {
        for (const auto& row : rows(std::string("select fTypeId,fFieldName from ") + table)) {
            const std::string view = row[0] == "5033" ? "vTimeStock"
                                                      : value("select fViewName from tblItemClass where fItemClassId=" +
                                                              std::to_string(std::stoi(row[0]) - 6000));
            EXPECT_NO_THROW(connection().open("select " + row[1] + " from " + view)) << table << " " << row[1];
        }
    }
}

TEST_F(Schema, showsStockOfGoodsInAPickerBehindTheUnit) {
    store::createSchema(connection());
    EXPECT_EQ(
        rows("select fEntryId,fAlign,fDataFormat from tblFindinfoEntry where fTypeId=6003 and fFieldName='fTimeQty'"),
        (std::vector<std::vector<std::string>>{{"5", "7", "#,###.##"}}));
}

TEST_F(Schema, offersSearchesByNumberTextDateAndLookup) {
    store::createSchema(connection());
    const std::string kinds = "select count(*) from tblFindinfoEntry2 where fTypeId=6003 and fNumType=";
    for (const char* kind : {"1", "2", "3"})
        EXPECT_GT(std::stoi(value(kinds + kind)), 0) << kind;
    EXPECT_EQ(value("select fFieldName from tblFindinfoEntry2 where fTypeId=6003 and fNumberName=1"), "fHName");
}

TEST_F(Schema, issuesElevenRightsAClassWithTheGapAtEight) {
    store::createSchema(connection());
    EXPECT_EQ(rows("select fNumber,fName from tblSystemPrivillenge where fParentNumber='Y3' order by fNumber"),
              (std::vector<std::vector<std::string>>{{"Y301", "分类新增"},
                                                     {"Y302", "分类修改"},
                                                     {"Y303", "分类删除"},
                                                     {"Y304", "明细新增"},
                                                     {"Y305", "明细修改"},
                                                     {"Y306", "明细删除"},
                                                     {"Y307", "附件新增"},
                                                     {"Y309", "附件删除"},
                                                     {"Y310", "附件查看"},
                                                     {"Y320", "明细查看"}}));
    EXPECT_EQ(rows("select fName,fIsDetail from tblSystemPrivillenge where fNumber='Y3'"),
              (std::vector<std::vector<std::string>>{{"货品", "0"}}));
}

TEST_F(Schema, takesAClassWhoseGroupRightIsAnotherClassesRight) {
    store::createSchema(connection());
    EXPECT_EQ(
        connection().execute(
            "insert into  tblsystemprivillenge(fnumber,fname,fisdetail,fParentNumber) values('Y101','职员',0,'')"),
        1);
}

TEST_F(Schema, takesTwoAttachmentsOfOneItemWithOneEntryNumber) {
    store::createSchema(connection());
    const std::string attachment = "insert into tblItemFJ(fItemId,fEntryId,fName) values(7,1,'合同')";
    connection().execute(attachment);
    connection().execute(attachment);
    EXPECT_EQ(value("select count(*) from tblItemFJ where fItemId=7 and fEntryId=1"), "2");
}

TEST_F(Schema, refusesASecondIdOfAnItem) {
    store::createSchema(connection());
    connection().execute("insert into tblItem(fItemId,fNumber) values(1,'01')");
    try {
        connection().execute("insert into tblItem(fItemId,fNumber) values(1,'02')");
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), 2627);
    }
}

TEST_F(Schema, isRefusedWhereATableExistsAndLeavesTheDatabaseAsItWas) {
    // The last of the tables, so that all others were made before the refusal.
    connection().execute("create table tblSystemInfo(fTypeId int,fValue varchar(10))");
    connection().execute("insert into tblSystemInfo values(71,'1')");
    EXPECT_EQ(refusal(), 2714);
    EXPECT_FALSE(connection().inTransaction());
    EXPECT_EQ(rows("select * from tblSystemInfo"), (std::vector<std::vector<std::string>>{{"71", "1"}}));
    EXPECT_THROW(connection().open("select * from tblItem"), Failure);
}

TEST_F(Schema, isRefusedASecondTime) {
    store::createSchema(connection());
    connection().execute("insert into tblItem(fItemId,fNumber) values(1,'01')");
    EXPECT_EQ(refusal(), 2714);
    EXPECT_EQ(value("select count(*) from tblItem"), "1");
    EXPECT_EQ(value("select count(*) from tblItemClass"), "4");
}

TEST_F(Schema, isTheSameWhenItsViewsAreMadeAgainFromTheirText) {
    store::createSchema(connection());
    for (const store::SchemaView& view : store::schemaViews()) {
        const int columns = connection().open("select * from " + std::string(view.name)).columnCount();
        connection().execute("drop view " + std::string(view.name));
        connection().execute(view.text);
        EXPECT_EQ(connection().open("select * from " + std::string(view.name)).columnCount(), columns) << view.name;
    }
}

}  // namespace
}  // namespace orvenmod::test
