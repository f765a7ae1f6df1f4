// union, except, intersect. A target's own tell texts apart by case and trailing blanks, so that only its UNION ALL is
// used, and the rows that compare as equal are made one around it.
#include <algorithm>

#include "store/tsql/emitter.h"

namespace orvenmod::store::tsql {
namespace {

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
std::string Emitter::branch(const Query& query, const Names* names) {
    const bool plain = query.select && !query.select->top && query.orderBy.empty();
    return plain ? this->query(query, names) : "SELECT * FROM " + derived(this->query(query, names));
}

std::string Emitter::unionAll(const Query& query, const Names& names) {
    std::vector<const Query*> branches;
    collect(*query.left, branches);
    collect(*query.right, branches);
    std::string text;
    for (std::size_t first = 0; first < branches.size(); first += mostBranches()) {
        std::string chunk;
        for (std::size_t i = first; i < std::min(branches.size(), first + mostBranches()); ++i) {
            chunk += (chunk.empty() ? "" : " UNION ALL ") + branch(*branches[i], &names);
        }
        if (branches.size() > mostBranches()) {
            chunk = "SELECT * FROM " + derived(chunk);
        }
        text += (text.empty() ? "" : " UNION ALL ") + chunk;
    }
    return text;
}

std::string Emitter::setOperation(const Query& query, const Names* outer) {
    Names names;
    for (std::size_t i = 0; i < query.columns.size(); ++i) {
        names.push_back(outer != nullptr ? (*outer)[i] : "c" + std::to_string(i + 1));
    }
    if (query.op != SetOperator::unite) {
        return matched(query, names);
    }
    const std::string rows = unionAll(query, names);
    if (query.all) {
        return query.orderBy.empty() ? rows : "SELECT * FROM " + derived(rows) + orderByNames(query, names);
    }
    return madeDistinct(rows, query, names) + orderByNames(query, names);
}

}  // namespace orvenmod::store::tsql
