#include "editor/binaryfile.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "frame/conversion.h"

namespace orvenmod {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kLongestName = 200;  // bytes; file systems take 255
constexpr const char* kNameless = "附件";

[[noreturn]] void fail(const char* what, const std::string& path) { throw std::runtime_error(what + path); }

// Cuts at the end of a UTF-8 character.
std::string cutName(const std::string& name) {
    if (name.size() <= kLongestName) return name;
    std::size_t dot = name.rfind('.');
    if (dot == std::string::npos || name.size() - dot > 20) dot = name.size();
    std::size_t end = kLongestName - (name.size() - dot);
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80)
        --end;
    return name.substr(0, end) + name.substr(dot);
}

}  // namespace

std::vector<std::byte> readFile(const std::string& path) {
    std::error_code error;
    const auto status = fs::status(path, error);
    if (!fs::exists(status)) fail("文件不存在：", path);
    if (!fs::is_regular_file(status)) fail("不是文件：", path);
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file) fail("文件无法打开：", path);
    const auto size = static_cast<std::size_t>(file.tellg());
    std::vector<std::byte> content(size);
    file.seekg(0);
    if (size > 0 && !file.read(reinterpret_cast<char*>(content.data()), static_cast<std::streamsize>(size)))
        fail("文件无法读取：", path);
    return content;
}

void writeFile(const std::string& path, std::string_view content) {
    removeFile(path);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!file) fail("文件无法写入：", path);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    if (file) return;
    std::error_code error;
    fs::remove(path, error);
    fail("文件无法写入：", path);
}

void removeFile(const std::string& path) {
    std::error_code error;
    fs::remove(path, error);
    if (error) fail("文件无法删除：", path);
}

std::string suffixOf(const std::string& path) {
    const std::size_t dot = path.rfind('.');
    return "." + (dot == std::string::npos ? path : path.substr(dot + 1));
}

std::string plainFileName(const std::string& stored) {
    std::string name = stored.substr(stored.find_last_of("/\\:") + 1);
    std::erase_if(name, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
    name = trim(name);
    // Full stops alone name folders, and at the end some platforms drop them.
    while (!name.empty() && name.back() == '.')
        name.pop_back();
    return name.empty() ? kNameless : cutName(name);
}

}  // namespace orvenmod
