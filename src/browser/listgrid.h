// Dresses the list grid by a column spec and blanks its zeros.
#pragma once

#include "browser/listquery.h"
#include "platform/listgrid.h"

namespace orvenmod {

/// Hides columns 0 and 1 and gives every column its title, alignment, format and width. Throws ConversionFailure where
/// an alignment or a width is no number.
void dressList(platform::ListGrid& grid, const ColumnSpec& spec);

/// Blanks the cells that are zero in every column with a number format. The rows behind the grid keep their
/// values.
void clearZero(platform::ListGrid& grid);

}  // namespace orvenmod
