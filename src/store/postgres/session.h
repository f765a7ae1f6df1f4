// One session on the server with what is kept with it from use to use: settings, prepared statements, catalog. Lives in
// the pool between two uses; see sessionpool.h.
//
// What is queued goes out together and comes back in one round trip. The server runs it as one unit: behind the first
// that fails, nothing more is done. Outside a transaction it is a transaction of its own.
//
//   queue(Fixed::savepoint)     SAVEPOINT
//   queueRun(...)               the statement                     one round trip
//   queue(Fixed::release)       RELEASE
//   send()
#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "store/failure.h"
#include "store/postgres/native.h"
#include "store/postgres/parameters.h"
#include "store/postgres/postgrescatalog.h"
#include "store/postgres/serveraddress.h"
#include "store/server/lostconnection.h"
#include "store/server/progress.h"
#include "store/server/socketwait.h"
#include "store/tsql/error.h"
#include "store/tsql/statementcache.h"

namespace orvenmod::store::postgres {

/// A statement that the session prepares when it first runs it. Goes from the server with this object.
class Prepared {
public:
    Prepared() = default;
    using Names = std::shared_ptr<std::vector<std::string>>;
    Prepared(std::string name, Names gone) : name_(std::move(name)), gone_(std::move(gone)) {}
    ~Prepared();
    Prepared(Prepared&& other) noexcept;
    Prepared& operator=(Prepared&& other) noexcept;

    const std::string& name() const { return name_; }
    /// Whether the session is the one that has it.
    bool isOf(const Names& gone) const { return gone_ == gone; }
    bool known() const { return known_; }
    void setKnown() { known_ = true; }

private:
    std::string name_;
    Names gone_;  // shared with the session, which it may outlive
    bool known_ = false;
};

using StatementCache = tsql::StatementCache<Prepared>;
using CachedStatement = StatementCache::Entry;

/// The answers to what was queued, in order; behind one that failed, none.
struct Answer {
    std::vector<Result> results;

    /// What failed, or null.
    const PGresult* failure() const;
    /// The place of what failed among the queued.
    std::size_t failedAt() const { return results.size() - 1; }
};

/// The server has gone, in its own words or the library's.
struct LostConnection {
    server::Loss loss;
    std::string words;
};

/// What every session has prepared from its beginning.
enum class Fixed { begin, commit, rollback, savepoint, release, rollbackTo, expectSchema, schemaChanged };

class Session {
public:
    /// `paint` is called about ten times a second until the session is there. Throws Failure, and what it throws.
    explicit Session(ServerAddress address, const std::function<void()>& paint = {});
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    const ServerAddress& address() const { return address_; }
    server::Progress& progress() { return progress_; }
    PostgresCatalog& catalog() { return catalog_; }
    /// Does what needs the catalog. What it misses may have been made meanwhile by somebody else, so that it is done
    /// again with the schema as it is now. Throws tsql::Error, LostConnection.
    template <typename Work>
    auto byCatalog(Work work) {
        const bool fresh = catalog_.refreshed();
        try {
            return work();
        } catch (const tsql::Error&) {
            if (fresh) throw;
            catalog_.clear();
            return work();
        }
    }
    StatementCache& cache() { return cache_; }
    PGconn* native() const { return connection_.get(); }

    void queue(Fixed statement);
    /// Fails where the schema is another than the one that the catalog has read.
    void queueExpectedSchema();
    /// A statement of the server's own language, parsed anew each time.
    void queueText(const std::string& text);
    void queueText(const std::string& text, const Parameters& parameters);
    /// Prepares the statement where it isn't, and runs it. Its place among the answers.
    std::size_t queueRun(Prepared& statement, const std::string& text, const Parameters& parameters);
    /// How many have been queued since the last send().
    std::size_t queued() const { return queued_.size(); }

    /// One of the queued whose rows are handed over while they arrive, one a result, instead of with the answer.
    struct Stream {
        std::size_t at = 0;
        std::function<void(const PGresult* row)> row;
    };

    /// Throws LostConnection, and what the progress or the stream throws; the server has then been told to stop.
    Answer send(const Stream* stream = nullptr);
    /// Likewise, without an end by the progress.
    Answer sendToTheEnd();

    /// Runs a COPY from the client; the rows are in its text form. Its result, or its failure, which leaves a
    /// transaction that only can be rolled back. Throws LostConnection, and what the progress throws.
    Result copyIn(const std::string& command, std::string_view rows);

    /// The translation and prepared statement of a shape; from the cache, or made and kept where it can be.
    /// Throws tsql::Error, LostConnection.
    CachedStatement& prepare(std::string_view sql, const tsql::Shape& shape);
    /// A statement of the server's own language that is to be prepared.
    Prepared newStatement();
    bool has(const Prepared& statement) const { return statement.isOf(gone_); }
    /// Whether the server tells of a change of the schema by the answer to what is asked after it.
    bool isTold() const { return told_; }
    /// Whether it has told of one that the catalog doesn't know. Outside a transaction only; in one it tells nothing.
    bool isOvertaken();
    /// Forgets everything that a change of the schema may have overtaken.
    void forgetSchema();
    /// A definition of this session has changed the table or view, no other.
    void forgetDefinition(const std::string& object);
    /// This session has changed the schema, which had the number before. What it knows still holds unless somebody else
    /// has changed it meanwhile.
    void schemaChanged(const PGresult* before);

    // For the pool.

    bool alive();
    /// Undoes what is open. False where the session can't be used again.
    bool reset() noexcept;

private:
    void setUp();
    bool isOfTheZone();
    Answer receive(const Stream* stream);
    void awaitResult(const PGresult* last = nullptr);
    Result sendRows(const std::string& command, std::string_view rows);
    Result lastResult();
    template <typename Put>
    void put(Put put);
    void awaitRoom();
    void interrupt() noexcept;
    bool cancelWithin(std::chrono::milliseconds limit) const;
    [[noreturn]] void giveUp();
    void await(server::Awaited awaited);
    bool flush(const PGresult* last = nullptr);
    [[noreturn]] void lose(const PGresult* last = nullptr) const;

    static constexpr auto kForever = std::chrono::steady_clock::time_point::max();
    static constexpr std::chrono::milliseconds kLongestEnd{3000};
    // While it lives a statement is ended: no progress is told, and a server that takes too long is given up.
    class Ending {
    public:
        explicit Ending(Session& session) : session_(session) {
            std::swap(told_, session_.progress_);
            session_.until_ = std::chrono::steady_clock::now() + kLongestEnd;
        }
        ~Ending() {
            std::swap(told_, session_.progress_);
            session_.until_ = kForever;
        }
        Ending(const Ending&) = delete;
        Ending& operator=(const Ending&) = delete;

    private:
        Session& session_;
        server::Progress told_;
    };

    struct Queued {
        Prepared* preparing = nullptr;
    };

    ServerAddress address_;
    NativeConnection connection_;
    server::Progress progress_;
    PostgresCatalog catalog_;
    // The names of prepared statements that nobody has any more.
    Prepared::Names gone_ = std::make_shared<std::vector<std::string>>();
    StatementCache cache_;
    std::vector<Queued> queued_;
    std::string ownName_;  // begins the names of its statements
    std::size_t names_ = 0;
    long zone_ = 0;
    std::time_t zoneSeen_ = 0;                                // the quarter of an hour in which it held
    std::chrono::steady_clock::time_point until_ = kForever;  // when the server is given up
    bool unsent_ = false;
    bool told_ = false;
    std::int64_t toldOf_ = -1;  // the highest number of the schema
};

}  // namespace orvenmod::store::postgres
