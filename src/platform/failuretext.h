// What a failure is called in a box.
#pragma once

#include <exception>
#include <new>
#include <string>

namespace orvenmod::platform {

/// Its own words; but the standard library has none that a user could read for memory that is out.
inline std::string failureText(const std::exception& failure) {
    return dynamic_cast<const std::bad_alloc*>(&failure) == nullptr ? failure.what() : "内存不足。";
}

}  // namespace orvenmod::platform
