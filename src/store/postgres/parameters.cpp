// Binding. All but binary contents go out as texts whose types the statement names ($1::integer), so that the server
// reads them as it would read literals. Decimals are written from the digits of the literal, never by way of a double:
//
//   1.25 to numeric(18,4)                1.2500
//   99999999999.999999                   as it stands, though no double has it
#include "store/postgres/parameters.h"

#include <array>
#include <charconv>
#include <cmath>

#include "store/tsql/decimal.h"
#include "store/tsql/emitter.h"
#include "store/tsql/error.h"
#include "store/tsql/literals.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::postgres {

namespace {

using tsql::Datum;
using tsql::Decimal;
using tsql::Literal;
using tsql::LiteralKind;
using tsql::Parameter;
using tsql::Type;

constexpr int kBinary = 1;

std::string realText(double value) {
    if (std::isnan(value)) return "NaN";
    std::array<char, 400> buffer{};
    const char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

bool isText(std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[at]);
        if (lead < 0x80) {
            if (lead == 0) return false;
            ++at;
            continue;
        }
        const std::size_t size = tsql::characterSize(bytes[at]);
        if (size == 1 || at + size > bytes.size()) return false;
        for (std::size_t i = 1; i < size; ++i) {
            if (!isContinuation(bytes[at + i])) return false;
        }
        // Written longer than need be, half of a pair of surrogates, or beyond the last character.
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0)) return false;
        if ((lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90)) return false;
        at += size;
    }
    return true;
}

Parameters::Parameters(const tsql::Translation& translation, const tsql::Shape& shape) {
    for (const Parameter& parameter : translation.parameters)
        addLiteral(parameter, shape.literals[static_cast<std::size_t>(parameter.literal)]);
}

void Parameters::addLiteral(const Parameter& parameter, const Literal& literal) {
    if (tsql::isPlainText(parameter, literal)) {
        const bool trim = parameter.use == Parameter::Use::trimmed;
        return putText(trim ? tsql::withoutTrailingBlanks(literal.text) : literal.text);
    }
    if (tsql::plainInteger(parameter, literal)) return putText(literal.text);
    const bool digits = literal.kind != LiteralKind::real && literal.kind != LiteralKind::binary;
    addText(tsql::boundValue(parameter, literal), digits ? literal.text : std::string_view(), parameter.to);
}

void Parameters::addNull() {
    entries_.push_back({});
    lengths_.push_back(0);
    formats_.push_back(0);
}

void Parameters::addText(std::string_view text) {
    if (!isText(text)) throw tsql::Error(tsql::kNoText);
    putText(text);
}

void Parameters::putText(std::string_view text) {
    entries_.push_back({nullptr, texts_.size(), true});
    lengths_.push_back(0);
    formats_.push_back(0);
    texts_.append(text).push_back('\0');
}

void Parameters::addBinary(std::span<const std::byte> bytes) {
    // Contents without a byte have no address, and a null address would be a null.
    const char* contents = bytes.empty() ? "" : reinterpret_cast<const char*>(bytes.data());
    entries_.push_back({contents, 0, false});
    lengths_.push_back(static_cast<int>(bytes.size()));
    formats_.push_back(kBinary);
}

void Parameters::addReal(double value, const Type& type) {
    if (!type.isDecimal()) return addText(realText(value));
    Decimal digits = Decimal::from(value);
    digits.round(type.scale);
    addText(digits.print());
}

void Parameters::addText(const Datum& value, std::string_view source, const Type& type) {
    if (value.kind != Datum::Kind::null && type.isDecimal()) {
        if (auto digits = Decimal::parse(trimmed(source))) {
            digits->round(type.scale);
            return addText(digits->print());
        }
    }
    switch (value.kind) {
        case Datum::Kind::null:
            return addNull();
        case Datum::Kind::integer:
            return addText(std::to_string(value.integer));
        case Datum::Kind::real:
            return addReal(value.real, type);
        case Datum::Kind::text:
        case Datum::Kind::decimal:
            return addText(value.text);
        case Datum::Kind::blob:
            return addText("\\x" + tsql::hexDigits(value.text));
    }
}

const char* const* Parameters::values() const {
    pointers_.clear();
    for (const Entry& entry : entries_)
        pointers_.push_back(entry.text ? texts_.data() + entry.offset : entry.contents);
    return pointers_.data();
}

}  // namespace orvenmod::store::postgres
