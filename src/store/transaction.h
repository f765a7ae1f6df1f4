// Work on a connection that is done whole or not at all.
#pragma once

#include "store/connection.h"

namespace orvenmod::store {

/// Runs the work in a transaction of its own. What the work throws goes on to the caller; the database is then as
/// before.
template <typename Work>
void transact(Connection& connection, Work work) {
    connection.beginTrans();
    try {
        work();
        connection.commitTrans();
    } catch (...) {
        if (connection.inTransaction()) connection.rollbackTrans();
        throw;
    }
}

}  // namespace orvenmod::store
