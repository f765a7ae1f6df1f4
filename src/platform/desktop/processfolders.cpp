#include "platform/desktop/processfolders.h"

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

namespace orvenmod::platform::desktop {

namespace {

[[noreturn]] void fail(const std::string& path) {
    throw std::runtime_error("无法建立临时文件夹：" + path + "（" + std::strerror(errno) + "）");
}

bool isOwnFolder(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::geteuid();
}

std::string baseFolder() {
    for (const char* variable : {"XDG_RUNTIME_DIR", "TMPDIR"}) {
        const char* path = ::getenv(variable);
        if (path && path[0] == '/' && ::access(path, W_OK | X_OK) == 0) return path;
    }
    return "/tmp";
}

}  // namespace

ProcessFolders::ProcessFolders() : owner_(::getpid()) {}

ProcessFolders::~ProcessFolders() {
    if (root_.empty() || owner_ != ::getpid()) return;
    std::error_code ignored;  // nobody is left to be told
    std::filesystem::remove_all(root_, ignored);
}

std::string ProcessFolders::folder(const std::string& name) {
    if (root_.empty() || !isOwnFolder(root_)) {
        std::string pattern = baseFolder() + "/orvenmod-XXXXXX";
        if (!::mkdtemp(pattern.data())) fail(pattern);
        root_ = pattern;
    }
    std::string path = root_ + "/" + name;
    if (!isOwnFolder(path) && ::mkdir(path.c_str(), 0700) != 0) fail(path);
    return path;
}

}  // namespace orvenmod::platform::desktop
