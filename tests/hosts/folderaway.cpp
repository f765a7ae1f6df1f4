// A host whose current folder goes away.
#include <filesystem>

#include "hosts/hostprogram.h"

int main() {
    using host::expect;
    const host::Suite suite;
    const std::string folder = suite.folder() + "/current";
    std::filesystem::create_directory(folder);
    std::filesystem::current_path(folder);
    std::filesystem::remove(folder);
    for (int time = 0; time < 2; ++time)
        expect(!host::pickedCode(suite).empty(), "an item is picked");
    return 0;
}
