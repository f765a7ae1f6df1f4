// The pieces of convert(), by what they convert from. Used by the values_*.cpp and functions_*.cpp, and for literals.
#pragma once

#include <string>
#include <string_view>

#include "store/tsql/dates.h"
#include "store/tsql/decimal.h"
#include "store/tsql/values.h"

namespace orvenmod::store::tsql {

Datum integerDatum(std::int64_t value);
Datum realDatum(double value);
Datum textDatum(std::string text);

/// A text of type `from` as a number. 245, 248, 244, 8114, 8115, 235.
Datum textToInteger(std::string_view text, const Type& from, const Type& to);
Datum textToDecimal(std::string_view text, const Type& from, const Type& to);
Datum textToFloat(std::string_view text, const Type& from, const Type& to);
Datum textToMoney(std::string_view text, const Type& to);

/// The double nearest to the number that the text begins with: infinite where none is as large, 0 for no number.
double nearestReal(std::string_view text);

/// The number within an integer type's range, or 8115, 220.
Datum fittedInteger(std::int64_t value, const Type& from, const Type& to);
/// The number rounded to a decimal or money type's scale, within its precision, or 8115.
Datum fittedDecimal(Decimal value, const Type& from, const Type& to);

/// The text of a number, as convert(varchar, number, style).
std::string decimalText(const Datum& value, const Type& from, int style);
std::string floatText(double value, const Type& from, int style);

/// A text brought to a text type's length: cut, or refused where the mode is an assignment; padded for char, nchar.
Datum fittedText(std::string text, const Type& to, const ConvertMode& mode);

/// Name of the type in messages: decimal is "numeric".
std::string messageName(const Type& type);

}  // namespace orvenmod::store::tsql
