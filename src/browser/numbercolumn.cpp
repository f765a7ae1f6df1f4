#include "browser/numbercolumn.h"

#include <algorithm>
#include <array>
#include <utility>

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

}  // namespace orvenmod
