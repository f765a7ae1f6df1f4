// What the functions of a running statement share with its connection. No exception may cross SQLite's own frames, and
// it carries only a text; so a failure is put down here when it happens and thrown when the statement has ended.
#pragma once

#include <chrono>
#include <exception>
#include <functional>
#include <optional>

#include "store/tsql/dates.h"
#include "store/tsql/error.h"

namespace orvenmod::store::sqlite {

struct Runtime {
    /// What a function failed with.
    std::optional<tsql::Error> error;
    /// What the progress callback failed with.
    std::exception_ptr interruption;
    /// The clock, read once a statement.
    std::optional<tsql::DateTime> now;

    std::function<void()> progress;
    std::chrono::steady_clock::time_point lastProgress;

    void startStatement() {
        error.reset();
        interruption = nullptr;
        now.reset();
        if (progress) lastProgress = std::chrono::steady_clock::now();
    }
};

}  // namespace orvenmod::store::sqlite
