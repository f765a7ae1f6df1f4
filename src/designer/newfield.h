// The statements of a new field, to the blank. Typed values enter them as they stand.
//
// What tblTableInfo stores for a field:
//   fFieldType     0 date, 1 text and every lookup, 13 number; the window's 12, currency, is stored as 13
//   fIsNull        0 the field may stay empty, 1 it may not
//   fValueItemID   the class that a lookup takes its values from, 0 for none
//   fItemType      that class's own kind: '0' items, otherwise dictionary entries, '' for no lookup
#pragma once

#include <string>

namespace orvenmod {

/// What the user chose, as the grid's cells stand; name and field are trimmed.
struct NewField {
    std::string name;
    std::string field;
    std::string typeCode;  ///< as tblTableInfo.fFieldType has it
    std::string decimals;
    std::string maximum;
    std::string minimum;
    std::string fallback;
    std::string isNull;      ///< "0" or "1"
    std::string lookup;      ///< the source class's name, "" or "无" for none
    std::string lookupCode;  ///< "{class},{kind}", "-1,-1" for none
};

bool isLookup(const std::string& lookup);

/// A `lookupCode` without comma is ConversionFailure 9.
std::string fieldRow(const NewField& made, const std::string& itemClass, const std::string& interId);
std::string columnStatement(const NewField& made, const std::string& table);

}  // namespace orvenmod
