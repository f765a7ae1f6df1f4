// The short code proposed for a new item under a parent.
#pragma once

#include <cstdint>
#include <string>

namespace orvenmod {

/// The successor of the highest short code among the siblings of the greatest length, padded to that length; "001" for
/// the first, and where the highest is no number. Shows its own failures and then gives "001".
std::string getShortNumber(std::int32_t parentId);

}  // namespace orvenmod
