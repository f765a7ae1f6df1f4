// The component as a loadable module under the name "Orvenmod": what a host that finds its classes at run time calls.
// All four give an HRESULT: 0 for success, 1 for no, negative for a failure.
#pragma once

#include <cstdint>
#include <memory>

#include <orvenmod/export.h>

namespace orvenmod {

inline constexpr std::int32_t kSuccess = 0;
inline constexpr std::int32_t kNo = 1;
inline constexpr std::int32_t kClassNotAvailable = static_cast<std::int32_t>(0x80040111u);
inline constexpr std::int32_t kInvalidPointer = static_cast<std::int32_t>(0x80004003u);
inline constexpr std::int32_t kRegistrationFailed = static_cast<std::int32_t>(0x80040201u);

/// Makes objects of one class.
class ClassObject {
public:
    virtual ~ClassObject() = default;
    /// An object of the class (static_pointer_cast to it). Throws what its constructor throws.
    virtual std::shared_ptr<void> createInstance() const = 0;
};

}  // namespace orvenmod

extern "C" {

/// Writes into the per-user settings, application "Orvenmod", section "Classes", which file holds each class:
/// "Orvenmod.clsBasicInfo", "Orvenmod.clsJCZL", "Orvenmod.clsHSXMManage".
ORVENMOD_API std::int32_t DllRegisterServer();

/// Takes those entries away.
ORVENMOD_API std::int32_t DllUnregisterServer();

/// The class object of a registered name such as "Orvenmod.clsBasicInfo". It lives as long as the module.
ORVENMOD_API std::int32_t DllGetClassObject(const char* className, const orvenmod::ClassObject** classObject);

/// 0 when no object of any class is alive, else 1.
ORVENMOD_API std::int32_t DllCanUnloadNow();
}
