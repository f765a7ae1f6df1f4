// Rows from the client by COPY, in pieces, while windows paint.
#include <algorithm>

#include "store/postgres/session.h"

namespace orvenmod::store::postgres {

Result Session::copyIn(const std::string& command, std::string_view rows) {
    progress_.start();
    PQexitPipelineMode(connection_.get());  // rows don't pass through one
    try {
        Result result = sendRows(command, rows);
        PQenterPipelineMode(connection_.get());
        return result;
    } catch (const LostConnection&) {
        throw;
    } catch (...) {
        const Ending ending(*this);
        PQputCopyEnd(connection_.get(), "cancelled");
        unsent_ = true;
        lastResult();
        PQenterPipelineMode(connection_.get());
        throw;
    }
}

// Again while the library has no room.
template <typename Put>
void Session::put(Put put) {
    for (;;) {
        const int taken = put();
        if (taken < 0) lose();
        if (taken > 0) return;
        awaitRoom();
    }
}

Result Session::sendRows(const std::string& command, std::string_view rows) {
    constexpr std::size_t kPiece = 64UL << 10;
    if (PQsendQuery(connection_.get(), command.c_str()) == 0) lose();
    unsent_ = true;
    awaitResult();
    Result start(PQgetResult(connection_.get()));
    if (PQresultStatus(start.get()) != PGRES_COPY_IN) {
        lastResult();
        return start;
    }
    for (; !rows.empty(); rows.remove_prefix(std::min(kPiece, rows.size()))) {
        const int size = static_cast<int>(std::min(kPiece, rows.size()));
        put([&] { return PQputCopyData(connection_.get(), rows.data(), size); });
        awaitRoom();
    }
    put([&] { return PQputCopyEnd(connection_.get(), nullptr); });
    unsent_ = true;
    return lastResult();
}

// The result before the end of all; of several the failure.
Result Session::lastResult() {
    Result last;
    for (;;) {
        awaitResult();
        Result result(PQgetResult(connection_.get()));
        if (!result) break;
        if (!last || !isFailure(last.get())) last = std::move(result);
    }
    if (PQstatus(connection_.get()) == CONNECTION_BAD) lose();
    return last;
}

// Until the server has taken what the library holds, so that this doesn't grow.
void Session::awaitRoom() {
    unsent_ = true;
    while (flush()) {
        await(server::Awaited::either);
        if (PQconsumeInput(connection_.get()) == 0) lose();
    }
    progress_.report();
}

}  // namespace orvenmod::store::postgres
