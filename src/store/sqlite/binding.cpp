// Binding. A prepared statement serves many texts, and each brings its literals as they are written. What is bound must
// be what the server would have made of them, with its failures; but most literals are whole numbers and short texts,
// which go in without a conversion and without a copy.
//
//   insert into tblItem(fitemid,fname,fprice) values(9,'x','1.25')
//
//   ?1  9 as a whole number
//   ?2  x, where it lies in the statement
//   ?3  '1.25' through convert() to decimal(18,4): 1.25 as a double
//
// A pattern is bound three times: 'A0%' itself, and the bounds of the texts that can match it, 'A0' and 'a1'.
#include "store/sqlite/binding.h"

#include <charconv>
#include <string>

#include "store/tsql/decimal.h"
#include "store/tsql/like.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::Datum;
using tsql::Kind;
using tsql::Literal;
using tsql::LiteralKind;
using tsql::Parameter;

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

Datum literalValue(const Literal& literal) {
    switch (literal.kind) {
        case LiteralKind::integer:
        case LiteralKind::decimal:
            if (const auto number = tsql::Decimal::parse(literal.text)) return number->toDatum();
            break;
        case LiteralKind::money:
        case LiteralKind::real: {
            Datum text;
            text.kind = Datum::Kind::text;
            text.text = literal.text;
            const Kind kind = literal.kind == LiteralKind::money ? Kind::money : Kind::floating;
            return tsql::convert(text, tsql::textType(Kind::varchar, -1), tsql::typeOf(kind));
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

// The first text behind all those that begin with the prefix, in the order of NOCASE.
std::string successor(std::string_view prefix) {
    std::u32string characters;
    for (std::size_t at = 0; at < prefix.size();) {
        const char32_t c = tsql::nextCharacter(prefix, at);
        characters += c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c;
    }
    while (!characters.empty() && characters.back() >= kLastCharacter)
        characters.pop_back();
    std::string result;
    if (characters.empty()) {
        tsql::appendCharacter(result, kLastCharacter);
        return result;
    }
    // The code points of surrogates are no characters and would not be written as such.
    constexpr char32_t kSurrogates = 0xD800;
    characters.back() = characters.back() + 1 == kSurrogates ? 0xE000 : characters.back() + 1;
    for (const char32_t c : characters)
        tsql::appendCharacter(result, c);
    return result;
}

// A null address would bind a null instead of the empty text.
void bindText(sqlite3_stmt* statement, int index, std::string_view text, sqlite3_destructor_type destructor) {
    sqlite3_bind_text(statement, index, text.data() == nullptr ? "" : text.data(), static_cast<int>(text.size()),
                      destructor);
}

// The usual cases, which need no conversion: a whole number for a whole number, a text that fits its text column.
bool bindPlain(sqlite3_stmt* statement, int index, const Parameter& parameter, const Literal& literal) {
    if (literal.kind == LiteralKind::integer && parameter.to.kind == Kind::integer) {
        int value = 0;
        const char* end = literal.text.data() + literal.text.size();
        const auto [stop, error] = std::from_chars(literal.text.data(), end, value);
        if (error != std::errc() || stop != end) return false;
        sqlite3_bind_int(statement, index, value);
        return true;
    }
    const bool text = literal.kind == LiteralKind::text || literal.kind == LiteralKind::nationalText;
    if (!text || literal.doubledQuotes || !parameter.to.isText()) return false;
    if (parameter.to.kind == Kind::character || parameter.to.kind == Kind::nchar) return false;
    // A character takes no more bytes in code page 936 than in UTF-8.
    if (parameter.to.length > 0 && literal.text.size() > static_cast<std::size_t>(parameter.to.length)) return false;
    const bool trim = parameter.use == Parameter::Use::trimmed;
    bindText(statement, index, trim ? tsql::withoutTrailingBlanks(literal.text) : literal.text, SQLITE_STATIC);
    return true;
}

void bindConverted(sqlite3_stmt* statement, int index, const Parameter& parameter, const Literal& literal) {
    tsql::ConvertMode mode;
    mode.assignment = parameter.assignment;
    mode.table = parameter.table;
    mode.column = parameter.column;
    Datum value = tsql::convert(literalValue(literal), parameter.from, parameter.to, mode);
    if (parameter.use == Parameter::Use::trimmed && value.kind == Datum::Kind::text) {
        value.text.resize(tsql::withoutTrailingBlanks(value.text).size());
    }
    bindDatum(statement, index, value);
}

}  // namespace

void bindLiterals(sqlite3_stmt* statement, const tsql::Translation& translation, const tsql::Shape& shape) {
    int index = 0;
    for (const Parameter& parameter : translation.parameters) {
        ++index;
        const Literal& literal = shape.literals[static_cast<std::size_t>(parameter.literal)];
        switch (parameter.use) {
            case Parameter::Use::value:
            case Parameter::Use::trimmed:
                if (!bindPlain(statement, index, parameter, literal))
                    bindConverted(statement, index, parameter, literal);
                break;
            case Parameter::Use::likeLow: {
                const std::string pattern = literal.value();
                bindText(statement, index, tsql::withoutTrailingBlanks(tsql::plainPrefix(pattern)), SQLITE_TRANSIENT);
                break;
            }
            case Parameter::Use::likeHigh: {
                const std::string pattern = literal.value();
                const std::string high = successor(tsql::withoutTrailingBlanks(tsql::plainPrefix(pattern)));
                bindText(statement, index, high, SQLITE_TRANSIENT);
                break;
            }
            case Parameter::Use::folded:
            case Parameter::Use::foldedLow:
            case Parameter::Use::likePattern:
            case Parameter::Use::likeExpression:
                break;  // no text of SQLite's has them
        }
    }
}

void bindDatum(sqlite3_stmt* statement, int index, const Datum& value) {
    switch (value.kind) {
        case Datum::Kind::null:
            sqlite3_bind_null(statement, index);
            break;
        case Datum::Kind::integer:
            sqlite3_bind_int64(statement, index, value.integer);
            break;
        case Datum::Kind::real:
            sqlite3_bind_double(statement, index, value.real);
            break;
        case Datum::Kind::text:
            bindText(statement, index, value.text, SQLITE_TRANSIENT);
            break;
        case Datum::Kind::blob:
            sqlite3_bind_blob64(statement, index, value.text.data(), value.text.size(), SQLITE_TRANSIENT);
            break;
    }
}

Datum datumOf(sqlite3_value* value) {
    Datum result;
    switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
            result.kind = Datum::Kind::integer;
            result.integer = sqlite3_value_int64(value);
            break;
        case SQLITE_FLOAT:
            result.kind = Datum::Kind::real;
            result.real = sqlite3_value_double(value);
            break;
        case SQLITE_TEXT:
            result.kind = Datum::Kind::text;
            result.text.assign(reinterpret_cast<const char*>(sqlite3_value_text(value)),
                               static_cast<std::size_t>(sqlite3_value_bytes(value)));
            break;
        case SQLITE_BLOB: {
            result.kind = Datum::Kind::blob;
            const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
            if (bytes != nullptr) result.text.assign(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value)));
            break;
        }
        default:
            break;
    }
    return result;
}

}  // namespace orvenmod::store::sqlite
