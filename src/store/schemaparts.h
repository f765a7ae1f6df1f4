// The pieces that make up the schema: what schema.cpp puts together, a file each.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/schema.h"

namespace orvenmod::store {

std::vector<SchemaTable> ownTables();
std::vector<SchemaTable> suiteTables();

/// A field of one of the classes with a fixed role.
struct FixedField {
    std::string_view caption;
    std::string_view name;
    std::string_view type;                 ///< tblTableInfo.fFieldType
    std::string_view column;               ///< the type of its column
    int listWidth = 0;                     ///< width in the list in twips; 0 keeps it out of the list
    int decimals = 0;                      ///< of a number
    std::string_view format = "#,###.##";  ///< of a number in the list; this one blanks zeros
    int sourceClass = 0;                   ///< of a lookup into another class, else 0
    bool required = false;
};

/// The column in which a class keeps its balance.
inline constexpr std::string_view kBalanceField = "fAmount";

/// Customers, suppliers, goods and accounts: the classes whose ids the system knows.
struct FixedClass {
    int id;
    std::string_view name;
    std::string_view table;
    std::string_view amountField;  ///< kBalanceField, or "fTimeQty" for goods
    std::string_view amountCaption;
    int amountEntry;                 ///< its place in the list
    std::vector<FixedField> fields;  ///< behind short code, code and name
};

const std::vector<FixedClass>& fixedClasses();

SchemaTable fixedClassTable(const FixedClass& fixed);
/// The class's view, as a save in field setup words it.
std::string fixedClassView(const FixedClass& fixed);
/// The insert statements of a class: its field, list, search, description and right rows.
std::vector<std::string> fixedClassRows(const FixedClass& fixed);
/// The rights of the dictionary windows.
std::vector<std::string> dictionaryRightRows();

/// vTimeStock for a suite that keeps stock by warehouse alone, with the user fields of goods.
std::string stockView();
std::vector<std::string> stockViewRows();

}  // namespace orvenmod::store
