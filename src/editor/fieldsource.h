// What the editor is laid out from: the class's fields, the entries that its references choose from, its categories.
// Reads on gConn, which is open, for class gItemClassId; what fails goes to the caller.
#pragma once

#include <memory>

#include "platform/entrygrid.h"
#include "store/listrows.h"
#include "store/recordset.h"

namespace orvenmod {

/// The fields that show, in their order.
store::Recordset readFields();

/// What a number field takes.
platform::NumberRule numberRule(const store::Recordset& field);

/// The entries that a reference chooses from, by their codes.
store::Recordset readEntries(const store::Recordset& field);
/// The same for a list of them that its user may never open.
std::unique_ptr<store::ListRows> listEntries(const store::Recordset& field);

/// Parents before children.
store::Recordset readCategories();

}  // namespace orvenmod
