// The run-time functions that translated statements call, on one connection; see tsql/runtime.h.
#pragma once

#include <sqlite3.h>

#include "store/sqlite/runtime.h"

namespace orvenmod::store::sqlite {

/// Registers all of them. `runtime` outlives the handle.
void registerFunctions(sqlite3* database, Runtime& runtime);

}  // namespace orvenmod::store::sqlite
