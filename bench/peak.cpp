#include "peak.h"

#include <malloc.h>

#include <fstream>
#include <stdexcept>
#include <string>

namespace orvenmod::bench {
namespace {

/// A line of what the system tells of this process, in MiB.
double memoryLine(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind(name + ":", 0) == 0) return std::stod(line.substr(name.size() + 1)) / 1024;
    }
    throw std::runtime_error("the system doesn't tell " + name);
}

}  // namespace

double mostMemory(const std::function<void()>& work) {
    malloc_trim(0);
    if (!(std::ofstream("/proc/self/clear_refs") << "5")) throw std::runtime_error("the peak can't be reset");
    const double before = memoryLine("VmRSS");
    work();
    return memoryLine("VmHWM") - before;
}

}  // namespace orvenmod::bench
