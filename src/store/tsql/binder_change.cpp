// Binds insert, update, delete and truncate.
//
// A value that goes into a column is assigned, which is more than converted: a text too long is refused with table and
// column instead of being cut. So the value notes the column that takes it, and a doubled key is told by these values.
//
//   insert into t(c) values('12345678901')    c varchar(10)
//
//   2628 ... table 't', column 'c'. Truncated value: '1234567890'.
#include <algorithm>

#include "store/tsql/binder.h"
#include "store/tsql/error.h"
#include "store/tsql/lexer.h"
#include "store/tsql/typerules.h"

namespace orvenmod::store::tsql {
namespace {

const ObjectInfo& requireTable(const ObjectInfo& object) {
    if (object.kind == ObjectInfo::Kind::view) {
        throw Error(kNotSupported, {"a change through the view " + object.name});
    }
    return object;
}

enum class Spelling { alias, tableName };

const Source* findLeaf(const Source& source, const std::string& target, Spelling spelling) {
    if (source.kind == Source::Kind::join) {
        const Source* left = findLeaf(*source.left, target, spelling);
        return left != nullptr ? left : findLeaf(*source.right, target, spelling);
    }
    const bool found = spelling == Spelling::alias
                           ? sameName(source.exposedName(), target)
                           : source.kind == Source::Kind::table && sameName(source.name, target);
    return found ? &source : nullptr;
}

}  // namespace

void Binder::assign(ExpressionPtr& value, const ObjectInfo& object, int column) {
    const Type& type = object.columns[static_cast<std::size_t>(column)].type;
    if (value->type.isNull()) {
        value->type = type;
        return;
    }
    if (value->type == type) {
        // A doubled key is told by the literals of its columns.
        if (value->kind == ExpressionKind::literal) {
            value->assigned = &object;
            value->assignedColumn = column;
        }
        return;
    }
    coerce(value, type);
    value->assigned = &object;
    value->assignedColumn = column;
}

void Binder::bindStatement(InsertStatement& statement) {
    statement.object = &requireTable(findTable(statement.table, kUnknownObject));
    bindInsertColumns(statement);
    if (statement.query) {
        bindInsertQuery(statement);
    } else if (!statement.defaultValues) {
        bindInsertRows(statement);
    }
}

void Binder::bindInsertColumns(InsertStatement& statement) {
    const ObjectInfo& object = *statement.object;
    for (const std::string& name : statement.columns) {
        const int position = columnOf(object, name);
        if (position < 0) {
            throw Error(kUnknownColumn, {name});
        }
        if (std::find(statement.positions.begin(), statement.positions.end(), position) != statement.positions.end()) {
            throw Error(kColumnAssignedTwice, {name});
        }
        if (object.columns[static_cast<std::size_t>(position)].identity) {
            throw Error(kIdentityInserted, {object.name});
        }
        statement.positions.push_back(position);
    }
    // Without a list the values are those of all columns but the one that the store numbers.
    for (std::size_t i = 0; statement.columns.empty() && i < object.columns.size(); ++i) {
        if (!object.columns[i].identity) {
            statement.positions.push_back(static_cast<int>(i));
        }
    }
}

void Binder::bindInsertRows(InsertStatement& statement) {
    const Scope none;
    aggregateError_ = kAggregateInWhere;
    for (std::vector<ExpressionPtr>& row : statement.rows) {
        if (row.size() != statement.rows[0].size()) {
            throw Error(kRowsOfUnequalLength);
        }
        if (row.size() != statement.positions.size()) {
            const FailureNumber listed =
                row.size() < statement.positions.size() ? kFewerValuesThanColumns : kMoreValuesThanColumns;
            throw Error(statement.columns.empty() ? kInsertColumns : listed);
        }
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (row[i]) {
                bindValue(row[i], none);
                assign(row[i], *statement.object, statement.positions[i]);
            }
        }
    }
    // The word default: the column is left out where every row has it.
    for (std::size_t i = statement.positions.size(); i-- > 0;) {
        const auto isDefault = [i](const std::vector<ExpressionPtr>& row) { return row[i] == nullptr; };
        const auto count = std::count_if(statement.rows.begin(), statement.rows.end(), isDefault);
        const ColumnInfo& column = statement.object->columns[static_cast<std::size_t>(statement.positions[i])];
        if (count == static_cast<long>(statement.rows.size())) {
            statement.positions.erase(statement.positions.begin() + static_cast<long>(i));
            for (std::vector<ExpressionPtr>& row : statement.rows) {
                row.erase(row.begin() + static_cast<long>(i));
            }
        } else if (count > 0 && column.hasDefault) {
            throw Error(kNotSupported, {"default in some of several rows"});
        } else if (count > 0) {
            for (std::vector<ExpressionPtr>& row : statement.rows) {
                row[i] = row[i] ? std::move(row[i]) : makeExpression(ExpressionKind::null);
            }
        }
    }
    statement.defaultValues = statement.positions.empty();
}

