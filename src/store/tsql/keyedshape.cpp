#include "store/tsql/keyedshape.h"

#include <algorithm>

#include "store/tsql/emitter.h"
#include "store/tsql/lexer.h"

namespace orvenmod::store::tsql {
namespace {

bool holdsQuery(const Expression& expression) {
    return expression.query ||
           std::any_of(expression.operands.begin(), expression.operands.end(),
                       [](const ExpressionPtr& operand) { return operand && holdsQuery(*operand); });
}

bool isBareSelect(const Query& query) {
    if (!query.select) return false;
    const Select& select = *query.select;
    return !select.distinct && !select.top && select.into.empty() && select.groupBy.empty() && !select.having &&
           !select.aggregates && select.from.size() == 1;
}

/// A literal, also one that takes another type.
const Expression* literalWithin(const Expression& expression) {
    if (expression.kind == ExpressionKind::literal) return &expression;
    const bool converted = expression.kind == ExpressionKind::conversion;
    return converted && expression.operands[0]->kind == ExpressionKind::literal ? expression.operands[0].get()
                                                                                : nullptr;
}

bool isReplacedNull(const Expression& expression) {
    return expression.kind == ExpressionKind::function && expression.name == "isnull" &&
           expression.operands[0]->kind == ExpressionKind::column && literalWithin(*expression.operands[1]) != nullptr;
}

bool isPlainValue(const Expression& expression) {
    return expression.kind == ExpressionKind::column || expression.kind == ExpressionKind::null ||
           literalWithin(expression) != nullptr || isReplacedNull(expression);
}

/// Whether the condition lets at most one row of the table through.
bool findsOne(const Expression& on, const Source& table, const Catalog& catalog) {
    if (on.kind == ExpressionKind::logical && on.op == Operator::logicalAnd) {
        return findsOne(*on.operands[0], table, catalog) || findsOne(*on.operands[1], table, catalog);
    }
    if (on.kind != ExpressionKind::comparison || on.op != Operator::equal) return false;
    const Expression* left = on.operands[0].get();
    const Expression* right = on.operands[1].get();
    if (left->source != &table) std::swap(left, right);
    // Only of whole numbers the same value is the same key: texts have equal ones, and other programs' decimals.
    return left->kind == ExpressionKind::column && right->kind == ExpressionKind::column && left->source == &table &&
           right->source != &table && left->type.isInteger() && right->type.isInteger() &&
           catalog.isKey(*table.object, table.columns[static_cast<std::size_t>(left->column)].name);
}

bool isTable(const Source& source) {
    return source.kind == Source::Kind::table && source.object->kind == ObjectInfo::Kind::table;
}

bool joinsByKeys(const Source& source, const Catalog& catalog) {
    if (source.kind != Source::Kind::join) return isTable(source);
    return source.join == JoinKind::left && isTable(*source.right) && !holdsQuery(*source.on) &&
           findsOne(*source.on, *source.right, catalog) && joinsByKeys(*source.left, catalog);
}

void takeColumns(const Expression& expression, std::set<int>& columns) {
    if (expression.kind == ExpressionKind::column) columns.insert(expression.column);
    for (const ExpressionPtr& operand : expression.operands) {
        if (operand) takeColumns(*operand, columns);
    }
}

void takeTables(const Expression& expression, std::set<const Source*>& tables) {
    if (expression.kind == ExpressionKind::column) tables.insert(expression.source);
    for (const ExpressionPtr& operand : expression.operands) {
        if (operand) takeTables(*operand, tables);
    }
}

/// The value of the view for a column of the list.
const Expression& valueIn(const Query& view, const Expression& column) {
    return *view.select->items[static_cast<std::size_t>(column.column)].expression;
}

/// Whether no row passes for which a joined table has none: a null is like nothing.
bool asksForARow(const Expression& condition, const Query& view) {
    if (condition.kind == ExpressionKind::logical && condition.op == Operator::logicalAnd) {
        return asksForARow(*condition.operands[0], view) || asksForARow(*condition.operands[1], view);
    }
    return condition.kind == ExpressionKind::like && !condition.negated &&
           condition.operands[0]->kind == ExpressionKind::column &&
           valueIn(view, *condition.operands[0]).kind == ExpressionKind::column;
}

const Expression* conditionOfJoin(const Source& from, const Source& table) {
    if (from.kind != Source::Kind::join) return nullptr;
    return from.right.get() == &table ? from.on.get() : conditionOfJoin(*from.left, table);
}

const Expression& orderKey(const Query& query, const OrderItem& order) {
    return order.item < 0 ? *order.expression : *query.select->items[static_cast<std::size_t>(order.item)].expression;
}

}  // namespace

bool isListOfColumns(const Query& query) {
    if (!isBareSelect(query) || query.orderBy.empty()) return false;
    const Select& select = *query.select;
    return select.from[0]->kind == Source::Kind::table && !(select.where && holdsQuery(*select.where)) &&
           std::all_of(select.items.begin(), select.items.end(),
                       [](const SelectItem& item) { return item.expression->kind == ExpressionKind::column; }) &&
           std::none_of(query.orderBy.begin(), query.orderBy.end(),
                        [&](const OrderItem& order) { return holdsQuery(orderKey(query, order)); });
}

bool isViewByKeys(const Query& view, const Catalog& catalog) {
    if (!isBareSelect(view) || view.select->where || !view.orderBy.empty()) return false;
    const Select& select = *view.select;
    return joinsByKeys(*select.from[0], catalog) &&
           std::all_of(select.items.begin(), select.items.end(),
                       [](const SelectItem& item) { return isPlainValue(*item.expression); });
}

const Source& drivingTable(const Source& source) {
    return source.kind == Source::Kind::join ? drivingTable(*source.left) : source;
}

bool hasRowKey(const Source& table) {
    return isTable(table) && std::none_of(table.columns.begin(), table.columns.end(),
                                          [](const ColumnInfo& column) { return sameName(column.name, "rowid"); });
}

std::set<int> columnsNamed(const Query& query, Clauses clauses) {
    std::set<int> columns;
    if (clauses == Clauses::items) {
        for (const SelectItem& item : query.select->items)
            takeColumns(*item.expression, columns);
        return columns;
    }
    if (query.select->where) takeColumns(*query.select->where, columns);
    if (clauses == Clauses::condition) return columns;
    for (const OrderItem& order : query.orderBy)
        takeColumns(orderKey(query, order), columns);
    return columns;
}

std::set<const Source*> tablesNeeded(const Query& view, const std::set<int>& columns) {
    std::set<const Source*> tables;
    for (const int column : columns)
        takeTables(*view.select->items[static_cast<std::size_t>(column)].expression, tables);
    // The last join first: its condition may need tables of those before it.
    for (const Source* at = view.select->from[0].get(); at->kind == Source::Kind::join; at = at->left.get()) {
        if (tables.contains(at->right.get())) takeTables(*at->on, tables);
    }
    return tables;
}

const Expression* columnOfOrder(const Query& list, const Query& view, const std::vector<Literal>& viewLiterals) {
    if (list.orderBy.size() != 1) return nullptr;
    const Expression& key = orderKey(list, list.orderBy[0]);
    if (list.orderBy[0].descending || key.kind != ExpressionKind::column || !key.type.isText()) return nullptr;
    const Expression& value = *view.select->items[static_cast<std::size_t>(key.column)].expression;
    if (!isReplacedNull(value)) return nullptr;
    const Expression& column = *value.operands[0];
    const Expression& replacement = *literalWithin(*value.operands[1]);
    const bool driving = column.source == &drivingTable(*view.select->from[0]);
    return driving && viewLiterals[static_cast<std::size_t>(replacement.literal)].text.empty() ? &column : nullptr;
}

std::optional<Partner> partnerOf(const Query& list, const Query& view) {
    const Expression* where = list.select->where.get();
    if (where == nullptr || !asksForARow(*where, view)) return std::nullopt;
    std::set<int> columns;
    takeColumns(*where, columns);
    std::set<const Source*> tables;
    for (const int column : columns)
        takeTables(*view.select->items[static_cast<std::size_t>(column)].expression, tables);
    const Source& from = *view.select->from[0];
    const Expression* on = tables.size() == 1 ? conditionOfJoin(from, **tables.begin()) : nullptr;
    if (on == nullptr || on->kind != ExpressionKind::comparison) return std::nullopt;
    const Expression* key = on->operands[0].get();
    const Expression* reference = on->operands[1].get();
    if (key->source != *tables.begin()) std::swap(key, reference);
    if (reference->source != &drivingTable(from)) return std::nullopt;
    return Partner{*tables.begin(), key, reference};
}

ConditionOn conditionOn(const Query& list, const Query& view) {
    const Expression* where = list.select->where.get();
    if (where == nullptr || isConstantExpression(*where)) return ConditionOn::nothing;
    std::set<int> columns;
    takeColumns(*where, columns);
    std::set<const Source*> tables;
    for (const int column : columns)
        takeTables(*view.select->items[static_cast<std::size_t>(column)].expression, tables);
    const bool joinedOnly = !tables.empty() && !tables.contains(&drivingTable(*view.select->from[0]));
    return joinedOnly ? ConditionOn::joinedTables : ConditionOn::drivingTable;
}

}  // namespace orvenmod::store::tsql
