#include "store/copy/definitiontexts.h"

#include "store/bracketed.h"

namespace orvenmod::store {

namespace {

/// The items' texts with commas between.
template <typename Items, typename Text>
std::string listed(const Items& items, Text text) {
    std::string list;
    for (const auto& item : items)
        list += (list.empty() ? "" : ",") + text(item);
    return list;
}

std::string constraintName(const std::string& name) {
    return name.empty() ? std::string() : "constraint " + bracketed(name) + " ";
}

std::string keyParts(const std::vector<KeyPart>& parts) {
    const auto text = [](const KeyPart& part) { return bracketed(part.column) + (part.descending ? " desc" : ""); };
    return "(" + listed(parts, text) + ")";
}

std::string columnText(const TableOutline& table, const ColumnOutline& column) {
    std::string text = bracketed(column.name) + " " + column.type;
    if (column.identity) text += " identity(" + std::to_string(table.nextIdentity) + ",1)";
    text += column.nullable && !column.identity ? " null" : " not null";
    return column.defaultValue ? text + " default " + *column.defaultValue : text;
}

}  // namespace

std::string createTableText(const TableOutline& table) {
    std::string text = listed(table.columns, [&](const ColumnOutline& column) { return columnText(table, column); });
    for (const KeyOutline& key : table.keys) {
        text += "," + constraintName(key.name) + (key.primary ? "primary key" : "unique") + keyParts(key.columns);
    }
    for (const CheckOutline& check : table.checks)
        text += "," + constraintName(check.name) + "check(" + check.condition + ")";
    return "create table " + bracketed(table.name) + "(" + text + ")";
}

std::string createIndexText(const TableOutline& table, const IndexOutline& index) {
    std::string text = std::string("create ") + (index.unique ? "unique " : "") + "index " + bracketed(index.name) +
                       " on " + bracketed(table.name) + keyParts(index.columns);
    if (!index.included.empty()) text += " include(" + listed(index.included, bracketed) + ")";
    return text;
}

std::string selectText(const TableOutline& table) {
    const auto name = [](const ColumnOutline& column) { return bracketed(column.name); };
    return "select " + listed(table.columns, name) + " from " + bracketed(table.name);
}

}  // namespace orvenmod::store
