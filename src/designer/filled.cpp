#include "designer/filled.h"

#include <stdexcept>

namespace orvenmod {

std::string filled(std::string_view text, std::initializer_list<std::pair<std::string_view, std::string_view>> values) {
    std::string result;
    for (;;) {
        const auto open = text.find('{');
        result += text.substr(0, open);
        if (open == std::string_view::npos) return result;
        const auto close = text.find('}', open);
        const std::string_view name = text.substr(open + 1, close - open - 1);
        bool known = false;
        for (const auto& [key, value] : values) {
            if (key != name) continue;
            result += value;
            known = true;
        }
        if (!known) throw std::logic_error("no value for " + std::string(name));
        text.remove_prefix(close + 1);
    }
}

}  // namespace orvenmod
