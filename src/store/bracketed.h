// A name as the dialect takes any name.
#pragma once

#include <string>
#include <string_view>

namespace orvenmod::store {

/// [name], a bracket within it doubled.
inline std::string bracketed(std::string_view name) {
    std::string result = "[";
    for (const char c : name)
        result += c == ']' ? std::string("]]") : std::string(1, c);
    return result + "]";
}

}  // namespace orvenmod::store
