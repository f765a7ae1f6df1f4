// What the C interface has handed out: objects by handles, and texts. Both are looked up before they are touched, so
// that a handle or pointer that is none, or was given back, is refused instead of followed.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include <orvenmod/orvenmod_c.h>

#include "entry/latebound.h"

namespace orvenmod {

class Handles {
public:
    /// Those of the process, which outlive whatever else is destroyed at its end.
    static Handles& all();

    orvenmod_object* add(std::shared_ptr<LateObject> object);
    /// The object stays alive while the caller holds it. Throws CallFailure kObjectRequired for no handle,
    /// ConversionFailure kInvalidCall for that of another thread.
    std::shared_ptr<LateObject> find(const orvenmod_object* handle);
    /// Throws as find.
    void remove(const orvenmod_object* handle);

    /// A copy that lives until it is freed.
    const char* copyOf(const std::string& text);
    /// Throws ConversionFailure kInvalidCall for what is no such copy.
    void free(const char* text);

private:
    struct Owned {
        std::shared_ptr<LateObject> object;
        std::uint64_t thread;  ///< its threadNumber
    };
    using Objects = std::map<std::uintptr_t, Owned>;

    Objects::iterator located(const orvenmod_object* handle);

    std::mutex mutex_;
    Objects objects_;
    std::uintptr_t last_ = 0;
    std::map<const char*, std::unique_ptr<char[]>> texts_;
};

}  // namespace orvenmod
