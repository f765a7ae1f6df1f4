#include "store/odbc/odbcconnection.h"

#include <chrono>
#include <optional>
#include <utility>

#include "store/odbc/nativesigns.h"
#include "store/odbc/odbcfetch.h"
#include "store/odbc/odbcoutline.h"
#include "store/odbc/odbctableloader.h"
#include "store/odbc/odbctablewriter.h"
#include "store/odbc/rowlocked.h"
#include "store/odbc/sessionpool.h"

namespace orvenmod::store::odbc {

namespace {

constexpr std::string_view kBegin = "begin transaction";
constexpr std::string_view kCommit = "commit transaction";
constexpr std::string_view kRollback = "rollback transaction";
constexpr std::string_view kAskTransaction = "select @@trancount";
constexpr std::string_view kAskAnything = "select 1";
// How long a server has to answer one of these.
constexpr std::chrono::seconds kAnswerTime{5};

class Text : public OdbcWork {
public:
    Text(OdbcHandle statement, std::string_view sql) : OdbcWork(std::move(statement)), sql_(sql) {}

protected:
    void send() {
        const SQLRETURN result = await([this] {
            return SQLExecDirect(statement().get(), sqlText(sql_.c_str()), static_cast<SQLINTEGER>(sql_.size()));
        });
        // A change that touches no row answers that there is no data.
        if (result != SQL_NO_DATA) statement().check(result);
    }

    SQLSMALLINT columns() {
        SQLSMALLINT count = 0;
        check([&] { return SQLNumResultCols(statement().get(), &count); });
        return count;
    }

    /// False where there is no further result. A later result can hold the failure of a trigger.
    bool next() {
        const SQLRETURN more = await([this] { return SQLMoreResults(statement().get()); });
        if (more == SQL_NO_DATA) return false;
        statement().check(more);
        return true;
    }

private:
    std::string sql_;
};

class Change : public Text {
public:
    using Text::Text;

    void run() override {
        send();
        if (columns() == 0) SQLRowCount(statement().get(), &touched_);
        while (next()) {
        }
    }

    std::int64_t touched() const { return touched_ < 0 ? 0 : touched_; }

private:
    SQLLEN touched_ = 0;
};

class Query : public Text {
public:
    Query(OdbcHandle statement, std::string_view sql, OdbcFetch::Until until = OdbcFetch::Until::end)
        : Text(std::move(statement), sql), until_(until) {}

    /// Run again, it goes on where it stopped.
    void run() override {
        if (!fetch_) begin();
        if (!fetch_) return;
        rows_ = fetch_->next(until_);
        if (fetch_->atEnd()) finish();
    }

    bool hasRows() const { return fetch_.has_value(); }
    bool atEnd() const { return !fetch_ || fetch_->atEnd(); }
    Recordset& rows() { return rows_; }

private:
    void begin() {
        send();
        bool result = true;
        SQLSMALLINT count = columns();
        // A procedure tells how many rows it touched before it gives any.
        for (; count == 0 && result; count = result ? columns() : count)
            result = next();
        if (count > 0) fetch_.emplace(*this, count);
    }

    void finish() {
        while (next()) {
        }
    }

