// Rows of the table of members, made from the members themselves: a row names a member and its parameters, and their
// types follow from the class.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "entry/entry.h"
#include "entry/latebound.h"

namespace orvenmod::binding {

template <class Value>
constexpr ValueType typeOf() {
    using Plain = std::remove_cvref_t<Value>;
    static_assert(std::is_same_v<Plain, std::string> || std::is_same_v<Plain, std::int16_t> ||
                  std::is_same_v<Plain, Variant>);
    if (std::is_same_v<Plain, std::string>) return ValueType::text;
    return std::is_same_v<Plain, Variant> ? ValueType::any : ValueType::int16;
}

/// Throws ConversionFailure where the value doesn't fit.
template <class Value>
Value converted(const Variant& value) {
    if constexpr (std::is_same_v<Value, std::string>) {
        return variantText(value);
    } else if constexpr (std::is_same_v<Value, std::int16_t>) {
        return variantInt16(value);
    } else {
        return value;
    }
}

template <class Pointer>
struct Property;

template <class Class, class Value>
struct Property<Value Class::*> {
    using Owner = Class;
    using Type = Value;
    static constexpr std::array<ValueType, 1> kTypes{typeOf<Value>()};
};

template <auto Pointer>
constexpr Member property(const char* name) {
    using Of = Property<decltype(Pointer)>;
    using Owner = typename Of::Owner;
    Member member{name, MemberKind::property, Of::kTypes};
    member.get = [](const void* object) -> Variant { return static_cast<const Owner*>(object)->*Pointer; };
    member.put = [](void* object, const Variant& value) {
        static_cast<Owner*>(object)->*Pointer = converted<typename Of::Type>(value);
    };
    return member;
}

template <class Pointer>
struct Method;

template <class Class, class... Arguments>
struct Method<bool (Class::*)(Arguments...)> {
    using Owner = Class;
    static constexpr std::size_t kCount = sizeof...(Arguments);
    static constexpr std::array<ValueType, kCount> kTypes{typeOf<Arguments>()...};

    /// In the order of the parameters, so that the first one that doesn't fit is the one that is told.
    template <std::size_t... At>
    static std::tuple<std::remove_cvref_t<Arguments>...> values([[maybe_unused]] std::span<const Variant> arguments,
                                                                std::index_sequence<At...>) {
        return {converted<std::remove_cvref_t<Arguments>>(arguments[At])...};
    }
};

template <auto Pointer, class... Names>
constexpr Member method(const char* name, Names... parameters) {
    using Of = Method<decltype(Pointer)>;
    using Owner = typename Of::Owner;
    static_assert(sizeof...(Names) == Of::kCount && Of::kCount <= kMostParameters);
    Member member{name, MemberKind::method, Of::kTypes, {parameters...}};
    member.call = [](void* object, std::span<const Variant> arguments) -> Variant {
        const auto call = [object](const auto&... values) {
            return (static_cast<Owner*>(object)->*Pointer)(values...);
        };
        return std::apply(call, Of::values(arguments, std::make_index_sequence<Of::kCount>()));
    };
    return member;
}

}  // namespace orvenmod::binding
