// A value of any kind, as hosts pass it in optional arguments and store it in UserRight.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>

namespace orvenmod {

/// Empty where nothing was passed. An object is held by shared_ptr<void>.
using Variant =
    std::variant<std::monostate, bool, std::int16_t, std::int32_t, double, std::string, std::shared_ptr<void>>;

}  // namespace orvenmod
