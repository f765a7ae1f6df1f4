// Connects to a server, while windows paint.
//
// The client library looks names up and goes from host to host by itself, each for the connect timeout, but tells of
// nothing meanwhile. So it does that on a thread, with the first statements, which is left to itself when the progress
// ends the wait: what it reaches afterwards it lets go of.
#pragma once

#include "store/postgres/native.h"
#include "store/postgres/serveraddress.h"
#include "store/server/progress.h"

namespace orvenmod::store::postgres {

/// A connection to a database that has what the store needs. Throws Failure, and what the progress throws.
NativeConnection connectTo(const ServerAddress& address, server::Progress& progress);

}  // namespace orvenmod::store::postgres
