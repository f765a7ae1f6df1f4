// The view vTimeStock: the current stock, a row a row of tblTimeStock, with warehouse, goods and optional dimensions
// resolved to codes and names. The stock settings of the suite and the user fields of goods shape it; the rows of type
// 5033 in tblViewDesc describe it.
#pragma once

#include "store/flight.h"

namespace orvenmod {

/// Rebuilds view and descriptions within the caller's transaction. Settings from which no valid view follows are
/// failures of the store; a list of settings shorter than that of the dimensions, and a source that is no number, are a
/// ConversionFailure.
void rebuildStockView(store::Flight& flight);

}  // namespace orvenmod
