// What the database holds at one moment, for rows that are fetched later: a handle of the pool with a read transaction,
// given back at the end. Others write meanwhile as ever; what it costs is the log, see keyedrows.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "store/sqlite/database.h"

namespace orvenmod::store::sqlite {

class Snapshot {
public:
    /// Null where none can be held beside writers, or the file at the path is another one by now.
    static std::unique_ptr<Snapshot> take(const std::string& connectionString, const DatabaseFile::Identity& file);

    /// Throws Failure.
    explicit Snapshot(const std::string& connectionString);
    ~Snapshot();
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

    Database& database() { return *database_; }

    /// Bytes of the log, which is used from its beginning again where no reader needs it, and is cut then.
    std::uint64_t logSize() const;
    /// Bytes.
    std::size_t pageCache() const;

private:
    bool standsBesideWriters();

    std::string connectionString_;
    std::unique_ptr<Database> database_;
};

/// One snapshot for statements that follow each other, as long as nobody writes between them.
class SharedSnapshot {
public:
    /// What the connection would read now. Null as with Snapshot::take.
    std::shared_ptr<Snapshot> get(Database& connection, const std::string& connectionString);

private:
    struct State {
        std::int64_t others = 0;  ///< changes when another connection has written
        std::int64_t schema = 0;
        std::int64_t own = 0;  ///< rows that this one has changed
        bool operator==(const State&) const = default;
    };
    static State stateOf(Database& connection);

    std::weak_ptr<Snapshot> snapshot_;
    State state_;
};

}  // namespace orvenmod::store::sqlite
