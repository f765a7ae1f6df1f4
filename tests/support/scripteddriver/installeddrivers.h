// The scripted driver, installed for the driver manager of the test's process.
#pragma once

#include <string>
#include <vector>

#include "support/temporary.h"

namespace orvenmod::test {

/// Points the driver manager to a folder of the test's own, in which the scripted driver is installed under the names.
/// Made before the process's first connection: the manager reads it once.
class InstalledDrivers {
public:
    explicit InstalledDrivers(const std::vector<std::string>& names);
    /// A data source of the driver manager's own file, with its lines.
    void addSource(const std::string& name, const std::string& lines) const;

private:
    TemporaryFolder folder_;
};

}  // namespace orvenmod::test
