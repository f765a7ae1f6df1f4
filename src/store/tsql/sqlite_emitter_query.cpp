// What SQLite does with texts byte by byte is written in their compared form:
//
//   select distinct fname from tblItem
//   SELECT "tblItem"."fname" FROM "tblItem" AS "tblItem" GROUP BY rtrim("tblItem"."fname") COLLATE NOCASE
//
//   select c from t union select c from u
//   SELECT * FROM (SELECT "t"."c" AS "c1" FROM "t" AS "t" UNION ALL SELECT "u"."c" AS "c1" FROM "u" AS "u")
//     GROUP BY rtrim("c1") COLLATE NOCASE
#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {

std::string SqliteEmitter::madeDistinct(const std::string& rows, const Query& query, const Names& names) const {
    return "SELECT * FROM (" + rows + ") GROUP BY " + columnList(query, names);
}

std::string SqliteEmitter::groupByItems(const Select& select) {
    std::vector<std::string> groups;
    for (const SelectItem& item : select.items) {
        if (!isConstant(*item.expression)) {
            groups.push_back(groupKey(*item.expression));
        }
    }
    return groups.empty() ? "" : " GROUP BY " + joined(groups);
}

/// SQLite's own DISTINCT tells texts apart by their trailing blanks; grouping by the compared form doesn't.
std::string SqliteEmitter::distinctSelect(const Query& query, const Names* names) {
    const Select& select = *query.select;
    const std::string limit = select.top ? " LIMIT " + value(*select.top) : "";
    const std::string groups = groupByItems(select);
    if (select.groupBy.empty() && !select.aggregates && !select.having && !groups.empty()) {
        std::string text = "SELECT " + items(select, names);
        text += clauses(query);
        return text + groups + orderBy(query, ItemNaming::byNumber) + limit;
    }
    // Grouped already, or of constants only: around the rows that it gives.
    Names inner;
    for (std::size_t i = 0; i < select.items.size(); ++i) {
        inner.push_back(names != nullptr ? (*names)[i] : "c" + std::to_string(i + 1));
    }
    std::string text = "SELECT * FROM (SELECT " + items(select, &inner);
    text += clauses(query);
    return text + ") GROUP BY " + columnList(query, inner) + orderByNames(query, inner) + limit;
}

/// A query whose one column stands at the right of a comparison.
std::string SqliteEmitter::comparableQuery(const Query& query, const Type& common) {
    const Type& type = query.columns[0].type;
    const std::string column = comparedName("\"c1\"", type, Collation::equality, common);
    if (column == "\"c1\"") {
        return this->query(query);
    }
    const Names names = {"c1"};
    return "SELECT " + column + " FROM (" + this->query(query, &names) + ")";
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

/// except and intersect by comparison, which texts need.
std::string SqliteEmitter::matched(const Query& query, const Names& names) {
    std::string match;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool text = query.columns[i].type.isText();
        const std::string left = "\"orven.l\"." + quoteName(names[i]);
        const std::string right = "\"orven.r\"." + quoteName(names[i]);
        match += i == 0 ? "" : " AND ";
        match += text ? "rtrim(" + left + ") COLLATE NOCASE IS rtrim(" + right + ")" : left + " IS " + right;
    }
    std::string text = "SELECT * FROM (" + branch(*query.left, &names) + ") AS \"orven.l\" WHERE ";
    text += query.op == SetOperator::except ? "NOT EXISTS" : "EXISTS";
    text += " (SELECT 1 FROM (" + branch(*query.right, &names) + ") AS \"orven.r\" WHERE " + match + ")";
    return text + " GROUP BY " + columnList(query, names) + orderByNames(query, names);
}

}  // namespace orvenmod::store::tsql
