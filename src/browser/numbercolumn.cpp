#include "browser/numbercolumn.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/numberformat.h"

namespace orvenmod {

namespace {

constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kFormats = {{
    {"#,###.##", "#,##0.00"},
    {"#,###.###", "#,##0.000"},
    {"#,###.####", "#,##0.0000"},
    {"#,###.#####", "#,##0.00000"},
    {"#,###.######", "#,##0.000000"},
    {"#,###.#", "#,##0.0"},
    {"#,###", "#,##0"},
}};

}  // namespace

std::optional<std::string> numberFormat(std::string_view listFormat) {
    const auto* const found = std::ranges::find(kFormats, listFormat, [](const auto& each) { return each.first; });
    if (found == kFormats.end()) return std::nullopt;
    return std::string(found->second);
}

std::optional<std::string> sheetFormat(std::string_view listFormat) {
    if (!platform::isNumberFormat(listFormat)) return std::nullopt;
    std::string format(listFormat);
    const auto point = format.find('.');
    const std::size_t lastDigit = format.find_last_of("#0", point);
    if (lastDigit != std::string::npos) format[lastDigit] = '0';
    if (point != std::string::npos && format[point + 1] == '#') {
        std::replace(format.begin() + static_cast<std::ptrdiff_t>(point), format.end(), '#', '0');
    }
    return format;
}

}  // namespace orvenmod
