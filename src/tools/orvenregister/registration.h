// Registers a component's library: loads it and has it write, or take away, what hosts find it by.
#pragma once

#include <string>

namespace orvenmod::tools {

enum class Whose { user, machine };
enum class Action { put, remove };

/// The file that the loader took for `library`. One that can't be loaded, or is gone, is taken away by its path. Throws
/// std::runtime_error, with a text that says what is wrong.
std::string changeRegistration(const std::string& library, Action action, Whose whose);

}  // namespace orvenmod::tools
