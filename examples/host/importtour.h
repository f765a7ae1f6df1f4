// The part of the tour that brings a list of goods in.
#pragma once

#include "guide.h"

namespace orvenmod::sample {

void bringGoodsIn(Guide& guide);

}  // namespace orvenmod::sample
