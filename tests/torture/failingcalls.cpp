#include "torture/failingcalls.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using orvenmod::test::CallTrouble;
using orvenmod::test::FileCall;

CallTrouble trouble;
bool watching = false;
bool struckNow = false;
std::array<int, orvenmod::test::kFileCalls.size()> counts{};

/// Whether the call is to fail; a process that is to end writes half before.
template <class WriteHalf>
bool fails(FileCall call, WriteHalf writeHalf) {
    if (!watching) return false;
    const int number = ++counts[static_cast<std::size_t>(call)];
    if (trouble.kind == CallTrouble::Kind::none || call != trouble.call) return false;
    const bool lasting = trouble.kind == CallTrouble::Kind::lasting;
    if (lasting ? number < trouble.at : number != trouble.at) return false;
    struckNow = true;
    if (trouble.kind == CallTrouble::Kind::kill) {
        writeHalf();
        ::raise(SIGKILL);
    }
    errno = call == FileCall::write ? ENOSPC : EIO;
    return true;
}

bool fails(FileCall call) {
    return fails(call, [] {});
}

bool isFile(int file) {
    struct stat status {};
    return watching && ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

bool isFile(std::FILE* file) { return watching && file != nullptr && isFile(::fileno(file)); }

/// The system's own function of that name.
template <class Function>
Function* systems(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

using Open = int(const char*, int, ...);
using OpenStream = std::FILE*(const char*, const char*);
using MakeTemporary = int(char*, int);

int openAs(const char* name, const char* path, int flags, mode_t mode) {
    if ((flags & (O_WRONLY | O_RDWR)) != 0 && fails(FileCall::open)) return -1;
    return systems<Open>(name)(path, flags, mode);
}

std::FILE* openStreamAs(const char* name, const char* path, const char* mode) {
    if (std::strpbrk(mode, "wa+") != nullptr && fails(FileCall::open)) return nullptr;
    return systems<OpenStream>(name)(path, mode);
}

mode_t modeOf(int flags, va_list rest) { return (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0; }

}  // namespace

#define ORVEN_SHOWN extern "C" __attribute__((visibility("default")))

ORVEN_SHOWN int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = modeOf(flags, rest);
    va_end(rest);
    return openAs("open", path, flags, mode);
}

ORVEN_SHOWN int open64(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = modeOf(flags, rest);
    va_end(rest);
    return openAs("open64", path, flags, mode);
}

ORVEN_SHOWN std::FILE* fopen(const char* path, const char* mode) { return openStreamAs("fopen", path, mode); }
ORVEN_SHOWN std::FILE* fopen64(const char* path, const char* mode) { return openStreamAs("fopen64", path, mode); }

ORVEN_SHOWN int mkostemp(char* path, int flags) {
    return fails(FileCall::open) ? -1 : systems<MakeTemporary>("mkostemp")(path, flags);
}

ORVEN_SHOWN ssize_t write(int file, const void* bytes, std::size_t size) {
    static auto* const kWrite = systems<ssize_t(int, const void*, std::size_t)>("write");
    if (isFile(file) && fails(FileCall::write, [&] { kWrite(file, bytes, size / 2); })) return -1;
    return kWrite(file, bytes, size);
}

ORVEN_SHOWN ssize_t writev(int file, const iovec* parts, int count) {
    static auto* const kWrite = systems<ssize_t(int, const iovec*, int)>("writev");
    if (isFile(file) && fails(FileCall::write, [&] { kWrite(file, parts, count / 2); })) return -1;
    return kWrite(file, parts, count);
}

// The stream has to know of its failure: what it is given, and what it holds already, goes to a disk that is full.
ORVEN_SHOWN std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
    static auto* const kWrite = systems<std::size_t(const void*, std::size_t, std::size_t, std::FILE*)>("fwrite");
    const auto writeHalf = [&] {
        kWrite(bytes, 1, size * count / 2, file);
        std::fflush(file);
    };
    if (!isFile(file) || !fails(FileCall::write, writeHalf)) return kWrite(bytes, size, count, file);
    const int number = ::fileno(file);
    const int kept = ::dup(number);
    const int full = systems<Open>("open")("/dev/full", O_WRONLY);
    ::dup2(full, number);
    kWrite(bytes, size, count, file);
    std::fflush(file);
    ::dup2(kept, number);
    ::close(kept);
    ::close(full);
    errno = ENOSPC;
    return 0;
}

ORVEN_SHOWN int fclose(std::FILE* file) {
    const bool failing =
        isFile(file) && (::fcntl(::fileno(file), F_GETFL) & O_ACCMODE) != O_RDONLY && fails(FileCall::close);
    const int result = systems<int(std::FILE*)>("fclose")(file);
    if (!failing) return result;
    errno = EIO;
    return EOF;
}

ORVEN_SHOWN int fsync(int file) {
    return isFile(file) && fails(FileCall::sync) ? -1 : systems<int(int)>("fsync")(file);
}

ORVEN_SHOWN int rename(const char* from, const char* to) noexcept {
    return fails(FileCall::rename) ? -1 : systems<int(const char*, const char*)>("rename")(from, to);
}

namespace orvenmod::test {

const char* wordFor(FileCall call) {
    constexpr const char* kWords[] = {"open", "write", "sync", "close", "rename"};
    return kWords[static_cast<int>(call)];
}

FailingCalls::FailingCalls(const CallTrouble& ahead) {
    counts = {};
    struckNow = false;
    trouble = ahead;
    watching = true;
}

FailingCalls::~FailingCalls() {
    watching = false;
    trouble = {};
}

int FailingCalls::count(FileCall call) { return counts[static_cast<std::size_t>(call)]; }
bool FailingCalls::struck() { return struckNow; }

}  // namespace orvenmod::test
