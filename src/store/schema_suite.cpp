// Group B: the suite's tables, with the columns that its catalogue of bill fields names. Every column that can hold an
// item or a dictionary entry has an index, since a delete probes each of them.
#include "store/schemaparts.h"

namespace orvenmod::store {
namespace {

SchemaTable billHead(std::string_view name) {
    return {name,
            'B',
            {{"fInterId", "int", kNotNull},
             {"fTypeId", "int"},
             {"fBillNo", "varchar(50)"},
             {"fDate", "datetime"},
             {"fCustId", "int"},
             {"fSupplyId", "int"},
             {"fStockId", "int"},
             {"fAccountId", "int"},
             {"fSettleId", "int"},
             {"fAmount", "decimal(18,2)"},
             {"fNote", "varchar(200)"}},
            "fInterId",
            {{"fTypeId,fDate"}, {"fCustId"}, {"fSupplyId"}, {"fStockId"}, {"fAccountId"}, {"fSettleId"}}};
}

SchemaTable billEntry(std::string_view name) {
    return {
        name,
        'B',
        {{"fInterId", "int"},
         {"fEntryId", "int"},
         {"fItemId", "int"},
         {"fStockId", "int"},
         {"fStockPlaceId", "int"},
         {"fBatchNo", "varchar(50)"},
         {"fUnitId", "int"},
         {"fColorId", "int"},
         {"fKindId", "int"},
         {"fQty", "decimal(18,4)"},
         {"fPrice", "decimal(18,4)"},
         {"fAmount", "decimal(18,2)"},
         {"fNote", "varchar(200)"}},
        "",
        {{"fInterId,fEntryId"}, {"fItemId"}, {"fStockId"}, {"fStockPlaceId"}, {"fUnitId"}, {"fColorId"}, {"fKindId"}}};
}

SchemaTable billCatalogue(std::string_view name) {
    return {name,
            'B',
            {{"fTypeId", "int"}, {"fFieldName", "varchar(100)"}, {"fFieldType", "int"}},
            "",
            {{"fFieldType,fTypeId,fFieldName"}}};
}

SchemaTable balance(std::string_view name, std::string_view owner) {
    return {name,
            'B',
            {{owner, "int"},
             {"fYear", "int"},
             {"fPeriod", "int"},
             {"fBeginAmount", "decimal(18,2)"},
             {"fInAmount", "decimal(18,2)"},
             {"fOutAmount", "decimal(18,2)"},
             {"fEndAmount", "decimal(18,2)"}},
            "",
            {{owner}}};
}

SchemaTable timeStock() {
    return {"tblTimeStock",
            'B',
            {{"fItemId", "int"},
             {"fStockId", "int"},
             {"fStockPlaceId", "int"},
             {"fBatchNo", "varchar(50)"},
             {"fQty", "decimal(18,4)"},
             {"fAmount", "decimal(18,2)"},
             {"fText1", "varchar(100)"},
             {"fText2", "varchar(100)"},
             {"fNum1", "decimal(18,4)"},
             {"fNum2", "decimal(18,4)"},
             {"fDate1", "datetime"},
             {"fDate2", "datetime"},
             {"fHS1", "int"},
             {"fHS2", "int"}},
            "",
            // The quantity stands in both, so that a sum by item reads the index alone.
            {{"fItemId,fStockId,fQty"}, {"fStockId,fItemId,fQty"}}};
}

}  // namespace

std::vector<SchemaTable> suiteTables() {
    return {
        billCatalogue("tblBillInfo"),
        billCatalogue("tblbillinfoentry"),
        billHead("icstockbill"),
        billEntry("icstockbillEntry"),
        billHead("icorderbill"),
        billEntry("icorderbillentry"),
        billHead("icnoticebill"),
        billEntry("icnoticebillEntry"),
        billHead("tblMoney"),
        billHead("ICMoney"),
        billEntry("ICMoneyEntry"),
        billHead("tblFP"),
        billEntry("tblFPEntry"),
        balance("tblSuppbal", "fSupplyId"),
        balance("tblcustbal", "fCustId"),
        balance("tblstockbal", "fItemId"),
        timeStock(),
        {"tblSystemInfo", 'B', {{"fTypeId", "int", kNotNull}, {"fValue", "varchar(500)"}}, "fTypeId", {}},
    };
}

}  // namespace orvenmod::store
