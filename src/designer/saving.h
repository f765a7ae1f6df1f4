// The one trap of the designer's saves: metadata, tables and views change together or not at all.
#pragma once

#include <functional>

namespace orvenmod {

/// Runs `work`, which begins and commits a transaction on gConn, and closes the store. True where it went through.
///
/// A failure of it is shown, the transaction rolled back and the store closed. A rollback without a transaction is a
/// failure of its own: it goes to the caller and leaves the store open.
bool saved(const std::function<void()>& work);

}  // namespace orvenmod
