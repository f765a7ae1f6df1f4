#include "designer/lists.h"

#include "frame/conversion.h"

namespace orvenmod {

std::vector<std::string> splitList(std::string_view text) {
    std::vector<std::string> entries;
    if (text.empty()) return entries;
    for (;;) {
        const auto comma = text.find(',');
        entries.emplace_back(text.substr(0, comma));
        if (comma == std::string_view::npos) return entries;
        text.remove_prefix(comma + 1);
    }
}

const std::string& entryOf(const std::vector<std::string>& list, std::size_t place) {
    if (place >= list.size()) throw ConversionFailure(ConversionFailure::kSubscriptOutOfRange, "下标越界");
    return list[place];
}

}  // namespace orvenmod
