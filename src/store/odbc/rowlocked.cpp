#include "store/odbc/rowlocked.h"

#include <charconv>
#include <string>

#include "store/tsql/failurenumbers.h"

namespace orvenmod::store::odbc {

bool isRowLocked(const Failure& reported) {
    return reported.number() == tsql::kLockTimeout ||
           (reported.kind() == FailureKind::other && reported.text().find("due to lock timeout") != std::string::npos);
}

Failure rowLocked(const Failure& reported, std::chrono::milliseconds waited, tsql::Language language) {
    const Failure plain = tsql::worded(language, tsql::kLockTimeout, {});
    constexpr double kSecond = 1000;
    char number[32] = {};
    std::to_chars(number, number + sizeof number - 1, static_cast<double>(waited.count()) / kSecond);
    const std::string seconds = number;
    std::string text = plain.text() + "\n";
    text += language == tsql::Language::english
                ? "Another user is changing the same rows and had not finished after " + seconds + " s."
                : "另一个用户正在更改同样的数据，等待 " + seconds + " 秒后仍未完成。";
    if (plain.text() != reported.text()) text += "\n" + reported.text();
    return {plain.kind(), plain.number(), text};
}

}  // namespace orvenmod::store::odbc
