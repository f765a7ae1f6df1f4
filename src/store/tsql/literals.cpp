#include "store/tsql/literals.h"

#include <charconv>

#include "store/tsql/conversions.h"
#include "store/tsql/decimal.h"
#include "store/tsql/lexer.h"
#include "store/tsql/like.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::tsql {

namespace {

constexpr char32_t kLastCharacter = 0x10FFFF;

int hexValue(char c) { return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10; }

Datum binaryLiteral(std::string_view digits) {
    Datum result;
    result.kind = Datum::Kind::blob;
    std::size_t at = digits.size() % 2;
    if (at == 1) result.text += static_cast<char>(hexValue(digits[0]));
    for (; at < digits.size(); at += 2)
        result.text += static_cast<char>(hexValue(digits[at]) * 16 + hexValue(digits[at + 1]));
    return result;
}

// The first text behind all those that begin with the prefix, in the order of NOCASE.
std::string successor(std::string_view prefix) {
    std::u32string characters;
    for (std::size_t at = 0; at < prefix.size();) {
        const char32_t c = nextCharacter(prefix, at);
        characters += asciiLower(c);
    }
    while (!characters.empty() && characters.back() >= kLastCharacter)
        characters.pop_back();
    std::string result;
    if (characters.empty()) {
        appendCharacter(result, kLastCharacter);
        return result;
    }
    // The code points of surrogates are no characters and would not be written as such.
    constexpr char32_t kSurrogates = 0xD800;
    characters.back() = characters.back() + 1 == kSurrogates ? 0xE000 : characters.back() + 1;
    for (const char32_t c : characters)
        appendCharacter(result, c);
    return result;
}

// What a pattern becomes: a bound of the texts that match it, or the pattern in another language.
std::string patternText(Parameter::Use use, const std::string& pattern) {
    const std::string_view prefix = withoutTrailingBlanks(plainPrefix(pattern));
    switch (use) {
        case Parameter::Use::likeLow:
            return std::string(prefix);
        case Parameter::Use::foldedLow:
            return foldedText(prefix);
        case Parameter::Use::likeHigh:
            return successor(prefix);
        case Parameter::Use::likePattern:
            return serverPattern(pattern);
        default:
            return serverExpression(pattern);
    }
}

bool isOfPattern(Parameter::Use use) {
    return use != Parameter::Use::value && use != Parameter::Use::trimmed && use != Parameter::Use::folded;
}

}  // namespace

Datum literalValue(const Literal& literal) {
    switch (literal.kind) {
        case LiteralKind::integer:
        case LiteralKind::decimal:
            if (const auto number = Decimal::parse(literal.text)) return number->toDatum();
            break;
        case LiteralKind::money:
        case LiteralKind::real: {
            Datum text;
            text.kind = Datum::Kind::text;
            text.text = literal.text;
            const Kind kind = literal.kind == LiteralKind::money ? Kind::money : Kind::floating;
            return convert(text, textType(Kind::varchar, -1), typeOf(kind));
        }
        case LiteralKind::binary:
            return binaryLiteral(literal.text);
        case LiteralKind::text:
        case LiteralKind::nationalText:
            break;
    }
    Datum result;
    result.kind = Datum::Kind::text;
    result.text = literal.value();
    return result;
}

Datum boundValue(const Parameter& parameter, const Literal& literal) {
    if (isOfPattern(parameter.use)) return textDatum(patternText(parameter.use, literal.value()));
    ConvertMode mode;
    mode.assignment = parameter.assignment;
    mode.table = parameter.table;
    mode.column = parameter.column;
    Datum value = convert(literalValue(literal), parameter.from, parameter.to, mode);
    if (parameter.use != Parameter::Use::value && value.kind == Datum::Kind::text) {
        value.text.resize(withoutTrailingBlanks(value.text).size());
        if (parameter.use == Parameter::Use::folded) value.text = foldedText(value.text);
    }
    return value;
}

bool isPlainText(const Parameter& parameter, const Literal& literal) {
    if (parameter.use != Parameter::Use::value && parameter.use != Parameter::Use::trimmed) return false;
    const bool text = literal.kind == LiteralKind::text || literal.kind == LiteralKind::nationalText;
    if (!text || literal.doubledQuotes || !parameter.to.isText()) return false;
    if (parameter.to.kind == Kind::character || parameter.to.kind == Kind::nchar) return false;
    // A character takes no more bytes in code page 936 than in UTF-8.
    return parameter.to.length <= 0 || literal.text.size() <= static_cast<std::size_t>(parameter.to.length);
}

std::optional<int> plainInteger(const Parameter& parameter, const Literal& literal) {
    if (literal.kind != LiteralKind::integer || parameter.to.kind != Kind::integer) return std::nullopt;
    int value = 0;
    const char* end = literal.text.data() + literal.text.size();
    const auto [stop, error] = std::from_chars(literal.text.data(), end, value);
    if (error != std::errc() || stop != end) return std::nullopt;
    return value;
}

std::string newValue(const Translation& translation, const Shape& shape, std::string_view column) {
    const Parameter* found = nullptr;
    for (const Parameter& parameter : translation.parameters) {
        if (!parameter.assignment || !sameName(parameter.column, column)) continue;
        if (found != nullptr) return "?";
        found = &parameter;
    }
    return found == nullptr ? "?" : shape.literals[static_cast<std::size_t>(found->literal)].value();
}

const char* changeVerb(std::string_view sql) {
    const std::size_t first = sql.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && (sql[first] | 0x20) == 'u' ? "UPDATE" : "INSERT";
}

}  // namespace orvenmod::store::tsql
