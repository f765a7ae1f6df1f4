#include "platform/sheet/xlsglobals.h"

#include "platform/sheet/biffrecords.h"
#include "platform/sheet/utf16.h"

namespace orvenmod::platform {

namespace {

constexpr unsigned kTextFormat = 49;  // "@"
constexpr unsigned kFirstOwnFormat = 164;
constexpr unsigned kStyleXfs = 15;
constexpr unsigned kBoldFont = 5;  // the fifth record: number 4 is left out by the format
constexpr std::size_t kLongestSheetName = 31;
constexpr unsigned kCellFlags = 0x0001;
constexpr unsigned kStyleFlags = 0xFFF5;

enum class Weight : unsigned { normal = 400, bold = 700 };

void addFont(std::string& stream, Weight weight) {
    Payload font;
    font.u16(200)
        .u16(0)
        .u16(0x7FFF)
        .u16(static_cast<unsigned>(weight))
        .u16(0)
        .u8(0)
        .u8(0)
        .u8(134)
        .u8(0)
        .shortText(u"宋体");
    addRecord(stream, Biff::font, font);
}

void addXf(std::string& stream, unsigned font, unsigned format, unsigned flags, unsigned horizontal) {
    Payload xf;
    const unsigned used = flags == kStyleFlags ? 0xF4 : 0xFC;
    xf.u16(font).u16(format).u16(flags).u8(horizontal | 0x20).u8(0).u8(0).u8(used).u32(0).u32(0).u16(0x20C0);
    addRecord(stream, Biff::formatXf, xf);
}

unsigned horizontal(Alignment alignment) {
    switch (alignment) {
        case Alignment::left:
            return 1;
        case Alignment::centre:
            return 2;
        case Alignment::right:
            return 3;
        case Alignment::general:
            break;
    }
    return 0;
}

unsigned formatNumber(const SheetColumn& column, std::size_t index) {
    if (column.format.empty()) return 0;
    return column.format == "@" ? kTextFormat : kFirstOwnFormat + static_cast<unsigned>(index);
}

}  // namespace

void addBof(std::string& stream, Substream kind) {
    Payload bof;
    bof.u16(0x0600).u16(static_cast<unsigned>(kind)).u16(0x0DBB).u16(0x07CC).u32(0x000000C1).u32(0x00000306);
    addRecord(stream, Biff::bof, bof);
}

std::string globalsHead(const SheetLayout& layout) {
    std::string stream;
    addBof(stream, Substream::globals);
    addRecord(stream, Biff::codePage, Payload().u16(1200));
    Payload window;
    window.u16(0).u16(0).u16(0x4B00).u16(0x2D00).u16(0x0038).u16(0).u16(0).u16(1).u16(0x0258);
    addRecord(stream, Biff::window1, window);
    addRecord(stream, Biff::dateMode, Payload().u16(0));
    for (int i = 0; i < 4; ++i)
        addFont(stream, Weight::normal);
    addFont(stream, Weight::bold);
    for (std::size_t i = 0; i < layout.columns.size(); ++i) {
        const unsigned number = formatNumber(layout.columns[i], i);
        if (number < kFirstOwnFormat) continue;
        addRecord(stream, Biff::format, Payload().u16(number).longText(toUtf16(layout.columns[i].format)));
    }
    for (unsigned i = 0; i < kStyleXfs; ++i)
        addXf(stream, 0, 0, kStyleFlags, 0);
    addXf(stream, 0, 0, kCellFlags, 0);
    addXf(stream, kBoldFont, 0, kCellFlags, horizontal(Alignment::centre));
    for (std::size_t i = 0; i < layout.columns.size(); ++i) {
        addXf(stream, 0, formatNumber(layout.columns[i], i), kCellFlags, horizontal(layout.columns[i].alignment));
    }
    addRecord(stream, Biff::style, Payload().u16(0x8000).u8(0).u8(0xFF));
    return stream;
}

std::string boundSheet(std::uint32_t position, const std::string& name) {
    std::string stream;
    addRecord(stream, Biff::boundSheet, Payload().u32(position).u16(0).shortText(toUtf16(name)));
    return stream;
}

std::vector<std::string> sheetNames(const std::string& name, std::size_t count) {
    std::string plain;
    for (const char c : name) {
        if (static_cast<unsigned char>(c) >= 0x20 && std::string("[]:*?/\\'").find(c) == std::string::npos) plain += c;
    }
    if (plain.empty()) plain = "Sheet";
    std::vector<std::string> names;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = i == 0 ? "" : "(" + std::to_string(i + 1) + ")";
        names.push_back(std::string(cutToUnits(plain, kLongestSheetName - number.size())) + number);
    }
    return names;
}

}  // namespace orvenmod::platform
