#include "store/schema.h"

#include <string>

#include "store/schemaparts.h"
#include "store/transaction.h"
#include "store/upgrade.h"

namespace orvenmod::store {
namespace {

std::string createTable(const SchemaTable& table) {
    std::string text = "create table " + std::string(table.name) + "(";
    for (const SchemaColumn& column : table.columns) {
        text += std::string(column.name) + " " + std::string(column.type) + (column.notNull ? " not null" : "") + ",";
    }
    if (table.primaryKey.empty()) {
        text.back() = ')';
        return text;
    }
    return text + "primary key (" + std::string(table.primaryKey) + "))";
}

void createIndexes(Connection& connection, const SchemaTable& table) {
    int number = 0;
    for (const SchemaIndex& index : table.indexes) {
        const std::string name = "ix_" + std::string(table.name) + "_" + std::to_string(++number);
        connection.execute(std::string(index.unique ? "create unique index " : "create index ") + name + " on " +
                           std::string(table.name) + "(" + std::string(index.columns) + ")" +
                           (index.included.empty() ? "" : " include (" + std::string(index.included) + ")"));
    }
}

void createAll(Connection& connection) {
    for (const SchemaTable& table : schemaTables()) {
        connection.execute(createTable(table));
        createIndexes(connection, table);
    }
    for (const FixedClass& fixed : fixedClasses()) {
        for (const std::string& row : fixedClassRows(fixed)) {
            connection.execute(row);
        }
    }
    for (const auto& rows : {dictionaryRightRows(), stockViewRows()}) {
        for (const std::string& row : rows) {
            connection.execute(row);
        }
    }
    for (const SchemaView& view : schemaViews()) {
        connection.execute(view.text);
    }
    connection.execute(versionRow(newestSchemaVersion()));
}

}  // namespace

const std::vector<SchemaTable>& schemaTables() {
    static const std::vector<SchemaTable> kTables = [] {
        std::vector<SchemaTable> tables = ownTables();
        const std::vector<SchemaTable> suite = suiteTables();
        tables.insert(tables.end(), suite.begin(), suite.end());
        return tables;
    }();
    return kTables;
}

const std::vector<SchemaView>& schemaViews() {
    static const std::vector<std::pair<std::string, std::string>> kTexts = [] {
        std::vector<std::pair<std::string, std::string>> texts;
        for (const FixedClass& fixed : fixedClasses()) {
            texts.emplace_back("v" + std::string(fixed.table), fixedClassView(fixed));
        }
        texts.emplace_back("vTimeStock", stockView());
        return texts;
    }();
    static const std::vector<SchemaView> kViews([] {
        std::vector<SchemaView> views;
        views.reserve(kTexts.size());
        for (const auto& [name, text] : kTexts) {
            views.push_back({name, text});
        }
        return views;
    }());
    return kViews;
}

void createSchema(Connection& connection) {
    transact(connection, [&] { createAll(connection); });
}

}  // namespace orvenmod::store
