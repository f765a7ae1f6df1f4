#include "store/schema/columns.h"

namespace orvenmod::test {

const std::vector<ExpectedTable>& expectedTables() {
    static const std::vector<ExpectedTable> kTables = {
        {"tblItemClass", "fItemClassId,fItemName,fItemTable,fItemType,fViewName"},
        {"tblTableInfo",
         "fInterId,fItemClassId,fName,fFieldName,fFieldType,fIsNull,fIsVisible,fIsLock,fNumberDec,FMaxNumber,"
         "FMinNumber,fDefaultValue,fValueItemId,fItemType"},
        {"tblItem",
         "fItemId,fShortNumber,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fStatus,fCheckerId,fIsLock,"
         "fLockerId,fFullName,fNBNumber"},
        {"tblSubType", "fItemId,fNumber,fName,fItemClassId"},
        {"tblMaxNum", "fTableName,fMaxNum"},
        {"tblMaxbillno", "fTypeId,fPreLetter,fBillNo"},
        {"tblFindinfoEntry",
         "fTypeId,fEntryId,fFieldName,fTitleName,fAlign,fDataFormat,fIsShow,fIsSum,fIsMerge,fIsDefault,fWidth"},
        {"tblFindinfoEntry2", "fTypeId,fEntryId,fFieldName,fTitleName,fNumType,fItemClassId,fIsDefault,fNumberName"},
        {"tblViewDesc", "fTypeId,fFieldName,fFieldDesc,fFieldType"},
        {"tblSystemPrivillenge", "fNumber,fName,fIsDetail,fParentNumber"},
        {"tblUserPrivillenge", "fUserId,fNumber"},
        {"tblUserVisible", "fUserId,fFieldName,fType,fBillTypeId"},
        {"tblFindSeek", "fUserId,fTypeId,fSql"},
        {"tblItemInput", "fItemId,fStockId,fQty,fUserId,fEntryId"},
        {"ICItemPhoto", "fItemId,fPhoto,fHZ"},
        {"tblItemFJ", "fItemId,fEntryId,fName,fFileName,fFJ"},
        {"tblCustomer", "fItemId,fNumber,fName,fAmount"},
        {"tblSupplier", "fItemId,fNumber,fName,fAmount"},
        {"tblAccount", "fItemId,fNumber,fName,fAmount"},
        {"ICItem", "fItemId,fNumber,fName,fModel,fUnit,fMinQty,fMaxQty,fA,fB,fC,fD,fE,fF,fG,fH"},
        {"tblStock", "fItemId,fNumber,fName"},
        {"tblStockPlace", "fItemId,fNumber,fName"},
        {"tblBillInfo", "fFieldName,fFieldType,fTypeId"},
        {"tblbillinfoentry", "fFieldName,fFieldType,fTypeId"},
        {"icstockbill", "fInterId"},
        {"icstockbillEntry", "fInterId"},
        {"icorderbill", "fInterId"},
        {"icorderbillentry", "fInterId"},
        {"icnoticebill", "fInterId"},
        {"icnoticebillEntry", "fInterId"},
        {"tblMoney", "fInterId"},
        {"ICMoney", "fInterId"},
        {"ICMoneyEntry", "fInterId"},
        {"tblFP", "fInterId"},
        {"tblFPEntry", "fInterId"},
        {"tblSuppbal", "fSupplyId"},
        {"tblcustbal", "fCustId"},
        {"tblstockbal", "fItemId"},
        {"tblTimeStock",
         "fItemId,fStockId,fStockPlaceId,fQty,fAmount,fBatchNo,fText1,fText2,fNum1,fNum2,fDate1,fDate2,fHS1,fHS2"},
        {"tblSystemInfo", "fTypeId,fValue"},
        {"vTimeStock",
         "fItemId,fQty,fAmount,fStockId,fStockIdNumber,fStockIdName,fItemIdNumber,fItemIdName,fModel,fUnit,fMinQty,"
         "fMaxQty,fPrice,fA,fB,fC,fD,fE,fF,fG,fH,fHNumber,fHName"},
    };
    return kTables;
}

}  // namespace orvenmod::test
