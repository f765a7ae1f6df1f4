// The command line of the sample suite.
#pragma once

#include <string>
#include <vector>

namespace orvenmod::sample {

struct Options {
    std::string database;
    std::string server;  ///< connection string of the server that has the suite's tables; "" for the file itself
    bool create = false;
    bool upgrade = false;
    int goods = 0;
    std::string tour;  ///< folder of the pictures, "" for none
};

/// How to call the suite, for a terminal.
extern const char* const kUsage;

/// Throws std::invalid_argument, with a text that says what is wrong.
Options readOptions(const std::vector<std::string>& arguments);

}  // namespace orvenmod::sample
