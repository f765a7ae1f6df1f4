#include "entry/cvalues.h"

#include <array>

#include "entry/handles.h"
#include "frame/conversion.h"
#include "store/tsql/utf8.h"

namespace orvenmod {

namespace {

struct AsCValue {
    orvenmod_value operator()(std::monostate) const { return {}; }
    orvenmod_value operator()(bool value) const { return {ORVENMOD_BOOLEAN, value ? 1 : 0, 0, nullptr}; }
    orvenmod_value operator()(std::int16_t value) const { return {ORVENMOD_INT16, value, 0, nullptr}; }
    orvenmod_value operator()(std::int32_t value) const { return {ORVENMOD_INT32, value, 0, nullptr}; }
    orvenmod_value operator()(double value) const { return {ORVENMOD_DOUBLE, 0, value, nullptr}; }
    orvenmod_value operator()(const std::string& value) const {
        return {ORVENMOD_TEXT, 0, 0, Handles::all().copyOf(value)};
    }
    orvenmod_value operator()(const std::shared_ptr<void>&) const {
        throw ConversionFailure(ConversionFailure::kTypeMismatch, "类型不匹配");
    }
};

std::int32_t typeOf(ValueType type) {
    switch (type) {
        case ValueType::text:
            return ORVENMOD_TEXT;
        case ValueType::int16:
            return ORVENMOD_INT16;
        case ValueType::any:
            break;
    }
    return ORVENMOD_NOTHING;
}

// The decoder gives a byte that belongs to no character in the range of half characters, which no text has either. It
// takes characters beyond the last one, and such as need fewer bytes than they have.
bool isUtf8(const std::string& text) {
    constexpr char32_t kFirstHalf = 0xD800;
    constexpr char32_t kBehindHalves = 0xE000;
    constexpr char32_t kLast = 0x10FFFF;
    constexpr std::array<char32_t, 5> kLeastOfBytes = {0, 0, 0x80, 0x800, 0x10000};
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        const char32_t character = store::tsql::nextCharacter(text, at);
        const bool half = character >= kFirstHalf && character < kBehindHalves;
        if (half || character > kLast || character < kLeastOfBytes[at - begin]) return false;
    }
    return true;
}

}  // namespace

void refuseNull() { throw ConversionFailure(ConversionFailure::kInvalidCall, "无效的过程调用或参数：空指针"); }

std::string textOf(const char* text) {
    if (text == nullptr) refuseNull();
    std::string copy = text;
    if (!isUtf8(copy)) throw ConversionFailure(ConversionFailure::kInvalidCall, "无效的过程调用或参数：文本不是 UTF-8");
    return copy;
}

Variant variantOf(const orvenmod_value& value) {
    switch (value.type) {
        case ORVENMOD_NOTHING:
            return {};
        case ORVENMOD_BOOLEAN:
            return value.integer != 0;
        case ORVENMOD_INT16:
            return toInt16(static_cast<double>(value.integer));
        case ORVENMOD_INT32:
            return value.integer;
        case ORVENMOD_DOUBLE:
            return value.number;
        case ORVENMOD_TEXT:
            return textOf(value.text);
        default:
            throw ConversionFailure(ConversionFailure::kTypeMismatch, "类型不匹配");
    }
}

orvenmod_value handedOut(const Variant& value) { return std::visit(AsCValue(), value); }

orvenmod_member described(const Member& member) {
    if (member.kind == MemberKind::property) return {member.name, ORVENMOD_PROPERTY, typeOf(member.types.front()), 0};
    return {member.name, ORVENMOD_METHOD, ORVENMOD_BOOLEAN, static_cast<std::int32_t>(member.types.size())};
}

orvenmod_parameter describedParameter(const Member& member, std::int32_t index) {
    const std::size_t count = member.kind == MemberKind::method ? member.types.size() : 0;
    if (index < 0 || static_cast<std::size_t>(index) >= count)
        throw ConversionFailure(ConversionFailure::kSubscriptOutOfRange, "下标越界");
    const auto at = static_cast<std::size_t>(index);
    return {member.parameters[at], typeOf(member.types[at]), member.types[at] == ValueType::any ? 1 : 0};
}

}  // namespace orvenmod
