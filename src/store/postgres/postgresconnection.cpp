#include "store/postgres/postgresconnection.h"

#include <charconv>
#include <optional>
#include <utility>

#include "store/postgres/constraints.h"
#include "store/postgres/failures.h"
#include "store/postgres/fetch.h"
#include "store/postgres/postgresoutline.h"
#include "store/postgres/postgrestableloader.h"
#include "store/postgres/postgrestablewriter.h"
#include "store/postgres/sessionpool.h"
#include "store/tsql/error.h"
#include "store/tsql/literals.h"
#include "store/tsql/resultcolumns.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::postgres {

namespace {

using tsql::StatementKind;

// More changes of the schema than that while one statement starts are no accident.
constexpr int kMostTranslations = 10;

bool maySeveralBeDropped(std::string_view sql) {
    const std::size_t first = std::min(sql.find_first_not_of(" \t\r\n"), sql.size());
    return tsql::lowerText(sql.substr(first, 4)) == "drop" && sql.find(',') != std::string_view::npos;
}

}  // namespace

PostgresConnection::PostgresConnection(std::string connectionString, std::unique_ptr<Session> session,
                                       std::function<void()> paint)
    : connectionString_(std::move(connectionString)),
      paint_(std::move(paint)),
      language_(session->address().language),
      server_(session->address().server),
      session_(std::move(session)) {}

PostgresConnection::~PostgresConnection() { close(); }

Session& PostgresConnection::session() {
    if (!open_) throw tsql::worded(language_, tsql::kClosed, {});
    if (transaction_ == Transaction::lost) throw tsql::worded(language_, tsql::kTransactionLost, {});
    // Of a transaction that nothing has gone out of, nothing is lost.
    const bool replaceable = transaction_ == Transaction::none || transaction_ == Transaction::begun;
    if (session_ && replaceable && !session_->alive()) session_.reset();
    if (!session_) {
        session_ = takeSession(connectionString_, progress_ ? progress_ : paint_);
        session_->progress().set(progress_);
    }
    if (replaceable && session_->isOvertaken()) session_->forgetSchema();
    return *session_;
}

void PostgresConnection::failForLoss(const LostConnection& lost, server::Outcome outcome) {
    session_.reset();
    if (transaction_ != Transaction::none) transaction_ = Transaction::lost;
    throw server::lostConnection(server_, lost.loss, lost.words, outcome, language_);
}

// The place of the look at the schema among what is queued. What a transaction has read keeps its shape, so that one
// look is enough for it.
std::optional<std::size_t> PostgresConnection::startUnit(Look look) {
    unit_ = transaction_ == Transaction::none    ? Unit::alone
            : transaction_ == Transaction::begun ? Unit::first
                                                 : Unit::later;
    if (unit_ == Unit::first) session_->queue(Fixed::begin);
    if (unit_ == Unit::later) session_->queue(Fixed::savepoint);
    if (look == Look::none || (transaction_ != Transaction::none && looked_)) return std::nullopt;
    session_->queueExpectedSchema();
    return session_->queued() - 1;
}

// A query alone may go out on a schema that has changed, since its answer tells of that and it is run again.
PostgresConnection::Look PostgresConnection::lookOf(const CachedStatement& entry) const {
    const bool queryAlone = transaction_ == Transaction::none && entry.translation.kind == StatementKind::query;
    return queryAlone && session_->isTold() ? Look::none : Look::atTheSchema;
}

CachedStatement& PostgresConnection::prepared(std::string_view sql) {
    if (!isText(sql)) throw tsql::Error(tsql::kNoText);
    shape_.scan(sql);
    CachedStatement& entry = session_->prepare(sql, shape_);
    const tsql::Translation& translation = entry.translation;
    if (translation.kind == StatementKind::ddl && session_->catalog().isQuoted(translation.table))
        throw tsql::Error(tsql::kNotSupported, {"a definition of \"" + translation.table + "\""});
    return entry;
}

// The place of its answer, of a definition's first where it consists of several.
std::size_t PostgresConnection::queueStatement(CachedStatement& entry, const Parameters& parameters) {
    const tsql::Translation& translation = entry.translation;
    if (translation.kind != StatementKind::ddl)
        return session_->queueRun(entry.statement, translation.statements.front(), parameters);
    const std::size_t at = session_->queued();
    for (const std::string& text : translation.statements)
        session_->queueText(text);
    return at;
}

