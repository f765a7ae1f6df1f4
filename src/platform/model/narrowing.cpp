#include "platform/model/narrowing.h"

#include <algorithm>

#include "platform/model/chinese.h"

namespace orvenmod::platform::model {

namespace {

constexpr char16_t kBetweenCells = u'\n';  // no word holds it

bool isLetter(char16_t unit) { return unit >= u'a' && unit <= u'z'; }

/// The places of the word where these letters stand.
std::uint64_t placesOf(std::string_view letters, const std::u16string& word) {
    std::uint64_t places = 0;
    for (std::size_t at = 0; at + letters.size() <= word.size(); ++at) {
        if (std::equal(letters.begin(), letters.end(), word.begin() + static_cast<std::ptrdiff_t>(at)))
            places |= std::uint64_t{1} << at;
    }
    return places;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Whether commas part the text's digits by threes, and there is nothing but a number: "-1,244.50".
bool isGrouped(std::string_view text) {
    const std::size_t first = text.find(',');
    if (first == std::string_view::npos || first == 0 || !isDigit(text[first - 1])) return false;
    if (text.find_first_not_of("-0123456789,.%") != std::string_view::npos) return false;
    const std::string_view whole = text.substr(first, text.find_first_of(".%", first) - first);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        if ((whole[at] == ',') != (at % 4 == 0)) return false;
    }
    return whole.size() % 4 == 0;
}

}  // namespace

void SoughtTexts::addCell(std::string_view text) {
    if (text.empty()) return;
    if (isGrouped(text)) {
        // Whoever types a number types no commas.
        std::string plain(text);
        std::erase(plain, ',');
        addCell(plain);
    }
    const std::u16string cell = folded(text);
    // The readings are looked up now, so that no key waits for them.
    for (const char16_t unit : cell) {
        if (unit >= 0x80) readingNumber(unit);
    }
    units_ += cell;
    units_ += kBetweenCells;
}

SoughtWord::SoughtWord(std::u16string_view text) {
    const std::u16string word(text.substr(0, kLongest));
    whole_ = std::uint64_t{1} << word.size();
    for (std::size_t at = 0; at < word.size(); ++at) {
        const std::uint64_t place = std::uint64_t{1} << at;
        if (word[at] < ascii_.size()) {
            ascii_[word[at]] |= place;
            continue;
        }
        const auto known = std::ranges::find(others_, word[at], [](const auto& each) { return each.first; });
        if (known == others_.end())
            others_.emplace_back(word[at], place);
        else
            known->second |= place;
    }
    if (std::ranges::any_of(word, isLetter)) takeReadings(word);
}

void SoughtWord::takeReadings(const std::u16string& word) {
    steps_.resize(readingNumbers());
    for (std::size_t number = 0; number < steps_.size(); ++number) {
        for (const std::string& reading : readingsOfNumber(static_cast<std::uint16_t>(number))) {
            for (std::size_t units = 1; units <= reading.size(); ++units) {
                const std::uint64_t from = placesOf(std::string_view(reading).substr(0, units), word);
                if (from == 0) break;
                steps_[number].push_back({from, static_cast<unsigned>(units)});
            }
        }
    }
}

bool SoughtWord::in(std::u16string_view text) const {
    std::uint64_t reached = 0;
    for (const char16_t unit : text) {
        const std::uint64_t here = reached | 1;
        if (unit < ascii_.size()) {
            reached = (here & ascii_[unit]) << 1;
        } else {
            reached = 0;
            for (const auto& [other, places] : others_) {
                if (other == unit) reached = (here & places) << 1;
            }
            if (!steps_.empty()) {
                const std::uint16_t number = readingNumber(unit);
                if (number < steps_.size()) {
                    for (const Step& step : steps_[number])
                        reached |= (here & step.from) << step.units;
                }
            }
        }
        if ((reached & whole_) != 0) return true;
    }
    return false;
}

std::vector<SoughtWord> soughtWords(std::string_view typed) {
    std::vector<SoughtWord> words;
    const std::u16string all = folded(typed);
    for (std::size_t from = all.find_first_not_of(u" \t"); from != std::u16string::npos;) {
        const std::size_t end = std::min(all.find_first_of(u" \t", from), all.size());
        words.emplace_back(std::u16string_view(all).substr(from, end - from));
        from = all.find_first_not_of(u" \t", end);
    }
    return words;
}

}  // namespace orvenmod::platform::model
