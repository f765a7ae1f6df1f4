#include "store/server/serverkeys.h"

#include <charconv>

#include "store/tsql/utf8.h"

namespace orvenmod::store::server {

namespace {

void readCount(const ConnectionString& parts, const char* key, const char* chinese, const char* english, int& count,
               tsql::Language language) {
    if (!parts.has(key)) return;
    const std::string text = parts.get(key);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error == std::errc() && end == text.data() + text.size() && count >= 0) return;
    const std::string given = std::string(key) + "=" + text;
    refuseString(language, given + " 不是" + chinese, given + " is no count of " + english);
}

}  // namespace

void refuseString(tsql::Language language, const std::string& chinese, const std::string& english) {
    const bool inEnglish = language == tsql::Language::english;
    throw tsql::worded(language, tsql::kBadConnectionString, {inEnglish ? english : chinese});
}

ServerKeys ServerKeys::parse(const ConnectionString& parts) {
    ServerKeys keys;
    const std::string language = tsql::lowerText(parts.get("Language"));
    if (language == "us_english" || language == "english") keys.language = tsql::Language::english;
    readCount(parts, "Connect Timeout", "秒数", "seconds", keys.connectTimeout, keys.language);
    readCount(parts, "Busy Timeout", "毫秒数", "milliseconds", keys.busyTimeout, keys.language);
    return keys;
}

}  // namespace orvenmod::store::server
