// The columns that the system and its suite read and write, told apart from the schema that has them.
#pragma once

#include <string>
#include <vector>

namespace orvenmod::test {

struct ExpectedTable {
    std::string name;
    std::string columns;  ///< separated by commas
};

const std::vector<ExpectedTable>& expectedTables();

}  // namespace orvenmod::test
