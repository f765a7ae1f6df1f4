// Whether two bound expressions give the same value for the same row: what a select item has to be of a group.
#pragma once

#include <vector>

#include "store/tsql/ast.h"
#include "store/tsql/shape.h"

namespace orvenmod::store::tsql {

bool sameExpression(const Expression& left, const Expression& right, const std::vector<Literal>& literals);

}  // namespace orvenmod::store::tsql
