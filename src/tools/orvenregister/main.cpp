#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "tools/orvenregister/registration.h"

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

constexpr const char* kHelp =
    "usage: orvenregister [--machine] [--remove] FILE\n"
    "  registers the component's library FILE, so that hosts create its classes by name;\n"
    "  --remove takes the registration away\n"
    "  --machine for all users instead of the one who calls\n"
    "  for example: orvenregister liborvenmod.so.0\n";

}  // namespace

int main(int count, char** arguments) {
    using namespace orvenmod::tools;
    auto action = Action::put;
    auto whose = Whose::user;
    std::vector<std::string> files;
    for (const std::string& argument : std::vector<std::string>(arguments + 1, arguments + count)) {
        if (argument == "--help") {
            std::cout << kHelp;
            return kDone;
        }
        if (argument == "--remove") {
            action = Action::remove;
        } else if (argument == "--machine") {
            whose = Whose::machine;
        } else if (argument.starts_with("--")) {
            std::cerr << "unknown option " << argument << '\n' << kHelp;
            return kUsage;
        } else {
            files.push_back(argument);
        }
    }
    if (files.size() != 1) {
        std::cerr << kHelp;
        return kUsage;
    }
    try {
        const std::string file = changeRegistration(files.front(), action, whose);
        std::cout << (action == Action::put ? "registered " : "no longer registered: ") << file << '\n';
        return kDone;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return kFailed;
    }
}
