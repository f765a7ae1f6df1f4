// The hourglass for the length of a work, however it ends.
#pragma once

#include "platform/window.h"

namespace orvenmod {

class Waiting {
public:
    explicit Waiting(platform::Window& window) : window_(window) { window_.setPointer(platform::Pointer::hourglass); }
    ~Waiting() { window_.setPointer(platform::Pointer::arrow); }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

private:
    platform::Window& window_;
};

}  // namespace orvenmod
