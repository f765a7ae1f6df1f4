#include "store/sqlite/handlepool.h"

#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <list>
#include <mutex>

namespace orvenmod::store::sqlite {

namespace {

constexpr std::size_t kMostIdle = 8;

class Pool {
public:
    // A handle must not be used on the other side of a fork, and not even be closed there: that would drop the
    // parent's locks.
    ~Pool() {
        if (process_ != ::getpid()) abandon();
    }

    std::unique_ptr<Database> take(const std::string& key) {
        const std::lock_guard lock(mutex_);
        checkProcess();
        const auto found =
            std::find_if(idle_.begin(), idle_.end(), [&](const Entry& entry) { return entry.key == key; });
        if (found == idle_.end()) return nullptr;
        auto database = std::move(found->database);
        idle_.erase(found);
        return database;
    }

    void put(const std::string& key, std::unique_ptr<Database> database) {
        const std::lock_guard lock(mutex_);
        checkProcess();
        idle_.push_front({key, std::move(database)});
        if (idle_.size() > kMostIdle) idle_.pop_back();
    }

    void drop() {
        const std::lock_guard lock(mutex_);
        checkProcess();
        idle_.clear();
    }

private:
    struct Entry {
        std::string key;
        std::unique_ptr<Database> database;
    };

    void checkProcess() {
        if (process_ == ::getpid()) return;
        abandon();
        process_ = ::getpid();
    }

    void abandon() {
        for (Entry& entry : idle_)
            static_cast<void>(entry.database.release());
        idle_.clear();
    }

    std::mutex mutex_;
    std::list<Entry> idle_;  // the last used first
    pid_t process_ = ::getpid();
};

Pool& pool() {
    static Pool instance;
    return instance;
}

}  // namespace

std::unique_ptr<Database> takeHandle(const std::string& connectionString) {
    while (auto database = pool().take(connectionString)) {
        // identify() throws where the file has gone, as a first opening would; the old handle is closed then.
        if (database->file().identify() == database->identity()) return database;
    }
    return std::make_unique<Database>(DatabaseFile::parse(connectionString));
}

void giveHandleBack(const std::string& connectionString, std::unique_ptr<Database> database) noexcept {
    database->rest();
    try {
        pool().put(connectionString, std::move(database));
    } catch (...) {
        // Out of memory: the handle is closed instead of kept.
        return;
    }
}

void dropIdleHandles() { pool().drop(); }

}  // namespace orvenmod::store::sqlite
