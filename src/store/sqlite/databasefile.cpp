#include "store/sqlite/databasefile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "store/tsql/stringparts.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::Language;

// The text of the system's error in the language of the connection's messages.
std::string reason(int error, Language language) {
    if (language == Language::chinese && error == EACCES) return "没有权限";
    return std::strerror(error);
}

}  // namespace

DatabaseFile DatabaseFile::parse(const std::string& connectionString) {
    const ConnectionString parts(connectionString);
    DatabaseFile file;
    file.language = tsql::languageOf(parts);
    file.path = parts.get("Data Source");
    if (file.path.empty())
        throw tsql::refusedString(file.language, "缺少 Data Source (数据库文件)",
                                  "Data Source (the database file) is missing");
    const std::string mode = tsql::lowerText(parts.get("Mode"));
    if (mode == "create") {
        file.access = Access::create;
    } else if (mode == "readonly" || mode == "read") {
        file.access = Access::readOnly;
    } else if (!mode.empty() && mode != "readwrite") {
        throw tsql::refusedString(file.language, "Mode=" + mode + " 不是 ReadOnly、ReadWrite 或 Create",
                                  "Mode=" + mode + " is none of ReadOnly, ReadWrite, Create");
    }
    file.busyTimeout = tsql::busyTimeout(parts);
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
