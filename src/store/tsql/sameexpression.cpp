#include "store/tsql/sameexpression.h"

#include <algorithm>

namespace orvenmod::store::tsql {

// Bound columns are compared by source and position, so that "fname" and "i.fname" are one. Queries are never the same.
bool sameExpression(const Expression& left, const Expression& right, const std::vector<Literal>& literals) {
    if (left.kind != right.kind || left.op != right.op || left.source != right.source || left.column != right.column ||
        left.part != right.part || left.negated != right.negated || left.distinct != right.distinct ||
        left.star != right.star || left.attempt != right.attempt || left.query || right.query ||
        left.operands.size() != right.operands.size()) {
        return false;
    }
    if (left.kind == ExpressionKind::function && left.name != right.name) {
        return false;
    }
    if ((left.kind == ExpressionKind::cast || left.kind == ExpressionKind::conversion) && !(left.type == right.type)) {
        return false;
    }
    if (left.literal >= 0) {
        const Literal& a = literals[static_cast<std::size_t>(left.literal)];
        const Literal& b = literals[static_cast<std::size_t>(right.literal)];
        return a.kind == b.kind && a.text == b.text;
    }
    return std::equal(left.operands.begin(), left.operands.end(), right.operands.begin(),
                      [&literals](const ExpressionPtr& a, const ExpressionPtr& b) {
                          return a && b ? sameExpression(*a, *b, literals) : a == b;
                      });
}

}  // namespace orvenmod::store::tsql
