// Another process of a test: a program that talks to it in lines.
#pragma once

#include <sys/types.h>

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvenmod::test {

class ChildProgram {
public:
    /// Throws std::runtime_error where it can't be started.
    ChildProgram(const std::string& program, const std::vector<std::string>& arguments);
    /// Kills it where it has not ended.
    ~ChildProgram();
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;

    /// Gives it a line to read.
    void tell(const std::string& line);
    /// Its next line, without the end; nothing when it has closed its output.
    std::optional<std::string> line();
    /// Tells the system to end it at once, without waiting for that.
    void kill() const;
    /// Waits until it ends; its exit code, -1 where a signal ended it.
    int end();
    /// The most memory that it had, in MiB; known once it has ended.
    double mostMemory() const { return mostMemory_; }

private:
    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    pid_t process_ = -1;
    double mostMemory_ = 0;
    std::unique_ptr<std::FILE, CloseFile> input_;
    std::unique_ptr<std::FILE, CloseFile> output_;
};

}  // namespace orvenmod::test
