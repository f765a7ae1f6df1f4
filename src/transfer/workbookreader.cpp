// Workbooks of packed parts: what the container tells is judged before anything is unpacked.
#include <filesystem>
#include <stdexcept>

#include "transfer/package.h"
#include "transfer/sheetfile.h"

namespace orvenmod {

namespace {

constexpr std::uint64_t kMostUnpacked = 4ULL << 30;
// Sheets shrink to a thirtieth; what grows far beyond that was made to.
constexpr std::uint64_t kUnsuspected = 64ULL << 20;
constexpr std::uint64_t kMostGrowth = 200;

void refuseOversize(const Package& package, const std::string& path) {
    const std::uint64_t unpacked = package.unpackedSize();
    std::error_code none;
    const std::uint64_t packed = std::filesystem::file_size(path, none);
    if (unpacked > kMostUnpacked || (unpacked > kUnsuspected && unpacked / kMostGrowth > packed))
        throw UnreadableFile("文件展开后过大（" + std::to_string(unpacked >> 20) + " MB），不能导入：" + path);
}

bool isEncrypted(const Package& package) {
    const auto manifest = package.open("META-INF/manifest.xml");
    while (manifest && manifest->next()) {
        if (manifest->isStart() && manifest->name() == "encryption-data") return true;
    }
    return false;
}

}  // namespace

SheetFile readWorkbook(const FileChoice& choice, const WhileReading& meanwhile) {
    try {
        const Package package(choice.path);
        if (isEncrypted(package)) throw UnreadableFile("文件有密码，请先去掉密码：" + choice.path);
        refuseOversize(package, choice.path);
        SheetFile file;
        if (package.has("content.xml")) {
            readOpenDocument(package, file, choice.sheet, meanwhile);
        } else {
            readOpenXml(package, file, choice.sheet, meanwhile);
        }
        if (!file.sheets.empty()) return file;
    } catch (const UnreadableFile&) {
        throw;
    } catch (const CancelledReading&) {
        throw;
    } catch (const std::length_error&) {
        throw;
    } catch (const std::exception&) {
        // Told below, as a package without sheets is.
    }
    throw UnreadableFile("文件已损坏或不是电子表格：" + choice.path);
}

}  // namespace orvenmod
