// How the schema numbers item classes, their fields and what belongs to them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orvenmod::store {

/// The class of goods: the one with stock, a bill area and photos.
inline constexpr std::int16_t kGoods = 3;

/// What the class's balance is called; "" for a class that has none.
std::string_view balanceCaption(std::int32_t itemClass);

/// What a class's list columns, search fields, descriptions, hidden columns and standing conditions are filed under.
constexpr std::int64_t listTypeNumber(std::int32_t itemClass) {
    constexpr std::int64_t kListTypes = 6000;
    return itemClass + kListTypes;
}
inline std::string listType(std::int32_t itemClass) { return std::to_string(listTypeNumber(itemClass)); }

/// What a field holds: tblTableInfo.fFieldType.
inline constexpr std::string_view kDateField = "0";
inline constexpr std::string_view kTextField = "1";
inline constexpr std::string_view kCurrencyField = "12";
inline constexpr std::string_view kNumberField = "13";

/// How the search bar treats a field: tblFindinfoEntry2.fNumType.
inline constexpr std::string_view kSeekNumber = "1";
inline constexpr std::string_view kSeekText = "2";
inline constexpr std::string_view kSeekDate = "3";
constexpr std::string_view seekKind(std::string_view fieldType) {
    if (fieldType == kDateField) return kSeekDate;
    return fieldType == kNumberField ? kSeekNumber : kSeekText;
}

/// What a class or a lookup into one is: tblItemClass.fItemType.
inline constexpr std::string_view kItemClass = "0";
inline constexpr std::string_view kDictionary = "1";

}  // namespace orvenmod::store
