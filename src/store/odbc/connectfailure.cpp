#include "store/odbc/connectfailure.h"

#include <algorithm>
#include <string_view>

namespace orvenmod::store::odbc {

namespace {

using tsql::Language;

enum class Cause { login, database, silent, noHost, refused, ended, notTaken, driver, unclear };

// By the number of the server or of the driver; where that says nothing, by the standard's state.
struct Sign {
    int number;
    std::string_view state;
    Cause cause;
};
constexpr int kAny = -1;
constexpr Sign kSigns[] = {
    {18456, "", Cause::login},      {18452, "", Cause::login},      {4060, "", Cause::database},
    {911, "", Cause::database},     {kAny, "HYT00", Cause::silent}, {kAny, "HYT01", Cause::silent},
    {20003, "", Cause::silent},     {258, "", Cause::silent},       {10060, "", Cause::silent},
    {20013, "", Cause::noHost},     {11001, "", Cause::noHost},     {20009, "", Cause::refused},
    {10061, "", Cause::refused},    {111, "", Cause::refused},      {20017, "", Cause::ended},
    {20006, "", Cause::ended},      {10054, "", Cause::ended},      {kAny, "28000", Cause::login},
    {kAny, "IM002", Cause::driver}, {kAny, "IM003", Cause::driver}, {kAny, "IM004", Cause::driver},
    {20002, "", Cause::notTaken}};

bool matches(const Sign& sign, const Diagnostic& record) {
    return (sign.number == kAny || sign.number == record.number) && (sign.state.empty() || sign.state == record.state);
}

Cause causeOf(const std::vector<Diagnostic>& records) {
    for (const Sign& sign : kSigns) {
        const bool found = std::any_of(records.begin(), records.end(),
                                       [&](const Diagnostic& record) { return matches(sign, record); });
        if (found) return sign.cause;
    }
    return Cause::unclear;
}

// The record that says most: one with a number of the server's own, else of the driver's, else the first.
const Diagnostic* tellingRecord(const std::vector<Diagnostic>& records) {
    const auto rank = [](const Diagnostic& record) {
        constexpr int kFirstOfFreeTds = 20000;
        constexpr int kLastOfFreeTds = 20999;
        if (record.number == 0) return 0;
        return record.number >= kFirstOfFreeTds && record.number <= kLastOfFreeTds ? 1 : 2;
    };
    const auto best = std::max_element(records.begin(), records.end(),
                                       [&](const auto& left, const auto& right) { return rank(left) < rank(right); });
    return best == records.end() ? nullptr : &*best;
}

const char* reasonOf(Cause cause, Language language) {
    const bool english = language == Language::english;
    switch (cause) {
        case Cause::noHost:
            return english ? "no host of that name is known." : "找不到这台主机。";
        case Cause::refused:
            return english ? "no server listens at that address, or a firewall is in between."
                           : "该地址上没有服务器在监听，或者被防火墙阻挡。";
        case Cause::ended:
            return english ? "the server ended the connection." : "服务器中断了连接。";
        case Cause::notTaken:
            return english ? "the server did not accept the login." : "服务器没有接受登录。";
        default:
            return "";
    }
}

const char* ticketReason(Language language) {
    return language == Language::english
               ? "the login of the operating system failed; is there a Kerberos ticket (kinit)?"
               : "操作系统的集成登录失败，请检查 Kerberos 票据 (kinit)。";
}

}  // namespace

Failure serverSilent(const ServerString& string, std::chrono::seconds limit, Language language) {
    return tsql::worded(language, tsql::kServerSilent, {string.server, std::to_string(limit.count())});
}

Failure connectFailure(const std::vector<Diagnostic>& records, const ServerString& string, std::chrono::seconds limit,
                       Language language) {
    const Cause cause = causeOf(records);
    const Diagnostic* telling = tellingRecord(records);
    const std::string words = telling == nullptr ? "" : telling->text;
    switch (cause) {
        case Cause::login:
            return tsql::worded(language, tsql::kLoginFailed, {string.user});
        case Cause::database:
            return tsql::worded(language, tsql::kCannotOpenDatabase, {string.database});
        case Cause::silent:
            return serverSilent(string, limit, language);
        case Cause::noHost:
        case Cause::refused:
            return tsql::worded(language, tsql::kServerUnreachable, {string.server, reasonOf(cause, language)});
        case Cause::driver:
            return {FailureKind::connection, 0, words};
        case Cause::ended:
        case Cause::notTaken:
        case Cause::unclear:
            break;
    }
    std::string reason = reasonOf(cause, language);
    if (string.integrated && cause != Cause::ended) reason = ticketReason(language);
    if (reason.empty()) reason = words;
    if (string.encrypted) {
        // It accepts no login without the encryption, which says nothing of the login.
        const bool unsaid = cause == Cause::notTaken && !string.integrated;
        return tsql::worded(language, tsql::kNotEncrypted, {string.server, unsaid ? "" : reason});
    }
    return tsql::worded(language, tsql::kServerUnreachable, {string.server, reason});
}

bool isServerAway(const Failure& failure) {
    return failure.number() == tsql::kServerUnreachable || failure.number() == tsql::kServerSilent ||
           failure.number() == tsql::kCannotOpenDatabase;
}

}  // namespace orvenmod::store::odbc
