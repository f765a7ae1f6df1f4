// What the store needs in a database before it runs a statement there: the run-time functions, and the number of the
// schema. Made by the first connection to a database that lacks them.
#pragma once

#include <libpq-fe.h>

#include "store/postgres/serveraddress.h"

namespace orvenmod::store::postgres {

/// Installs what is missing or of another version. Throws Failure, kNoRight for a role that may not.
void install(PGconn* connection, const ServerAddress& address);

}  // namespace orvenmod::store::postgres
