// Keys and indexes serve the statements of the windows: on a million items none of these may scan a table that grows.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "store/schema.h"
#include "store/sqlite/database.h"
#include "store/sqlite/sqlitestore.h"
#include "store/tsql/shape.h"
#include "support/database.h"

namespace orvenmod::test {
namespace {

/// How the embedded store would run statements on the schema, without rows.
class Plans : public testing::Test {
protected:
    Plans() {
        const std::string target = connectionStringFor(folder_.file("suite.db"));
        store::sqlite::SqliteStore store;
        const auto connection = store.connect(target + ";Mode=Create");
        store::createSchema(*connection);
        connection->close();
        store::sqlite::SqliteStore::dropIdleHandles();
        database_ = std::make_unique<store::sqlite::Database>(store::sqlite::DatabaseFile::parse(target));
    }

    /// The steps of the plan, such as "SEARCH a USING INDEX ix_tblItem_1 (...)".
    std::vector<std::string> plan(const std::string& sql) {
        store::tsql::Shape shape;
        shape.scan(sql);
        const auto& translated = database_->prepare(sql, shape).translation.statements.at(0);
        const auto explained = database_->prepareNative("explain query plan " + translated);
        std::vector<std::string> steps;
        while (sqlite3_step(explained.get()) == SQLITE_ROW) {
            steps.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(explained.get(), 3)));
        }
        return steps;
    }

    std::string scans(const std::string& sql) {
        std::string found;
        for (const std::string& step : plan(sql)) {
            // What a part of the statement gave is no table.
            const bool ofPart = step.find("CONSTANT ROW") != std::string::npos || step.rfind("SCAN (", 0) == 0;
            if (step.rfind("SCAN", 0) == 0 && !ofPart) found += step + "; ";
        }
        return found;
    }

private:
    TemporaryFolder folder_;
    std::unique_ptr<store::sqlite::Database> database_;
};

TEST_F(Plans, codesNamesAndPathsOfItemsAreFoundByIndex) {
    for (const char* sql :
         {"select * from tblItem where fnumber='01.001' and fitemclassid=3",
          "select * from tblItem where fname='螺丝' and fitemclassid=3 and fisdetail=1 ",
          "select fNBNumber from tblItem where fitemid=12", "select fislock,fname from tblItem where fitemid=12",
          "select top 1 fitemid from tblItem where fparentid=12",
          "select isnull(max(len(fshortnumber)),1) as fshortnumber from tblitem where fitemclassid=3 and fparentid=12",
          "select fNBNumber,fitemid,fnumber from tblItem where fitemclassid=3 and fNBNumber like '.12.%'",
          "update tblItem set fDepth=fDepth+1 where fitemclassid=3 and fNBNumber like '.12.%'",
          "update tblItem set fisLock=1  where fitemid=12", "delete from tblItem where fitemid=12",
          "delete from ICItem  where fitemid=12", "delete from tblItemFJ where fitemid=12 and fEntryId=1",
          "delete from icitemphoto where fitemid=12",
          " select fnumber,fname,fmodel,fitemid,funit from icitem  where fitemid=12   "}) {
        EXPECT_EQ(scans(sql), "") << sql;
    }
}

struct Served {
    const char* sql;
    const char* by;
};

