#include "editor/binaryfile.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "frame/conversion.h"
#include "platform/partialfile.h"

namespace orvenmod {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kLongestName = 200;   // bytes; file systems take 255
constexpr std::size_t kLongestEnding = 20;  // with its dot; what is longer is cut as the rest of a name is
constexpr const char* kNameless = "附件";

[[noreturn]] void fail(const char* what, const std::string& path) { throw std::runtime_error(what + path); }

// Cuts at the end of a UTF-8 character.
std::string cutName(const std::string& name) {
    if (name.size() <= kLongestName) return name;
    std::size_t dot = name.rfind('.');
    if (dot == std::string::npos || name.size() - dot > kLongestEnding) dot = name.size();
    std::size_t end = kLongestName - (name.size() - dot);
    while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80)
        --end;
    return name.substr(0, end) + name.substr(dot);
}

// The bytes of the control character that the text begins with, 0 for none. Those that turn the direction of writing
// count: a name with them shows as another.
std::size_t controlLength(std::string_view text) {
    const auto byte = [text](std::size_t at) { return at < text.size() ? static_cast<unsigned char>(text[at]) : 0; };
    if (byte(0) < 0x20 || byte(0) == 0x7F) return 1;
    if (byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) <= 0x9F) return 2;
    if (byte(0) != 0xE2) return 0;
    const bool marks = byte(1) == 0x80 && byte(2) >= 0xAA && byte(2) <= 0xAE;
    const bool isolates = byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9;
    return marks || isolates ? 3 : 0;
}

std::string withoutControls(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        const std::size_t length = controlLength(text);
        if (length == 0) plain += text.front();
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return plain;
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
    platform::PartialFile partial(path);
    std::ofstream file(partial.partialPath(), std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    if (!file) fail("文件无法写入：", path);
    partial.commit(platform::Lasting::no);
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
    std::string name = trim(withoutControls(stored.substr(stored.find_last_of("/\\:") + 1)));
    // Full stops alone name folders, and at the end some platforms drop them and blanks.
    while (!name.empty() && (name.back() == '.' || name.back() == ' '))
        name.pop_back();
    return name.empty() ? kNameless : cutName(name);
}

}  // namespace orvenmod
