// A host whose threads make their first objects at once: one of them does, the others get a clear failure.
#include <algorithm>
#include <array>
#include <barrier>
#include <thread>
#include <vector>

#include <orvenmod/clsBasicInfo.h>

#include "hosts/hostprogram.h"

int main() {
    using host::expect;
    const host::Suite suite;
    std::array<std::string, 4> failures;
    std::barrier together(static_cast<std::ptrdiff_t>(failures.size()));
    std::vector<std::thread> threads;
    for (std::string& failure : failures) {
        threads.emplace_back([&] {
            together.arrive_and_wait();
            failure = host::failureOf([] { const orvenmod::clsBasicInfo items; });
        });
    }
    for (std::thread& each : threads)
        each.join();
    expect(std::count(failures.begin(), failures.end(), "") == 1, "one makes an object");
    expect(std::count(failures.begin(), failures.end(), "组件只能在最先使用它的线程里使用") == 3,
           "the others are told");
    return 0;
}
