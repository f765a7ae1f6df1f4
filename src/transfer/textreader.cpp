// Texts of separated values: UTF-8 or GB18030, with or without a mark, by comma, semicolon or tabulator. Read block by
// block: of a file of any size a block is in memory beside the rows that were read.
#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>

#include "transfer/sheetfile.h"

namespace orvenmod {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// The text isn't of the encoding.
struct OtherEncoding {};

/// A file's text as UTF-8, a block at a time.
class Blocks {
public:
    Blocks(const std::string& path, const char* encoding)
        : path_(path), file_(path, std::ios::binary), converter_(iconv_open("UTF-8", encoding)) {}
    ~Blocks() { iconv_close(converter_); }
    Blocks(const Blocks&) = delete;
    Blocks& operator=(const Blocks&) = delete;

    /// The next one, without the mark; false at the end. Throws OtherEncoding, UnreadableFile.
    bool next(std::string& text) {
        file_.read(raw_.data() + left_, static_cast<std::streamsize>(raw_.size() - left_));
        if (file_.bad()) throw UnreadableFile("文件读不出：" + path_);
        const auto came = static_cast<std::size_t>(file_.gcount());
        if (came == 0 && left_ > 0) throw OtherEncoding();
        if (came == 0) return false;
        convert(left_ + came, text);
        if (position_ == 0 && text.starts_with(kUtf8Mark)) text.erase(0, kUtf8Mark.size());
        position_ += came;
        return true;
    }
    std::uint64_t position() const { return position_; }

private:
    // What a letter begins at the block's end is completed by the next one.
    void convert(std::size_t bytes, std::string& text) {
        text.clear();
        char* from = raw_.data();
        left_ = bytes;
        while (left_ > 0) {
            char* to = converted_.data();
            std::size_t room = converted_.size();
            const std::size_t result = iconv(converter_, &from, &left_, &to, &room);
            const int problem = errno;
            text.append(converted_.data(), converted_.size() - room);
            if (result != static_cast<std::size_t>(-1) || problem == E2BIG) continue;
            if (problem != EINVAL) throw OtherEncoding();
            break;
        }
        std::copy(from, from + left_, raw_.data());
    }

    const std::string& path_;
    std::ifstream file_;
    iconv_t converter_;
    std::array<char, 1 << 16> raw_{};
    std::array<char, 1 << 16> converted_{};
    std::size_t left_ = 0;
    std::uint64_t position_ = 0;
};

// The one that the first line has most of, outside of quotes.
char separatorOf(std::string_view text) {
    constexpr std::string_view kSeparators = ",;\t";
    std::array<int, kSeparators.size()> counts{};
    bool quoted = false;
    for (const char letter : text) {
        if ((letter == '\n' || letter == '\r') && !quoted) break;
        if (letter == '"') quoted = !quoted;
        const std::size_t place = kSeparators.find(letter);
        if (!quoted && place != std::string_view::npos) ++counts[place];
    }
    return kSeparators[static_cast<std::size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin())];
}

/// Splits a text that comes in parts. A value in quotation marks may hold separators, line ends and doubled marks.
class Splitter {
public:
    Splitter(char separator, SheetRows& rows) : separator_(separator), rows_(rows) {}

    void take(std::string_view part) {
        for (const char letter : part) {
            // Every line end counts as the plain one.
            if (letter != '\n' || !afterReturn_) takeLetter(letter == '\r' ? '\n' : letter);
            afterReturn_ = letter == '\r';
        }
    }

    /// No more comes. False where a mark isn't closed; row() is that of its value then.
    bool finish() {
        if (place_ == Place::quoted) return false;
        putValue();
        rows_.finish();
        return true;
    }
    std::size_t row() const { return row_; }

private:
    enum class Place { begin, plain, quoted, behindMark };

    void takeLetter(char letter) {
        if (place_ == Place::quoted) {
            if (letter == '"') {
                place_ = Place::behindMark;
            } else {
                value_ += letter;
            }
        } else if (letter == '"' && place_ != Place::plain) {
            if (place_ == Place::behindMark) value_ += letter;
            place_ = Place::quoted;
        } else if (letter == separator_ || letter == '\n') {
            endValue(letter == '\n');
        } else {
            // What stands behind a closing mark belongs to the value as well.
            place_ = Place::plain;
            value_ += letter;
        }
    }

    void endValue(bool endsRow) {
        putValue();
        place_ = Place::begin;
        column_ = endsRow ? 0 : column_ + 1;
        if (endsRow) ++row_;
    }

    void putValue() {
        if (!value_.empty()) rows_.put(row_, column_, {CellKind::text, std::move(value_)});
        value_.clear();
    }

    char separator_;
    SheetRows& rows_;
    Place place_ = Place::begin;
    bool afterReturn_ = false;
    std::string value_;
    std::size_t row_ = 0;
    int column_ = 0;
};

/// The file's bytes are read once for each pass; each tells how far all of them have come.
class Passes {
public:
    Passes(const std::string& path, int passes, const WhileReading& meanwhile) : meanwhile_(meanwhile) {
        std::error_code none;
        size_ = std::filesystem::file_size(path, none);
        whole_ = size_ * static_cast<std::uint64_t>(passes);
    }
    void tell(std::uint64_t position) const { meanwhile_(before_ + position, whole_); }
    void endOne() { before_ += size_; }

private:
    const WhileReading& meanwhile_;
    std::uint64_t size_ = 0;
    std::uint64_t whole_ = 0;
    std::uint64_t before_ = 0;
};

bool isUtf8(const std::string& path, Passes& passes) {
    Blocks blocks(path, "UTF-8");
    std::string text;
    bool utf8 = true;
    try {
        while (blocks.next(text))
            passes.tell(blocks.position());
    } catch (const OtherEncoding&) {
        utf8 = false;
    }
    passes.endOne();
    return utf8;
}

bool isMarked(const std::string& path) {
    std::array<char, kUtf8Mark.size()> head{};
    std::ifstream(path, std::ios::binary).read(head.data(), head.size());
    return std::string_view(head.data(), head.size()) == kUtf8Mark;
}

}  // namespace

SheetFile readText(const FileChoice& choice, const WhileReading& meanwhile) {
    const bool detects = choice.encoding == TextEncoding::detected && !isMarked(choice.path);
    Passes passes(choice.path, detects ? 2 : 1, meanwhile);
    const bool utf8 = detects ? isUtf8(choice.path, passes) : choice.encoding != TextEncoding::gb18030;
    SheetFile file;
    try {
        Blocks blocks(choice.path, utf8 ? "UTF-8" : "GB18030");
        std::string text;
        bool more = blocks.next(text);
        Splitter splitter(choice.separator != 0 ? choice.separator : separatorOf(text), file.rows);
        for (; more; more = blocks.next(text)) {
            if (text.find('\0') != std::string::npos) throw UnreadableFile("不是文本文件：" + choice.path);
            splitter.take(text);
            passes.tell(blocks.position());
        }
        if (splitter.finish()) return file;
        throw UnreadableFile("第" + std::to_string(splitter.row() + 1) + "行的引号不成对：" + choice.path);
    } catch (const OtherEncoding&) {
        throw UnreadableFile("文字编码不对，不是" +
                             std::string(choice.encoding == TextEncoding::gb18030 ? "GB18030" : "UTF-8") + "：" +
                             choice.path);
    }
}

}  // namespace orvenmod
