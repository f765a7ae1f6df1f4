// What a machine can refuse, for a while: a disk that is full, files that their user may not read.
#pragma once

#include <linux/capability.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace orvenmod::test {

/// Files may grow to so many bytes only while it lives.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit small{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*handler_)(int);
    rlimit before_{};
};

/// While it lives, the superuser too may open only what a file's permissions allow.
class BoundByPermissions {
public:
    BoundByPermissions() {
        if (!call(SYS_capget, before_)) throw std::runtime_error("the process's capabilities can't be read");
        __user_cap_data_struct bound[2] = {before_[0], before_[1]};
        bound[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH);
        if (!call(SYS_capset, bound)) throw std::runtime_error("the process's capabilities can't be given up");
    }
    ~BoundByPermissions() { call(SYS_capset, before_); }
    BoundByPermissions(const BoundByPermissions&) = delete;
    BoundByPermissions& operator=(const BoundByPermissions&) = delete;

private:
    static bool call(long number, __user_cap_data_struct* sets) {
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        return ::syscall(number, &header, sets) == 0;
    }

    __user_cap_data_struct before_[2] = {};
};

}  // namespace orvenmod::test
