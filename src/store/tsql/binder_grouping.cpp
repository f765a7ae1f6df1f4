// The rules of group by.
//
// Within a group a column has as many values as the group has rows. SQLite takes one of them, the server refuses; a
// report over the wrong row is worse than none. So each item, the having and the order by are walked from the top: what
// equals a group by expression is done, an aggregate is done, and a column that is then still met is refused.
//
//   select fname+'x', count(*) from tblItem group by fname+'x'     stands
//   select fname+'y', count(*) from tblItem group by fname+'x'     8120 'tblItem.fname'
//
// The two have one shape. That they differ only their literals tell, which therefore are fixed.
#include <algorithm>

#include "store/tsql/binder.h"
#include "store/tsql/error.h"
#include "store/tsql/sameexpression.h"

namespace orvenmod::store::tsql {
namespace {

void collect(const Source& source, std::set<const Source*>& leaves) {
    if (source.kind == Source::Kind::join) {
        collect(*source.left, leaves);
        collect(*source.right, leaves);
    } else {
        leaves.insert(&source);
    }
}

}  // namespace

/// In a grouped query, or one with aggregates, every column stands in the group by or within an aggregate.
void Binder::checkGrouping(const Query& query) {
    const Select& select = *query.select;
    if (select.groupBy.empty() && !select.aggregates && !select.having) {
        return;
    }
    std::set<const Source*> own;
    for (const SourcePtr& source : select.from) {
        collect(*source, own);
    }
    for (const SelectItem& item : select.items) {
        checkGrouped(*item.expression, select, own, kSelectedNotGrouped);
    }
    if (select.having) {
        checkGrouped(*select.having, select, own, kHavingNotGrouped);
    }
    for (const OrderItem& order : query.orderBy) {
        if (order.expression) {
            checkGrouped(*order.expression, select, own, kOrderNotGrouped);
        }
    }
}

void Binder::checkGrouped(const Expression& expression, const Select& select, const std::set<const Source*>& own,
                          int error) {
    for (const ExpressionPtr& group : select.groupBy) {
        if (sameExpression(*group, expression, literals_)) {
            fixLiterals(*group, expression);
            return;
        }
    }
    if (expression.aggregate) {
        return;
    }
    // A column of a query around this one is the same for the whole group.
    if (expression.kind == ExpressionKind::column && own.contains(expression.source)) {
        throw Error(error, {expression.source->exposedName() + "." + expression.name});
    }
    for (const ExpressionPtr& operand : expression.operands) {
        if (operand) {
            checkGrouped(*operand, select, own, error);
        }
    }
}

/// That two expressions are the same holds only while their literals keep their values.
void Binder::fixLiterals(const Expression& left, const Expression& right) {
    for (const Expression* side : {&left, &right}) {
        if (side->literal >= 0) {
            fixed_.insert(side->literal);
        }
        for (const ExpressionPtr& operand : side->operands) {
            if (operand) {
                fixLiterals(*operand, *operand);
            }
        }
    }
}

}  // namespace orvenmod::store::tsql
