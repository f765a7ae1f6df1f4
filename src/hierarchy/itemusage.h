// Which bills use an item: the families and the columns that the usage guard probes, told with their numbers. Nobody
// needs it for a delete; it is read when a user asks.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orvenmod {

struct FamilyUsage {
    std::string family;
    std::string bills;                ///< how many
    std::vector<std::string> latest;  ///< the ids of the latest ten, from the latest on
    bool balance = false;             ///< a balance is kept of the item
};

/// The item's code and name, "" where it is gone. Reads on gConn, which is open; what fails goes to the caller.
std::string usedItem(std::int32_t id);

/// In the guard's order. One statement reads which columns can hold an item, one more each family. Reads on gConn,
/// which is open; what fails goes to the caller.
std::vector<FamilyUsage> itemUsage(std::int32_t id);

}  // namespace orvenmod
