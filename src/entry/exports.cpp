#include <dlfcn.h>

#include <array>
#include <exception>
#include <string>
#include <string_view>

#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/clsHSXMManage.h>
#include <orvenmod/clsJCZL.h>
#include <orvenmod/component.h>

#include "entry/entry.h"
#include "entry/startup.h"

namespace {

using namespace orvenmod;

constexpr const char* kApplication = "Orvenmod";
constexpr const char* kSection = "Classes";

template <class Class>
class ClassObjectOf : public ClassObject {
public:
    std::shared_ptr<void> createInstance() const override { return std::make_shared<Class>(); }
};

const ClassObjectOf<clsBasicInfo> basicInfo;
const ClassObjectOf<clsJCZL> dictionary;
const ClassObjectOf<clsHSXMManage> designer;

struct Registered {
    std::string_view name;
    const ClassObject& object;
};

const std::array<Registered, 3> kClasses = {
    {{"Orvenmod.clsBasicInfo", basicInfo}, {"Orvenmod.clsJCZL", dictionary}, {"Orvenmod.clsHSXMManage", designer}}};

// The file that this code was loaded from.
std::string moduleFile() {
    Dl_info info{};
    return dladdr(&kClasses, &info) != 0 && info.dli_fname != nullptr ? info.dli_fname : "";
}

}  // namespace

extern "C" {

std::int32_t DllRegisterServer() {
    try {
        for (const Registered& one : kClasses) {
            sharedSettings().save(kApplication, kSection, std::string(one.name), moduleFile());
        }
        return kSuccess;
    } catch (const std::exception&) {
        return kRegistrationFailed;
    }
}

std::int32_t DllUnregisterServer() {
    try {
        sharedSettings().remove(kApplication, kSection, "");
        return kSuccess;
    } catch (const std::exception&) {
        return kRegistrationFailed;
    }
}

std::int32_t DllGetClassObject(const char* className, const ClassObject** classObject) {
    if (className == nullptr || classObject == nullptr) return kInvalidPointer;
    *classObject = nullptr;
    for (const Registered& one : kClasses) {
        if (one.name != className) continue;
        *classObject = &one.object;
        return kSuccess;
    }
    return kClassNotAvailable;
}

std::int32_t DllCanUnloadNow() { return liveObjects() == 0 ? kSuccess : kNo; }
}
