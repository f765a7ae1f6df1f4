// Queries. What SQLite does with texts byte by byte is written in their compared form, and what it has not is built
// from what it has:
//
//   select distinct fname from tblItem
//   SELECT "tblItem"."fname" FROM "tblItem" AS "tblItem" GROUP BY rtrim("tblItem"."fname") COLLATE NOCASE
//
//   select top 3 with ties fname from tblItem order by fname
//   SELECT "c1" FROM (SELECT "tblItem"."fname" AS "c1", rank() OVER (ORDER BY ..) AS "orven.rank", .. FROM ..)
//     WHERE "orven.rank" <= ?1 ORDER BY "orven.rank"
//
// A query that another one reads gets names for its columns, those that the reader goes by.
#include <algorithm>

#include "store/tsql/error.h"
#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {
namespace {

std::string join(const std::vector<std::string>& parts, const char* separator) {
    std::string result;
    for (const std::string& part : parts) {
        result += (result.empty() ? "" : separator) + part;
    }
    return result;
}

bool hasText(const Query& query) {
    return std::any_of(query.columns.begin(), query.columns.end(),
                       [](const ColumnInfo& column) { return column.type.isText(); });
}

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

std::string SqliteEmitter::query(const Query& query, const Names* names) {
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

std::string SqliteEmitter::items(const Select& select, const Names* names) {
    std::vector<std::string> parts;
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        std::string part = value(*select.items[i].expression);
        if (names != nullptr) {
            part += " AS " + quoteName((*names)[i]);
        }
        parts.push_back(std::move(part));
    }
    return join(parts, ", ");
}

/// from, where, group by and having.
std::string SqliteEmitter::clauses(const Select& select) {
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
        text += " GROUP BY " + join(groups, ", ");
    }
    if (select.having) {
        text += " HAVING " + condition(*select.having);
    }
    return text;
}

std::string SqliteEmitter::select(const Query& query, const Names* names) {
    const Select& select = *query.select;
    std::string text = std::string("SELECT ") + (select.distinct ? "DISTINCT " : "") + items(select, names);
    text += clauses(select);
    text += orderBy(query, ItemNaming::byNumber);
    return select.top ? text + " LIMIT " + value(*select.top) : text;
}

std::string SqliteEmitter::groupByItems(const Select& select) {
    std::vector<std::string> groups;
    for (const SelectItem& item : select.items) {
        const bool constant =
            item.expression->kind == ExpressionKind::literal || item.expression->kind == ExpressionKind::null;
        if (!constant) {
            groups.push_back(groupKey(*item.expression));
        }
    }
    return groups.empty() ? "" : " GROUP BY " + join(groups, ", ");
}

/// SQLite's own DISTINCT tells texts apart by their trailing blanks; grouping by the compared form doesn't.
std::string SqliteEmitter::distinctSelect(const Query& query, const Names* names) {
    const Select& select = *query.select;
    const std::string limit = select.top ? " LIMIT " + value(*select.top) : "";
    const std::string groups = groupByItems(select);
    if (select.groupBy.empty() && !select.aggregates && !select.having && !groups.empty()) {
        std::string text = "SELECT " + items(select, names);
        text += clauses(select);
        return text + groups + orderBy(query, ItemNaming::byNumber) + limit;
    }
    // Grouped already, or of constants only: around the rows that it gives.
    Names inner;
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        inner.push_back(names != nullptr ? (*names)[i] : "c" + std::to_string(i + 1));
    }
    std::string text = "SELECT * FROM (SELECT " + items(select, &inner);
    text += clauses(select);
    return text + ") GROUP BY " + columnList(query, inner) + orderByNames(query, inner) + limit;
}

/// top n percent, top n with ties: by the rank of each row.
std::string SqliteEmitter::rankedSelect(const Query& query, const Names* names) {
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
    text += " FROM (SELECT " + items(select, &inner) + ", " + rank + " OVER (" + order + ") AS \"orven.rank\"";
    text += ", count(*) OVER () AS \"orven.count\"" + clauses(select) + ") WHERE ";
    const std::string top = value(*select.top);
    text +=
        select.topPercent ? "\"orven.rank\" - 1 < \"orven.count\" * " + top + " / 100.0" : "\"orven.rank\" <= " + top;
    return text + " ORDER BY \"orven.rank\"";
}

/// By its number, a column that isn't text is not computed twice.
std::string SqliteEmitter::orderBy(const Query& query, ItemNaming naming) {
    std::vector<std::string> parts;
    for (const OrderItem& order : query.orderBy) {
        std::string part;
        if (order.item < 0) {
            part = sortKey(*order.expression);
        } else {
            const Expression& item = *query.select->items[static_cast<std::size_t>(order.item)].expression;
            // SQLite would take a number for the position of a column.
            if (item.kind == ExpressionKind::literal || item.kind == ExpressionKind::null) {
                continue;
            }
            part = item.type.isText() || naming == ItemNaming::byExpression ? sortKey(item)
                                                                            : std::to_string(order.item + 1);
        }
        parts.push_back(part + (order.descending ? " DESC" : ""));
    }
    return parts.empty() ? "" : " ORDER BY " + join(parts, ", ");
}

/// For rows that a query around them has named.
std::string SqliteEmitter::orderByNames(const Query& query, const Names& names) {
    std::vector<std::string> parts;
    for (const OrderItem& order : query.orderBy) {
        if (order.item < 0) {
            throw Error(kOrderNotInDistinct);
        }
        const auto at = static_cast<std::size_t>(order.item);
        const std::string name = quoteName(names[at]);
        const bool text = query.columns[at].type.isText();
        parts.push_back((text ? "rtrim(" + name + ")" + orderCollation() : name) + (order.descending ? " DESC" : ""));
    }
    return parts.empty() ? "" : " ORDER BY " + join(parts, ", ");
}

/// The columns of a named query in their compared form.
std::string SqliteEmitter::columnList(const Query& query, const Names& names) {
    std::vector<std::string> parts;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string name = quoteName(names[i]);
        parts.push_back(query.columns[i].type.isText() ? "rtrim(" + name + ") COLLATE NOCASE" : name);
    }
    return join(parts, ", ");
}

std::string SqliteEmitter::sources(const std::vector<SourcePtr>& from) {
    std::vector<std::string> parts;
    for (const SourcePtr& part : from) {
        parts.push_back(source(*part));
    }
    return join(parts, ", ");
}

std::string SqliteEmitter::source(const Source& source) {
    if (source.kind == Source::Kind::table) {
        return quoteName(source.object->name) + " AS " + quoteName(aliasOf(source));
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

/// A query whose one column stands at the right of a comparison.
std::string SqliteEmitter::comparableQuery(const Query& query) {
    if (!query.columns[0].type.isText()) {
        return this->query(query);
    }
    const Names names = {"c1"};
    return "SELECT rtrim(\"c1\") FROM (" + this->query(query, &names) + ")";
}

/// A query in the place of a value: more than one row is a failure.
std::string SqliteEmitter::scalarQuery(const Query& query) {
    const Select* select = query.select.get();
    // An aggregate without groups, or a select without a table, has no second row.
    const bool single = select != nullptr && select->groupBy.empty() && (select->aggregates || select->from.empty());
    if (single || stored_) {
        return "(" + this->query(query) + ")";
    }
    const Names names = {"c1"};
    return "(SELECT ts_single(\"c1\") FROM (" + this->query(query, &names) + "))";
}

}  // namespace orvenmod::store::tsql
