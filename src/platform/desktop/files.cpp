#include "platform/desktop/files.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace orvenmod::platform::desktop {

namespace {

/// Closes a file descriptor.
struct Descriptor {
    explicit Descriptor(int opened) : number(opened) {}
    ~Descriptor() {
        if (number >= 0) ::close(number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number;
};

bool writeAll(int file, const std::string& content) {
    std::size_t done = 0;
    while (done < content.size()) {
        const ssize_t count = ::write(file, content.data() + done, content.size() - done);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        done += static_cast<std::size_t>(count);
    }
    return ::fsync(file) == 0;
}

/// The file behind symbolic links, where it is there.
std::string resolved(const std::string& path) {
    const std::unique_ptr<char, decltype(&::free)> real(::realpath(path.c_str(), nullptr), &::free);
    return real ? std::string(real.get()) : path;
}

}  // namespace

ReadResult readFile(const std::string& path, std::string& content) {
    content.clear();
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.number < 0) return errno == ENOENT || errno == ENOTDIR ? ReadResult::missing : ReadResult::failed;
    char block[16384];
    for (;;) {
        const ssize_t count = ::read(file.number, block, sizeof block);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return ReadResult::failed;
        if (count == 0) return ReadResult::read;
        content.append(block, static_cast<std::size_t>(count));
    }
}

bool replaceFile(const std::string& path, const std::string& content, unsigned mode) {
    const std::string target = resolved(path);
    struct stat before {};
    if (::stat(target.c_str(), &before) == 0) {
        mode = before.st_mode & 07777U;
        errno = S_ISDIR(before.st_mode) ? EISDIR : EACCES;
        if (!S_ISREG(before.st_mode) || (mode & 0222U) == 0 || ::access(target.c_str(), W_OK) != 0) return false;
    }
    std::string temporary = target + ".XXXXXX";
    const Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
    if (file.number < 0) return false;
    const bool written = writeAll(file.number, content) && ::fchmod(file.number, mode) == 0 &&
                         ::rename(temporary.c_str(), target.c_str()) == 0;
    if (!written) {
        const int why = errno;
        ::unlink(temporary.c_str());
        errno = why;
    }
    return written;
}

}  // namespace orvenmod::platform::desktop
