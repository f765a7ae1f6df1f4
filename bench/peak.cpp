#include "peak.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>

namespace orvenmod::bench {
namespace {

/// A line of the process's status, in kibibytes.
double kibibytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double value = 0;
        if (word == name && status >> value) return value;
    }
    throw std::runtime_error("the system doesn't tell " + name);
}

double grownMebibytes(const std::function<void()>& work) {
    malloc_trim(0);
    if (!(std::ofstream("/proc/self/clear_refs") << "5" << std::flush))
        throw std::runtime_error("the peak can't be reset");
    const double before = kibibytes("VmRSS:");
    work();
    return (kibibytes("VmHWM:") - before) / 1024;
}

}  // namespace

double peakMebibytes(const std::function<void()>& work) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no child process");
    if (child == 0) {
        try {
            const double grown = grownMebibytes(work);
            _exit(write(ends[1], &grown, sizeof grown) == sizeof grown ? 0 : 1);
        } catch (const std::exception&) {
            _exit(1);
        }
    }
    close(ends[1]);
    double grown = 0;
    const bool told = read(ends[0], &grown, sizeof grown) == sizeof grown;
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!told || status != 0) throw std::runtime_error("the work failed in the child process");
    return grown;
}

}  // namespace orvenmod::bench
