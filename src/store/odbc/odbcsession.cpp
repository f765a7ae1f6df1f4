#include "store/odbc/odbcsession.h"

#include "store/connectionstring.h"
#include "store/odbc/connectfailure.h"
#include "store/odbc/greeting.h"
#include "store/tsql/stringparts.h"

namespace orvenmod::store::odbc {

namespace {

// Shorter than firewalls forget, and than a machine takes to be started again.
constexpr std::chrono::seconds kFresh{10};

}  // namespace

OdbcSession::OdbcSession(const std::string& connectionString, const Paint& paint)
    : language_(tsql::languageOf(ConnectionString(connectionString))) {
    const ConnectionString parts(connectionString);
    connect(connectionString, tsql::connectTimeout(parts), paint);
    SQLUINTEGER calls = SQL_AM_NONE;
    SQLGetInfo(connection().get(), SQL_ASYNC_MODE, &calls, sizeof calls, nullptr);
    waiter_ = std::make_unique<OdbcWaiter>(calls == SQL_AM_STATEMENT ? OdbcWaiter::Calls::asynchronous
                                                                     : OdbcWaiter::Calls::blocking);
    heard(Clock::now());
}

void OdbcSession::connect(const std::string& connectionString, std::chrono::seconds limit, const Paint& paint) {
    const ConnectionString parts(connectionString);
    const std::vector<ServerString> strings = serverStrings(connectionString);
    server::Progress progress;
    progress.set(paint);
    for (const ServerString& string : strings) {
        string_ = string;
        busyTimeout_.reset();
        if (speaksTheDialect() || parts.has("Busy Timeout")) busyTimeout_ = tsql::busyTimeout(parts);
        try {
            handles_ = connectWithin(limit, string, Greeting(string, busyTimeout_, language_), language_, progress);
            return;
        } catch (const Failure& failure) {
            if (&string == &strings.back() || !isServerAway(failure)) throw;
        }
    }
}

bool OdbcSession::isFresh() const { return Clock::now() - heard_ < kFresh; }

}  // namespace orvenmod::store::odbc
