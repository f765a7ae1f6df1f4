#include "store/odbc/lostsession.h"

#include <algorithm>
#include <iterator>

#include "store/tsql/failurenumbers.h"

namespace orvenmod::store::odbc {

namespace {

struct Cause {
    int number;  // the server's, or the driver's
    const char* chinese;
    const char* english;
};

constexpr const char* kNoAnswerChinese = "服务器没有应答。";
constexpr const char* kNoAnswerEnglish = "The server did not answer.";
constexpr const char* kClosedChinese = "服务器关闭了连接。";
constexpr const char* kClosedEnglish = "The server closed the connection.";

constexpr Cause kCauses[] = {
    {233, kClosedChinese, kClosedEnglish},
    {596, "会话已被管理员终止。", "The session was killed by an administrator."},
    {6005, "服务器正在关闭。", "The server is shutting down."},
    {6006, "服务器正在关闭。", "The server is shutting down."},
    {10053, kClosedChinese, kClosedEnglish},
    {10054, kClosedChinese, kClosedEnglish},
    {10060, kNoAnswerChinese, kNoAnswerEnglish},
    {20003, kNoAnswerChinese, kNoAnswerEnglish},
    {20004, kClosedChinese, kClosedEnglish},
    {20006, kClosedChinese, kClosedEnglish},
    {20009, "服务器不可用。", "The server is not available."},
    {20017, kClosedChinese, kClosedEnglish},
    {20047, kClosedChinese, kClosedEnglish},
};

const Cause* causeOf(int number) {
    const auto* found =
        std::find_if(std::begin(kCauses), std::end(kCauses), [&](const Cause& c) { return c.number == number; });
    return found == std::end(kCauses) ? nullptr : found;
}

}  // namespace

bool endsSession(int number) { return causeOf(number) != nullptr; }

Failure lostSession(const std::string& server, const Failure& reported, tsql::Language language) {
    const bool english = language == tsql::Language::english;
    const Failure lost = tsql::worded(language, tsql::kConnectionLost, {server});
    const Cause* known = causeOf(reported.number());
    const char* cause = known == nullptr ? (english ? "The network connection is gone." : "网络连接已断开。")
                                         : (english ? known->english : known->chinese);
    return {lost.kind(), lost.number(), lost.text() + "\n" + cause + "\n" + reported.text()};
}

}  // namespace orvenmod::store::odbc
