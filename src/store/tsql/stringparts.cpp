#include "store/tsql/stringparts.h"

#include <charconv>
#include <string_view>

#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {

namespace {

constexpr int kBusyMilliseconds = 5000;
constexpr int kConnectSeconds = 15;

struct Unit {
    const char* chinese;
    const char* english;
};
constexpr Unit kMilliseconds{"毫秒数", "count of milliseconds"};
constexpr Unit kSeconds{"秒数", "count of seconds"};

// Of the first of the keys that the string names.
int numberOf(const ConnectionString& parts, std::initializer_list<const char*> keys, Unit unit, int fallback) {
    for (const char* key : keys) {
        if (!parts.has(key)) continue;
        const std::string text = parts.get(key);
        int number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error == std::errc() && end == text.data() + text.size() && number >= 0) return number;
        const std::string pair = std::string(key) + "=" + text;
        throw refusedString(languageOf(parts), pair + " 不是" + unit.chinese, pair + " is no " + unit.english);
    }
    return fallback;
}

}  // namespace

Language languageOf(const ConnectionString& parts) {
    const std::string language = lowerText(parts.get("Language"));
    return language == "us_english" || language == "english" ? Language::english : Language::chinese;
}

Failure refusedString(Language language, const std::string& chinese, const std::string& english) {
    return worded(language, kBadConnectionString, {language == Language::english ? english : chinese});
}

Failure refusedKey(const ConnectionString& parts, const std::string& key, const std::string& chinese,
                   const std::string& english) {
    std::string_view before;
    for (const auto& [name, value] : parts.parts()) {
        if (name == key) break;
        before = name;
    }
    const Language language = languageOf(parts);
    if (!before.ends_with("password") && !before.ends_with("pwd")) return refusedString(language, chinese, english);
    return refusedString(language, "密码之后的一段不可识别，含“;”的密码须加引号",
                         "the part behind the password is not known; a password with ';' stands in quotes");
}

std::chrono::milliseconds busyTimeout(const ConnectionString& parts) {
    return std::chrono::milliseconds(numberOf(parts, {"Busy Timeout"}, kMilliseconds, kBusyMilliseconds));
}

std::chrono::seconds connectTimeout(const ConnectionString& parts) {
    return std::chrono::seconds(numberOf(parts, {"Connect Timeout", "Connection Timeout"}, kSeconds, kConnectSeconds));
}

}  // namespace orvenmod::store::tsql
