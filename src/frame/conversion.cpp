#include "frame/conversion.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace orvenmod {

namespace {

[[noreturn]] void failMismatch() { throw ConversionFailure(ConversionFailure::kTypeMismatch, "类型不匹配"); }
[[noreturn]] void failOverflow() { throw ConversionFailure(ConversionFailure::kOverflow, "溢出"); }

bool isDigit(char letter) { return letter >= '0' && letter <= '9'; }

struct Parsed {
    double value = 0;
    std::size_t used = 0;  // characters that belong to the number, 0 for none
    bool tooLarge = false;
};

// Reads a decimal number at the start of the text. The library's parser also takes "inf" and "nan" and refuses a
// leading plus, hence the look at the first characters.
Parsed parseLeading(std::string_view text) {
    const std::size_t sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    const std::size_t first = sign + (sign < text.size() && text[sign] == '.' ? 1 : 0);
    if (first >= text.size() || !isDigit(text[first])) return {};
    Parsed parsed;
    const auto [end, error] = std::from_chars(text.data() + sign, text.data() + text.size(), parsed.value);
    parsed.used = static_cast<std::size_t>(end - text.data());
    parsed.tooLarge = error == std::errc::result_out_of_range;
    if (text[0] == '-') parsed.value = -parsed.value;
    return parsed;
}

template <class Integer>
Integer toInteger(double value) {
    using Limits = std::numeric_limits<Integer>;
    const double rounded = std::nearbyint(value);  // the default rounding mode: half to even
    // Said so that a value that is no number doesn't fit either.
    if (!(rounded >= Limits::min() && rounded <= Limits::max())) failOverflow();
    return static_cast<Integer>(rounded);
}

}  // namespace

std::int16_t toInt16(std::string_view text) { return toInteger<std::int16_t>(toDouble(text)); }

std::int32_t toInt32(std::string_view text) { return toInteger<std::int32_t>(toDouble(text)); }

std::int16_t toInt16(double value) { return toInteger<std::int16_t>(value); }

std::int32_t toInt32(double value) { return toInteger<std::int32_t>(value); }

double toDouble(std::string_view text) {
    const std::string trimmed = trim(text);
    const Parsed parsed = parseLeading(trimmed);
    if (parsed.used == 0 || parsed.used != trimmed.size()) failMismatch();
    if (parsed.tooLarge) failOverflow();
    return parsed.value;
}

std::string required(std::optional<std::string_view> value) {
    if (!value) throw ConversionFailure(ConversionFailure::kNullUse, "无效使用 Null");
    return std::string(*value);
}

double leadingNumber(std::string_view text) { return parseLeading(trim(text)).value; }

bool isNumeric(std::string_view text) {
    const std::string trimmed = trim(text);
    const Parsed parsed = parseLeading(trimmed);
    return parsed.used != 0 && parsed.used == trimmed.size() && !parsed.tooLarge;
}

std::string trim(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

}  // namespace orvenmod
