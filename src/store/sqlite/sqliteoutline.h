// What a database of the embedded store holds.
#pragma once

#include "store/outline.h"
#include "store/sqlite/database.h"

namespace orvenmod::store::sqlite {

/// Throws Failure.
Outline outlineOf(Database& database);

}  // namespace orvenmod::store::sqlite
