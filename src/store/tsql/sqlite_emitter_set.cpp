// union, except, intersect. SQLite's own tell texts apart by case and trailing blanks, so that only its UNION ALL is
// used, and the rows that compare as equal are made one around it:
//
//   select c from t union select c from u
//
//   SELECT * FROM (SELECT "t"."c" AS "c1" FROM "t" AS "t" UNION ALL SELECT "u"."c" AS "c1" FROM "u" AS "u")
//     GROUP BY rtrim("c1") COLLATE NOCASE
#include <algorithm>

#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {
namespace {

// SQLite takes 500 selects in one compound; more are put together by such parts.
constexpr std::size_t kMostBranches = 200;

bool isUnionAll(const Query& query) { return query.op == SetOperator::unite && query.all; }

// The branches of nested unions, side by side: a view over many tables would else nest as deep as it has tables.
void collect(const Query& query, std::vector<const Query*>& branches) {
    if (isUnionAll(query) && query.orderBy.empty()) {
        collect(*query.left, branches);
        collect(*query.right, branches);
    } else {
        branches.push_back(&query);
    }
}

}  // namespace

/// One part of a compound; what has a limit or an order of its own is put in brackets.
std::string SqliteEmitter::branch(const Query& query, const Names* names) {
    const bool plain = query.select && !query.select->top && query.orderBy.empty();
    return plain ? this->query(query, names) : "SELECT * FROM (" + this->query(query, names) + ")";
}

std::string SqliteEmitter::unionAll(const Query& query, const Names& names) {
    std::vector<const Query*> branches;
    collect(*query.left, branches);
    collect(*query.right, branches);
    std::string text;
    for (std::size_t first = 0; first < branches.size(); first += kMostBranches) {
        std::string chunk;
        for (std::size_t i = first; i < std::min(branches.size(), first + kMostBranches); ++i) {
            chunk += (chunk.empty() ? "" : " UNION ALL ") + branch(*branches[i], &names);
        }
        if (branches.size() > kMostBranches) {
            chunk = "SELECT * FROM (" + chunk + ")";
        }
        text += (text.empty() ? "" : " UNION ALL ") + chunk;
    }
    return text;
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

std::string SqliteEmitter::setOperation(const Query& query, const Names* outer) {
    Names names;
    for (std::size_t i = 0; i < query.columns.size(); ++i) {
        names.push_back(outer != nullptr ? (*outer)[i] : "c" + std::to_string(i + 1));
    }
    if (query.op != SetOperator::unite) {
        return matched(query, names);
    }
    const std::string rows = unionAll(query, names);
    if (query.all) {
        return query.orderBy.empty() ? rows : "SELECT * FROM (" + rows + ")" + orderByNames(query, names);
    }
    return "SELECT * FROM (" + rows + ") GROUP BY " + columnList(query, names) + orderByNames(query, names);
}

}  // namespace orvenmod::store::tsql
