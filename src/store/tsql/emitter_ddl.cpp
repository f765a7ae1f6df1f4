// What the definitions of all targets have in common: the columns as a catalog would tell them, keys and their names.
// A target without the dialect's names of constraints keeps them in the names of indexes (runtime.h).
#include <algorithm>

#include "store/tsql/emitter.h"
#include "store/tsql/lexer.h"
#include "store/tsql/runtime.h"

namespace orvenmod::store::tsql {

const ColumnInfo* findColumn(const std::vector<ColumnInfo>& columns, const std::string& name) {
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const ColumnInfo& column) { return sameName(column.name, name); });
    return found == columns.end() ? nullptr : &*found;
}

ColumnInfo infoOf(const ColumnDefinition& definition) {
    return {.name = definition.name,
            .type = definition.type,
            .nullable = !definition.notNull,
            .identity = definition.identity,
            .declaredType = definition.declaredType};
}

std::vector<ColumnInfo> infoOf(const std::vector<ColumnDefinition>& definitions) {
    std::vector<ColumnInfo> columns;
    for (const ColumnDefinition& definition : definitions)
        columns.push_back(infoOf(definition));
    return columns;
}

bool isPrimary(const std::vector<KeyConstraint>& keys, const std::string& name) {
    return std::any_of(keys.begin(), keys.end(), [&](const KeyConstraint& key) {
        return key.primary && std::any_of(key.columns.begin(), key.columns.end(),
                                          [&](const IndexColumn& part) { return sameName(part.name, name); });
    });
}

std::string keyName(const std::string& table, const KeyConstraint& key) {
    return key.name.empty() ? (key.primary ? "PK__" : "UQ__") + table + "__" + key.columns[0].name : key.name;
}

std::string keptKeyName(const std::string& table, const KeyConstraint& key) {
    return table + std::string(key.primary ? kPrimaryKeyInfix : kUniqueInfix) + keyName(table, key);
}

std::string itemIdIndex(const CreateTableStatement& statement, const std::vector<ColumnInfo>& columns) {
    const ColumnInfo* itemId = findColumn(columns, std::string(kItemId));
    const bool wanted = statement.keys.empty() && itemId != nullptr && !itemId->identity;
    return wanted ? statement.name + ".orven." + itemId->name : "";
}

}  // namespace orvenmod::store::tsql
