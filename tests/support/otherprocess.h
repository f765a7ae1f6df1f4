// Another process of a test: a forked child that follows single letters on a pipe.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

namespace orvenmod::test {

/// A child process that runs `work` and ends with its result. `work` gets the ends of two pipes: it waits for the
/// parent with await(), and wakes it with tell().
class OtherProcess {
public:
    template <typename Work>
    explicit OtherProcess(Work work) {
        EXPECT_EQ(::pipe(toChild_), 0);
        EXPECT_EQ(::pipe(toParent_), 0);
        child_ = ::fork();
        // Each keeps one end to write to alone, so that the other reads an end of file when it is gone.
        closeEnd(child_ == 0 ? toChild_[1] : toParent_[1]);
        if (child_ != 0) return;
        int result = 9;
        try {
            result = work(*this);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "child: %s\n", error.what());
        }
        ::_exit(result);
    }
    ~OtherProcess() {
        closeEnd(toChild_[1]);
        if (child_ > 0 && !ended_) result();
        closeEnd(toChild_[0]);
        closeEnd(toParent_[0]);
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    void tell() { EXPECT_EQ(::write(child_ == 0 ? toParent_[1] : toChild_[1], "x", 1), 1); }
    void await() {
        char letter = 0;
        EXPECT_EQ(::read(child_ == 0 ? toChild_[0] : toParent_[0], &letter, 1), 1);
    }
    /// Ends it as a loss of power would.
    void kill() {
        ::kill(child_, SIGKILL);
        result();
    }
    int result() {
        int status = 0;
        ::waitpid(child_, &status, 0);
        ended_ = true;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    static void closeEnd(int& end) {
        if (end >= 0) ::close(end);
        end = -1;
    }

    int toChild_[2] = {};
    int toParent_[2] = {};
    pid_t child_ = -1;
    bool ended_ = false;
};

}  // namespace orvenmod::test