void PostgresConnection::endUnit() {
    if (unit_ == Unit::later) session_->queue(Fixed::release);
}

// Sends what has been queued. What fails is undone; the failure comes back with the answer.
Answer PostgresConnection::sendUnit(Effect effect, const Session::Stream* stream) {
    Answer answer;
    try {
        answer = session_->send(stream);
    } catch (const LostConnection& lost) {
        const bool mayBeStored = effect == Effect::changes && transaction_ == Transaction::none;
        failForLoss(lost, mayBeStored ? server::Outcome::unknown : server::Outcome::undone);
    } catch (...) {
        // The progress has ended it.
        if (transaction_ == Transaction::begun) transaction_ = Transaction::open;
        undoUnit();
        throw;
    }
    if (transaction_ == Transaction::begun) transaction_ = Transaction::open;
    if (answer.failure() != nullptr) undoUnit();
    return answer;
}

void PostgresConnection::undoUnit() {
    if (unit_ == Unit::alone) return;
    if (unit_ == Unit::first) {
        session_->queue(Fixed::rollback);
    } else {
        session_->queue(Fixed::rollbackTo);
        session_->queue(Fixed::release);
    }
    const Answer answer = session_->sendToTheEnd();
    if (answer.failure() != nullptr) {
        transaction_ = Transaction::lost;
    } else if (unit_ == Unit::first) {
        transaction_ = Transaction::begun;
    }
}

// Whether the statement is to be translated again. A failure that stays after the schema has been read again is one of
// the statement.
bool PostgresConnection::isOvertaken(const Answer& answer, std::optional<std::size_t> lookAt, int& attempt) const {
    if (++attempt > kMostTranslations) return false;
    if (lookAt && answer.failedAt() == *lookAt) return true;
    if (!isSchemaChange(answer.failure())) return false;
    attempt = kMostTranslations;
    return true;
}

// Runs a statement, and again from its translation on when the schema has overtaken it.
Result PostgresConnection::run(std::string_view sql, CachedStatement*& entry,
                               const std::function<void(const PGresult* row)>& row) {
    for (int attempt = 1;;) {
        const Parameters parameters(entry->translation, shape_);
        const Look look = row ? Look::atTheSchema : lookOf(*entry);
        const auto lookAt = startUnit(look);
        const std::size_t at = queueStatement(*entry, parameters);
        endUnit();
        const bool changes = entry->translation.kind == StatementKind::change;
        const Session::Stream stream{at, row};
        Answer answer = sendUnit(changes ? Effect::changes : Effect::reads, row ? &stream : nullptr);
        const bool overtaken = look == Look::none && session_->isOvertaken() && ++attempt <= kMostTranslations;
        if (!overtaken && answer.failure() == nullptr) {
            looked_ = true;
            return std::move(answer.results[at]);
        }
        if (!overtaken && !isOvertaken(answer, lookAt, attempt)) failStatement(sql, *entry, answer.failure());
        session_->forgetSchema();
        entry = &session_->prepare(sql, shape_);
    }
}

void PostgresConnection::failStatement(std::string_view sql, const CachedStatement& entry, const PGresult* failure) {
    // The constraint may be one that a definition was about to make.
    if (entry.translation.kind == StatementKind::ddl)
        failChange("insert", failure, [](const std::string&) { return std::string("?"); });
    shape_.scan(sql);
    failChange(sql, failure,
               [&](const std::string& column) { return tsql::newValue(entry.translation, shape_, column); });
}

void PostgresConnection::failChange(std::string_view sql, const PGresult* failure, const Values& values) {
    if (isConstraint(failure)) throw constraintFailure(*session_, failure, tsql::changeVerb(sql), values);
    throw reported(failure, session_->address());
}

std::int64_t PostgresConnection::touched(PGresult* result) {
    const std::string_view text = PQcmdTuples(result);
    std::int64_t count = 0;
    std::from_chars(text.data(), text.data() + text.size(), count);
    return count;
}

