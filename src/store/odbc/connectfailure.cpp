#include "store/odbc/connectfailure.h"

#include <algorithm>

#include "store/odbc/nativesigns.h"

namespace orvenmod::store::odbc {

namespace {

using tsql::Language;

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

const char* reasonOf(Refusal cause, Language language) {
    const bool english = language == Language::english;
    switch (cause) {
        case Refusal::noHost:
            return english ? "no host of that name is known." : "找不到这台主机。";
        case Refusal::refused:
            return english ? "no server listens at that address, or a firewall is in between."
                           : "该地址上没有服务器在监听，或者被防火墙阻挡。";
        case Refusal::ended:
            return english ? "the server ended the connection." : "服务器中断了连接。";
        case Refusal::notTaken:
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
    const Refusal cause = refusalOf(records);
    const Diagnostic* telling = tellingRecord(records);
    const std::string words = telling == nullptr ? "" : telling->text;
    switch (cause) {
        case Refusal::login:
            return tsql::worded(language, tsql::kLoginFailed, {string.user});
        case Refusal::database:
            return tsql::worded(language, tsql::kCannotOpenDatabase, {string.database});
        case Refusal::silent:
            return serverSilent(string, limit, language);
        case Refusal::noHost:
        case Refusal::refused:
            return tsql::worded(language, tsql::kServerUnreachable, {string.server, reasonOf(cause, language)});
        case Refusal::driver:
            return {FailureKind::connection, 0, words};
        case Refusal::ended:
        case Refusal::notTaken:
        case Refusal::unclear:
            break;
    }
    std::string reason = reasonOf(cause, language);
    if (string.integrated && cause != Refusal::ended) reason = ticketReason(language);
    if (reason.empty()) reason = words;
    if (string.encrypted) {
        // It accepts no login without the encryption, which says nothing of the login.
        const bool unsaid = cause == Refusal::notTaken && !string.integrated;
        return tsql::worded(language, tsql::kNotEncrypted, {string.server, unsaid ? "" : reason});
    }
    return tsql::worded(language, tsql::kServerUnreachable, {string.server, reason});
}

bool isServerAway(const Failure& failure) {
    return failure.number() == tsql::kServerUnreachable || failure.number() == tsql::kServerSilent ||
           failure.number() == tsql::kCannotOpenDatabase;
}

}  // namespace orvenmod::store::odbc
