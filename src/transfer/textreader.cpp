// Texts of separated values: UTF-8 or GB18030, with or without a mark, by comma, semicolon or tabulator.
#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <memory>

#include "transfer/sheetfile.h"

namespace orvenmod {

namespace {

constexpr std::size_t kRowsAStep = 1000;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kGbMark = "\x84\x31\x95\x33";

std::string contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (file.bad()) throw UnreadableFile("文件读不出：" + path);
    return text;
}

struct CloseConverter {
    void operator()(iconv_t converter) const { iconv_close(converter); }
};

/// Converts to UTF-8; false where the text isn't of the encoding.
bool convert(const std::string& text, const char* encoding, std::string& converted) {
    const std::unique_ptr<void, CloseConverter> converter(iconv_open("UTF-8", encoding));
    char* from = const_cast<char*>(text.data());  // the library's signature; it doesn't write there
    std::size_t left = text.size();
    std::array<char, 1 << 16> part{};
    converted.clear();
    while (left > 0) {
        char* to = part.data();
        std::size_t room = part.size();
        const std::size_t result = iconv(converter.get(), &from, &left, &to, &room);
        converted.append(part.data(), part.size() - room);
        if (result == static_cast<std::size_t>(-1) && errno != E2BIG) return false;
    }
    return true;
}

std::string toUtf8(std::string text, const FileChoice& choice) {
    std::string converted;
    const bool marked = text.starts_with(kUtf8Mark);
    if (marked) text.erase(0, kUtf8Mark.size());
    if (choice.encoding != TextEncoding::gb18030 && convert(text, "UTF-8", converted)) return converted;
    if (choice.encoding != TextEncoding::utf8 && !marked && convert(text, "GB18030", converted))
        return text.starts_with(kGbMark) ? converted.substr(kUtf8Mark.size()) : converted;
    throw UnreadableFile("文字编码不对，不是" +
                         std::string(choice.encoding == TextEncoding::gb18030 ? "GB18030" : "UTF-8") + "：" +
                         choice.path);
}

// With plain line ends: the parser knows no other behind a quoted value.
void makeLineEndsPlain(std::string& text) {
    std::size_t kept = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n') continue;
        text[kept++] = text[at] == '\r' ? '\n' : text[at];
    }
    text.resize(kept);
}

// The one that the first line has most of, outside of quotes.
char separatorOf(std::string_view text) {
    constexpr std::string_view kSeparators = ",;\t";
    std::array<int, kSeparators.size()> counts{};
    bool quoted = false;
    for (const char letter : text) {
        if (letter == '\n' && !quoted) break;
        if (letter == '"') quoted = !quoted;
        const std::size_t place = kSeparators.find(letter);
        if (!quoted && place != std::string_view::npos) ++counts[place];
    }
    return kSeparators[static_cast<std::size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin())];
}

/// Splits the text. A value in quotation marks may hold separators, line ends and doubled marks.
class Splitter {
public:
    Splitter(std::string_view text, char separator, SheetRows& rows, const WhileReading& meanwhile)
        : text_(text), separator_(separator), rows_(rows), meanwhile_(meanwhile) {}

    /// False where a mark isn't closed; row() is that of its value then.
    bool split() {
        while (at_ < text_.size()) {
            std::string value;
            const std::size_t row = row_;
            if (!takeValue(value)) return false;
            if (!value.empty()) rows_.put(row, column_, {CellKind::text, std::move(value)});
            endValue();
        }
        rows_.finish();
        return true;
    }
    std::size_t row() const { return row_; }

private:
    bool takeValue(std::string& value) {
        if (text_[at_] == '"' && !takeQuoted(value)) return false;
        // What stands behind a closing mark belongs to the value as well.
        const std::size_t end = std::min(text_.find_first_of(std::string{separator_, '\n'}, at_), text_.size());
        value.append(text_.substr(at_, end - at_));
        at_ = end;
        return true;
    }

    bool takeQuoted(std::string& value) {
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] == '"') {
                ++at_;
                if (at_ >= text_.size() || text_[at_] != '"') return true;
            }
            value += text_[at_];
        }
        return false;
    }

    void endValue() {
        if (at_ >= text_.size()) return;
        ++column_;
        if (text_[at_++] != '\n') return;
        column_ = 0;
        if (++row_ % kRowsAStep == 0) meanwhile_();
    }

    std::string_view text_;
    char separator_;
    SheetRows& rows_;
    const WhileReading& meanwhile_;
    std::size_t at_ = 0;
    std::size_t row_ = 0;
    int column_ = 0;
};

}  // namespace

SheetFile readText(const FileChoice& choice, const WhileReading& meanwhile) {
    std::string text = toUtf8(contents(choice.path), choice);
    if (text.find('\0') != std::string::npos) throw UnreadableFile("不是文本文件：" + choice.path);
    makeLineEndsPlain(text);
    SheetFile file;
    Splitter splitter(text, choice.separator != 0 ? choice.separator : separatorOf(text), file.rows, meanwhile);
    if (!splitter.split())
        throw UnreadableFile("第" + std::to_string(splitter.row() + 1) + "行的引号不成对：" + choice.path);
    return file;
}

}  // namespace orvenmod
