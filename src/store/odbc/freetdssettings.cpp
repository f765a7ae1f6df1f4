#include "store/odbc/freetdssettings.h"

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>

#include "store/failure.h"

namespace orvenmod::store::odbc {

namespace {

constexpr const char* kVariable = "FREETDSCONF";

std::shared_mutex& place() {
    static std::shared_mutex instance;
    return instance;
}

// A new file that only its owner reads.
std::string writtenFile(const std::string& text) {
    std::error_code error;
    std::string name = (std::filesystem::temp_directory_path(error) / "orvenmod-server-XXXXXX").string();
    const int file = ::mkstemp(name.data());
    if (file >= 0) {
        const bool whole = ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
        ::close(file);
        if (whole) return name;
        ::unlink(name.c_str());
    }
    throw Failure(FailureKind::connection, 0, "无法写入临时文件“" + name + "”。");
}

}  // namespace

FreeTdsSettings::FreeTdsSettings(const std::string& text) {
    if (text.empty()) {
        reading_ = std::shared_lock(place());
        return;
    }
    writing_ = std::unique_lock(place());
    file_ = writtenFile(text);
    if (const char* before = ::getenv(kVariable)) before_ = before;
    ::setenv(kVariable, file_.c_str(), 1);
}

FreeTdsSettings::~FreeTdsSettings() {
    if (file_.empty()) return;
    if (before_) {
        ::setenv(kVariable, before_->c_str(), 1);
    } else {
        ::unsetenv(kVariable);
    }
    ::unlink(file_.c_str());
}

}  // namespace orvenmod::store::odbc
