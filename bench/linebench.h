#pragma once

#include <string>

#include "benchserver.h"
#include "report.h"

namespace orvenmod::bench {

/// Commands over a slow line: their round trips and milliseconds, each statement alone and in flights.
void measureLine(Report& report, BenchServer& server, const std::string& folder, int goods);

}  // namespace orvenmod::bench
