// Statements of the windows that must not read a whole table, whatever the store.
#pragma once

namespace orvenmod::test {

/// Items by code, name, path and id.
inline constexpr const char* kItemStatements[] = {
    "select * from tblItem where fnumber='01.001' and fitemclassid=3",
    "select * from tblItem where fname='螺丝' and fitemclassid=3 and fisdetail=1 ",
    "select fNBNumber from tblItem where fitemid=12",
    "select fislock,fname from tblItem where fitemid=12",
    "select top 1 fitemid from tblItem where fparentid=12",
    "select isnull(max(len(fshortnumber)),1) as fshortnumber from tblitem where fitemclassid=3 and fparentid=12",
    "select fNBNumber,fitemid,fnumber from tblItem where fitemclassid=3 and fNBNumber like '.12.%'",
    "update tblItem set fDepth=fDepth+1 where fitemclassid=3 and fNBNumber like '.12.%'",
    "update tblItem set fisLock=1  where fitemid=12",
    "delete from tblItem where fitemid=12",
    "delete from ICItem  where fitemid=12",
    "delete from tblItemFJ where fitemid=12 and fEntryId=1",
    "delete from icitemphoto where fitemid=12",
    " select fnumber,fname,fmodel,fitemid,funit from icitem  where fitemid=12   "};

/// A save in the editor, from its tests to the next code; with the steps by which the embedded store runs it.
struct Served {
    const char* sql;
    const char* by;
};
inline constexpr Served kSaveStatements[] = {
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
     "CO-ROUTINE tblitem; COMPOUND QUERY; LEFT-MOST SUBQUERY; SEARCH tblitem USING COVERING INDEX "
     "tblItem.ix_tblItem_4 (fItemClassId=? AND fParentId=? AND <expr>=? AND <expr>=?); UNION ALL; SEARCH tblitem USING "
     "COVERING INDEX tblItem.ix_tblItem_4 (fItemClassId=? AND fParentId=? AND <expr>=? AND <expr>>?); SEARCH "
     "tblitem"},
};

/// The categories of a class.
inline constexpr const char* kTreeStatement =
    "select fitemid,fname,fparentid,fdepth,fNBNumber,fnumber from tblItem where fisdetail=0 and fitemclassid=3 "
    "order "
    "by fdepth,fnumber,fname";

/// What a user has set and may do.
inline constexpr const char* kUserStatements[] = {
    "select fuserid from tblUserPrivillenge  where fuserid=2  and fNumber='Y304'",
    "select isnull(fsql,'') as fsql from tblFindSeek where fuserid=2 and ftypeid=6003",
    "select fFieldName,ftype from tblUserVisible where fUserid=2 and fType in (1) and fbilltypeid=6003",
    "delete from tblItemInput where fuserid=2"};

/// Whether a bill or a balance names an item.
inline constexpr const char* kProbes[] = {
    " select top 1 finterid from icstockbill  where fStockId=7 union all select top 1 finterid from "
    "icstockbillEntry where fItemId=7 union all select top 1 fitemid as finterid from tblstockbal where "
    "fitemid=7",
    " select top 1 finterid from icorderbill  where fCustId=7",
    " select top 1 finterid from icnoticebillEntry where fItemId=7",
    " select top 1 finterid from tblMoney  where fAccountId=7 union all select top 1 fsupplyid as  finterid from "
    "tblSuppbal where fSupplyId=7 union all select top 1 fcustid as finterid from tblcustbal where fcustid=7",
    " select top 1 finterid from ICMoneyEntry where fKindId=7",
    " select top 1 finterid from tblFPEntry where fUnitId=7",
    "select fFieldName,1 as fType from tblBillInfo where fFieldType=1 and ftypeid<10  union all select "
    "fFieldName,2 as fType from tblbillinfoentry where fFieldType=1 and ftypeid<10  "};

/// A list reads its class's table and joins the rest by key.
inline constexpr const char* kListStatement =
    "select fitemid,fNumber,fName,fModel,fUnit,fHName from  vICItem where 1=1  order by fnumber ";

/// The stock of a warehouse, from an index alone.
inline constexpr const char* kStockStatement =
    "select sum(fqty) as fqty,fitemid from tbltimestock  where fstockid=3 group by fitemid ";

}  // namespace orvenmod::test
