#include "store/odbc/nativesigns.h"

#include <algorithm>
#include <iterator>

namespace orvenmod::store::odbc {

namespace {

using server::Loss;

enum NativeNumber : int {
    kAnyNumber = -1,

    // The operating system's, Linux's and Windows'.
    kConnectionRefused = 111,
    kNobodyAtTheOtherEnd = 233,
    kWaitTimeout = 258,
    kConnectionAborted = 10053,
    kConnectionReset = 10054,
    kConnectionTimeout = 10060,
    kConnectionRefusedOnWindows = 10061,
    kHostNotFound = 11001,

    // The server's.
    kSessionKilled = 596,
    kNoSuchDatabase = 911,
    kShutdownInProgress = 6005,
    kShutdownOrdered = 6006,
    kLoginUntrusted = 18452,

    // FreeTDS's.
    kDriverLoginNotTaken = 20002,
    kDriverTimeout = 20003,
    kDriverReadFailed = 20004,
    kDriverWriteFailed = 20006,
    kDriverCannotConnect = 20009,
    kDriverUnknownHost = 20013,
    kDriverUnexpectedEnd = 20017,
    kDriverConnectionDead = 20047,
};

struct Sign {
    int number;
    std::string_view state;          // empty for any
    std::optional<Refusal> refusal;  // of a session that is to begin
    std::optional<Loss> loss;        // of one that was there
};

// What says most stands first.
constexpr Sign kSigns[] = {
    {tsql::kLoginFailed, "", Refusal::login, {}},
    {kLoginUntrusted, "", Refusal::login, {}},
    {tsql::kCannotOpenDatabase, "", Refusal::database, {}},
    {kNoSuchDatabase, "", Refusal::database, {}},
    {kAnyNumber, "HYT00", Refusal::silent, {}},
    {kAnyNumber, "HYT01", Refusal::silent, {}},
    {kDriverTimeout, "", Refusal::silent, Loss::silent},
    {kWaitTimeout, "", Refusal::silent, {}},
    {kConnectionTimeout, "", Refusal::silent, Loss::silent},
    {kDriverUnknownHost, "", Refusal::noHost, {}},
    {kHostNotFound, "", Refusal::noHost, {}},
    {kDriverCannotConnect, "", Refusal::refused, Loss::unavailable},
    {kConnectionRefusedOnWindows, "", Refusal::refused, {}},
    {kConnectionRefused, "", Refusal::refused, {}},
    {kDriverUnexpectedEnd, "", Refusal::ended, Loss::closed},
    {kDriverWriteFailed, "", Refusal::ended, Loss::closed},
    {kConnectionReset, "", Refusal::ended, Loss::closed},
    {kAnyNumber, "28000", Refusal::login, {}},
    {kAnyNumber, "IM002", Refusal::driver, {}},
    {kAnyNumber, "IM003", Refusal::driver, {}},
    {kAnyNumber, "IM004", Refusal::driver, {}},
    {kDriverLoginNotTaken, "", Refusal::notTaken, {}},
    {kNobodyAtTheOtherEnd, "", {}, Loss::closed},
    {kSessionKilled, "", {}, Loss::killed},
    {kShutdownInProgress, "", {}, Loss::shuttingDown},
    {kShutdownOrdered, "", {}, Loss::shuttingDown},
    {kConnectionAborted, "", {}, Loss::closed},
    {kDriverReadFailed, "", {}, Loss::closed},
    {kDriverConnectionDead, "", {}, Loss::closed},
};

bool matches(const Sign& sign, const Diagnostic& record) {
    return (sign.number == kAnyNumber || sign.number == record.number) &&
           (sign.state.empty() || sign.state == record.state);
}

}  // namespace

Refusal refusalOf(const std::vector<Diagnostic>& records) {
    for (const Sign& sign : kSigns) {
        if (!sign.refusal) continue;
        const bool found = std::any_of(records.begin(), records.end(),
                                       [&](const Diagnostic& record) { return matches(sign, record); });
        if (found) return *sign.refusal;
    }
    return Refusal::unclear;
}

std::optional<Loss> lossOf(int number) {
    const auto* found = std::find_if(std::begin(kSigns), std::end(kSigns),
                                     [&](const Sign& sign) { return sign.number == number && sign.loss; });
    return found == std::end(kSigns) ? std::nullopt : found->loss;
}

}  // namespace orvenmod::store::odbc
