// What a literal of a statement becomes when it is bound to a parameter of the translation; the same for every target.
//
//   insert into tblItem(fitemid,fname,fprice) values(9,'x','1.25')
//
//   9       to int            9, a whole number
//   'x'     to varchar(80)    x
//   '1.25'  to decimal(18,4)  1.25
//
// A pattern is bound several times: 'A0%' itself, and the bounds of the texts that can match it, 'A0' and 'a1'.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "store/tsql/shape.h"
#include "store/tsql/translation.h"
#include "store/tsql/values.h"

namespace orvenmod::store::tsql {

/// The literal as a value of its own type.
Datum literalValue(const Literal& literal);

/// The value that the parameter gets of its literal. Throws Error where it can't be converted.
Datum boundValue(const Parameter& parameter, const Literal& literal);

/// Whether the literal goes in as it stands between its quotes, but for blanks at its end: a text that fits its column
/// in any code page. True for most texts.
bool isPlainText(const Parameter& parameter, const Literal& literal);

/// The literal where it goes in as it stands, a whole number for a whole number.
std::optional<int> plainInteger(const Parameter& parameter, const Literal& literal);

/// The new value of a column where the statement gives it once as a literal, "?" otherwise: the key of a doubled row.
std::string newValue(const Translation& translation, const Shape& shape, std::string_view column);

/// "UPDATE" or "INSERT", as the text of a change begins; what a refused row was about to do.
const char* changeVerb(std::string_view sql);

}  // namespace orvenmod::store::tsql
