// Several statements in one round trip, each between a savepoint and its release, so that a failure takes back the one
// that failed alone:
//
//   BEGIN?, look at the schema?, SAVEPOINT, first, RELEASE, SAVEPOINT, second, RELEASE, ...
//
// All are translated before the first goes out. What stands behind a definition is bound to what that one made, so a
// definition ends its piece of the flight.
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
        std::size_t at = 0;   // its answer's place
        std::size_t end = 0;  // that of the first answer behind it
    };

    // A statement that can't be translated or bound is refused once those before it have been done.
    void makeReady() {
        ready_.clear();
        refused_ = nullptr;
        try {
            while (ready_.size() < std::min(kMostInAPiece, left_.size())) {
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
        for (Ready& each : ready_) {
            if (&each != &ready_.front()) session.queue(Fixed::savepoint);
            each.at = connection_.queueStatement(*each.entry, each.parameters);
            connection_.endUnit();
            each.end = session.queued();
        }
        const Answer answer = connection_.sendUnit(Effect::changes);
        for (const Ready& each : ready_) {
            if (each.end > answer.results.size() || (each.end == answer.results.size() && answer.failure() != nullptr))
                return fail(each, answer, lookAt);
            connection_.looked_ = true;
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
        attempt_ = 1;
        if (done_) done_(rows);
    }

    void fail(const Ready& failed, const Answer& answer, std::optional<std::size_t> lookAt) {
        const std::string& sql = left_.front();
        if (connection_.isOvertaken(answer, lookAt, attempt_)) return connection_.session_->forgetSchema();
        connection_.failStatement(sql, *failed.entry, answer.failure());
    }

    PostgresConnection& connection_;
    std::span<const std::string> left_;
    const Done& done_;
    std::vector<Ready> ready_;
    std::exception_ptr refused_;
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
