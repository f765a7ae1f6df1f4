// Several statements in one round trip, between one savepoint and its release. A failure takes all of them back, and
// those before the one that failed are sent once more:
//
//   SAVEPOINT, first, second, third: fails
//   ROLLBACK TO, RELEASE
//   SAVEPOINT, first, second, RELEASE
//
// All are translated before the first goes out. What stands behind a definition is bound to what that one made, so a
// definition ends its piece of the flight.
#include <algorithm>
#include <exception>
#include <vector>

#include "store/postgres/postgresconnection.h"
#include "store/tsql/error.h"
#include "store/tsql/literals.h"

namespace orvenmod::store::postgres {

namespace {

using tsql::StatementKind;

// Well below what the cache of statements holds, so that none of a piece is dropped from it before it goes out.
constexpr std::size_t kMostInAPiece = 256;

bool isOfTransactions(StatementKind kind) {
    return kind == StatementKind::beginTransaction || kind == StatementKind::commitTransaction ||
           kind == StatementKind::rollbackTransaction;
}

}  // namespace

class PostgresConnection::Flight {
public:
    Flight(PostgresConnection& connection, std::span<const std::string> statements, const Done& done)
        : connection_(connection), left_(statements), done_(done) {}

    void run() {
        while (!left_.empty()) {
            if (failure_ && before_ == 0) std::rethrow_exception(failure_);
            makeReady();
            if (!ready_.empty()) {
                sendReady();
            } else if (refused_) {
                std::rethrow_exception(refused_);
            } else {
                tellDone(connection_.execute(left_.front()));
            }
        }
    }

private:
    struct Ready {
        CachedStatement* entry;
        Parameters parameters;
        std::size_t at = 0;  // its answer's place
    };

    // A statement that can't be translated or bound is refused once those before it have been done.
    void makeReady() {
        ready_.clear();
        refused_ = nullptr;
        try {
            while (ready_.size() < std::min(kMostInAPiece, failure_ ? before_ : left_.size())) {
                CachedStatement& entry = connection_.prepared(left_[ready_.size()]);
                if (isOfTransactions(entry.translation.kind)) return;
                ready_.push_back({&entry, Parameters(entry.translation, connection_.shape_)});
                if (!entry.translation.cacheable) return;
            }
        } catch (const tsql::Error&) {
            refused_ = std::current_exception();
        }
    }

    void sendReady() {
        Session& session = *connection_.session_;
        const auto lookAt = connection_.startUnit(Look::atTheSchema);
        std::vector<std::size_t> ends;
        for (Ready& each : ready_) {
            each.at = connection_.queueStatement(*each.entry, each.parameters);
            ends.push_back(session.queued());
        }
        connection_.endUnit();
        const Answer answer = connection_.sendUnit(Effect::changes);
        if (answer.failure() != nullptr) {
            const auto failed = std::upper_bound(ends.begin(), ends.end() - 1, answer.failedAt()) - ends.begin();
            return fail(static_cast<std::size_t>(failed), answer, lookAt);
        }
        connection_.looked_ = true;
        for (const Ready& each : ready_) {
            const tsql::Translation& translation = each.entry->translation;
            const bool changes = translation.kind == StatementKind::change;
            const std::int64_t rows = changes ? touched(answer.results[each.at].get()) : 0;
            if (translation.kind == StatementKind::ddl)
                connection_.definitionMade(left_.front(), translation.table, nullptr);
            tellDone(rows);
        }
    }

    void tellDone(std::int64_t rows) {
        left_ = left_.subspan(1);
        if (failure_) --before_;
        attempt_ = 1;
        if (done_) done_(rows);
    }

    void fail(std::size_t failed, const Answer& answer, std::optional<std::size_t> lookAt) {
        if (connection_.isOvertaken(answer, lookAt, attempt_)) return connection_.session_->forgetSchema();
        try {
            connection_.failStatement(left_[failed], *ready_[failed].entry, answer.failure());
        } catch (const LostConnection&) {
            throw;
        } catch (...) {
            failure_ = std::current_exception();
            before_ = failed;
        }
    }

    PostgresConnection& connection_;
    std::span<const std::string> left_;
    const Done& done_;
    std::vector<Ready> ready_;
    std::exception_ptr refused_;
    std::exception_ptr failure_;  // thrown once those before it have been done again
    std::size_t before_ = 0;      // how many these are
    int attempt_ = 1;
};

void PostgresConnection::executeAll(std::span<const std::string> statements, const Done& done) {
    worded([&] {
        session();
        if (transaction_ != Transaction::none || statements.size() < 2) return Flight(*this, statements, done).run();
        // What each does alone goes out together as well, and is kept up to the one that fails.
        beginTrans();
        try {
            Flight(*this, statements, done).run();
        } catch (...) {
            if (transaction_ == Transaction::lost) {
                transaction_ = Transaction::none;
            } else {
                commitTrans();
            }
            throw;
        }
        commitTrans();
    });
}

}  // namespace orvenmod::store::postgres
