#include <unistd.h>

#include <array>
#include <csignal>
#include <exception>
#include <iostream>

#include "entry/storefactory.h"
#include "store/copy/copy.h"
#include "tools/orvencopy/program.h"

namespace {

volatile std::sig_atomic_t cancelledBy = 0;

// A second signal of the kind ends the program at once; what it has stored is undone then, too.
void cancelOnSignals() {
    struct sigaction action {};
    action.sa_handler = [](int number) { cancelledBy = number; };
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int number : std::array{SIGINT, SIGTERM})
        ::sigaction(number, &action, nullptr);
}

}  // namespace

int main(int count, char** arguments) {
    using namespace orvenmod::tools;
    constexpr int kSignalled = 128;
    cancelOnSignals();
    try {
        orvenmod::StoreFactory stores;
        const auto terminal = ::isatty(STDERR_FILENO) != 0 ? Terminal::yes : Terminal::no;
        return runCopyProgram({arguments + 1, arguments + count},
                              {stores, std::cout, std::cerr, terminal, [] { return cancelledBy != 0; }});
    } catch (const orvenmod::store::CopyCancelled&) {
        return kSignalled + cancelledBy;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
    }
    return exitcode::kFailed;
}
