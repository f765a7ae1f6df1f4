// Binds the literals of a statement to the parameters of its translation.
#pragma once

#include <sqlite3.h>

#include "store/tsql/shape.h"
#include "store/tsql/translation.h"
#include "store/tsql/values.h"

namespace orvenmod::store::sqlite {

/// Binds every parameter. The statement must not be stepped after the text that the shape views has gone.
/// Throws tsql::Error where a literal can't be converted.
void bindLiterals(sqlite3_stmt* statement, const tsql::Translation& translation, const tsql::Shape& shape);

/// Binds one value; its text is copied.
void bindDatum(sqlite3_stmt* statement, int index, const tsql::Datum& value);

/// A value out of a row or a function's argument.
tsql::Datum datumOf(sqlite3_value* value);
/// The same of a decimal type: see tsql/sqlite_decimal.h.
tsql::Datum decimalOf(sqlite3_value* value);

}  // namespace orvenmod::store::sqlite