// Saving an item tests its code and name and proposes the next code among a million of its class: each step names the
// index that serves it, and no class or category but its own is looked at.
TEST_F(Plans, aSaveOfTheEditorIsServedByTheseIndexes) {
    const std::vector<Served> save = {
        {"select * from tblItem where fnumber='01.001' and fitemclassid=3",
         "SEARCH tblItem USING INDEX tblItem.ix_tblItem_1 (fItemClassId=? AND <expr>=?)"},
        {"select * from tblItem where fname='螺丝' and fitemclassid=3 and fisdetail=1 ",
         "SEARCH tblItem USING INDEX tblItem.ix_tblItem_2 (fItemClassId=? AND <expr>=? AND fIsDetail=?)"},
        {"select * from tblItem where fnumber='01.001' and fitemclassid=3 and fitemid<>7",
         "SEARCH tblItem USING INDEX tblItem.ix_tblItem_1 (fItemClassId=? AND <expr>=?)"},
        {"select * from tblItem where fname='螺丝' and fitemclassid=3 and fitemid<>7 and fisdetail=1 ",
         "SEARCH tblItem USING INDEX tblItem.ix_tblItem_2 (fItemClassId=? AND <expr>=? AND fIsDetail=?)"},
        {"select fislock as fislock1 from tblItem where fitemid=7",
         "SEARCH tblItem USING INDEX sqlite_autoindex_tblItem_1 (fItemId=?)"},
        {"select * from tblMaxnum where ftablename='tblItem'",
         "SEARCH tblMaxnum USING INDEX tblMaxNum.constraint.pk.PK__tblMaxNum__fTableName (<expr>=?)"},
        {"update tblMaxNum set  fmaxnum=fmaxnum+1  where ftablename='tblItem'",
         "SEARCH tblMaxNum USING INDEX tblMaxNum.constraint.pk.PK__tblMaxNum__fTableName (<expr>=?)"},
        {"select fnbnumber,fdepth,fitemid from tblItem where fitemid=13 and fitemclassid=3 and fisdetail=0 ",
         "SEARCH tblItem USING INDEX sqlite_autoindex_tblItem_1 (fItemId=?)"},
        {"update ICItem set  fNumber='01', fName='a', fModel='' where fitemid=7",
         "SEARCH ICItem USING INDEX sqlite_autoindex_ICItem_1 (fItemId=?)"},
        {"update tblItem set fnumber='01',fname='a',fparentid=13,fdepth=3,fNBNumber='.13.7.',fShortNumber='01'  where "
         "fitemid=7",
         "SEARCH tblItem USING INDEX sqlite_autoindex_tblItem_1 (fItemId=?)"},
        {"delete from icitemphoto where fitemid=7",
         "SEARCH icitemphoto USING INDEX ICItemPhoto.ix_ICItemPhoto_1 (fItemId=?)"},
        {"update tblItemFJ set fName='a' where fitemid=7 and fentryid=1",
         "SEARCH tblItemFJ USING INDEX tblItemFJ.ix_tblItemFJ_1 (fItemId=? AND fEntryId=?)"},
        {"select isnull(max(len(fshortnumber)),1) as fshortnumber from tblitem where fitemclassid=3 and fparentid=13",
         "SEARCH tblitem USING COVERING INDEX tblItem.ix_tblItem_4 (fItemClassId=? AND fParentId=?)"},
        {"select isnull(max(cast(fshortnumber as varchar(10))),0) as fshortnumber from tblitem where fitemclassid=3 "
         "and fparentid=13 and len(fshortnumber)=3",
         "SEARCH tblitem USING COVERING INDEX tblItem.ix_tblItem_4 (fItemClassId=? AND fParentId=?)"},
    };
    for (const Served& statement : save) {
        EXPECT_EQ(plan(statement.sql), std::vector<std::string>{statement.by}) << statement.sql;
    }
}

TEST_F(Plans, theTreeReadsTheCategoriesOfItsClassAlone) {
    const char* sql =
        "select fitemid,fname,fparentid,fdepth,fNBNumber,fnumber from tblItem where fisdetail=0 and fitemclassid=3 "
        "order "
        "by fdepth,fnumber,fname";
    EXPECT_EQ(scans(sql), "");
    EXPECT_NE(plan(sql).at(0).find("fIsDetail=?"), std::string::npos) << plan(sql).at(0);
}

TEST_F(Plans, aUsersRowsAreFoundByIndex) {
    for (const char* sql : {"select fuserid from tblUserPrivillenge  where fuserid=2  and fNumber='Y304'",
                            "select isnull(fsql,'') as fsql from tblFindSeek where fuserid=2 and ftypeid=6003",
                            "select fFieldName,ftype from tblUserVisible where fUserid=2 and fType in (1) and "
                            "fbilltypeid=6003",
                            "delete from tblItemInput where fuserid=2"}) {
        EXPECT_EQ(scans(sql), "") << sql;
    }
}

TEST_F(Plans, aDeleteProbesBillsAndBalancesByIndex) {
    for (const char* sql :
         {" select top 1 finterid from icstockbill  where fStockId=7 union all select top 1 finterid from "
          "icstockbillEntry where fItemId=7 union all select top 1 fitemid as finterid from tblstockbal where "
          "fitemid=7",
          " select top 1 finterid from icorderbill  where fCustId=7",
          " select top 1 finterid from icnoticebillEntry where fItemId=7",
          " select top 1 finterid from tblMoney  where fAccountId=7 union all select top 1 fsupplyid as  finterid from "
          "tblSuppbal where fSupplyId=7 union all select top 1 fcustid as finterid from tblcustbal where fcustid=7",
          " select top 1 finterid from ICMoneyEntry where fKindId=7",
          " select top 1 finterid from tblFPEntry where fUnitId=7",
          "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid<10  union all select "
          "fFieldName,2 as fType from tblbillinfoentry where fFieldType=1 and ftypeid<10  "}) {
        EXPECT_EQ(scans(sql), "") << sql;
    }
}

// A list must read its class's table; everything that it joins comes by key.
TEST_F(Plans, aListScansItsOwnTableAndNothingElse) {
    EXPECT_EQ(scans("select fitemid,fNumber,fName,fModel,fUnit,fHName from  vICItem where 1=1  order by fnumber "),
              "SCAN a; ");
}

TEST_F(Plans, theStockOfAWarehouseIsSummedFromAnIndexAlone) {
    const auto steps = plan("select sum(fqty) as fqty,fitemid from tbltimestock  where fstockid=3 group by fitemid ");
    ASSERT_EQ(steps.size(), 1U);
    EXPECT_NE(steps[0].find("USING COVERING INDEX"), std::string::npos) << steps[0];
}

}  // namespace
}  // namespace orvenmod::test
