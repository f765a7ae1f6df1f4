// Key codes, mouse buttons and pointers as the windows' logic knows them.
#pragma once

namespace orvenmod::platform {

inline constexpr int kKeyEnter = 13;
inline constexpr int kKeyUp = 38;
inline constexpr int kKeyDown = 40;

enum class MouseButton { left = 1, right = 2 };

enum class Pointer { arrow = 1, hourglass = 11 };

/// An RGB colour.
struct Colour {
    int red = 0;
    int green = 0;
    int blue = 0;
    bool operator==(const Colour&) const = default;
};

}  // namespace orvenmod::platform
