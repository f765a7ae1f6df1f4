// The file behind a connection string, and what can be wrong with it before the database is asked.
#pragma once

#include <chrono>
#include <string>

#include "store/tsql/messages.h"

namespace orvenmod::store::sqlite {

struct DatabaseFile {
    enum class Access { readWrite, readOnly, create };

    std::string path;
    Access access = Access::readWrite;
    tsql::Language language = tsql::Language::chinese;
    std::chrono::milliseconds busyTimeout{5000};

    /// Reads "Provider=SQLite;Data Source=path[;Language=us_english][;Mode=ReadOnly|Create][;Busy Timeout=ms]".
    /// Throws Failure kBadConnectionString.
    static DatabaseFile parse(const std::string& connectionString);

    /// Which file stands at the path: a file put in its place, or one whose write permission changed, is another. A
    /// handle goes on reading the file that it opened, also after a restored backup has taken its name.
    struct Identity {
        unsigned long long device = 0;
        unsigned long long inode = 0;
        bool writable = false;
        bool operator==(const Identity&) const = default;
    };

    /// Throws Failure: no file (unless it is to be created, then an empty identity), a folder, an unreadable one.
    Identity identify() const;
};

}  // namespace orvenmod::store::sqlite
