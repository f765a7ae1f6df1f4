#include "platform/partialfile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <system_error>

namespace orvenmod::platform {

namespace fs = std::filesystem;

namespace {

constexpr int kLongestChain = 40;  // of links that lead to links, as systems bound it

[[noreturn]] void refuse(const char* why, const std::string& path) { throw std::runtime_error(why + path); }

/// The file that the path leads to, which needn't be there.
fs::path endOfLinks(const std::string& path) {
    fs::path at = path;
    std::error_code error;
    for (int links = 0; fs::is_symlink(fs::symlink_status(at, error)); ++links) {
        const fs::path target = fs::read_symlink(at, error);
        if (error || links == kLongestChain) refuse("链接无法写入：", path);
        at = at.parent_path() / target;
    }
    return at;
}

/// The path to write, where a file can stand.
fs::path replaceable(const std::string& path) {
    const fs::path end = endOfLinks(path);
    std::error_code error;
    if (path.empty() || fs::is_directory(end, error)) refuse("不能写入文件夹：", path);
    if (fs::exists(end, error) && !fs::is_regular_file(end, error)) refuse("不是文件，无法写入：", path);
    if (isReadOnly(path)) throw std::runtime_error(readOnlyRefusal(path));
    return end;
}

/// A name beside the file. It is none of that file's own with something behind it, which might be too long for a name.
std::string nameBeside(const fs::path& path) {
    return (path.parent_path() / ("." + std::to_string(std::random_device{}()) + ".part")).string();
}

/// Some disks tell only here that they couldn't write.
bool reachesDisk(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    const bool reached = ::fsync(file) == 0;
    ::close(file);
    return reached;
}

}  // namespace

PartialFile::PartialFile(const std::string& path) : path_(replaceable(path).string()), partial_(nameBeside(path_)) {
    if (!std::ofstream(partial_)) refuse("文件无法写入：", path);
    std::error_code error;
    const fs::file_status replaced = fs::status(path_, error);
    if (fs::exists(replaced)) fs::permissions(partial_, replaced.permissions(), error);
}

// A path of fs would take memory, which may be what is lacking.
PartialFile::~PartialFile() { std::remove(partial_.c_str()); }

// Without it a name may lead to an empty file after a loss of power: systems write names before contents.
void PartialFile::commit(Lasting lasting) {
    if (lasting == Lasting::yes && !reachesDisk(partial_)) refuse("文件无法写入：", path_);
    std::error_code error;
    fs::rename(partial_, path_, error);
    if (error) refuse("文件无法写入：", path_);
}

// An administrator may write everything, but who took the right to write from a file wants it kept.
bool isReadOnly(const std::string& path) {
    constexpr fs::perms kWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::is_regular_file(status)) return false;
    return (status.permissions() & kWrite) == fs::perms::none || !std::ofstream(path, std::ios::app);
}

std::string readOnlyRefusal(const std::string& path) {
    return "“" + fs::path(path).filename().string() + "”是只读文件，不能替换。";
}

}  // namespace orvenmod::platform
