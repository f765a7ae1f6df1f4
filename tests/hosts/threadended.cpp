// A host whose first thread ends: the system gives its id to another one, which the component tells apart.
#include <thread>

#include <orvenmod/clsBasicInfo.h>

#include "hosts/hostprogram.h"

int main() {
    using host::expect;
    const host::Suite suite;
    std::thread::id first;
    std::thread([&first] {
        first = std::this_thread::get_id();
        const orvenmod::clsBasicInfo items;
    }).join();
    constexpr int kTries = 100;
    bool sameId = false;
    for (int time = 0; time < kTries && !sameId; ++time) {
        std::string made;
        std::thread([&] {
            sameId = std::this_thread::get_id() == first;
            made = host::failureOf([] { const orvenmod::clsBasicInfo items; });
        }).join();
        expect(made == "组件只能在最先使用它的线程里使用", "another thread makes no object: " + made);
    }
    expect(sameId, "an id comes again");
    return 0;
}
