// PostgreSQL orders nulls last, the dialect first. An index of ours has them first too; a column that can't be null is
// ordered without a word about them, as the index of a primary key is, unless its table stands at the outer side of a
// join:
//
//   from a left join b on ...  order by a.id, b.id     ORDER BY "a"."id", "b"."id" NULLS FIRST
//
// A column that is grouped by stands for its group in the list and in having, but for its row in from and where; so the
// groups are known only while those two are written.
#include "store/tsql/postgres_emitter.h"

#include <algorithm>

namespace orvenmod::store::tsql {

std::string PostgresEmitter::direction(const OrderItem& order, const Expression* key) const {
    const bool neverNull = key != nullptr && key->kind == ExpressionKind::column &&
                           key->source->kind == Source::Kind::table && !outerSides_.contains(key->source->id) &&
                           !key->source->columns[static_cast<std::size_t>(key->column)].nullable;
    if (neverNull) {
        return order.descending ? " DESC" : "";
    }
    return order.descending ? " DESC NULLS LAST" : " NULLS FIRST";
}

void PostgresEmitter::noteOuterSides(const Source& source, JoinSide side) {
    if (source.kind != Source::Kind::join) {
        if (side == JoinSide::outer) {
            outerSides_.insert(source.id);
        }
        return;
    }
    const auto below = [&](JoinKind other) {
        return source.join == JoinKind::full || source.join == other ? JoinSide::outer : side;
    };
    noteOuterSides(*source.left, below(JoinKind::right));
    noteOuterSides(*source.right, below(JoinKind::left));
}

PostgresEmitter::Groups PostgresEmitter::groupedBy(const Select& select) const {
    Groups groups = groups_;
    for (const ExpressionPtr& group : select.groupBy) {
        groups.push_back(group.get());
    }
    return groups;
}

std::string PostgresEmitter::havingCondition(const Select& select) {
    const Groups outer = groups_;
    groups_ = groupedBy(select);
    std::string text = condition(*select.having);
    groups_ = outer;
    return text;
}

std::string PostgresEmitter::deliveredRows(const Query& query, const Names* names) {
    delivered_ = &query;
    return this->query(query, names);
}

/// The rows of a table as other targets give them, where an update moves none: by its key. The first rows under a
/// condition are sought by an index of their own, which another order would make of no use.
std::string PostgresEmitter::unaskedOrder(const Query& query) {
    const Select& select = *query.select;
    const bool shows = select.top ? !select.where : &query == delivered_;
    if (!shows || !query.orderBy.empty() || select.distinct || !select.groupBy.empty() || select.aggregates ||
        select.having || select.from.size() != 1) {
        return "";
    }
    const Source* driving = select.from[0].get();
    while (driving->kind == Source::Kind::join && driving->join != JoinKind::right && driving->join != JoinKind::full) {
        driving = driving->left.get();
    }
    if (driving->kind != Source::Kind::table) {
        return "";
    }
    std::vector<std::string> parts;
    for (const std::string& name : driving->object->rowOrder) {
        const auto& columns = driving->object->columns;
        const bool nullable = std::any_of(columns.begin(), columns.end(), [&](const ColumnInfo& column) {
            return column.nullable && columnName(column) == quoteName(name);
        });
        parts.push_back(quoteName(aliasOf(*driving)) + "." + quoteName(name) + (nullable ? " NULLS FIRST" : ""));
    }
    return parts.empty() ? "" : " ORDER BY " + joined(parts);
}

std::string PostgresEmitter::select(const Query& query, const Names* names) {
    const Select& select = *query.select;
    for (const SourcePtr& source : select.from) {
        noteOuterSides(*source, JoinSide::kept);
    }
    const Groups outer = groups_;
    groups_ = groupedBy(select);
    std::string text = std::string("SELECT ") + (select.distinct ? "DISTINCT " : "") + items(select, names);
    std::string order = orderBy(query, ItemNaming::byNumber);
    groups_ = outer;
    text += clauses(select);
    text += order.empty() ? unaskedOrder(query) : order;
    return select.top ? text + " LIMIT " + value(*select.top) : text;
}

/// PostgreSQL's own DISTINCT tells texts apart by case and trailing blanks.
std::string PostgresEmitter::distinctSelect(const Query& query, const Names* names) {
    const Select& select = *query.select;
    Names inner;
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        inner.push_back(names != nullptr ? (*names)[i] : "c" + std::to_string(i + 1));
    }
    const Groups outer = groups_;
    groups_ = groupedBy(select);
    std::string rows = "SELECT " + items(select, &inner);
    groups_ = outer;
    rows += clauses(select);
    const std::string text = madeDistinct(rows, query, inner) + orderByNames(query, inner);
    return select.top ? text + " LIMIT " + value(*select.top) : text;
}

/// A name in an order by would mean the column before it was grouped, so that an order stands around.
std::string PostgresEmitter::madeDistinct(const std::string& rows, const Query& query, const Names& names) const {
    std::vector<std::string> items;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string name = quoteName(names[i]);
        items.push_back(query.columns[i].type.isText() ? "orven.ts_first(" + name + ") AS " + name : name);
    }
    const std::string text =
        "SELECT " + joined(items) + " FROM " + derived(rows) + " GROUP BY " + columnList(query, names);
    return query.orderBy.empty() ? text : "SELECT * FROM " + derived(text);
}

/// except and intersect by comparison, which texts need.
std::string PostgresEmitter::matched(const Query& query, const Names& names) {
    std::vector<std::string> matches;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool text = query.columns[i].type.isText();
        const std::string left = "\"orven.l\"." + quoteName(names[i]);
        const std::string right = "\"orven.r\"." + quoteName(names[i]);
        matches.push_back((text ? equalityForm(left) : left) + " IS NOT DISTINCT FROM " +
                          (text ? equalityForm(right) : right));
    }
    std::string rows = "SELECT * FROM (" + branch(*query.left, &names) + ") AS \"orven.l\" WHERE ";
    rows += query.op == SetOperator::except ? "NOT EXISTS" : "EXISTS";
    rows +=
        " (SELECT 1 FROM (" + branch(*query.right, &names) + ") AS \"orven.r\" WHERE " + joined(matches, " AND ") + ")";
    return madeDistinct(rows, query, names) + orderByNames(query, names);
}

/// A query whose one column stands at the right of a comparison.
std::string PostgresEmitter::comparableQuery(const Query& query) {
    if (!query.columns[0].type.isText()) {
        return this->query(query);
    }
    const Names names = {"c1"};
    return "SELECT " + equalityForm("\"c1\"") + " FROM " + derived(this->query(query, &names));
}

}  // namespace orvenmod::store::tsql