void Binder::bindInsertQuery(InsertStatement& statement) {
    Query& query = *statement.query;
    bindQuery(query, nullptr);
    if (query.columns.size() != statement.positions.size()) {
        const FailureNumber listed =
            query.columns.size() < statement.positions.size() ? kInsertSelectsFewer : kInsertSelectsMore;
        throw Error(statement.columns.empty() ? kInsertColumns : listed);
    }
    if (!query.select || query.select->distinct || query.select->topWithTies || query.select->topPercent) {
        wrap(statement.query);
    }
    for (std::size_t i = 0; i < statement.positions.size(); ++i) {
        assign(statement.query->select->items[i].expression, *statement.object, statement.positions[i]);
    }
}

/// Makes a query the only source of a plain select, so that conversions stand over the rows that a union or
/// distinct has made. Put into its items, they would come first: rows that differ only by what a conversion cuts would
/// be one.
void Binder::wrap(QueryPtr& query) {
    auto outer = std::make_unique<Query>();
    outer->select = std::make_unique<Select>();
    auto source = std::make_unique<Source>();
    source->kind = Source::Kind::derived;
    source->alias = "rows";
    source->id = nextId_++;
    for (std::size_t i = 0; i < query->columns.size(); ++i) {
        ColumnInfo column = query->columns[i];
        column.name = "c" + std::to_string(i + 1);
        source->columns.push_back(column);
        SelectItem& item = outer->select->items.emplace_back();
        item.name = column.name;
        item.expression = makeExpression(ExpressionKind::column);
        item.expression->name = column.name;
        item.expression->source = source.get();
        item.expression->column = static_cast<int>(i);
        item.expression->type = column.type;
    }
    outer->columns = source->columns;
    source->query = std::move(query);
    outer->select->from.push_back(std::move(source));
    query = std::move(outer);
}

const Source* Binder::bindTarget(const std::string& target, std::vector<SourcePtr>& from, Scope& scope) {
    const Source* changed = nullptr;
    // "update i set .. from tblItem i": an alias of the clause means more than a table of that name.
    for (const Spelling spelling : {Spelling::alias, Spelling::tableName}) {
        for (const SourcePtr& source : from) {
            changed = changed != nullptr ? changed : findLeaf(*source, target, spelling);
        }
    }
    // A target that the clause doesn't name is joined to it without a condition.
    if (changed == nullptr) {
        if (catalog_.find(target) == nullptr) {
            throw Error(kUnknownObject, {target});
        }
        auto source = std::make_unique<Source>();
        source->name = target;
        changed = from.emplace_back(std::move(source)).get();
    }
    bindSources(from, scope, nullptr);
    if (changed->object == nullptr) {
        throw Error(kNotSupported, {"a change of a derived table"});
    }
    requireTable(*changed->object);
    return changed;
}

void Binder::bindStatement(UpdateStatement& statement) {
    Scope scope;
    aggregateError_ = kAggregateInSet;
    statement.changed = bindTarget(statement.target, statement.from, scope);
    const ObjectInfo& object = *statement.changed->object;
    std::set<int> assigned;
    for (Assignment& assignment : statement.assignments) {
        assignment.position = columnOf(object, assignment.column);
        if (assignment.position < 0) {
            throw Error(kUnknownColumn, {assignment.column});
        }
        if (!assigned.insert(assignment.position).second) {
            throw Error(kColumnAssignedTwice, {assignment.column});
        }
        const ColumnInfo& column = object.columns[static_cast<std::size_t>(assignment.position)];
        if (column.identity) {
            throw Error(kIdentityUpdated, {column.name});
        }
        if (!assignment.value) {
            if (column.hasDefault) {
                throw Error(kNotSupported, {"set to default"});
            }
            assignment.value = makeExpression(ExpressionKind::null);
        }
        bindValue(assignment.value, scope);
        assign(assignment.value, object, assignment.position);
    }
    aggregateError_ = kAggregateInWhere;
    if (statement.where) {
        bindCondition(statement.where, scope);
    }
    if (statement.top) {
        bindValue(statement.top, Scope());
    }
}

void Binder::bindStatement(DeleteStatement& statement) {
    Scope scope;
    aggregateError_ = kAggregateInWhere;
    statement.changed = bindTarget(statement.target, statement.from, scope);
    if (statement.where) {
        bindCondition(statement.where, scope);
    }
    if (statement.top) {
        bindValue(statement.top, Scope());
    }
}

void Binder::bindStatement(TruncateStatement& statement) {
    const ObjectInfo& object = findTable(statement.table, kTruncateUnknownTable);
    if (object.kind == ObjectInfo::Kind::view) {
        throw Error(kTruncateNoTable, {object.name});
    }
    statement.table = object.name;
}

}  // namespace orvenmod::store::tsql
