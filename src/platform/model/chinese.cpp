#include "platform/model/chinese.h"

#include <unicode/coll.h>
#include <unicode/translit.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <stdexcept>

namespace orvenmod::platform::model {

namespace {

constexpr char16_t kFirstHan = 0x3007;  // 〇, which stands before the others
constexpr char16_t kLastHan = 0x9FFF;

void require(UErrorCode error, const char* what) {
    if (U_FAILURE(error)) throw std::runtime_error(std::string(what) + ": " + u_errorName(error));
}

std::unique_ptr<icu::Collator> newCollator() {
    UErrorCode error = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(
        icu::Collator::createInstance(icu::Locale::createFromName("zh-u-co-pinyin"), error));
    require(error, "ICU collation");
    collator->setAttribute(UCOL_STRENGTH, UCOL_PRIMARY, error);
    require(error, "ICU collation");
    return collator;
}

std::unique_ptr<icu::Transliterator> newTransliterator(const char* id) {
    UErrorCode error = U_ZERO_ERROR;
    std::unique_ptr<icu::Transliterator> made(icu::Transliterator::createInstance(id, UTRANS_FORWARD, error));
    require(error, id);
    return made;
}

icu::UnicodeString wide(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

/// The readings of all characters met so far.
class Readings {
public:
    std::uint16_t number(char16_t character) {
        if (character < kFirstHan || character > kLastHan) return 0;
        std::uint16_t& known = numbers_[character - kFirstHan];
        if (known == kUnknown) known = numberFor(read(character));
        return known;
    }
    const std::vector<std::string>& ofNumber(std::uint16_t number) const { return *sets_[number]; }
    std::size_t count() const { return sets_.size(); }

private:
    static constexpr std::uint16_t kUnknown = 0xFFFF;

    /// By the usual reading and by the one that names have.
    std::vector<std::string> read(char16_t character) const {
        std::vector<std::string> readings;
        const auto add = [&](const std::string& reading) {
            const bool letters = std::ranges::all_of(reading, [](char c) { return c >= 'a' && c <= 'z'; });
            if (letters && !reading.empty() && std::ranges::find(readings, reading) == readings.end())
                readings.push_back(reading);
        };
        for (const auto* road : {&usual_, &names_}) {
            icu::UnicodeString text(character);
            (*road)->transliterate(text);
            for (const char* vowel : {"u", "v"}) {
                icu::UnicodeString letters(text);
                for (const char16_t* each = u"\u00FC\u01D6\u01D8\u01DA\u01DC"; *each != 0; ++each)
                    letters.findAndReplace(icu::UnicodeString(*each), icu::UnicodeString(vowel));
                plain_->transliterate(letters);
                std::string reading;
                add(letters.toUTF8String(reading));
            }
        }
        return readings;
    }

    std::uint16_t numberFor(const std::vector<std::string>& readings) {
        const auto [place, added] = known_.try_emplace(readings, static_cast<std::uint16_t>(sets_.size()));
        if (added) sets_.push_back(&place->first);
        return place->second;
    }

    std::unique_ptr<icu::Transliterator> usual_ = newTransliterator("Han-Latin");
    std::unique_ptr<icu::Transliterator> names_ = newTransliterator("Han-Latin/Names");
    std::unique_ptr<icu::Transliterator> plain_ = newTransliterator("Latin-ASCII");
    std::vector<std::uint16_t> numbers_ = std::vector<std::uint16_t>(kLastHan - kFirstHan + 1, kUnknown);
    std::map<std::vector<std::string>, std::uint16_t> known_ = {{{}, 0}};
    std::vector<const std::vector<std::string>*> sets_ = {&known_.begin()->first};
};

Readings& readings() {
    static Readings all;
    return all;
}

}  // namespace

void appendCollationKey(std::string_view text, std::vector<unsigned char>& bytes) {
    static const std::unique_ptr<icu::Collator> collator = newCollator();
    constexpr std::int32_t kUsual = 128;
    const auto length = static_cast<std::int32_t>(text.size());
    std::array<UChar, kUsual> few;
    std::vector<UChar> many(length > kUsual ? static_cast<std::size_t>(length) : 0);
    UChar* units = many.empty() ? few.data() : many.data();
    std::int32_t count = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8WithSub(units, std::max(kUsual, length), &count, text.data(), length, 0xFFFD, nullptr, &error);
    require(error, "ICU");
    const std::size_t from = bytes.size();
    const auto room = static_cast<std::size_t>(count) * 4 + 8;
    bytes.resize(from + room);
    auto used = static_cast<std::size_t>(
        collator->getSortKey(units, count, bytes.data() + from, static_cast<std::int32_t>(room)));
    bytes.resize(from + used);
    if (used > room) collator->getSortKey(units, count, bytes.data() + from, static_cast<std::int32_t>(used));
    // What a collation ignores altogether is a text nevertheless: its closing zero stays as its key.
    if (used > 1) bytes.pop_back();
}

std::u16string folded(std::string_view text) {
    std::u16string units;
    if (std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
        units.assign(text.begin(), text.end());
        for (char16_t& unit : units)
            if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit - u'A' + u'a');
        return units;
    }
    icu::UnicodeString whole = wide(text);
    whole.foldCase();
    constexpr char16_t kWideFirst = 0xFF01;
    constexpr char16_t kWideLast = 0xFF5E;
    for (std::int32_t i = 0; i < whole.length(); ++i) {
        const char16_t unit = whole.charAt(i);
        const bool isWide = unit >= kWideFirst && unit <= kWideLast;
        units += isWide ? static_cast<char16_t>(unit - kWideFirst + u'!') : unit == 0x3000 ? u' ' : unit;
    }
    return units;
}

const std::vector<std::string>& readingsOf(char16_t character) { return readingsOfNumber(readingNumber(character)); }

std::uint16_t readingNumber(char16_t character) { return readings().number(character); }

const std::vector<std::string>& readingsOfNumber(std::uint16_t number) { return readings().ofNumber(number); }

std::size_t readingNumbers() { return readings().count(); }

}  // namespace orvenmod::platform::model
