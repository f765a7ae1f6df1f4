// The databases that commands work on, each made once a process.
#pragma once

#include <string>

namespace orvenmod::test {

/// Goods, suppliers, a class 50 with a field, a dictionary 501, a photo and an attachment of item 101.
const std::string& suiteFile();

/// A suite as the first version left it.
const std::string& firstVersionFile();

}  // namespace orvenmod::test