std::int64_t PostgresConnection::execute(std::string_view sql) {
    return worded([&]() -> std::int64_t {
        session();
        CachedStatement* entry = &prepared(sql);
        switch (entry->translation.kind) {
            case StatementKind::query:
                run(sql, entry);
                return 0;
            case StatementKind::change:
                return touched(run(sql, entry).get());
            case StatementKind::ddl:
                runDefinition(sql, entry);
                return 0;
            case StatementKind::beginTransaction:
                beginTrans();
                return 0;
            case StatementKind::commitTransaction:
                commitTrans();
                return 0;
            case StatementKind::rollbackTransaction:
                rollbackTrans();
                return 0;
        }
        return 0;
    });
}

CachedStatement* PostgresConnection::preparedQuery(std::string_view sql) {
    session();
    CachedStatement& entry = prepared(sql);
    if (entry.translation.kind != StatementKind::query) throw tsql::Error(tsql::kNoRows);
    return &entry;
}

Recordset PostgresConnection::open(std::string_view sql) {
    return worded([&] {
        CachedStatement* entry = preparedQuery(sql);
        const Result result = run(sql, entry);
        // The entry may have been translated again under another address.
        return fetchRows(result.get(), session_->prepare(sql, shape_).translation.columns, session_->progress());
    });
}

void PostgresConnection::read(std::string_view sql, const Part& part) {
    worded([&] {
        CachedStatement* entry = preparedQuery(sql);
        std::optional<RowReader> reader;
        Recordset rows;
        run(sql, entry, [&](const PGresult* row) {
            const auto& columns = entry->translation.columns;
            if (!reader) {
                reader.emplace(columns);
                rows = tsql::emptyRecordset(columns);
            }
            reader->add(rows, row, 0);
            if (rows.rowCount() < kRowsPerPart && rows.memory() < kBytesPerPart) return;
            part(rows);
            rows = tsql::emptyRecordset(columns);
        });
        if (rows.rowCount() > 0) part(rows);
    });
}

Outline PostgresConnection::outline() {
    return worded([this] { return outlineOf(session()); });
}

std::unique_ptr<TableLoader> PostgresConnection::openLoader(std::string_view table,
                                                            const std::vector<std::string>& fields) {
    return worded([&]() -> std::unique_ptr<TableLoader> {
        session();
        return std::make_unique<PostgresTableLoader>(*this, table, fields);
    });
}

void PostgresConnection::runDefinition(std::string_view sql, CachedStatement* entry) {
    for (int attempt = 1;;) {
        const auto lookAt = startUnit(Look::atTheSchema);
        queueStatement(*entry, {});
        const std::size_t changedAt = session_->queued();
        if (transaction_ == Transaction::none) session_->queue(Fixed::schemaChanged);
        endUnit();
        const Answer answer = sendUnit(Effect::changes);
        if (answer.failure() == nullptr) {
            const bool alone = transaction_ == Transaction::none;
            definitionMade(sql, entry->translation.table, alone ? answer.results[changedAt].get() : nullptr);
            return;
        }
        if (!isOvertaken(answer, lookAt, attempt)) failStatement(sql, *entry, answer.failure());
        session_->forgetSchema();
        entry = &session_->prepare(sql, shape_);
    }
}

void PostgresConnection::definitionMade(std::string_view sql, const std::string& object, const PGresult* before) {
    looked_ = true;
    defined_ = transaction_ != Transaction::none;
    if (maySeveralBeDropped(sql) || object.empty()) return session_->forgetSchema();
    if (!defined_) session_->schemaChanged(before);
    session_->forgetDefinition(std::string(object));
}

void PostgresConnection::storeRow(Prepared& statement, const std::string& text, const Parameters& parameters,
                                  const Values& values) {
    // The columns are those of the time when the table was opened.
    startUnit(Look::none);
    session_->queueRun(statement, text, parameters);
    endUnit();
    const Answer answer = sendUnit(Effect::changes);
    if (const PGresult* failure = answer.failure()) failChange("insert", failure, values);
}

