// The design of frmBasicInfoList.
#pragma once

#include "platform/design.h"

namespace orvenmod {

/// What a frame has beyond the control that fills it, in twips. The window keeps to it at any size.
inline constexpr float kAboveGrids = 800;
inline constexpr float kBesideTree = 120;
inline constexpr float kBesideList = 150;
inline constexpr float kBesideBill = 450;

const platform::WindowDesign& basicInfoListDesign();

}  // namespace orvenmod
