// The rights of an item class, as a new database and the designer of classes note them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvenmod::store {

/// What the number of a right begins with.
inline constexpr char kClassRights = 'Y';
inline constexpr char kDictionaryRights = 'Z';

/// The rows of tblSystemPrivillenge: the class's group, and the ten rights in it.
std::vector<std::string> classRightRows(std::int32_t itemClass, std::string_view name);

}  // namespace orvenmod::store
