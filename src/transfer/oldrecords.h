// Records of an .xls, little-endian: [id 2][length 2][payload].
//
//   0x0085 sheet    [offset of its first record 4][kind 2][length 1][wide 1][characters]
//   0x041E format   [number 2][length 2][wide 1][characters]
//   0x0204 label    [row 2][column 2][format 2][length 2][wide 1][characters]
//   0x00FC texts    [count 4][how many different 4] ...
#pragma once

#include <gsf/gsf-input.h>

#include <cstddef>
#include <string>
#include <vector>

#include "transfer/gsfowned.h"

namespace orvenmod {

inline constexpr unsigned kBegin = 0x0809;
inline constexpr unsigned kEnd = 0x000A;
inline constexpr unsigned kSheet = 0x0085;
/// The version since which texts tell by a mark whether they are wide, where they were of a code page before.
inline constexpr unsigned kMarkedSince = 0x0600;

/// The stream of the records, and what Excel 95 and before it called it.
inline constexpr const char* kWorkbook = "Workbook";
inline constexpr const char* kEarlierWorkbook = "Book";

struct OldRecord {
    unsigned id = 0;
    std::vector<unsigned char> payload;

    unsigned u16(std::size_t at) const {
        return at + 1 < payload.size() ? payload[at] | static_cast<unsigned>(payload[at + 1]) << 8U : 0;
    }
};

/// False at the end of the stream.
bool readRecord(GsfInput* stream, OldRecord& record);

/// The workbook's records, null where the file has none.
Owned<GsfInput> openRecords(const std::string& path);

/// Whether each record from there on lies within the stream, and each text within its record.
bool recordsHold(GsfInput* stream);

}  // namespace orvenmod
