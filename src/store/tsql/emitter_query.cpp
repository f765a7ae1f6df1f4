// Queries. A query that another one reads gets names for its columns, those that the reader goes by.
//
//   select top 3 with ties fname from tblItem order by fname
//   SELECT "c1" FROM (SELECT "tblItem"."fname" AS "c1", rank() OVER (ORDER BY ..) AS "orven.rank", .. FROM ..)
//     WHERE "orven.rank" <= ?1 ORDER BY "orven.rank"
#include <algorithm>

#include "store/tsql/emitter.h"
#include "store/tsql/error.h"

namespace orvenmod::store::tsql {
namespace {

const char* joinWord(JoinKind kind) {
    switch (kind) {
        case JoinKind::inner:
            return " JOIN ";
        case JoinKind::left:
            return " LEFT JOIN ";
        case JoinKind::right:
            return " RIGHT JOIN ";
        case JoinKind::full:
            return " FULL JOIN ";
        case JoinKind::cross:
            return " CROSS JOIN ";
    }
    return " JOIN ";
}

}  // namespace

bool hasText(const Query& query) {
    return std::any_of(query.columns.begin(), query.columns.end(),
                       [](const ColumnInfo& column) { return column.type.isText(); });
}

/// What a target may take for the position of a column.
bool isConstant(const Expression& expression) {
    return expression.kind == ExpressionKind::literal || expression.kind == ExpressionKind::null;
}

std::string Emitter::query(const Query& query, const Names* names) {
    if (query.op != SetOperator::none) {
        return setOperation(query, names);
    }
    if (query.select->topPercent || query.select->topWithTies) {
        return rankedSelect(query, names);
    }
    if (query.select->distinct && hasText(query)) {
        return distinctSelect(query, names);
    }
    return select(query, names);
}

std::string Emitter::items(const Select& select, const Names* names) {
    std::vector<std::string> parts;
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        std::string part = value(*select.items[i].expression);
        if (names != nullptr) {
            part += " AS " + quoteName((*names)[i]);
        }
        parts.push_back(std::move(part));
    }
    return joined(parts);
}

/// from, where, group by and having.
std::string Emitter::clauses(const Select& select) {
    std::string text;
    if (!select.from.empty()) {
        text += " FROM " + sources(select.from);
    }
    if (select.where) {
        text += " WHERE " + condition(*select.where);
    }
    std::vector<std::string> groups;
    for (const ExpressionPtr& group : select.groupBy) {
        groups.push_back(groupKey(*group));
    }
    if (!groups.empty()) {
        text += " GROUP BY " + joined(groups);
    }
    if (select.having) {
        text += " HAVING " + havingCondition(select);
    }
    return text;
}

std::string Emitter::select(const Query& query, const Names* names) {
    const Select& select = *query.select;
    std::string text = std::string("SELECT ") + (select.distinct ? "DISTINCT " : "") + items(select, names);
    text += clauses(select);
    text += orderBy(query, ItemNaming::byNumber);
    return select.top ? text + " LIMIT " + value(*select.top) : text;
}

/// top n percent, top n with ties: by the rank of each row.
std::string Emitter::rankedSelect(const Query& query, const Names* names) {
    const Select& select = *query.select;
    if (select.distinct || !select.groupBy.empty() || select.aggregates) {
        throw Error(kNotSupported, {"top percent or with ties of distinct or grouped rows"});
    }
    Names inner;
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        inner.push_back(names != nullptr ? (*names)[i] : "c" + std::to_string(i + 1));
    }
    const std::string order = orderBy(query, ItemNaming::byExpression);
    const std::string rank = select.topWithTies ? "rank()" : "row_number()";
    std::string text = "SELECT ";
    for (std::size_t i = 0; i < inner.size(); ++i) {
        text += (i == 0 ? "" : ", ") + quoteName(inner[i]);
    }
    std::string rows = "SELECT " + items(select, &inner) + ", " + rank + " OVER (" + order + ") AS \"orven.rank\"";
    rows += ", count(*) OVER () AS \"orven.count\"" + clauses(select);
    text += " FROM " + derived(rows) + " WHERE ";
    const std::string top = value(*select.top);
    text +=
        select.topPercent ? "\"orven.rank\" - 1 < \"orven.count\" * " + top + " / 100.0" : "\"orven.rank\" <= " + top;
    return text + " ORDER BY \"orven.rank\"";
}

/// By its number, a column that isn't text is not computed twice.
std::string Emitter::orderBy(const Query& query, ItemNaming naming) {
    std::vector<std::string> parts;
    for (const OrderItem& order : query.orderBy) {
        std::string part;
        const Expression* key = order.expression.get();
        if (order.item < 0) {
            part = sortKey(*key);
        } else {
            const Expression& item = *query.select->items[static_cast<std::size_t>(order.item)].expression;
            if (isConstant(item)) {
                continue;
            }
            part = item.type.isText() || naming == ItemNaming::byExpression ? sortKey(item)
                                                                            : std::to_string(order.item + 1);
            key = &item;
        }
        parts.push_back(part + direction(order, key));
    }
    return parts.empty() ? "" : " ORDER BY " + joined(parts);
}

/// For rows that a query around them has named.
std::string Emitter::orderByNames(const Query& query, const Names& names) const {
    std::vector<std::string> parts;
    for (const OrderItem& order : query.orderBy) {
        if (order.item < 0) {
            throw Error(kOrderNotInDistinct);
        }
        const auto at = static_cast<std::size_t>(order.item);
        const std::string name = quoteName(names[at]);
        const bool text = query.columns[at].type.isText();
        parts.push_back((text ? orderForm(name) : name) + direction(order, nullptr));
    }
    return parts.empty() ? "" : " ORDER BY " + joined(parts);
}

/// The columns of a named query in their compared form.
std::string Emitter::columnList(const Query& query, const Names& names) const {
    std::vector<std::string> parts;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string name = quoteName(names[i]);
        parts.push_back(query.columns[i].type.isText() ? equalityForm(name) : name);
    }
    return joined(parts);
}

std::string Emitter::sources(const std::vector<SourcePtr>& from) {
    std::vector<std::string> parts;
    for (const SourcePtr& part : from) {
        parts.push_back(source(*part));
    }
    return joined(parts);
}

std::string Emitter::source(const Source& source) {
    if (source.kind == Source::Kind::table) {
        return tableName(*source.object) + " AS " + quoteName(aliasOf(source));
    }
    if (source.kind == Source::Kind::derived) {
        Names names;
        for (const ColumnInfo& column : source.columns) {
            names.push_back(column.name);
        }
        return "(" + query(*source.query, &names) + ") AS " + quoteName(aliasOf(source));
    }
    std::string text = this->source(*source.left) + joinWord(source.join);
    std::string right = this->source(*source.right);
    if (source.right->kind == Source::Kind::join) {
        right = "(" + right + ")";
    }
    text += right;
    return source.on ? text + " ON " + condition(*source.on) : text;
}

}  // namespace orvenmod::store::tsql
