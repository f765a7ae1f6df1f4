// A query's rows as plain texts.
#pragma once

#include <string>
#include <vector>

#include "store/connection.h"

namespace orvenmod::test {

using Rows = std::vector<std::vector<std::string>>;

/// All cells as texts; null is "NULL".
Rows rowsOf(store::Connection& connection, const std::string& sql);

}  // namespace orvenmod::test
