#include "store/connectionstring.h"

#include <algorithm>

#include "store/text.h"

namespace orvenmod::store {

namespace {

char closingFor(char opening) {
    switch (opening) {
        case '{':
            return '}';
        case '"':
        case '\'':
            return opening;
        default:
            return '\0';
    }
}

// Reads the value that starts at `at` and leaves `at` behind its ';'. In a value within braces or quotes the closing
// sign is written twice.
std::string readValue(std::string_view text, std::size_t& at) {
    at = std::min(text.find_first_not_of(" \t\r\n", at), text.size());
    const char closing = at < text.size() ? closingFor(text[at]) : '\0';
    if (closing == '\0') {
        const std::size_t end = std::min(text.find(';', at), text.size());
        const std::string_view value = trimmed(text.substr(at, end - at));
        at = end + 1;
        return std::string(value);
    }
    std::string value;
    for (++at; at < text.size(); ++at) {
        if (text[at] == closing) {
            if (at + 1 >= text.size() || text[at + 1] != closing) break;
            ++at;
        }
        value += text[at];
    }
    at = std::min(text.find(';', std::min(at, text.size())), text.size()) + 1;
    return value;
}

}  // namespace

ConnectionString::ConnectionString(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = text.find_first_of("=;", at);
        if (end == std::string_view::npos || text[end] == ';') {
            looseText_ = looseText_ || !trimmed(text.substr(at, end - at)).empty();
            at = std::min(end, text.size()) + 1;
            continue;
        }
        std::string key = asciiLower(trimmed(text.substr(at, end - at)));
        at = end + 1;
        parts_.emplace_back(std::move(key), readValue(text, at));
    }
}

std::string ConnectionString::get(std::string_view key, std::string_view fallback) const {
    const std::string wanted = asciiLower(trimmed(key));
    for (auto part = parts_.rbegin(); part != parts_.rend(); ++part) {
        if (part->first == wanted) return part->second;
    }
    return std::string(fallback);
}

bool ConnectionString::has(std::string_view key) const {
    const std::string wanted = asciiLower(trimmed(key));
    return std::any_of(parts_.begin(), parts_.end(), [&](const auto& part) { return part.first == wanted; });
}

}  // namespace orvenmod::store
