// A query's columns as a recordset has them.
#pragma once

#include <vector>

#include "store/recordset.h"
#include "store/tsql/translation.h"

namespace orvenmod::store::tsql {

/// An empty recordset with the query's columns.
Recordset emptyRecordset(const std::vector<ResultColumn>& columns);

}  // namespace orvenmod::store::tsql
