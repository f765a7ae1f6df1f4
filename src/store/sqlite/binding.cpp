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
#include <new>
#include <string_view>

#include "store/tsql/error.h"
#include "store/tsql/failurenumbers.h"
#include "store/tsql/literals.h"
#include "store/tsql/sqlite_decimal.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::Datum;
using tsql::Literal;
using tsql::LiteralKind;
using tsql::Parameter;

// A null address would bind a null instead of the empty text.
void bindText(sqlite3_stmt* statement, int index, std::string_view text, sqlite3_destructor_type destructor) {
    checkBound(sqlite3_bind_text64(statement, index, text.data() == nullptr ? "" : text.data(), text.size(), destructor,
                                   SQLITE_UTF8));
}

// The usual cases, which need no conversion: a whole number for a whole number, a text that fits its text column.
bool bindPlain(sqlite3_stmt* statement, int index, const Parameter& parameter, const Literal& literal) {
    if (const auto number = tsql::plainInteger(parameter, literal)) {
        sqlite3_bind_int(statement, index, *number);
        return true;
    }
    if (!isPlainText(parameter, literal)) return false;
    const bool trim = parameter.use == Parameter::Use::trimmed;
    bindText(statement, index, trim ? tsql::withoutTrailingBlanks(literal.text) : literal.text, SQLITE_STATIC);
    return true;
}

}  // namespace

void bindLiterals(sqlite3_stmt* statement, const tsql::Translation& translation, const tsql::Shape& shape) {
    int index = 0;
    for (const Parameter& parameter : translation.parameters) {
        ++index;
        const Literal& literal = shape.literals[static_cast<std::size_t>(parameter.literal)];
        if (!bindPlain(statement, index, parameter, literal))
            bindDatum(statement, index, boundValue(parameter, literal));
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
        case Datum::Kind::decimal:
            bindText(statement, index, value.text + tsql::kDecimalMark, SQLITE_TRANSIENT);
            break;
        case Datum::Kind::blob:
            checkBound(sqlite3_bind_blob64(statement, index, value.text.data(), value.text.size(), SQLITE_TRANSIENT));
            break;
    }
}

Datum decimalOf(sqlite3_value* value) {
    Datum result = datumOf(value);
    if (result.kind != Datum::Kind::text) return result;
    if (const auto digits = tsql::keptDigits(result.text)) {
        result.kind = Datum::Kind::decimal;
        result.text = std::string(*digits);
    }
    return result;
}

void checkBound(int code) {
    if (code == SQLITE_TOOBIG) throw tsql::Error(tsql::kTruncated);
    if (code != SQLITE_OK) throw std::bad_alloc();
}

std::string_view textOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    if (text == nullptr) throw std::bad_alloc();
    return {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

std::string_view bytesOf(sqlite3_value* value) {
    const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
    const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
    if (bytes == nullptr && size > 0) throw std::bad_alloc();
    return {bytes, size};
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
            result.text = textOf(value);
            break;
        case SQLITE_BLOB:
            result.kind = Datum::Kind::blob;
            result.text = bytesOf(value);
            break;
        default:
            break;
    }
    return result;
}

}  // namespace orvenmod::store::sqlite
