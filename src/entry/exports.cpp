#include <dlfcn.h>

#include <exception>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include <orvenmod/component.h>

#include "entry/entry.h"
#include "entry/latebound.h"
#include "entry/startup.h"

namespace {

using namespace orvenmod;

constexpr const char* kApplication = "Orvenmod";
constexpr const char* kSection = "Classes";

class ClassObjectOf : public ClassObject {
public:
    explicit ClassObjectOf(const BoundClass& made) : made_(made) {}
    std::shared_ptr<void> createInstance() const override { return made_.make(); }

private:
    const BoundClass& made_;
};

const ClassObject& classObjectOf(const BoundClass& made) {
    const auto all = boundClasses();
    static const std::vector<ClassObjectOf> objects(all.begin(), all.end());
    return objects[static_cast<std::size_t>(&made - all.data())];
}

// The file that this code was loaded from; "" where that can't be told.
std::string moduleFile() noexcept {
    Dl_info info{};
    if (dladdr(kApplication, &info) == 0 || info.dli_fname == nullptr) return "";
    std::error_code error;
    const std::filesystem::path file = std::filesystem::absolute(info.dli_fname, error);
    return error ? "" : file.string();
}

// Asked when the library is loaded: a relative path counts from the current folder of that time.
const std::string kModuleFile = moduleFile();

}  // namespace

extern "C" {

std::int32_t DllRegisterServer() {
    if (kModuleFile.empty()) return kRegistrationFailed;
    try {
        for (const BoundClass& each : boundClasses())
            sharedSettings().save(kApplication, kSection, each.name, kModuleFile);
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
    const BoundClass* found = findClass(className);
    *classObject = found != nullptr ? &classObjectOf(*found) : nullptr;
    return found != nullptr ? kSuccess : kClassNotAvailable;
}

std::int32_t DllCanUnloadNow() { return liveObjects() == 0 ? kSuccess : kNo; }
}
