#include "platform/sheet/partialfile.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <system_error>

namespace orvenmod::platform {

namespace fs = std::filesystem;

PartialFile::PartialFile(const std::string& path)
    : path_(path), partial_(path + "." + std::to_string(std::random_device{}()) + ".part") {
    std::error_code error;
    if (path.empty() || fs::is_directory(path, error)) throw std::runtime_error("不能写入文件夹：" + path);
    if (!std::ofstream(partial_)) throw std::runtime_error("文件无法写入：" + path);
}

PartialFile::~PartialFile() {
    std::error_code error;
    fs::remove(partial_, error);
}

void PartialFile::commit() {
    std::error_code error;
    fs::rename(partial_, path_, error);
    if (error) throw std::runtime_error("文件无法写入：" + path_);
}

}  // namespace orvenmod::platform
