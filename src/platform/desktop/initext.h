// The text of an ini file that belongs to somebody else, read and changed line by line, so that whatever isn't the
// changed value stays to the byte: order, comments, stray lines, line ends, a byte order mark, another encoding.
//
//     [section]          names compare without regard to case (ASCII); blanks around them don't count
//     ; or # comment
//     key = value        blanks around a value don't count, nor one pair of quotation marks around it
//
// Of several keys of one name in sections of one name the first counts.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orvenmod::platform::desktop {

class IniText {
public:
    explicit IniText(std::string text) : text_(std::move(text)) {}

    const std::string& text() const { return text_; }

    std::optional<std::string> value(std::string_view section, std::string_view key) const;

    /// Changes the value in its line, or adds the key behind the section's last one, or the section at the end.
    /// False, and nothing changed, for names or a value that no line can hold, and for a text in UTF-16.
    bool setValue(std::string_view section, std::string_view key, std::string_view value);

private:
    struct Place {
        std::size_t valueStart = 0, valueEnd = 0;  ///< of the found key's value
        std::size_t insertAt = std::string::npos;  ///< behind the section's last key; npos where there is no section
        bool found = false;
    };
    Place find(std::string_view section, std::string_view key) const;
    void addLines(std::size_t at, const std::string& lines);
    std::string lineEnd() const;

    std::string text_;
};

}  // namespace orvenmod::platform::desktop
