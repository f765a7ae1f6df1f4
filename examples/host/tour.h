// The tour: plays scripted steps on the real windows and leaves a picture of each.
#pragma once

#include <string>

namespace orvenmod::sample {

class SuiteWindow;

/// Makes the folder where it is missing, writes the pictures into it and their list to the standard output. 0 where
/// every step could be taken, else 1 with what was wrong on the standard error.
int playTour(SuiteWindow& window, const std::string& folder);

}  // namespace orvenmod::sample
