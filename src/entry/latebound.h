// Objects of the public classes by the names of their members, as hosts of other languages use them:
//
//   LateObject item("Orvenmod.clsBasicInfo");
//   item.put("Status", "3");                       // a text that is a number, for a 16-bit property
//   item.call("mainInterface", std::vector<Variant>{3, "", "", string, 1});
//   item.get("fitemid");                           // names go without regard to case
//
// What the members are stands in a table (classtable.cpp), from which the types of each follow.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include <orvenmod/variant.h>

namespace orvenmod {

/// A use that no member or class takes, and the number that hosts know it by.
class CallFailure : public std::runtime_error {
public:
    static constexpr int kObjectRequired = 424;
    static constexpr int kCannotCreate = 429;
    static constexpr int kNoSuchMember = 438;
    static constexpr int kArgumentNotOptional = 449;
    static constexpr int kWrongArgumentCount = 450;

    CallFailure(int number, const std::string& text) : std::runtime_error(text), number_(number) {}
    int number() const { return number_; }

private:
    int number_;
};

enum class MemberKind { property, method };

/// What a property holds or a parameter takes. A parameter that takes any kind may be left out.
enum class ValueType { text, int16, any };

inline constexpr std::size_t kMostParameters = 7;

struct Member {
    const char* name;
    MemberKind kind;
    std::span<const ValueType> types;  ///< of the property, or of the method's parameters
    std::array<const char*, kMostParameters> parameters{};
    Variant (*get)(const void* object) = nullptr;
    void (*put)(void* object, const Variant& value) = nullptr;
    Variant (*call)(void* object, std::span<const Variant> arguments) = nullptr;  ///< with every argument in its place
};

struct BoundClass {
    const char* name;
    std::shared_ptr<void> (*make)();
    std::span<const Member> members;
};

std::span<const BoundClass> boundClasses();
/// Null for a name that no class has.
const BoundClass* findClass(std::string_view name);

class LateObject {
public:
    /// Throws CallFailure kCannotCreate for an unknown class, and what the class's constructor throws.
    explicit LateObject(std::string_view className);

    std::span<const Member> members() const { return class_.members; }

    Variant get(std::string_view property) const;
    /// Throws ConversionFailure for a value that the property can't hold; one that is empty clears it.
    void put(std::string_view property, const Variant& value);
    /// An empty argument counts as left out. Throws ConversionFailure for one that doesn't fit, and what the method
    /// throws.
    Variant call(std::string_view method, std::span<const Variant> arguments);

private:
    /// Throws CallFailure kNoSuchMember where there is none of that kind.
    const Member& member(std::string_view name, MemberKind kind) const;

    const BoundClass& class_;
    std::shared_ptr<void> object_;
};

}  // namespace orvenmod
