// What the editor asks of the list behind it. Implemented by the window that shows the list.
#pragma once

#include <string>

namespace orvenmod {

class ListHost {
public:
    virtual ~ListHost() = default;
    /// Reads the list again with the condition.
    virtual bool findInfo2(const std::string& strParamSQL) = 0;
};

}  // namespace orvenmod
