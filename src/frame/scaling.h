// Makes a window's controls follow its size: positions are recorded as fractions of the inner size when the window
// loads and applied again at every resize.
#pragma once

#include <vector>

#include "platform/window.h"

namespace orvenmod {

/// One control's design position, indexed by the control's place in the window's collection. Fields that aren't
/// recorded stay 0.
struct ControlPos {
    float sngLeft = 0;  ///< left / inner width
    float sngTop = 0;   ///< top / inner height
    float sngWidth = 0;
    float sngHeight = 0;
    float sngRight = 0;  ///< from the control's right edge to the window's, in twips
    float sngBottom = 0;
};

/// Records. `positions` has an element for every control of the window; a control beyond it is std::out_of_range. An
/// inner size that doesn't fit 16 bits, and one of 0, is a ConversionFailure.
void GetSourcePos(const platform::Window& window, std::vector<ControlPos>& positions);

/// Applies.
void SetNewPos(const platform::Window& window, const std::vector<ControlPos>& positions);

}  // namespace orvenmod
