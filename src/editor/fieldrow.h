// The columns of the field grid fps1. A row describes one field of the class; the last row is the item's category.
//
//   1 caption | 2 value | 3 column name | 4 field type | 5 - | 6 class referred to | 7 id chosen | 8 - | 9 must be
//   filled | 10 - | 11 - | 12 kind of that class | 13 code of the chosen category (last row only)
//
// Row 1 is the short code, row 2 the code, row 3 the name: the first three fields of every class.
#pragma once

#include <string>

#include "platform/entrygrid.h"

namespace orvenmod {

inline constexpr int kCaption = 1;
inline constexpr int kValue = 2;
inline constexpr int kFieldName = 3;
inline constexpr int kFieldType = 4;
inline constexpr int kSourceClass = 6;
inline constexpr int kChosenId = 7;
inline constexpr int kIsNull = 9;
inline constexpr int kSourceKind = 12;
inline constexpr int kCategoryCode = 13;
inline constexpr int kLastColumn = 13;

inline constexpr int kShortCodeRow = 1;
inline constexpr int kCodeRow = 2;
inline constexpr int kNameRow = 3;

/// One field as the grid holds it, for the statements.
struct FieldRow {
    std::string value = {};
    std::string fieldName = {};
    std::string fieldType = {};
    std::string sourceClass = {};
    std::string chosenId = {};

    /// Whether the value is picked from a class or dictionary.
    bool isReference() const;
};

/// A cell's text, and writing it. A row that isn't there, since the layout failed before it, reads "" and takes
/// nothing.
std::string readCell(const platform::EntryGrid& fps1, int column, int row);
void writeCell(platform::EntryGrid& fps1, int column, int row, const std::string& text);

FieldRow fieldRow(const platform::EntryGrid& fps1, int row);

/// A category as the combo lists it: indented by its depth, with its code in brackets.
std::string categoryText(int depth, const std::string& name, const std::string& code);

}  // namespace orvenmod
