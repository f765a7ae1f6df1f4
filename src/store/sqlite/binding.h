// Binds the literals of a statement to the parameters of its translation.
#pragma once

#include <sqlite3.h>

#include <string_view>

#include "store/tsql/shape.h"
#include "store/tsql/translation.h"
#include "store/tsql/values.h"

namespace orvenmod::store::sqlite {

/// Binds every parameter. The statement must not be stepped after the text that the shape views has gone.
/// Throws tsql::Error where a literal can't be converted.
void bindLiterals(sqlite3_stmt* statement, const tsql::Translation& translation, const tsql::Shape& shape);

/// Binds one value; its text is copied.
void bindDatum(sqlite3_stmt* statement, int index, const tsql::Datum& value);

/// What a call of sqlite3_bind_.. answered: after one that failed a null would be stored instead. Throws
/// std::bad_alloc, tsql::Error.
void checkBound(int code);

/// A value out of a row or a function's argument. Throws std::bad_alloc.
tsql::Datum datumOf(sqlite3_value* value);
/// The same of a decimal type: see tsql/sqlite_decimal.h.
tsql::Datum decimalOf(sqlite3_value* value);

// Those of a text and of a blob, which SQLite may have to copy. They throw std::bad_alloc where it can't: without it
// they would be empty.
std::string_view textOf(sqlite3_value* value);
std::string_view bytesOf(sqlite3_value* value);

}  // namespace orvenmod::store::sqlite
