// Waits for a socket while windows paint.
#pragma once

#include <chrono>

#include "store/server/progress.h"

namespace orvenmod::store::server {

enum class Awaited { readable, writable, either };

/// True when the socket is ready (or broken, which its next use tells), false when `limit` has passed before that.
/// What the progress throws passes on.
bool awaitSocket(int socket, Awaited awaited, Progress& progress,
                 std::chrono::milliseconds limit = std::chrono::milliseconds::max());

}  // namespace orvenmod::store::server
