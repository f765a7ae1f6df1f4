// The names that the designer proposes for tables and fields. They are counted in tblMaxbillno, a row a kind of name.
#pragma once

#include <string>

#include "store/flight.h"

namespace orvenmod {

/// The table of the next class. Needs an open store, in which it makes the counter's row where there is none; the
/// counter is only read: a dialog that is cancelled uses up no name.
std::string proposedTableName();

/// The next field, from the row 1001. Needs an open store.
///
/// Both throw what the store throws; a counter that doesn't fit 16 bits is a ConversionFailure.
std::string proposedFieldName();

/// Counts a field name as given out.
void countFieldName(store::Flight& flight);

}  // namespace orvenmod
