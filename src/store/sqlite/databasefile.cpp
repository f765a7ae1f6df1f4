#include "store/sqlite/databasefile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstring>

#include "store/connectionstring.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::Language;

// The text of the system's error in the language of the connection's messages.
std::string reason(int error, Language language) {
    if (language == Language::chinese && error == EACCES) return "没有权限";
    return std::strerror(error);
}

[[noreturn]] void refuseString(Language language, const std::string& chinese, const std::string& english) {
    throw tsql::worded(language, tsql::kBadConnectionString, {language == Language::english ? english : chinese});
}

}  // namespace

DatabaseFile DatabaseFile::parse(const std::string& connectionString) {
    const ConnectionString parts(connectionString);
    DatabaseFile file;
    const std::string language = tsql::lowerText(parts.get("Language"));
    if (language == "us_english" || language == "english") file.language = Language::english;
    file.path = parts.get("Data Source");
    if (file.path.empty())
        refuseString(file.language, "缺少 Data Source (数据库文件)", "Data Source (the database file) is missing");
    const std::string mode = tsql::lowerText(parts.get("Mode"));
    if (mode == "create") {
        file.access = Access::create;
    } else if (mode == "readonly" || mode == "read") {
        file.access = Access::readOnly;
    } else if (!mode.empty() && mode != "readwrite") {
        refuseString(file.language, "Mode=" + mode + " 不是 ReadOnly、ReadWrite 或 Create",
                     "Mode=" + mode + " is none of ReadOnly, ReadWrite, Create");
    }
    const std::string timeout = parts.get("Busy Timeout", "5000");
    const auto [end, error] = std::from_chars(timeout.data(), timeout.data() + timeout.size(), file.busyTimeout);
    if (error != std::errc() || end != timeout.data() + timeout.size() || file.busyTimeout < 0) {
        refuseString(file.language, "Busy Timeout=" + timeout + " 不是毫秒数",
                     "Busy Timeout=" + timeout + " is no count of milliseconds");
    }
    return file;
}

DatabaseFile::Identity DatabaseFile::identify() const {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR) {
            if (access == Access::create) return {};
            throw tsql::worded(language, tsql::kNoFile, {path});
        }
        throw tsql::worded(language, tsql::kUnreadable, {path, reason(errno, language)});
    }
    if (S_ISDIR(status.st_mode)) throw tsql::worded(language, tsql::kIsFolder, {path});
    if (!S_ISREG(status.st_mode)) throw tsql::worded(language, tsql::kNoDatabase, {path});
    // The permission bits count even for the superuser, whom the system lets write to every file.
    const bool readable = (status.st_mode & 0444) != 0 && ::access(path.c_str(), R_OK) == 0;
    if (!readable) throw tsql::worded(language, tsql::kUnreadable, {path, reason(EACCES, language)});
    const bool writable = (status.st_mode & 0222) != 0 && ::access(path.c_str(), W_OK) == 0;
    return {status.st_dev, status.st_ino, writable};
}

}  // namespace orvenmod::store::sqlite
