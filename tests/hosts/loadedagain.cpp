// A host that loads the library, lets it go, and loads it again: it stays in the process, and goes on as it was.
#include <dlfcn.h>

#include <orvenmod/component.h>

#include "hosts/hostprogram.h"

namespace {

std::int32_t (*canUnload)() = nullptr;

const orvenmod::ClassObject* classOf(void* library) {
    const auto find = reinterpret_cast<std::int32_t (*)(const char*, const orvenmod::ClassObject**)>(
        ::dlsym(library, "DllGetClassObject"));
    canUnload = reinterpret_cast<std::int32_t (*)()>(::dlsym(library, "DllCanUnloadNow"));
    const orvenmod::ClassObject* found = nullptr;
    host::expect(find != nullptr && find("Orvenmod.clsBasicInfo", &found) == orvenmod::kSuccess, "the class is found");
    return found;
}

}  // namespace

int main(int argc, char** argv) {
    using host::expect;
    expect(argc == 2, "the library's file");
    const orvenmod::ClassObject* first = nullptr;
    for (int time = 0; time < 3; ++time) {
        void* library = ::dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
        expect(library != nullptr, "the library is loaded");
        const orvenmod::ClassObject* items = classOf(library);
        if (first == nullptr) first = items;
        expect(items == first, "it is the same library");
        {
            const auto object = items->createInstance();
            expect(canUnload() == orvenmod::kNo, "an object is alive");
        }
        expect(canUnload() == orvenmod::kSuccess, "none is alive");
        expect(::dlclose(library) == 0, "the library is let go");
        expect(canUnload() == orvenmod::kSuccess, "its code stays, since the toolkit behind it can't leave a process");
    }
    return 0;
}
