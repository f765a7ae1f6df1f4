#include "platform/desktop/initext.h"

#include <algorithm>

#include "platform/asciitext.h"

namespace orvenmod::platform::desktop {

namespace {

constexpr std::string_view kUtf8Mark = "\xef\xbb\xbf";

bool sameName(std::string_view left, std::string_view right) { return lowerCase(left) == lowerCase(right); }

bool isQuoted(std::string_view text) {
    return text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.front() == text.back();
}

/// The name of a section line; nothing for other lines.
std::optional<std::string_view> sectionName(std::string_view line) {
    line = withoutBlanks(line);
    // The last bracket: another encoding's letter may hold the byte of one.
    const std::size_t end = line.rfind(']');
    if (line.empty() || line.front() != '[' || end == std::string_view::npos) return std::nullopt;
    return withoutBlanks(line.substr(1, end - 1));
}

bool isComment(std::string_view line) {
    line = withoutBlanks(line);
    return line.empty() || line.front() == ';' || line.front() == '#';
}

bool fitsName(std::string_view name, std::string_view forbidden) {
    return !name.empty() && name == withoutBlanks(name) && name.find_first_of(forbidden) == std::string_view::npos;
}

}  // namespace

std::optional<std::string> IniText::value(std::string_view section, std::string_view key) const {
    const Place place = find(section, key);
    if (!place.found) return std::nullopt;
    std::string_view text =
        withoutBlanks(std::string_view(text_).substr(place.valueStart, place.valueEnd - place.valueStart));
    if (isQuoted(text)) text = text.substr(1, text.size() - 2);
    return std::string(text);
}

bool IniText::setValue(std::string_view section, std::string_view key, std::string_view value) {
    const bool utf16 = text_.rfind("\xff\xfe", 0) == 0 || text_.rfind("\xfe\xff", 0) == 0;
    constexpr std::string_view kLineEnds("\r\n\0", 3);
    if (utf16 || !fitsName(section, std::string_view("]\r\n\0", 4)) || !fitsName(key, std::string_view("=\r\n\0", 4)) ||
        key.front() == '[' || isComment(key) || value.find_first_of(kLineEnds) != std::string_view::npos) {
        return false;
    }
    if (this->value(section, key) == value) return true;
    std::string written(value);
    if (written != withoutBlanks(written) || isQuoted(written)) written = '"' + written + '"';
    const Place place = find(section, key);
    const std::string line = std::string(key) + "=" + written + lineEnd();
    if (place.found) {
        const std::string_view old =
            std::string_view(text_).substr(place.valueStart, place.valueEnd - place.valueStart);
        const std::size_t blanks = old.size() - old.substr(std::min(old.find_first_not_of(" \t"), old.size())).size();
        text_.replace(place.valueStart + blanks, place.valueEnd - place.valueStart - blanks, written);
    } else if (place.insertAt != std::string::npos) {
        addLines(place.insertAt, line);
    } else {
        addLines(text_.size(), "[" + std::string(section) + "]" + lineEnd() + line);
    }
    return true;
}

IniText::Place IniText::find(std::string_view section, std::string_view key) const {
    Place place;
    bool inside = false;
    bool grows = false;  // inside the first section of that name, which takes new keys
    std::size_t at = text_.rfind(kUtf8Mark, 0) == 0 ? kUtf8Mark.size() : 0;
    while (at < text_.size()) {
        const std::size_t end = std::min(text_.find_first_of("\r\n", at), text_.size());
        const std::string_view line = std::string_view(text_).substr(at, end - at);
        const std::size_t next = std::min(end + (text_.compare(end, 2, "\r\n") == 0 ? 2U : 1U), text_.size());
        const std::size_t equals = line.find('=');
        if (const auto name = sectionName(line)) {
            inside = sameName(*name, section);
            grows = inside && place.insertAt == std::string::npos;
            if (grows) place.insertAt = next;
        } else if (inside && !isComment(line) && equals != std::string_view::npos) {
            if (grows) place.insertAt = next;
            if (sameName(withoutBlanks(line.substr(0, equals)), key)) {
                place.valueStart = at + equals + 1;
                place.valueEnd = end;
                place.found = true;
                return place;
            }
        }
        at = next;
    }
    return place;
}

void IniText::addLines(std::size_t at, const std::string& lines) {
    const bool lineOpen = at > 0 && text_[at - 1] != '\n' && text_[at - 1] != '\r' && text_ != kUtf8Mark;
    text_.insert(at, (lineOpen ? lineEnd() : std::string()) + lines);
}

std::string IniText::lineEnd() const {
    const std::size_t end = text_.find_first_of("\r\n");
    if (end == std::string::npos) return "\n";
    if (text_.compare(end, 2, "\r\n") == 0) return "\r\n";
    return std::string(1, text_[end]);
}

}  // namespace orvenmod::platform::desktop
