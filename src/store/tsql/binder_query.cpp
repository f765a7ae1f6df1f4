// Binds queries.
//
// The clauses are bound in the order in which they take effect, since each knows what came before it: where sees the
// sources, order by the select items as well.
//
//   select id+1 as n from t order by n      n is the first item:   ORDER BY 1
//   select id+1 as n from t where n=2       n is t's own column; without one it would be unknown, 207
//
// A query within another is bound with the outer one's scope as the parent of its own.
#include <algorithm>

#include "store/tsql/binder.h"
#include "store/tsql/error.h"
#include "store/tsql/lexer.h"
#include "store/tsql/sameexpression.h"
#include "store/tsql/typerules.h"

namespace orvenmod::store::tsql {

void Binder::bindQuery(Query& query, const Scope* parent) {
    if (query.op == SetOperator::none) {
        bindSelect(query, parent);
    } else {
        bindSetOperation(query, parent);
    }
}

void Binder::bindSelect(Query& query, const Scope* parent) {
    Select& select = *query.select;
    // A query starts afresh: in a where clause, where no aggregate may stand, a subquery may have its own.
    const int outerError = aggregateError_;
    bool* outerSeen = aggregateSeen_;
    aggregateSeen_ = &select.aggregates;
    aggregateError_ = kAggregateInWhere;
    Scope scope;
    bindSources(select.from, scope, parent);
    scope.parent = parent;
    if (select.where) {
        bindCondition(select.where, scope);
    }
    aggregateError_ = kAggregateInGroupBy;
    for (ExpressionPtr& expression : select.groupBy) {
        bindValue(expression, scope);
        if (expression->kind == ExpressionKind::literal) {
            throw Error(kGroupByConstant);
        }
    }
    aggregateError_ = 0;
    bindTop(select);
    expandStars(select, scope);
    for (SelectItem& item : select.items) {
        // What came out of a star is bound already.
        if (!item.expression->source) {
            bindValue(item.expression, scope);
        }
        ColumnInfo column;
        column.name = item.name;
        // A column of nothing but null is an int.
        column.type = item.expression->type.isNull() ? typeOf(Kind::integer) : item.expression->type;
        if (item.expression->type.isNull()) {
            item.expression->type = column.type;
        }
        query.columns.push_back(std::move(column));
    }
    if (select.having) {
        bindCondition(select.having, scope);
    }
    bindOrderBy(query, scope);
    checkGrouping(query);
    aggregateError_ = outerError;
    aggregateSeen_ = outerSeen;
}

void Binder::bindTop(Select& select) {
    if (!select.top) {
        return;
    }
    Scope empty;
    bindValue(select.top, empty);
    if (select.topPercent) {
        coerce(select.top, typeOf(Kind::floating));
    } else if (!select.top->type.isInteger()) {
        throw Error(kTopNotInteger);
    }
}

void Binder::bindSetOperation(Query& query, const Scope* parent) {
    bindQuery(*query.left, parent);
    bindQuery(*query.right, parent);
    if (query.left->columns.size() != query.right->columns.size()) {
        throw Error(kUnionColumns);
    }
    query.columns = query.left->columns;
    for (std::size_t i = 0; i < query.columns.size(); ++i) {
        const Type type = commonType(query.left->columns[i].type, query.right->columns[i].type);
        query.columns[i].type = type;
        // Down to the selects, so that the rows are equal or not as the common type has it.
        coerceColumn(*query.left, i, type);
        coerceColumn(*query.right, i, type);
    }
    bindSetOrderBy(query);
}

void Binder::coerceColumn(Query& query, std::size_t column, const Type& type) {
    query.columns[column].type = type;
    if (query.op == SetOperator::none) {
        coerce(query.select->items[column].expression, type);
    } else {
        coerceColumn(*query.left, column, type);
        coerceColumn(*query.right, column, type);
    }
}

void Binder::bindSources(std::vector<SourcePtr>& from, Scope& scope, const Scope* parent) {
    for (SourcePtr& source : from) {
        bindSource(*source, scope, parent);
    }
}

void Binder::bindSource(Source& source, Scope& scope, const Scope* parent) {
    if (source.kind == Source::Kind::join) {
        bindJoin(source, scope, parent);
        return;
    }
    if (source.kind == Source::Kind::table) {
        source.object = &findTable(source.name, kUnknownObject);
        source.columns = source.object->columns;
    } else {
        const Select* select = source.query->select.get();
        if (!source.query->orderBy.empty() && (select == nullptr || !select->top)) {
            throw Error(kOrderWithoutTop);
        }
        bindQuery(*source.query, parent);
        source.columns = source.query->columns;
        nameDerivedColumns(source);
    }
    addToScope(source, scope);
}

void Binder::bindJoin(Source& source, Scope& scope, const Scope* parent) {
    // The condition sees the two sides only, and no source that stands beside the join behind a comma.
    Scope inner;
    inner.parent = parent;
    bindSource(*source.left, inner, parent);
    bindSource(*source.right, inner, parent);
    if (source.on) {
        bindCondition(source.on, inner);
    }
    for (const Source* part : inner.sources) {
        for (const Source* other : scope.sources) {
            if (sameName(part->exposedName(), other->exposedName())) {
                throw Error(kAliasTwice, {part->exposedName()});
            }
        }
        scope.sources.push_back(part);
    }
}

void Binder::nameDerivedColumns(Source& source) {
    if (!source.columnAliases.empty()) {
        if (source.columnAliases.size() != source.columns.size()) {
            throw Error(
                source.columnAliases.size() < source.columns.size() ? kMoreColumnsThanNames : kFewerColumnsThanNames,
                {source.alias});
        }
        for (std::size_t i = 0; i < source.columns.size(); ++i) {
            source.columns[i].name = source.columnAliases[i];
        }
    }
    for (std::size_t i = 0; i < source.columns.size(); ++i) {
        const std::string& name = source.columns[i].name;
        if (name.empty()) {
            throw Error(kDerivedColumnUnnamed, {std::to_string(i + 1), source.alias});
        }
        for (std::size_t j = 0; j < i; ++j) {
            if (sameName(source.columns[j].name, name)) {
                throw Error(kDerivedColumnTwice, {name, source.alias});
            }
        }
    }
}

void Binder::addToScope(Source& source, Scope& scope) {
    source.id = nextId_++;
    for (const Source* other : scope.sources) {
        if (sameName(other->exposedName(), source.exposedName())) {
            throw Error(source.alias.empty() ? kExposedNameTwice : kAliasTwice, {source.exposedName()});
        }
    }
    scope.sources.push_back(&source);
}

void Binder::expandStars(Select& select, const Scope& scope) {
    std::vector<SelectItem> items;
    for (SelectItem& item : select.items) {
        if (item.expression) {
            items.push_back(std::move(item));
            continue;
        }
        bool found = false;
        for (const Source* source : scope.sources) {
            if (!item.qualifier.empty() && !sameName(item.qualifier, source->exposedName())) {
                continue;
            }
            found = true;
            for (std::size_t i = 0; i < source->columns.size(); ++i) {
                SelectItem& column = items.emplace_back();
                column.name = source->columns[i].name;
                column.expression = makeExpression(ExpressionKind::column);
                column.expression->name = column.name;
                column.expression->source = source;
                column.expression->column = static_cast<int>(i);
                column.expression->type = source->columns[i].type;
            }
        }
        if (!found) {
            throw item.qualifier.empty() ? Error(kNoTableForStar) : Error(kUnknownPrefix, {item.qualifier});
        }
    }
    select.items = std::move(items);
}

/// The select item that an order by names by number; -1 for an expression.
int Binder::ordinalOf(const Expression& expression, std::size_t count) {
    if (expression.kind != ExpressionKind::literal) {
        return -1;
    }
    const Literal& literal = literals_[static_cast<std::size_t>(expression.literal)];
    if (literal.kind != LiteralKind::integer) {
        throw Error(kConstantOrder, {});
    }
    // Another number names another item.
    fixed_.insert(expression.literal);
    const long ordinal = std::stol(std::string(literal.text));
    if (ordinal < 1 || ordinal > static_cast<long>(count)) {
        throw Error(kOrderPositionOutOfRange, {std::string(literal.text)});
    }
    return static_cast<int>(ordinal - 1);
}

/// The select item of that name; -1 for none.
int Binder::itemNamed(const Select& select, const Expression& expression) {
    if (expression.kind != ExpressionKind::column || !expression.qualifier.empty()) {
        return -1;
    }
    int found = -1;
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        if (!sameName(select.items[i].name, expression.name)) {
            continue;
        }
        // One name for two things is ambiguous, the same column listed twice is not.
        const bool other = found >= 0 && !sameExpression(*select.items[static_cast<std::size_t>(found)].expression,
                                                         *select.items[i].expression, literals_);
        if (other) {
            throw Error(kAmbiguousColumn, {expression.name});
        }
        found = found < 0 ? static_cast<int>(i) : found;
    }
    return found;
}

