#include "editor/itemstatements.h"

#include "frame/conversion.h"
#include "store/itemclass.h"

namespace orvenmod {

namespace {

constexpr const char* kNoDate = "1900-01-01";

bool isNumberType(const std::string& type) { return type == store::kCurrencyField || type == store::kNumberField; }

// What stands for an empty date or number. An insert takes blanks for a value, an update for none.
std::string plainValue(const FieldRow& field, bool empty) {
    if (!empty) return field.value;
    if (field.fieldType == store::kDateField) return kNoDate;
    return isNumberType(field.fieldType) ? "0" : field.value;
}

std::string chosenId(const FieldRow& field) {
    const std::string id = trim(field.chosenId);
    return id.empty() ? "0" : id;
}

}  // namespace

std::string classInsert(const std::string& table, const std::vector<FieldRow>& fields, std::int32_t itemId) {
    std::string sql = "insert into " + table + "(fitemid";
    for (const FieldRow& field : fields)
        sql += "," + trim(field.fieldName);
    sql += ") values(" + std::to_string(itemId);
    for (const FieldRow& field : fields) {
        sql += field.isReference() ? "," + chosenId(field) : ",'" + plainValue(field, field.value.empty()) + "'";
    }
    return sql + ")";
}

std::string classUpdate(const std::string& table, const std::vector<FieldRow>& fields, std::int32_t itemId) {
    std::string sql = "update " + table + " set ";
    for (const FieldRow& field : fields) {
        sql += field.isReference() ? field.fieldName + "=" + chosenId(field) + ","
                                   : " " + field.fieldName + "='" + plainValue(field, trim(field.value).empty()) + "',";
    }
    sql.pop_back();
    return sql + " where fitemid=" + std::to_string(itemId);
}

std::string itemInsert(std::int32_t itemId, const ItemTexts& texts, std::int16_t classId, const Place& place) {
    return "insert into tblItem(fitemid,fnumber,fname,fitemclassid,fparentid,fisDetail,fdepth,fislock,fNBNumber,"
           "fshortnumber) values(" +
           std::to_string(itemId) + ",'" + texts.number + "','" + texts.name + "'," + std::to_string(classId) + "," +
           place.parentId + "," + "1," + place.depth + ",0,'" + place.path + "','" + texts.shortNumber + "')";
}

std::string itemUpdate(std::int32_t itemId, const ItemTexts& texts, const Place& place) {
    return "update tblItem set fnumber='" + trim(texts.number) + "',fname='" + trim(texts.name) +
           "',fparentid=" + place.parentId + ",fdepth=" + place.depth + ",fNBNumber='" + place.path + "'" +
           ",fShortNumber='" + texts.shortNumber + "' " + " where fitemid=" + std::to_string(itemId);
}

}  // namespace orvenmod
