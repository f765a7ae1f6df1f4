// A host that calls from a second thread: a clear failure, and the first thread goes on.
#include <thread>

#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/clsJCZL.h>

#include "hosts/hostprogram.h"

int main() {
    using host::expect;
    const host::Suite suite;
    expect(!host::pickedCode(suite).empty(), "the first thread picks");
    orvenmod::clsBasicInfo items;
    std::string made;
    std::string called;
    std::thread([&] {
        made = host::failureOf([] { const orvenmod::clsJCZL dictionaries; });
        called = host::failureOf([&] { items.mainInterface(3, "", "", suite.connectionString(), 1); });
    }).join();
    const std::string told = "组件只能在最先使用它的线程里使用";
    expect(made == told, "no object is made on a second thread: " + made);
    expect(called == told, "no window opens on a second thread: " + called);
    expect(!host::pickedCode(suite).empty(), "the first thread picks again");
    expect(host::windowsSeen() == 2, "two windows in all");
    return 0;
}
