#include "support/childprogram.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

extern char** environ;

namespace orvenmod::test {

ChildProgram::ChildProgram(const std::string& program, const std::vector<std::string>& arguments) {
    int toChild[2];
    int fromChild[2];
    // Other children must not hold these ends, or nobody would ever see their end.
    if (::pipe2(toChild, O_CLOEXEC) != 0 || ::pipe2(fromChild, O_CLOEXEC) != 0) throw std::runtime_error("pipe");
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, toChild[0], STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, fromChild[1], STDOUT_FILENO);
    std::vector<std::string> texts = {program};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    const int failed = ::posix_spawn(&process_, program.c_str(), &actions, nullptr, pointers.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(toChild[0]);
    ::close(fromChild[1]);
    input_.reset(::fdopen(toChild[1], "w"));
    output_.reset(::fdopen(fromChild[0], "r"));
    if (failed != 0) throw std::runtime_error(program + " can't be started");
}

ChildProgram::~ChildProgram() {
    if (process_ <= 0) return;
    kill();
    end();
}

void ChildProgram::kill() const { ::kill(process_, SIGKILL); }

void ChildProgram::tell(const std::string& line) {
    std::fputs((line + "\n").c_str(), input_.get());
    std::fflush(input_.get());
}

std::optional<std::string> ChildProgram::line() {
    char* text = nullptr;
    std::size_t capacity = 0;
    const auto length = ::getline(&text, &capacity, output_.get());
    const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
    if (length <= 0) return std::nullopt;
    std::string line(text, static_cast<std::size_t>(length));
    if (line.back() == '\n') line.pop_back();
    return line;
}

int ChildProgram::end() {
    int status = 0;
    rusage used{};
    ::wait4(process_, &status, 0, &used);
    process_ = -1;
    mostMemory_ = static_cast<double>(used.ru_maxrss) / 1024;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace orvenmod::test
