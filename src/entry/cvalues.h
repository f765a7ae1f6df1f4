// The values of the C interface and the component's own, either as the other.
#pragma once

#include <cstdint>
#include <string>

#include <orvenmod/orvenmod_c.h>
#include <orvenmod/variant.h>

#include "entry/latebound.h"

namespace orvenmod {

/// Throws ConversionFailure kInvalidCall.
[[noreturn]] void refuseNull();

/// Throws ConversionFailure kInvalidCall for null and for what isn't UTF-8.
std::string textOf(const char* text);

/// Throws ConversionFailure: kTypeMismatch for a type that is none, kOverflow for an integer beyond its type, and as
/// textOf.
Variant variantOf(const orvenmod_value& value);

/// A text in it is a copy of Handles. Throws ConversionFailure kTypeMismatch for an object.
orvenmod_value handedOut(const Variant& value);

orvenmod_member described(const Member& member);
/// Throws ConversionFailure kSubscriptOutOfRange where the member has no such parameter.
orvenmod_parameter describedParameter(const Member& member, std::int32_t index);

}  // namespace orvenmod