    OdbcFetch::Until until_;
    std::optional<OdbcFetch> fetch_;
    Recordset rows_;
};

}  // namespace

OdbcConnection::OdbcConnection(const std::string& connectionString, OdbcSession::Paint paint)
    : connectionString_(connectionString),
      paint_(std::move(paint)),
      session_(takeSession(connectionString, paint_)),
      language_(session_->language()),
      server_(session_->server()) {}

OdbcConnection::~OdbcConnection() { close(); }

void OdbcConnection::requireUsable() const {
    if (transaction_ == Transaction::lost) throw failure(tsql::kTransactionLost);
    if (!open_) throw failure(tsql::kClosed);
}

// Another one where the server has ended it, unless something that a statement left in it would be missing.
OdbcSession& OdbcConnection::session() {
    requireUsable();
    if (!session_ || (lost_ && !session_->spoilt())) {
        session_ = std::make_unique<OdbcSession>(connectionString_, paint_);
        lost_ = false;
    }
    return *session_;
}

OdbcSession& OdbcConnection::provenSession() {
    if (!session().isProven() && !answers()) lost_ = true;
    return session();
}

OdbcHandle OdbcConnection::statement() {
    provenSession();
    return newStatement();
}

template <typename Work>
std::shared_ptr<Work> OdbcConnection::runOnAny(std::string_view sql) {
    if (!session().isProven() && session().isFresh()) {
        try {
            const auto work = std::make_shared<Work>(newStatement(), sql);
            run(work);
            return work;
        } catch (const Failure&) {
            if (!session_ || (!lost_ && answers())) throw;
            lost_ = true;
        }
    }
    const auto work = std::make_shared<Work>(statement(), sql);
    run(work);
    return work;
}

void OdbcConnection::run(const std::shared_ptr<OdbcWork>& work, server::Outcome ifLost) {
    try {
        session_->waiter().run(work, progress_);
        session_->heard(OdbcSession::Clock::now());
    } catch (const Failure& reported) {
        const std::optional<server::Loss> loss = lossOf(reported.number());
        const bool lost =
            !session_->waiter().gaveUp() && (isLost() || loss || reported.kind() == FailureKind::connection);
        lost_ = lost_ || lost;
        const std::chrono::milliseconds lockLimit = session_->busyTimeout();
        settle(work);
        if (lost)
            throw server::lostConnection(server_, loss.value_or(server::Loss::unclear), reported.text(), ifLost,
                                         language_);
        if (isRowLocked(reported)) throw rowLocked(reported, lockLimit, language_);
        throw;
    } catch (...) {
        settle(work);
        throw;
    }
}

bool OdbcConnection::isLost() const {
    SQLUINTEGER dead = SQL_CD_FALSE;
    SQLGetConnectAttr(session_->connection().get(), SQL_ATTR_CONNECTION_DEAD, &dead, sizeof dead, nullptr);
    return dead == SQL_CD_TRUE;
}

// The driver is still at work, which keeps the session.
void OdbcConnection::giveUp(const std::shared_ptr<OdbcWork>& work) noexcept {
    session_->spoil();
    work->keep(std::shared_ptr<OdbcSession>(std::move(session_)));
}

// What a failure has left of session and transaction.
void OdbcConnection::settle(const std::shared_ptr<OdbcWork>& work) noexcept {
    if (session_->waiter().gaveUp()) {
        giveUp(work);
        if (transaction_ == Transaction::open) transaction_ = Transaction::lost;
    } else if (transaction_ == Transaction::open && !hasTransaction()) {
        transaction_ = Transaction::lost;
    }
}

// False where the server refuses a question of ours, or answers none in time.
bool OdbcConnection::ask(const std::shared_ptr<OdbcWork>& question) noexcept {
    struct NoAnswer {};
    try {
        const server::Progress::Unstoppable painting(progress_);
        const auto end = OdbcSession::Clock::now() + kAnswerTime;
        server::Progress limited;
        limited.set([&] {
            if (OdbcSession::Clock::now() > end) throw NoAnswer();
            progress_.report();
        });
        session_->waiter().run(question, limited);
        session_->heard(OdbcSession::Clock::now());
        return true;
    } catch (...) {
        if (session_->waiter().gaveUp()) giveUp(question);
        return false;
    }
}

bool OdbcConnection::answers() noexcept {
    try {
        return ask(std::make_shared<Query>(newStatement(), kAskAnything));
    } catch (const Failure&) {
        return false;
    }
}

bool OdbcConnection::hasTransaction() noexcept {
    if (lost_) return false;
    try {
        const auto question = std::make_shared<Query>(newStatement(), kAskTransaction);
        if (ask(question)) return question->rows().eof() || question->rows().cell(0, 0) != "0";
    } catch (const Failure&) {
        return !isLost();
    }
    // A server that doesn't know the question leaves its transactions open.
    return session_ && !isLost();
}

void OdbcConnection::look(std::string_view sql) {
    try {
        text_.scan(sql);
    } catch (const tsql::Error& error) {
        throw tsql::worded(language_, error);
    }
}

// What must be seen to before the text goes out.
void OdbcConnection::prepare() {
    for (const std::string_view text : text_.wideTexts())
        checkCharacters(text);
    if (text_.touchesSession()) provenSession().spoil();
}

std::int64_t OdbcConnection::change(std::string_view sql) {
    const auto work = std::make_shared<Change>(statement(), sql);
    run(work);
    return work->touched();
}

void OdbcConnection::end(std::string_view sql, server::Outcome ifLost) {
    const server::Progress::Unstoppable toTheEnd(progress_);
    run(std::make_shared<Change>(statement(), sql), ifLost);
}

std::int64_t OdbcConnection::execute(std::string_view sql) {
    look(sql);
    switch (text_.control()) {
        case tsql::OneStatement::Control::begin:
            beginTrans();
            return 0;
        case tsql::OneStatement::Control::commit:
            commitTrans();
            return 0;
        case tsql::OneStatement::Control::rollback:
            rollbackTrans();
            return 0;
        case tsql::OneStatement::Control::none:
            break;
    }
    prepare();
    return change(sql);
}

void OdbcConnection::prepareQuery(std::string_view sql) {
    look(sql);
    prepare();
    if (!text_.mayGiveRows()) throw failure(tsql::kNoRows);
}

Recordset OdbcConnection::open(std::string_view sql) {
    prepareQuery(sql);
    const auto work = runOnAny<Query>(sql);
    if (!work->hasRows()) throw failure(tsql::kNoRows);
    return std::move(work->rows());
}

void OdbcConnection::read(std::string_view sql, const Part& part) {
    prepareQuery(sql);
    const auto work = std::make_shared<Query>(statement(), sql, OdbcFetch::Until::part);
    do {
        run(work);
        if (!work->hasRows()) throw failure(tsql::kNoRows);
        if (work->rows().rowCount() > 0) part(work->rows());
    } while (!work->atEnd());
}

Outline OdbcConnection::outline() { return outlineOf(*this); }

std::unique_ptr<TableLoader> OdbcConnection::openLoader(std::string_view table,
                                                        const std::vector<std::string>& fields) {
    return std::make_unique<OdbcTableLoader>(*this, table, fields);
}

std::unique_ptr<TableWriter> OdbcConnection::openTable(std::string_view table) {
    return std::make_unique<OdbcTableWriter>(*this, table);
}

void OdbcConnection::checkText(std::string_view text, CharacterSet set) {
    try {
        tsql::requireText(text);
    } catch (const tsql::Error& error) {
        throw tsql::worded(language_, error);
    }
    if (set == CharacterSet::codePage) checkCharacters(text);
}

void OdbcConnection::checkCharacters(std::string_view text) {
    const std::string asked = session().characters().unknown(text);
    if (asked.empty()) return;
    const auto work = runOnAny<Query>("select '" + asked + "'");
    KnownCharacters& known = session().characters();
    // A driver without an answer knows no code page.
    const bool answered = work->hasRows() && !work->rows().eof();
    const std::string refused = known.learn(asked, answered ? work->rows().cell(0, 0).value_or("") : asked);
    if (!refused.empty()) throw failure(tsql::kBeyondCodePage, {refused});
}

void OdbcConnection::beginTrans() {
    if (transaction_ == Transaction::open) throw failure(tsql::kTransactionOpen);
    runOnAny<Change>(kBegin);
    transaction_ = Transaction::open;
}

void OdbcConnection::commitTrans() {
    if (transaction_ == Transaction::none) throw failure(open_ ? tsql::kCommitWithoutBegin : tsql::kClosed);
    end(kCommit, server::Outcome::unknown);
    transaction_ = Transaction::none;
}

void OdbcConnection::rollbackTrans() {
    if (transaction_ == Transaction::none) throw failure(open_ ? tsql::kRollbackWithoutBegin : tsql::kClosed);
    try {
        if (transaction_ == Transaction::open) end(kRollback);
    } catch (...) {
        // What the server has ended meanwhile needs no end.
        if (transaction_ == Transaction::open) throw;
    }
    transaction_ = Transaction::none;
}

void OdbcConnection::setProgress(std::function<void()> progress) {
    if (!open_) throw failure(tsql::kClosed);
    progress_.set(std::move(progress));
}

// Nothing of it may wait in the pool.
void OdbcConnection::undo() noexcept {
    if (std::exchange(transaction_, Transaction::none) != Transaction::open) return;
    try {
        end(kRollback);
    } catch (...) {
        if (session_) session_->spoil();
    }
}

void OdbcConnection::close() noexcept {
    if (!open_) return;
    progress_.set({});
    undo();
    open_ = false;
    if (lost_) session_.reset();
    if (session_) giveSessionBack(connectionString_, std::move(session_));
}

}  // namespace orvenmod::store::odbc
