// The part of the tour that makes a class.
#pragma once

#include "guide.h"

namespace orvenmod::sample {

/// Makes a class with fields of every kind, hides one, and opens the class's list.
void designClasses(Guide& guide);

}  // namespace orvenmod::sample
