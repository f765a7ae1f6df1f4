// The server sorts Chinese by its sound, as a clerk looks a name up; SQLite by the bytes, which puts 啊 behind 中. The
// national code lists its first 3,755 characters by their pinyin, so that the place in it is the rank, and no table of
// our own is needed. Each character gets a weight, by class first:
//
//   signs, digits           by their code           (  1  9  _
//   Chinese in the code     by their place in it    啊 中
//   other Chinese           by their code point
//   letters                 without case            a  A10 before a9
//   other letters           without case            é
#include "store/tsql/textorder.h"

#include <iconv.h>

#include <array>
#include <cstdint>

#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {

namespace {

constexpr char32_t kFirstHan = 0x4E00;
constexpr char32_t kLastHan = 0x9FFF;
using Ranks = std::array<std::uint16_t, kLastHan - kFirstHan + 1>;

// The place of each character in the national code; behind those by pinyin stand the rarer ones by radical. Where the
// system doesn't know that code, the order is that of Unicode.
Ranks readRanks() {
    Ranks ranks{};
    const iconv_t converter = iconv_open("UTF-16LE", "GB2312");
    if (converter == reinterpret_cast<iconv_t>(-1)) return ranks;
    for (unsigned high = 0xB0; high <= 0xF7; ++high) {
        for (unsigned low = 0xA1; low <= 0xFE; ++low) {
            char input[2] = {static_cast<char>(high), static_cast<char>(low)};
            unsigned char output[4] = {};
            char* from = input;
            char* to = reinterpret_cast<char*>(output);
            std::size_t left = sizeof input;
            std::size_t room = sizeof output;
            iconv(converter, nullptr, nullptr, nullptr, nullptr);
            if (iconv(converter, &from, &left, &to, &room) == static_cast<std::size_t>(-1)) continue;
            const char32_t character = static_cast<char32_t>(output[0] | (output[1] << 8));
            if (character < kFirstHan || character > kLastHan) continue;
            ranks[character - kFirstHan] = static_cast<std::uint16_t>((high << 8) | low);
        }
    }
    iconv_close(converter);
    return ranks;
}

bool isHan(char32_t c) {
    return (c >= 0x2E80 && c <= 0x2FDF) || (c >= 0x3400 && c <= kLastHan) || (c >= 0xF900 && c <= 0xFAFF) ||
           c >= 0x20000;
}

std::uint32_t weight(char32_t c) {
    constexpr std::uint32_t kHan = 0x1000'0000;
    constexpr std::uint32_t kRareHan = kHan + 0x0100'0000;
    constexpr std::uint32_t kLetter = 0x2000'0000;
    constexpr std::uint32_t kOtherLetter = 0x3000'0000;
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (c < 0x80) return letter ? kLetter + (c | 0x20) : c;
    if (isHan(c)) {
        static const Ranks kRanks = readRanks();
        const std::uint32_t rank = c >= kFirstHan && c <= kLastHan ? kRanks[c - kFirstHan] : 0U;
        return rank == 0 ? kRareHan + c : kHan + rank;
    }
    const bool sign =
        c < 0xC0 || (c >= 0x2000 && c < 0x2E80) || (c >= 0x3000 && c <= 0x303F) || (c >= 0xFF00 && c <= 0xFF0F);
    return sign ? c : kOtherLetter + lowerCharacter(c);
}

}  // namespace

int compareTexts(std::string_view left, std::string_view right) {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < left.size() && j < right.size()) {
        // Equal ASCII needs no weight.
        if (left[i] == right[j] && static_cast<unsigned char>(left[i]) < 0x80) {
            ++i;
            ++j;
            continue;
        }
        const std::uint32_t first = weight(nextCharacter(left, i));
        const std::uint32_t second = weight(nextCharacter(right, j));
        if (first != second) return first < second ? -1 : 1;
    }
    if (i == left.size() && j == right.size()) return 0;
    return i == left.size() ? -1 : 1;
}

}  // namespace orvenmod::store::tsql
