// The statements that make an item class, to the blank. Typed values enter them as they stand.
//
// A class is a row of tblItemClass, a table, a skeleton of its view, three base fields, the rows of its list, its
// search bar and its description, filed under the class's list type, and eleven rights: the group, and ten in it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orvenmod {

/// What the user typed, trimmed.
struct NewClass {
    std::string id;
    std::string name;
    std::string table;
};

/// Finds a class that has the id, the name or the table already.
std::string duplicateQuery(const NewClass& made);

/// The class's row, its table, its base fields, the count of names given out, its view.
std::vector<std::string> classStatements(const NewClass& made);

/// The rows that drive lists, searches, reports and rights. `id` is the typed one as a number.
std::vector<std::string> classRows(const NewClass& made, std::int32_t id);

}  // namespace orvenmod
