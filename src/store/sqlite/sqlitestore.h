// The embedded store: one file, any number of processes.
#pragma once

#include "store/connection.h"

namespace orvenmod::store::sqlite {

class SqliteStore : public Store {
public:
    /// "Provider=SQLite;Data Source=path[;Language=us_english][;Mode=ReadOnly|Create][;Busy Timeout=milliseconds]".
    /// A file that is missing is a failure unless the mode is Create.
    std::unique_ptr<Connection> connect(const std::string& connectionString) override;

    /// Closes the handles that earlier connections left for the next one, so that their files can be deleted.
    static void dropIdleHandles();
};

}  // namespace orvenmod::store::sqlite
