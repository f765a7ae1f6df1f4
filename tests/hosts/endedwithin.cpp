// A host that ends its process while a window is open: it ends as it says, and not by a crash.
#include <cstdlib>

#include <orvenmod/clsBasicInfo.h>

#include "hosts/hostprogram.h"

int main() {
    static const host::Suite suite;
    orvenmod::clsBasicInfo items;
    host::whenNextWindowOpens([](QMainWindow&) { std::exit(EXIT_SUCCESS); });
    items.mainInterface(3, "", "", suite.connectionString(), 1);
    host::expect(false, "the window stays open until the process ends");
}
