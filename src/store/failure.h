// What a store throws. Made by every store, caught by the one trap at the end of a database routine,
// or by the toolkit's event loop where a routine has none.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace orvenmod::store {

/// The sort of a failure, so that callers and the administrators' shell need not know numbers.
enum class FailureKind {
    syntax,        ///< the text is no statement (102, 105, 156 ...)
    noSuchObject,  ///< unknown table, view, column or function (207, 208, 195, 3701, 4902 ...)
    duplicate,     ///< object or column exists (2714, 2705)
    conversion,    ///< a value that is none of the column's type (245, 241, 8114 ...)
    overflow,      ///< a value out of the type's range (248, 8115, 220 ...)
    truncation,    ///< a text too long for its column (2628, 8152)
    key,           ///< a doubled key (2627, 2601)
    null,          ///< a null where none may be (515)
    divide,        ///< division by zero (8134)
    transaction,   ///< commit or rollback without a transaction (3902, 3903)
    busy,          ///< another writer holds the database
    connection,    ///< the database can't be reached, read or written
    other
};

/// The kind's word in the administrators' shell: "syntax", "no such object", "duplicate", "conversion",
/// "overflow", "truncation", "key", "null", "division by zero", "transaction", "busy", "connection", "other".
const char* kindWord(FailureKind kind);

/// A failure of the store: its own text (UTF-8, in the language of the connection) and its native number.
class Failure : public std::runtime_error {
public:
    Failure(FailureKind kind, int number, const std::string& text)
        : std::runtime_error(text), kind_(kind), number_(number) {}

    FailureKind kind() const { return kind_; }
    int number() const { return number_; }
    std::string text() const { return what(); }

private:
    FailureKind kind_;
    int number_;
};

}  // namespace orvenmod::store
