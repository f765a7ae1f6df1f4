// 16- and 32-bit fields convert as the system always has: a text is trimmed and may hold a decimal number, which is
// rounded half to even; a value that is no number, or does not fit, is a failure, never a silent 0.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orvenmod {

/// What was wrong with a value, and the number that the system has always given it.
class ConversionFailure : public std::runtime_error {
public:
    static constexpr int kInvalidCall = 5;
    static constexpr int kOverflow = 6;
    static constexpr int kSubscriptOutOfRange = 9;
    static constexpr int kDivisionByZero = 11;
    static constexpr int kTypeMismatch = 13;
    static constexpr int kNullUse = 94;

    ConversionFailure(int number, const std::string& text) : std::runtime_error(text), number_(number) {}
    int number() const { return number_; }

private:
    int number_;
};

std::int16_t toInt16(std::string_view text);
std::int32_t toInt32(std::string_view text);
/// A number into a field: rounded half to even, failure 6 beyond the field.
std::int16_t toInt16(double value);
std::int32_t toInt32(double value);
double toDouble(std::string_view text);

/// A field's value that must not be null; null is failure 94.
std::string required(std::optional<std::string_view> value);

/// The leading number of a text as a plain parse: it stops at the first character that is no part of one; "" gives 0.
double leadingNumber(std::string_view text);

/// Whether the text as a whole is a number.
bool isNumeric(std::string_view text);

/// The text without outer blanks.
std::string trim(std::string_view text);

}  // namespace orvenmod
