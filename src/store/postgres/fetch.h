// Copies the rows of a result into a recordset, every value as the embedded store would give it.
#pragma once

#include <libpq-fe.h>

#include <vector>

#include "store/recordset.h"
#include "store/server/progress.h"
#include "store/tsql/translation.h"

namespace orvenmod::store::postgres {

/// What the progress throws passes on.
Recordset fetchRows(const PGresult* result, const std::vector<tsql::ResultColumn>& columns, server::Progress& progress);

}  // namespace orvenmod::store::postgres
