// How rights are numbered, and the rows that a new database and the designer of classes note for an item class.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvenmod::store {

/// What the number of a right begins with.
inline constexpr char kClassRights = 'Y';
inline constexpr char kDictionaryRights = 'Z';

/// What it ends with: the two digits of what may be done. A dictionary's entries are details here.
namespace right {
inline constexpr const char* kNewCategory = "01";
inline constexpr const char* kUpdateCategory = "02";
inline constexpr const char* kDeleteCategory = "03";
inline constexpr const char* kNewDetail = "04";
inline constexpr const char* kUpdateDetail = "05";
inline constexpr const char* kDeleteDetail = "06";
inline constexpr const char* kNewAttachment = "07";
inline constexpr const char* kDeleteAttachment = "09";
inline constexpr const char* kOpenAttachment = "10";
inline constexpr const char* kViewDetail = "20";
}  // namespace right

/// The rows of tblSystemPrivillenge: the class's group, and the ten rights in it.
std::vector<std::string> classRightRows(std::int32_t itemClass, std::string_view name);

}  // namespace orvenmod::store
