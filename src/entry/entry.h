// What the three entry classes share.
#pragma once

#include <cstdint>
#include <string>

#include <orvenmod/variant.h>

namespace orvenmod {

/// Starts the component up and reads the settings that all classes read.
void initializeClass();

/// Drops the connection without closing it first.
void dropConnection() noexcept;

/// The value as text: "" where nothing was passed. Throws ConversionFailure for an object.
std::string variantText(const Variant& value);
/// The value as a 16-bit number; true is -1, and 0 where nothing was passed. Throws ConversionFailure where it is none.
std::int16_t variantInt16(const Variant& value);

// Objects of the three classes that are alive.
void objectCreated() noexcept;
void objectDestroyed() noexcept;
int liveObjects() noexcept;

}  // namespace orvenmod
