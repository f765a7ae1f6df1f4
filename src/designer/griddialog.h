// The design of the designer's two windows that are a grid with a toolbar to save it.
#pragma once

#include <string_view>
#include <vector>

#include "platform/design.h"

namespace orvenmod {

/// `height` in twips; `accessibleName` is the grid's.
platform::WindowDesign gridDialog(std::string_view name, std::string_view caption, float height,
                                  std::string_view accessibleName, std::vector<platform::GridColumn> columns);

}  // namespace orvenmod
