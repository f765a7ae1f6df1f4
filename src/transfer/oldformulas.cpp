// Records of the workbook's stream, little-endian: [id 2][length 2][payload].
//
//   0x0085 sheet    [offset of its first record 4][kind 2][length 1][wide 1][characters]
//   0x0006 formula  [row 2][column 2][format 2][value 8] ...     a value that ends in FFFF is none: its first byte
//   tells
//                   a text, which the next record 0x0207 holds, a truth value (1), an error (2), nothing (3)
//   0x0207 text     [length 2][wide 1][characters]
//   0x041E format   [number 2][length 2][wide 1][characters]
//   0x0204 label    [row 2][column 2][format 2][length 2][wide 1][characters]
//   0x00FC texts    [count 4][how many different 4] ...
//   0x00E5 merged   [count 2], each [top 2][bottom 2][left 2][right 2]
#include "transfer/oldformulas.h"

#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-stdio.h>

#include <cstring>
#include <memory>
#include <vector>

#include "platform/numberformat.h"
#include "transfer/sheetfile.h"

namespace orvenmod {

namespace {

constexpr unsigned kBegin = 0x0809;
constexpr unsigned kEnd = 0x000A;
constexpr unsigned kSheet = 0x0085;
constexpr unsigned kFormula = 0x0006;
constexpr unsigned kText = 0x0207;
constexpr unsigned kMerged = 0x00E5;
constexpr unsigned kFormat = 0x041E;
constexpr unsigned kLabel = 0x0204;
constexpr unsigned kTexts = 0x00FC;

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};

template <class Kind>
using Owned = std::unique_ptr<Kind, Unref>;

struct Record {
    unsigned id = 0;
    std::vector<unsigned char> payload;

    unsigned u16(std::size_t at) const {
        return at + 1 < payload.size() ? payload[at] | static_cast<unsigned>(payload[at + 1]) << 8U : 0;
    }
};

bool read(GsfInput* stream, Record& record) {
    unsigned char head[4];
    if (!gsf_input_read(stream, sizeof head, head)) return false;
    record.id = head[0] | static_cast<unsigned>(head[1]) << 8U;
    record.payload.resize(head[2] | static_cast<unsigned>(head[3]) << 8U);
    return record.payload.empty() || gsf_input_read(stream, record.payload.size(), record.payload.data());
}

/// The workbook's records, null where the file has none.
Owned<GsfInput> openRecords(const std::string& path) {
    const Owned<GsfInput> file(gsf_input_stdio_new(path.c_str(), nullptr));
    const Owned<GsfInfile> compound(file ? gsf_infile_msole_new(file.get(), nullptr) : nullptr);
    if (!compound) return nullptr;
    // Excel 95 and before it called them otherwise.
    Owned<GsfInput> stream(gsf_infile_child_by_name(compound.get(), "Workbook"));
    return stream ? std::move(stream) : Owned<GsfInput>(gsf_infile_child_by_name(compound.get(), "Book"));
}

/// Puts the stream at the sheet's first record.
bool seekSheet(GsfInput* stream, int sheet) {
    Record record;
    while (read(stream, record) && record.id != kEnd) {
        if (record.id != kSheet || sheet-- > 0) continue;
        return !gsf_input_seek(stream, static_cast<gsf_off_t>(record.u16(0) | record.u16(2) << 16U), G_SEEK_SET);
    }
    return false;
}

SheetCell valueOf(const Record& formula) {
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

std::string textOf(const Record& record) {
    constexpr std::size_t kCharacters = 3;
    const bool wide = record.payload.size() > 2 && (record.payload[2] & 1U) != 0;
    const std::size_t bytes = std::min<std::size_t>(
        record.u16(0) * (wide ? 2U : 1U), record.payload.size() - std::min(record.payload.size(), kCharacters));
    if (bytes == 0) return "";
    gsize length = 0;
    gchar* text =
        g_convert(reinterpret_cast<const gchar*>(record.payload.data() + kCharacters), static_cast<gssize>(bytes),
                  "UTF-8", wide ? "UTF-16LE" : "ISO-8859-1", nullptr, &length, nullptr);
    std::string converted(text ? text : "", text ? length : 0);
    g_free(text);
    return converted;
}

void addMerged(const Record& record, SheetRows& rows) {
    for (std::size_t range = 0; range < record.u16(0); ++range) {
        const std::size_t at = 2 + range * 8;
        rows.markMerged(record.u16(at), static_cast<int>(record.u16(at + 4)), record.u16(at + 2),
                        static_cast<int>(record.u16(at + 6)));
    }
}

/// Whether the text whose length stands there, in one byte or two, lies within the record.
bool holdsText(const Record& record, std::size_t at, std::size_t lengthBytes, bool marked) {
    const std::size_t size = record.payload.size();
    if (size < at + lengthBytes + (marked ? 1 : 0)) return false;
    const std::size_t length = lengthBytes == 1 ? record.payload[at] : record.u16(at);
    const std::size_t characters = at + lengthBytes + (marked ? 1 : 0);
    const bool wide = marked && (record.payload[characters - 1] & 1U) != 0;
    return length * (wide ? 2 : 1) <= size - characters;
}

bool holds(const Record& record, bool marked, std::uint64_t whole) {
    constexpr std::size_t kLeastText = 3;
    switch (record.id) {
        case kSheet:
            return holdsText(record, 6, 1, marked);
        case kFormat:
            return marked ? holdsText(record, 2, 2, true) : holdsText(record, 2, 1, false);
        case kLabel:
            return holdsText(record, 6, 2, marked);
        case kTexts:
            return (record.u16(4) | static_cast<std::uint64_t>(record.u16(6)) << 16U) <= whole / kLeastText;
        default:
            return true;
    }
}

}  // namespace

bool recordsHold(const std::string& path) {
    constexpr unsigned kMarkedSince = 0x0600;  // texts tell by a mark whether they are wide
    const Owned<GsfInput> stream = openRecords(path);
    if (!stream) return false;
    const auto whole = static_cast<std::uint64_t>(gsf_input_size(stream.get()));
    bool marked = false;
    Record record;
    while (gsf_input_remaining(stream.get()) >= 4) {
        if (!read(stream.get(), record)) return false;
        if (record.id == kBegin) marked = record.u16(0) >= kMarkedSince;
        if (!holds(record, marked, whole)) return false;
    }
    return true;
}

void addOldFormulas(const std::string& path, int sheet, SheetRows& rows) {
    const Owned<GsfInput> stream = openRecords(path);
    if (!stream || !seekSheet(stream.get(), sheet)) return;
    Record record;
    std::size_t row = 0;
    int column = 0;
    int depth = 0;
    // A chart within the sheet has records of its own between its begin and its end.
    while (read(stream.get(), record)) {
        if (record.id == kBegin) ++depth;
        if (record.id == kEnd && --depth == 0) break;
        if (depth != 1) continue;
        if (record.id == kMerged) addMerged(record, rows);
        if (record.id == kFormula) {
            row = record.u16(0);
            column = static_cast<int>(record.u16(2));
            SheetCell cell = valueOf(record);
            if (!cell.isEmpty()) rows.put(row, column, std::move(cell));
        } else if (record.id == kText) {
            rows.put(row, column, {CellKind::text, textOf(record)});
        }
    }
    rows.finish();
}

}  // namespace orvenmod
