// What a fuzzer is: a function that gets bytes and must come back, whatever they are. What it does with them may be
// refused in the reader's own way; anything else that is thrown, a crash or a check that fails is a find.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace orvenmod::fuzz {

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// In every build, unlike assert.
inline void check(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "doesn't hold: %s\n", what);
    std::abort();
}

}  // namespace orvenmod::fuzz
