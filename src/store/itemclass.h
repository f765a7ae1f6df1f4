// How the schema numbers item classes and what belongs to them.
#pragma once

#include <cstdint>
#include <string>

namespace orvenmod::store {

/// The class of goods: the one with stock, a bill area and photos.
inline constexpr std::int16_t kGoods = 3;

/// What a class's list columns, search fields, descriptions, hidden columns and standing conditions are filed under.
constexpr std::int64_t listTypeNumber(std::int32_t itemClass) {
    constexpr std::int64_t kListTypes = 6000;
    return itemClass + kListTypes;
}
inline std::string listType(std::int32_t itemClass) { return std::to_string(listTypeNumber(itemClass)); }

}  // namespace orvenmod::store
