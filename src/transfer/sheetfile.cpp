#include "transfer/sheetfile.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "platform/asciitext.h"

namespace orvenmod {

namespace {

// What a file begins with tells more than its name: a workbook is often renamed, a text hardly ever.
constexpr std::string_view kPackage = "PK\x03\x04";
constexpr std::string_view kCompound = "\xD0\xCF\x11\xE0";

std::string beginning(const std::string& path) {
    std::error_code none;
    if (std::filesystem::is_directory(path, none)) throw UnreadableFile("这是文件夹，不是文件：" + path);
    std::ifstream file(path, std::ios::binary);
    if (!file) throw UnreadableFile("文件打不开，可能不存在或正被别的程序占用：" + path);
    std::string head(kPackage.size(), '\0');
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    if (file.bad()) throw UnreadableFile("文件读不出：" + path);
    head.resize(static_cast<std::size_t>(file.gcount()));
    return head;
}

}  // namespace

bool isTextFile(const std::string& path) {
    const std::string name = platform::lowerCase(path);
    return name.ends_with(".csv") || name.ends_with(".txt") || name.ends_with(".tsv");
}

SheetFile readSheetFile(const FileChoice& choice, const WhileReading& meanwhile) {
    const std::string head = beginning(choice.path);
    if (head.empty()) throw UnreadableFile("文件是空的：" + choice.path);
    const auto read = head == kPackage          ? readWorkbook
                      : head == kCompound       ? readOldWorkbook
                      : isTextFile(choice.path) ? readText
                                                : nullptr;
    if (!read) throw UnreadableFile("不是电子表格文件（.xlsx、.ods、.xls、.csv）：" + choice.path);
    SheetFile file;
    try {
        file = read(choice, meanwhile);
    } catch (const std::length_error&) {
        throw UnreadableFile("文件展开后过大，不能导入：" + choice.path);
    }
    if (file.rows.columnCount() > kMostColumns) {
        throw UnreadableFile("列太多（" + std::to_string(file.rows.columnCount()) + "列），最多" +
                             std::to_string(kMostColumns) + "列：" + choice.path);
    }
    return file;
}

}  // namespace orvenmod
