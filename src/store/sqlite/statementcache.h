// The translations and prepared statements of one handle.
#pragma once

#include "store/sqlite/statement.h"
#include "store/tsql/statementcache.h"

namespace orvenmod::store::sqlite {

/// An entry has no statement where it is DDL, whose statements are prepared one after the other.
using StatementCache = tsql::StatementCache<Statement>;
using CachedStatement = StatementCache::Entry;

}  // namespace orvenmod::store::sqlite