void PostgresConnection::loadRows(const std::string& table, const std::string& command, std::string_view rows,
                                  const std::function<Loaded(std::size_t row, const std::string& column)>& loaded) {
    worded([&] {
        session();
        startUnit(Look::none);
        if (const Answer answer = sendUnit(Effect::reads); answer.failure() != nullptr)
            throw reported(answer.failure(), session_->address());
        const Result result = [&] {
            try {
                return session_->copyIn(command, rows);
            } catch (const LostConnection&) {
                throw;
            } catch (...) {
                undoUnit();
                throw;
            }
        }();
        if (isFailure(result.get())) {
            undoUnit();
            failLoad(result.get(), table, loaded);
        }
        endUnit();
        sendUnit(Effect::reads);
    });
}

void PostgresConnection::failLoad(const PGresult* failure, const std::string& table,
                                  const std::function<Loaded(std::size_t row, const std::string& column)>& loaded) {
    const auto place = placeInCopy(field(failure, PG_DIAG_CONTEXT), table);
    if (!place) throw reported(failure, session_->address());
    int column = RowFailure::kUnknown;
    int asked = 0;
    const auto valueOf = [&](const std::string& name) {
        const Loaded cell = loaded(place->line - 1, name);
        column = ++asked == 1 ? cell.column : RowFailure::kUnknown;
        return cell.value;
    };
    try {
        failChange("insert", failure, valueOf);
    } catch (const Failure& worded) {
        if (asked == 0) valueOf(place->column);
        throw RowFailure(worded, place->line - 1, column);
    }
}

std::unique_ptr<TableWriter> PostgresConnection::openTable(std::string_view table) {
    return worded([&]() -> std::unique_ptr<TableWriter> {
        return session().byCatalog([&] { return std::make_unique<PostgresTableWriter>(*this, table); });
    });
}

// Nothing goes out: the server hears of it with the first statement.
void PostgresConnection::beginTrans() {
    worded([this] {
        session();
        if (transaction_ != Transaction::none) throw tsql::Error(tsql::kTransactionOpen);
        transaction_ = Transaction::begun;
        looked_ = defined_ = false;
    });
}

void PostgresConnection::commitTrans() {
    worded([this] {
        session();
        if (transaction_ == Transaction::none) throw tsql::Error(tsql::kCommitWithoutBegin);
        if (transaction_ == Transaction::open) commitOpen();
        transaction_ = Transaction::none;
    });
}

// What fails leaves a transaction that is to be rolled back, as everywhere.
void PostgresConnection::commitOpen() {
    if (defined_) session_->queue(Fixed::schemaChanged);
    session_->queue(Fixed::commit);
    Answer answer;
    try {
        answer = session_->sendToTheEnd();
    } catch (const LostConnection& lost) {
        failForLoss(lost, server::Outcome::unknown);
    }
    if (const PGresult* failure = answer.failure()) {
        transaction_ = Transaction::lost;
        session_->reset();
        session_->forgetSchema();
        throw reported(failure, session_->address());
    }
    if (defined_) session_->schemaChanged(answer.results.front().get());
}

void PostgresConnection::rollbackTrans() {
    if (transaction_ == Transaction::lost) {
        transaction_ = Transaction::none;
        return;
    }
    worded([this] {
        session();
        if (transaction_ == Transaction::none) throw tsql::Error(tsql::kRollbackWithoutBegin);
        if (std::exchange(transaction_, Transaction::none) == Transaction::begun) return;
        session_->queue(Fixed::rollback);
        try {
            session_->sendToTheEnd();
        } catch (const LostConnection&) {
            // The server has undone it by itself.
            session_.reset();
            return;
        }
        if (defined_) session_->forgetSchema();
    });
}

void PostgresConnection::setProgress(std::function<void()> progress) {
    if (!open_) throw tsql::worded(language_, tsql::kClosed, {});
    progress_ = std::move(progress);
    if (session_) session_->progress().set(progress_);
}

void PostgresConnection::close() noexcept {
    if (!std::exchange(open_, false)) return;
    const bool undone = transaction_ != Transaction::none && defined_;
    transaction_ = Transaction::none;
    if (!session_) return;
    if (undone) session_->forgetSchema();
    giveSessionBack(connectionString_, std::move(session_));
}

}  // namespace orvenmod::store::postgres
