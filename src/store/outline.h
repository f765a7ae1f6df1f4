// What a database holds, as the dialect would declare it: plain values that every store can tell of itself, and from
// which any other can be made alike.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvenmod::store {

struct ColumnOutline {
    std::string name;
    std::string type;  ///< as the dialect declares it, "varchar(30)"
    bool nullable = true;
    bool identity = false;
    std::optional<std::string> defaultValue = {};  ///< an expression of the dialect
};

struct KeyPart {
    std::string column;
    bool descending = false;
};

struct KeyOutline {
    std::string name;  ///< "" for none of its own
    bool primary = false;
    std::vector<KeyPart> columns;
};

struct CheckOutline {
    std::string name;       ///< "" for none of its own
    std::string condition;  ///< in the dialect
};

struct IndexOutline {
    std::string name;  ///< within its table
    bool unique = false;
    std::vector<KeyPart> columns;
    std::vector<std::string> included = {};
};

struct TableOutline {
    std::string name;
    std::vector<ColumnOutline> columns;
    std::vector<KeyOutline> keys;
    std::vector<CheckOutline> checks;
    std::vector<IndexOutline> indexes;
    std::int64_t nextIdentity = 1;  ///< that the identity column gives to the next row
};

struct ViewOutline {
    std::string name;
    std::string text;  ///< the whole "create view" statement
};

struct Outline {
    std::vector<TableOutline> tables;
    std::vector<ViewOutline> views;  ///< in the order in which they were made, where the store knows it
    /// What the dialect has no word for here, "trigger tr": it takes no part.
    std::vector<std::string> others;
};

}  // namespace orvenmod::store
