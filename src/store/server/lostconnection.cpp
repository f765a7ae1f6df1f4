#include "store/server/lostconnection.h"

namespace orvenmod::store::server {

namespace {

const char* causeText(Loss loss, tsql::Language language) {
    const bool english = language == tsql::Language::english;
    switch (loss) {
        case Loss::closed:
            return english ? "The server closed the connection." : "服务器关闭了连接。";
        case Loss::silent:
            return english ? "The server did not answer." : "服务器没有应答。";
        case Loss::killed:
            return english ? "The session was killed by an administrator." : "会话已被管理员终止。";
        case Loss::shuttingDown:
            return english ? "The server is shutting down." : "服务器正在关闭。";
        case Loss::unavailable:
            return english ? "The server is not available." : "服务器不可用。";
        case Loss::unclear:
            break;
    }
    return english ? "The network connection is gone." : "网络连接已断开。";
}

}  // namespace

Failure lostConnection(const std::string& server, Loss loss, const std::string& words, Outcome outcome,
                       tsql::Language language) {
    const int number = outcome == Outcome::unknown ? tsql::kCommitUnknown : tsql::kConnectionLost;
    const Failure lost = tsql::worded(language, number, {server});
    std::string text = lost.text() + "\n" + causeText(loss, language);
    if (!words.empty()) text += "\n" + words;
    return {lost.kind(), lost.number(), text};
}

}  // namespace orvenmod::store::server
