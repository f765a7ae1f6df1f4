// What a statement does at the driver, apart from the waiting for it.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "store/odbc/odbchandle.h"

namespace orvenmod::store::odbc {

/// Owns all that the driver touches, since a caller may give up waiting while the driver is still at work.
class OdbcWork {
public:
    explicit OdbcWork(OdbcHandle statement) : statement_(std::move(statement)) {}
    virtual ~OdbcWork() = default;
    OdbcWork(const OdbcWork&) = delete;
    OdbcWork& operator=(const OdbcWork&) = delete;

    /// Throws Failure. May run on another thread than the caller's.
    virtual void run() = 0;

    /// The caller leaves while the driver is still at work: from now on nothing of the caller's is touched.
    virtual void giveUp() {}

    const OdbcHandle& statement() const { return statement_; }
    /// For a driver whose calls answer that they are still at work: waits a little.
    void setPause(std::function<void()> pause) { pause_ = std::move(pause); }
    /// What must live as long as the work.
    void keep(std::shared_ptr<void> owner) { owner_ = std::move(owner); }

    /// The result of a call of the driver that may take long.
    template <typename Call>
    SQLRETURN await(Call call) const {
        for (;;) {
            const SQLRETURN result = call();
            if (result != SQL_STILL_EXECUTING || !pause_) return result;
            pause_();
        }
    }
    template <typename Call>
    void check(Call call) const {
        statement_.check(await(call));
    }

private:
    std::shared_ptr<void> owner_;  // in front of the statement, which goes before it
    OdbcHandle statement_;
    std::function<void()> pause_;
};

}  // namespace orvenmod::store::odbc
