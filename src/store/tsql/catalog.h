// What the binder asks of a database: its tables and views by name. Implemented by a store over its own system
// tables, and by tests.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/tsql/type.h"

namespace orvenmod::store::tsql {

struct ColumnInfo {
    std::string name;  ///< as declared
    Type type;
    bool nullable = true;
    bool identity = false;
    bool hasDefault = false;
    std::string declaredType;     ///< as written, for rebuilding the table
    std::string nativeName = {};  ///< as the target has it, where that doesn't follow from the name
};

/// An index in which the longest and the greatest text of a column are found among the rows that have some columns in
/// common; see emitter_codes.cpp.
struct CodeIndex {
    std::vector<std::string> within;  ///< the columns in common, as the target has them
    std::string code;                 ///< the text's
};

struct ObjectInfo {
    enum class Kind { table, view };

    Kind kind = Kind::table;
    std::string name;  ///< as declared, without an owner
    std::vector<ColumnInfo> columns;
    std::vector<std::string> indexes;        ///< tables: the names of its indexes as the store keeps them
    std::vector<std::string> rowOrder = {};  ///< tables: native columns by which rows come where no order is asked for
    std::string nativeName = {};             ///< as the target has it, where that doesn't follow from the name
    std::vector<CodeIndex> codeIndexes = {};
};

/// A view's text in the dialect, and its query as the target keeps it; both empty for a view that was not made here.
struct ViewDefinition {
    std::string text;
    std::string native;
};

class Catalog {
public:
    virtual ~Catalog() = default;

    /// The table or view of that name (without "dbo."), ASCII letters without regard to case; null where there is
    /// none. It stays valid until the next change of the schema.
    virtual const ObjectInfo* find(std::string_view name) const = 0;

    /// Whether no two rows of the table have one value in the column, as it is kept. A store that can't say says no.
    virtual bool isKey(const ObjectInfo&, std::string_view /*column*/) const { return false; }
    /// Whether an index by the text's equality form has the other column too. A store that can't say says no.
    virtual bool isCarried(const ObjectInfo&, std::string_view /*text*/, std::string_view /*column*/) const {
        return false;
    }
    virtual ViewDefinition viewDefinition(const ObjectInfo&) const { return {}; }
};

}  // namespace orvenmod::store::tsql
