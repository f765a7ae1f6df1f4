// Binds definitions.
//
// A check's condition names columns of a table that no catalog has yet. The definition is made a source itself, to
// which the condition is bound as a where clause is to its table; a default is bound to nothing, since it has no row.
//
//   create table k(a int, b int check (b>a))      a, b: columns of the source made for k
//
// Nothing here is shared, so that a text literal has its own length: in a view it is the type of a column.
#include <algorithm>

#include "store/tsql/binder.h"
#include "store/tsql/error.h"
#include "store/tsql/lexer.h"
#include "store/tsql/runtime.h"

namespace orvenmod::store::tsql {
namespace {

bool hasColumn(const std::vector<ColumnDefinition>& columns, const std::string& name) {
    return std::any_of(columns.begin(), columns.end(),
                       [&](const ColumnDefinition& column) { return sameName(column.name, name); });
}

const char* kindWord(ObjectInfo::Kind kind) { return kind == ObjectInfo::Kind::table ? "table" : "view"; }

}  // namespace

/// A default stands without a table: constants and functions only.
void Binder::bindDefinition(ColumnDefinition& column) {
    if (!column.defaultValue) {
        return;
    }
    const Scope none;
    aggregateError_ = kAggregateInWhere;
    bindValue(column.defaultValue, none);
    coerce(column.defaultValue, column.type);
}

void Binder::bindStatement(CreateTableStatement& statement) {
    useExactLengths();
    if (catalog_.find(statement.name) != nullptr) {
        throw Error(kObjectExists, {statement.name});
    }
    auto source = std::make_unique<Source>();
    source->name = statement.name;
    for (std::size_t i = 0; i < statement.columns.size(); ++i) {
        ColumnDefinition& column = statement.columns[i];
        for (std::size_t j = 0; j < i; ++j) {
            if (sameName(statement.columns[j].name, column.name)) {
                throw Error(kColumnExists, {column.name, statement.name});
            }
        }
        bindDefinition(column);
        source->columns.push_back({.name = column.name,
                                   .type = column.type,
                                   .nullable = !column.notNull,
                                   .identity = column.identity,
                                   .declaredType = {}});
    }
    bool primary = false;
    for (const KeyConstraint& key : statement.keys) {
        for (const IndexColumn& column : key.columns) {
            if (!hasColumn(statement.columns, column.name)) {
                throw Error(kUnknownIndexColumn, {column.name, statement.name});
            }
        }
        if (key.primary && primary) {
            throw Error(kTwoPrimaryKeys, {statement.name});
        }
        primary = primary || key.primary;
    }
    Scope scope;
    scope.sources.push_back(source.get());
    for (CheckConstraint& check : statement.checks) {
        bindCondition(check.condition, scope);
    }
    // The tree points into it until it is emitted.
    pseudoSources_.push_back(std::move(source));
}

void Binder::bindStatement(AlterTableStatement& statement) {
    useExactLengths();
    const ObjectInfo& object = findTable(statement.name, kAlterUnknownTable);
    if (object.kind == ObjectInfo::Kind::view) {
        throw Error(kAlterUnknownTable, {statement.name});
    }
    statement.object = &object;
    for (std::size_t i = 0; i < statement.columns.size(); ++i) {
        ColumnDefinition& column = statement.columns[i];
        const auto before = statement.columns.begin() + static_cast<long>(i);
        const bool doubled = std::any_of(statement.columns.begin(), before, [&](const ColumnDefinition& other) {
            return sameName(other.name, column.name);
        });
        if (doubled || columnOf(object, column.name) >= 0) {
            throw Error(kColumnExists, {column.name, object.name});
        }
        if (column.notNull && !column.defaultValue) {
            throw Error(kAddedColumnNotNull, {column.name, object.name});
        }
        if (column.identity) {
            throw Error(kNotSupported, {"alter table add identity"});
        }
        bindDefinition(column);
    }
    for (const KeyConstraint& key : statement.keys) {
        for (const IndexColumn& column : key.columns) {
            if (columnOf(object, column.name) < 0 && !hasColumn(statement.columns, column.name)) {
                throw Error(kUnknownIndexColumn, {column.name, object.name});
            }
        }
    }
    for (const std::string& name : statement.dropColumns) {
        if (columnOf(object, name) < 0) {
            throw Error(kDropUnknownColumn, {"DROP COLUMN", name, object.name});
        }
        if (object.columns.size() <= statement.dropColumns.size()) {
            throw Error(kOnlyColumn, {name, object.name});
        }
    }
}

void Binder::bindStatement(CreateIndexStatement& statement) {
    const ObjectInfo& object = findTable(statement.table, kIndexOfUnknownTable);
    if (object.kind == ObjectInfo::Kind::view) {
        throw Error(kNotSupported, {"an index on a view"});
    }
    statement.object = &object;
    for (const auto* columns : {&statement.columns, &statement.included}) {
        for (const IndexColumn& column : *columns) {
            const int position = columnOf(object, column.name);
            if (position < 0) {
                throw Error(kUnknownIndexColumn, {column.name, object.name});
            }
            const Type& type = object.columns[static_cast<std::size_t>(position)].type;
            if (type.kind == Kind::text || type.kind == Kind::ntext || type.kind == Kind::image) {
                throw Error(kIndexColumnType, {column.name, object.name});
            }
        }
    }
    // A server has the name of an index within its table, SQLite within the database: the table's goes in front.
    for (const std::string& index : object.indexes) {
        if (sameName(index, object.name + "." + statement.name)) {
            throw Error(kIndexExists, {statement.name, object.name});
        }
    }
}

void Binder::bindStatement(CreateViewStatement& statement) {
    useExactLengths();
    const ObjectInfo* existing = catalog_.find(statement.name);
    // Tables and views share their names.
    if (statement.alter && existing == nullptr) {
        throw Error(kUnknownObject, {statement.name});
    }
    if (existing != nullptr && (!statement.alter || existing->kind == ObjectInfo::Kind::table)) {
        throw Error(kObjectExists, {statement.name});
    }
    bindView(statement);
}

void Binder::bindView(CreateViewStatement& statement) {
    useExactLengths();
    Query& query = *statement.query;
    if (!query.orderBy.empty() && !(query.select && query.select->top)) {
        throw Error(kOrderWithoutTop);
    }
    if (query.select && !query.select->into.empty()) {
        throw Error(kSyntaxNearKeyword, {"into"});
    }
    bindQuery(query, nullptr);
    if (!statement.columnAliases.empty()) {
        if (statement.columnAliases.size() != query.columns.size()) {
            throw Error(
                statement.columnAliases.size() < query.columns.size() ? kMoreColumnsThanNames : kFewerColumnsThanNames,
                {statement.name});
        }
        for (std::size_t i = 0; i < query.columns.size(); ++i) {
            query.columns[i].name = statement.columnAliases[i];
        }
    }
    for (std::size_t i = 0; i < query.columns.size(); ++i) {
        const std::string& name = query.columns[i].name;
        if (name.empty()) {
            throw Error(kViewColumnUnnamed, {std::to_string(i + 1), statement.name});
        }
        for (std::size_t j = 0; j < i; ++j) {
            if (sameName(query.columns[j].name, name)) {
                throw Error(kViewColumnTwice, {name, statement.name});
            }
        }
    }
}

void Binder::bindStatement(DropStatement& statement) {
    std::vector<DropName> existing;
    for (DropName& name : statement.names) {
        const bool index = statement.kind == DropStatement::Kind::index;
        const ObjectInfo* object = catalog_.find(index ? name.table : name.name);
        const std::string full = index ? name.table + "." + name.name : name.name;
        bool found = object != nullptr;
        if (object != nullptr && index) {
            const std::string stored = object->name + "." + name.name;
            found = std::any_of(object->indexes.begin(), object->indexes.end(),
                                [&](const std::string& other) { return sameName(other, stored); });
            name.table = object->name;
        }
        const char* word = index ? "index" : statement.kind == DropStatement::Kind::table ? "table" : "view";
        if (!found && !statement.ifExists) {
            throw Error(kCannotDrop, {"drop", word, full});
        }
        if (found && !index &&
            (object->kind == ObjectInfo::Kind::table) != (statement.kind == DropStatement::Kind::table)) {
            throw Error(kDropOfOtherKind, {statement.kind == DropStatement::Kind::table ? "DROP TABLE" : "DROP VIEW",
                                           full, kindWord(object->kind)});
        }
        if (found) {
            if (!index) {
                name.name = object->name;
            }
            existing.push_back(std::move(name));
        }
    }
    // What "if exists" let pass is not there to be dropped.
    statement.names = std::move(existing);
}

}  // namespace orvenmod::store::tsql
