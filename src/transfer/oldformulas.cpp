// Records (oldrecords.h) that the library for .xls passes over:
//
//   0x0006 formula  [row 2][column 2][format 2][value 8] ...     a value that ends in FFFF is none: its first byte
//   tells
//                   a text, which the next record 0x0207 holds, a truth value (1), an error (2), nothing (3)
//   0x0207 text     [length 2][wide 1][characters]; [length 2][bytes of the code page] in those of an earlier version
//   0x0042 page     [number 2]
//   0x00E5 merged   [count 2], each [top 2][bottom 2][left 2][right 2]
#include "transfer/oldformulas.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <span>

#include "platform/numberformat.h"
#include "transfer/oldrecords.h"
#include "transfer/sheetfile.h"

namespace orvenmod {

namespace {

constexpr unsigned kFormula = 0x0006;
constexpr unsigned kText = 0x0207;
constexpr unsigned kMerged = 0x00E5;
constexpr unsigned kCodePage = 0x0042;

std::string nameOfPage(unsigned number) {
    constexpr unsigned kMacintosh = 0x8000;
    constexpr unsigned kWindows = 0x8001;
    if (number == kMacintosh) return "MACINTOSH";
    return "CP" + (number == kWindows ? "1252" : std::to_string(number));
}

/// Puts the stream at the sheet's first record, and tells the code page that stands before.
bool seekSheet(GsfInput* stream, int sheet, std::string& page) {
    OldRecord record;
    while (readRecord(stream, record) && record.id != kEnd) {
        if (record.id == kCodePage) page = nameOfPage(record.u16(0));
        if (record.id != kSheet || sheet-- > 0) continue;
        return !gsf_input_seek(stream, static_cast<gsf_off_t>(record.u16(0) | record.u16(2) << 16U), G_SEEK_SET);
    }
    return false;
}

SheetCell valueOf(const OldRecord& formula) {
    constexpr std::size_t kValue = 6;
    constexpr unsigned kNone = 0xFFFF;
    constexpr unsigned kTruth = 1;
    constexpr unsigned kError = 2;
    if (formula.payload.size() < kValue + sizeof(double)) return {};
    if (formula.u16(kValue + 6) != kNone) {
        double number = 0;
        std::memcpy(&number, formula.payload.data() + kValue, sizeof number);
        return {CellKind::number, platform::plainNumber(number)};
    }
    const unsigned kind = formula.payload[kValue];
    if (kind == kTruth) return {CellKind::text, formula.payload[kValue + 2] == 0 ? "0" : "1"};
    return {kind == kError ? CellKind::error : CellKind::empty};
}

/// Nothing where the bytes aren't of that encoding, or nobody knows it.
std::optional<std::string> converted(std::span<const unsigned char> bytes, const char* encoding) {
    gsize length = 0;
    gchar* text = g_convert(reinterpret_cast<const gchar*>(bytes.data()), static_cast<gssize>(bytes.size()), "UTF-8",
                            encoding, nullptr, &length, nullptr);
    if (text == nullptr) return std::nullopt;
    std::string result(text, length);
    g_free(text);
    return result;
}

std::string textOf(const OldRecord& record, bool marked, const std::string& page) {
    const std::size_t head = marked ? 3 : 2;
    if (record.payload.size() <= head) return "";
    const bool wide = marked && (record.payload[2] & 1U) != 0;
    const std::span characters = std::span(record.payload).subspan(head);
    const auto bytes = characters.first(std::min<std::size_t>(record.u16(0) * (wide ? 2U : 1U), characters.size()));
    constexpr const char* kEveryByte = "ISO-8859-1";
    if (marked) return converted(bytes, wide ? "UTF-16LE" : kEveryByte).value_or("");
    const auto text = converted(bytes, page.c_str());
    return text ? *text : converted(bytes, kEveryByte).value_or("");
}

void addMerged(const OldRecord& record, SheetRows& rows) {
    for (std::size_t range = 0; range < record.u16(0); ++range) {
        const std::size_t at = 2 + range * 8;
        rows.markMerged(record.u16(at), static_cast<int>(record.u16(at + 4)), record.u16(at + 2),
                        static_cast<int>(record.u16(at + 6)));
    }
}

}  // namespace

void addOldFormulas(const std::string& path, int sheet, SheetRows& rows) {
    const Owned<GsfInput> stream = openRecords(path);
    std::string page = nameOfPage(1252);
    if (!stream || !seekSheet(stream.get(), sheet, page)) return;
    OldRecord record;
    std::size_t row = 0;
    int column = 0;
    int depth = 0;
    bool marked = true;
    // A chart within the sheet has records of its own between its begin and its end.
    while (readRecord(stream.get(), record)) {
        if (record.id == kBegin && ++depth == 1) marked = record.u16(0) >= kMarkedSince;
        if (record.id == kEnd && --depth == 0) break;
        if (depth != 1) continue;
        if (record.id == kMerged) addMerged(record, rows);
        if (record.id == kFormula) {
            row = record.u16(0);
            column = static_cast<int>(record.u16(2));
            SheetCell cell = valueOf(record);
            if (!cell.isEmpty()) rows.put(row, column, std::move(cell));
        } else if (record.id == kText) {
            rows.put(row, column, {CellKind::text, textOf(record, marked, page)});
        }
    }
    rows.finish();
}

}  // namespace orvenmod
