// Group A: the system's own tables. Indexes follow the statements of the windows, so that no command scans a table
// that grows with the items.
#include "store/schemaparts.h"

namespace orvenmod::store {
namespace {

std::vector<SchemaTable> classTables() {
    return {
        {"tblItemClass",
         'A',
         {{"fItemClassId", "int", kNotNull},
          {"fItemName", "varchar(100)"},
          {"fItemTable", "varchar(100)"},
          {"fItemType", "varchar(1)"},
          {"fViewName", "varchar(100)"}},
         "fItemClassId",
         {{"fItemType,fItemClassId"}}},
        {"tblTableInfo",
         'A',
         {{"fItemClassId", "int", kNotNull},
          {"fInterId", "int", kNotNull},
          {"fName", "varchar(100)"},
          {"fFieldName", "varchar(100)"},
          {"fFieldType", "int"},
          {"fIsNull", "int"},
          {"fIsVisible", "int"},
          {"fIsLock", "int"},
          {"fNumberDec", "int"},
          {"FMaxNumber", "float"},
          {"FMinNumber", "float"},
          {"fDefaultValue", "varchar(200)"},
          {"fValueItemId", "int"},
          {"fItemType", "varchar(1)"}},
         "fItemClassId,fInterId",
         {}},
    };
}

std::vector<SchemaTable> itemTables() {
    return {
        {"tblItem",
         'A',
         {{"fItemId", "int", kNotNull},
          {"fShortNumber", "varchar(100)"},
          {"fNumber", "varchar(100)"},
          {"fName", "varchar(100)"},
          {"fItemClassId", "int"},
          {"fParentId", "int"},
          {"fIsDetail", "int"},
          {"fDepth", "int"},
          {"fStatus", "int"},
          {"fCheckerId", "int"},
          {"fIsLock", "int"},
          {"fLockerId", "int"},
          {"fFullName", "varchar(200)"},
          {"fNBNumber", "varchar(200)"}},
         "fItemId",
         {{"fItemClassId,fNumber"},
          // The third column makes it the best one for a detail item's name; the categories' would look as good.
          {"fItemClassId,fName,fIsDetail"},
          {"fItemClassId,fNBNumber"},
          // The next short code is sought among all below one category.
          {.columns = "fItemClassId,fParentId", .included = "fShortNumber"},
          {"fItemClassId,fIsDetail,fDepth"},
          {"fParentId"},
          // A category's list asks it for the keys of its rows.
          {"fNBNumber,fItemId"}}},
        {"tblSubType",
         'A',
         {{"fItemId", "int", kNotNull},
          {"fNumber", "varchar(100)"},
          {"fName", "varchar(100)"},
          {"fItemClassId", "int"}},
         "fItemId",
         {{"fItemClassId,fNumber"}}},
        {"tblMaxNum", 'A', {{"fTableName", "varchar(100)", kNotNull}, {"fMaxNum", "int"}}, "fTableName", {}},
        {"tblMaxbillno",
         'A',
         {{"fTypeId", "int", kNotNull}, {"fPreLetter", "varchar(10)"}, {"fBillNo", "int"}},
         "fTypeId",
         {}},
        {"ICItemPhoto", 'A', {{"fItemId", "int"}, {"fPhoto", "image"}, {"fHZ", "varchar(100)"}}, "", {{"fItemId"}}},
        // Two attachments of one item can bear the same fEntryId, so its index is not unique.
        {"tblItemFJ",
         'A',
         {{"fItemId", "int"},
          {"fEntryId", "int"},
          {"fName", "varchar(200)"},
          {"fFileName", "varchar(255)"},
          {"fFJ", "image"}},
         "",
         {{"fItemId,fEntryId"}}},
        {"tblItemInput",
         'A',
         {{"fItemId", "int"}, {"fStockId", "int"}, {"fQty", "decimal(18,4)"}, {"fUserId", "int"}, {"fEntryId", "int"}},
         "",
         {{"fUserId,fEntryId"}}},
    };
}

std::vector<SchemaTable> listTables() {
    return {
        {"tblFindinfoEntry",
         'A',
         {{"fTypeId", "int"},
          {"fEntryId", "int"},
          {"fFieldName", "varchar(100)"},
          {"fTitleName", "varchar(100)"},
          {"fAlign", "int"},
          {"fDataFormat", "varchar(50)"},
          {"fIsShow", "int"},
          {"fIsSum", "int"},
          {"fIsMerge", "int"},
          {"fIsDefault", "int"},
          {"fWidth", "int"}},
         "",
         {{"fTypeId,fEntryId"}}},
        {"tblFindinfoEntry2",
         'A',
         {{"fTypeId", "int"},
          {"fEntryId", "int"},
          {"fFieldName", "varchar(100)"},
          {"fTitleName", "varchar(100)"},
          {"fNumType", "int"},
          {"fItemClassId", "int"},
          {"fIsDefault", "int"},
          {"fNumberName", "int"}},
         "",
         {{"fTypeId,fEntryId"}}},
        {"tblViewDesc",
         'A',
         {{"fTypeId", "int"}, {"fFieldName", "varchar(100)"}, {"fFieldDesc", "varchar(100)"}, {"fFieldType", "int"}},
         "",
         {{"fTypeId"}}},
        {"tblFindSeek",
         'A',
         {{"fUserId", "int"}, {"fTypeId", "int"}, {"fSql", "varchar(2000)"}},
         "",
         {{"fUserId,fTypeId"}}},
    };
}

std::vector<SchemaTable> rightTables() {
    return {
        // No key: class 101's group and class 1's first right are both Y101.
        {"tblSystemPrivillenge",
         'A',
         {{"fNumber", "varchar(100)"},
          {"fName", "varchar(100)"},
          {"fIsDetail", "int"},
          {"fParentNumber", "varchar(100)"}},
         "",
         {{"fNumber"}, {"fParentNumber"}}},
        {"tblUserPrivillenge", 'A', {{"fUserId", "int"}, {"fNumber", "varchar(100)"}}, "", {{"fUserId,fNumber"}}},
        {"tblUserVisible",
         'A',
         {{"fUserId", "int"}, {"fFieldName", "varchar(100)"}, {"fType", "int"}, {"fBillTypeId", "int"}},
         "",
         {{"fUserId,fBillTypeId"}}},
    };
}

}  // namespace

std::vector<SchemaTable> ownTables() {
    std::vector<SchemaTable> tables = classTables();
    for (const auto& part : {itemTables(), listTables(), rightTables()}) {
        tables.insert(tables.end(), part.begin(), part.end());
    }
    for (const FixedClass& fixed : fixedClasses()) {
        tables.push_back(fixedClassTable(fixed));
    }
    for (const std::string_view name : {"tblStock", "tblStockPlace"}) {
        tables.push_back({name,
                          'A',
                          {{"fItemId", "int", kNotNull}, {"fNumber", "varchar(100)"}, {"fName", "varchar(100)"}},
                          "fItemId",
                          {{"fNumber"}}});
    }
    tables.push_back({"tblOrvenmodVersion", 'A', {{"fVersion", "int", kNotNull}}, "", {}});
    return tables;
}

}  // namespace orvenmod::store
