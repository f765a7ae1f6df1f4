// Waits for a server while windows paint. A call of a driver comes back when the server has answered, which may take
// as long as another clerk holds a row. So the calls are made asynchronously where the driver can; else they run on a
// thread of the waiter's own, and the caller's waits:
//
//   caller's thread              the waiter's
//   run(work)          ------>   SQLExecDirect ..
//   progress()                     |  the server works
//   progress() throws              |
//   SQLCancel          ------>   HY008
//   the progress's exception
//
// A server that doesn't even answer a cancel is given up after a while. The thread then keeps what it works with, and
// whoever called gets the session's failure.
#pragma once

#include <memory>
#include <thread>

#include "store/odbc/odbcwork.h"
#include "store/server/progress.h"

namespace orvenmod::store::odbc {

class OdbcWaiter {
public:
    enum class Calls { asynchronous, blocking };

    explicit OdbcWaiter(Calls calls);
    ~OdbcWaiter();
    OdbcWaiter(const OdbcWaiter&) = delete;
    OdbcWaiter& operator=(const OdbcWaiter&) = delete;

    /// Runs the work to its end. Throws what it throws; what the progress throws ends the work and passes on.
    void run(const std::shared_ptr<OdbcWork>& work, server::Progress& progress);
    /// Whether work was given up, so that it may still use the session.
    bool gaveUp() const { return gaveUp_; }

private:
    struct Desk;

    void runAsynchronously(OdbcWork& work, server::Progress& progress);
    void runOnThread(const std::shared_ptr<OdbcWork>& work, server::Progress& progress);
    void start();

    Calls calls_;
    bool gaveUp_ = false;
    std::shared_ptr<Desk> desk_;
    std::thread thread_;
};

}  // namespace orvenmod::store::odbc
