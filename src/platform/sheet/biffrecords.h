// BIFF8 records: [id 2][length 2][payload], little-endian; a payload holds at most 8,224 bytes, and what is longer goes
// on in records of id 0x003C. Fields are written in the order of the published format ([MS-XLS]).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvenmod::platform {

inline constexpr std::size_t kLongestPayload = 8224;

enum class Biff : std::uint16_t {
    eof = 0x000A,
    dateMode = 0x0022,
    font = 0x0031,
    continued = 0x003C,
    window1 = 0x003D,
    pane = 0x0041,
    codePage = 0x0042,
    columnInfo = 0x007D,
    boundSheet = 0x0085,
    formatXf = 0x00E0,
    sharedStrings = 0x00FC,
    labelShared = 0x00FD,
    dimensions = 0x0200,
    blank = 0x0201,
    number = 0x0203,
    window2 = 0x023E,
    style = 0x0293,
    format = 0x041E,
    bof = 0x0809
};

/// A record's payload while it is put together.
class Payload {
public:
    Payload& u8(unsigned value);
    Payload& u16(unsigned value);
    Payload& u32(std::uint32_t value);
    Payload& f64(double value);
    /// Character count in one or two bytes, a flag byte, UTF-16 units.
    Payload& shortText(std::u16string_view text);
    Payload& longText(std::u16string_view text);
    Payload& units(std::u16string_view text);

    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

/// Adds the record to the stream.
void addRecord(std::string& stream, Biff id, const std::string& payload);
inline void addRecord(std::string& stream, Biff id, const Payload& payload) { addRecord(stream, id, payload.bytes()); }

}  // namespace orvenmod::platform
