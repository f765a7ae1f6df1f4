// A host without a toolkit, whose loop waits on a pipe and calls the component from within.
#include <poll.h>
#include <unistd.h>

#include <array>

#include "hosts/hostprogram.h"

int main() {
    using host::expect;
    const host::Suite suite;
    std::array<int, 2> ends{};
    expect(::pipe(ends.data()) == 0, "a pipe");
    constexpr int kOrders = 3;
    expect(::write(ends[1], "ooo", kOrders) == kOrders, "three orders");
    int picked = 0;
    while (picked < kOrders) {
        pollfd wanted{ends[0], POLLIN, 0};
        char order = 0;
        expect(::poll(&wanted, 1, -1) == 1 && ::read(ends[0], &order, 1) == 1, "an order");
        expect(!host::pickedCode(suite).empty(), "an item is picked");
        ++picked;
    }
    expect(host::windowsSeen() == kOrders, "each order opened a window");
    return 0;
}
