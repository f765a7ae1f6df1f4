// What the three entry classes share.
#pragma once

#include <cstdint>
#include <string>

#include <orvenmod/variant.h>

namespace orvenmod {

/// The calling thread's own, never given twice: the system gives a thread's id to another once it has ended.
std::uint64_t threadNumber() noexcept;

/// Starts the component up and reads the settings that all classes read.
void initializeClass();

/// An entry while it runs. One runs at a time, on the thread of the first object, and a host's QApplication must be
/// there: another throws std::runtime_error, and has changed nothing.
class RunningEntry {
public:
    RunningEntry();
    ~RunningEntry();
    RunningEntry(const RunningEntry&) = delete;
    RunningEntry& operator=(const RunningEntry&) = delete;
};

/// Drops the connection without closing it first.
void dropConnection() noexcept;
/// Likewise with the end of an object. One that ends while another's window is open leaves that window its connection.
void dropConnectionOfObject() noexcept;

/// The value as text: "" where nothing was passed. Throws ConversionFailure for an object.
std::string variantText(const Variant& value);
/// The value as a 16-bit number; true is -1, and 0 where nothing was passed. Throws ConversionFailure where it is none.
std::int16_t variantInt16(const Variant& value);

// Objects of the three classes that are alive.
void objectCreated() noexcept;
void objectDestroyed() noexcept;
int liveObjects() noexcept;

}  // namespace orvenmod
