#include "platform/sheet/biffrecords.h"

#include <bit>

namespace orvenmod::platform {

Payload& Payload::u8(unsigned value) {
    bytes_ += static_cast<char>(value & 0xFF);
    return *this;
}

Payload& Payload::u16(unsigned value) { return u8(value).u8(value >> 8); }

Payload& Payload::u32(std::uint32_t value) { return u16(value & 0xFFFF).u16(value >> 16); }

Payload& Payload::f64(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    return u32(static_cast<std::uint32_t>(bits)).u32(static_cast<std::uint32_t>(bits >> 32));
}

Payload& Payload::shortText(std::u16string_view text) {
    return u8(static_cast<unsigned>(text.size())).u8(1).units(text);
}

Payload& Payload::longText(std::u16string_view text) {
    return u16(static_cast<unsigned>(text.size())).u8(1).units(text);
}

Payload& Payload::units(std::u16string_view text) {
    for (const char16_t unit : text)
        u16(unit);
    return *this;
}

void addRecord(std::string& stream, Biff id, const std::string& payload) {
    Payload head;
    head.u16(static_cast<unsigned>(id)).u16(static_cast<unsigned>(payload.size()));
    stream += head.bytes();
    stream += payload;
}

}  // namespace orvenmod::platform
