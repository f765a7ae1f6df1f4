// Draws a laid-out page of a report, on paper, into a PDF or on the screen.
#pragma once

#include <string>

#include "platform/report/reportpages.h"

class QPainter;

namespace orvenmod::platform::qt {

/// The painter's origin is the corner of the paper; `family` "" is the windows' own font.
void paintPage(QPainter& painter, double unitsPerMillimetre, const report::Page& page, const std::string& family);

}  // namespace orvenmod::platform::qt