/// The select item that is the same expression; -1 for none.
int Binder::itemLike(const Select& select, const Expression& expression) {
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        if (sameExpression(*select.items[i].expression, expression, literals_)) {
            fixLiterals(*select.items[i].expression, expression);
            return static_cast<int>(i);
        }
    }
    return -1;
}

void Binder::bindOrderBy(Query& query, const Scope& scope) {
    Select& select = *query.select;
    for (OrderItem& order : query.orderBy) {
        order.item = ordinalOf(*order.expression, select.items.size());
        if (order.item < 0) {
            order.item = itemNamed(select, *order.expression);
        }
        if (order.item < 0) {
            bindValue(order.expression, scope);
            order.item = itemLike(select, *order.expression);
            // Which of the rows that distinct made one would give the value?
            if (order.item < 0 && select.distinct) {
                throw Error(kOrderNotInDistinct);
            }
        }
        const Type& type = order.item < 0 ? order.expression->type
                                          : select.items[static_cast<std::size_t>(order.item)].expression->type;
        if (type.kind == Kind::text || type.kind == Kind::ntext || type.kind == Kind::image) {
            throw Error(kLargeTypeCompared);
        }
        if (order.item >= 0) {
            order.expression.reset();
        }
    }
    if (select.topWithTies && query.orderBy.empty()) {
        throw Error(kTiesWithoutOrder);
    }
}

void Binder::bindSetOrderBy(Query& query) {
    for (OrderItem& order : query.orderBy) {
        order.item = ordinalOf(*order.expression, query.columns.size());
        if (order.item < 0 && order.expression->kind == ExpressionKind::column && order.expression->qualifier.empty()) {
            for (std::size_t i = 0; order.item < 0 && i < query.columns.size(); ++i) {
                if (sameName(query.columns[i].name, order.expression->name)) {
                    order.item = static_cast<int>(i);
                }
            }
            if (order.item < 0) {
                throw Error(kUnknownColumn, {order.expression->name});
            }
        }
        if (order.item < 0) {
            throw Error(kOrderNotInUnion);
        }
        order.expression.reset();
    }
}

}  // namespace orvenmod::store::tsql
