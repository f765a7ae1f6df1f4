// What a PostgreSQL database holds.
#pragma once

#include "store/outline.h"
#include "store/postgres/session.h"

namespace orvenmod::store::postgres {

/// Throws Failure, tsql::Error, LostConnection.
Outline outlineOf(Session& session);

}  // namespace orvenmod::store::postgres
