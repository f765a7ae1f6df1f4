// A control's event: at most one handler, set by the window's logic.
//
// Where it is raised decides what becomes of a failure. Raised by the user (through the toolkit's event loop) it is
// caught there, its text shown in the critical box, and the window lives on. Raised because code wrote to a control
// (Combo::select, Edit::setText) it goes up to that code.
#pragma once

#include <functional>
#include <utility>

namespace orvenmod::platform {

template <class... Arguments>
class Event {
public:
    Event& operator=(std::function<void(Arguments...)> handler) {
        handler_ = std::move(handler);
        return *this;
    }

    void raise(Arguments... arguments) const {
        if (handler_) handler_(arguments...);
    }

    explicit operator bool() const { return static_cast<bool>(handler_); }

private:
    std::function<void(Arguments...)> handler_;
};

}  // namespace orvenmod::platform
