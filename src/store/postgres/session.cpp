#include "store/postgres/session.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <future>
#include <iterator>
#include <random>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

#include "store/postgres/connecting.h"
#include "store/postgres/failures.h"
#include "store/tsql/translator.h"

namespace orvenmod::store::postgres {

namespace {

using Clock = std::chrono::steady_clock;

struct FixedText {
    const char* name;
    const char* text;
};
constexpr std::array<FixedText, 8> kFixed = {{
    {"begin", "BEGIN"},
    {"commit", "COMMIT"},
    {"rollback", "ROLLBACK"},
    {"savepoint", "SAVEPOINT statement"},
    {"release", "RELEASE statement"},
    {"rollbackto", "ROLLBACK TO statement"},
    // A division by zero is how a statement without a function fails.
    {"expectschema", "SELECT 1 / (number = $1)::integer FROM orven.schema_version"},
    {"schemachanged", "UPDATE orven.schema_version SET number = number + 1 RETURNING number - 1"},
}};

// A pooler may give the statements of one session to another's connection, where none must be taken for its own.
std::string ownName() {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "s%08x_", static_cast<unsigned>(std::random_device()()));
    return text.data();
}

// Seconds east of Greenwich on this machine, now.
long localZone() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    return local.tm_gmtoff;
}

// As the server takes a zone by its distance, which counts westwards there: <local>-08:00 for China.
std::string zoneText(long east) {
    std::array<char, 32> text{};
    const long distance = east < 0 ? -east : east;
    std::snprintf(text.data(), text.size(), "<local>%c%02ld:%02ld", east < 0 ? '+' : '-', distance / 3600,
                  distance / 60 % 60);
    return text.data();
}

// The server's farewell, where it is one.
void noteEnd(const PGresult* result, server::Loss& loss, std::string& words) {
    constexpr std::string_view kAdministratorsOrder = "57P01";
    constexpr std::string_view kCrash = "57P02";
    const std::string state = field(result, PG_DIAG_SQLSTATE);
    if (!state.starts_with("57P")) return;
    if (state == kAdministratorsOrder) loss = server::Loss::killed;
    if (state == kCrash) loss = server::Loss::shuttingDown;
    words = field(result, PG_DIAG_MESSAGE_PRIMARY);
}

}  // namespace

Prepared::~Prepared() {
    if (known_ && gone_ != nullptr) gone_->push_back(name_);
}

Prepared::Prepared(Prepared&& other) noexcept
    : name_(std::move(other.name_)), gone_(std::move(other.gone_)), known_(std::exchange(other.known_, false)) {}

Prepared& Prepared::operator=(Prepared&& other) noexcept {
    std::swap(name_, other.name_);
    std::swap(gone_, other.gone_);
    std::swap(known_, other.known_);
    return *this;
}

const PGresult* Answer::failure() const {
    return results.empty() || !isFailure(results.back().get()) ? nullptr : results.back().get();
}

Session::Session(ServerAddress address, const std::function<void()>& paint)
    : address_(std::move(address)), catalog_(*this), ownName_(ownName()), zone_(localZone()) {
    progress_.set(paint);
    connection_ = connectTo(address_, progress_);
    setUp();
    progress_.set({});
}

Session::~Session() = default;

// plan_cache_mode is left automatic: with 100 thousand goods a plan made for each value takes the windows' short
// statements 0.12 ms instead of 0.07, and the lists gain nothing from it.
//
// Settings of the session, and the statements that every session needs.
void Session::setUp() {
    PQenterPipelineMode(connection_.get());
    PQsetnonblocking(connection_.get(), 1);
    PQsetNoticeProcessor(
        connection_.get(), [](void*, const char*) {}, nullptr);
    Parameters settings;
    settings.addText(zoneText(zone_));
    // None at all would be a wait without an end.
    settings.addText(std::to_string(std::max<std::int64_t>(address_.busyTimeout.count(), 1)));
    try {
        queueText(
            "SELECT set_config('TimeZone', $1, false), set_config('lock_timeout', $2, false), "
            "set_config('DateStyle', 'ISO, YMD', false), set_config('IntervalStyle', 'postgres', false), "
            "set_config('extra_float_digits', '1', false), set_config('bytea_output', 'hex', false), "
            "set_config('standard_conforming_strings', 'on', false), set_config('transform_null_equals', 'off', "
            "false), "
            "set_config('jit', 'off', false), "
            // "$user" of a role named orven would be where the run-time functions are.
            "CASE current_schema() WHEN 'orven' THEN set_config('search_path', 'public', false) END",
            settings);
        // A standby hears of nothing.
        const char* standby = PQparameterStatus(connection_.get(), "in_hot_standby");
        told_ = standby != nullptr && std::string_view(standby) == "off";
        if (told_) queueText("LISTEN orven_schema");
        for (const FixedText& fixed : kFixed) {
            PQsendPrepare(connection_.get(), fixed.name, fixed.text, 0, nullptr);
            queued_.emplace_back();
        }
        const Answer answer = send();
        if (const PGresult* failure = answer.failure()) throw setUpFailure(failure, address_);
    } catch (const LostConnection& lost) {
        throw tsql::worded(address_.language, tsql::kServerUnreachable, {address_.server, lost.words});
    }
}

void Session::queue(Fixed statement) {
    const char* name = kFixed[static_cast<std::size_t>(statement)].name;
    PQsendQueryPrepared(connection_.get(), name, 0, nullptr, nullptr, nullptr, 0);
    queued_.emplace_back();
}

void Session::queueExpectedSchema() {
    const std::string version = std::to_string(catalog_.version());
    const char* value = version.c_str();
    PQsendQueryPrepared(connection_.get(), kFixed[static_cast<std::size_t>(Fixed::expectSchema)].name, 1, &value,
                        nullptr, nullptr, 0);
    queued_.emplace_back();
}

void Session::queueText(const std::string& text) { queueText(text, Parameters()); }

void Session::queueText(const std::string& text, const Parameters& parameters) {
    PQsendQueryParams(connection_.get(), text.c_str(), parameters.count(), nullptr, parameters.values(),
                      parameters.lengths(), parameters.formats(), 0);
    queued_.emplace_back();
}

std::size_t Session::queueRun(Prepared& statement, const std::string& text, const Parameters& parameters) {
    // One flight may hold a statement several times.
    const auto asks = [&statement](const Queued& each) { return each.preparing == &statement; };
    if (!statement.known() && std::none_of(queued_.begin(), queued_.end(), asks)) {
        PQsendPrepare(connection_.get(), statement.name().c_str(), text.c_str(), 0, nullptr);
        queued_.push_back({&statement});
    }
    PQsendQueryPrepared(connection_.get(), statement.name().c_str(), parameters.count(), parameters.values(),
                        parameters.lengths(), parameters.formats(), 0);
    queued_.emplace_back();
    return queued_.size() - 1;
}

Answer Session::send(const Stream* stream) {
    const std::size_t asked = queued_.size();
    std::vector<std::string> gone = std::exchange(*gone_, {});
    for (const std::string& name : gone) {
        PQsendQueryParams(connection_.get(), ("DEALLOCATE " + name).c_str(), 0, nullptr, nullptr, nullptr, nullptr, 0);
        queued_.emplace_back();
    }
    if (PQpipelineSync(connection_.get()) == 0) lose();
    unsent_ = true;
    progress_.start();
    try {
        Answer answer = receive(stream);
        // Behind a failure none of them went.
        if (answer.failure() != nullptr) std::move(gone.begin(), gone.end(), std::back_inserter(*gone_));
        if (answer.results.size() > asked) answer.results.resize(asked);
        return answer;
    } catch (const LostConnection&) {
        queued_.clear();
        throw;
    } catch (...) {
        interrupt();
        throw;
    }
}

Answer Session::sendToTheEnd() {
    const server::Progress::Unstoppable toTheEnd(progress_);
    return send();
}

// Each that was queued gives its result and a null, the end of all a result of its own. What the server didn't come to,
// behind a failure, is none of the answer.
Answer Session::receive(const Stream* stream) {
    Answer answer;
    std::size_t at = 0;
    bool begins = true;
    for (;;) {
        // The library takes it only before anything of the query has come.
        if (std::exchange(begins, false) && stream != nullptr && at == stream->at)
            PQsetSingleRowMode(connection_.get());
        awaitResult(answer.failure());
        Result result(PQgetResult(connection_.get()));
        if (!result) {
            if (PQstatus(connection_.get()) == CONNECTION_BAD) lose(answer.failure());
            ++at;
            begins = true;
            continue;
        }
        const ExecStatusType status = PQresultStatus(result.get());
        if (status == PGRES_SINGLE_TUPLE) {
            if (stream != nullptr) stream->row(result.get());
            continue;
        }
        if (status == PGRES_PIPELINE_SYNC) break;
        if (status == PGRES_PIPELINE_ABORTED || answer.failure() != nullptr) continue;
        if (status == PGRES_COMMAND_OK && at < queued_.size() && queued_[at].preparing != nullptr)
            queued_[at].preparing->setKnown();
        answer.results.push_back(std::move(result));
        if (PQstatus(connection_.get()) == CONNECTION_BAD) lose(answer.failure());
    }
    queued_.clear();
    return answer;
}

void Session::awaitResult(const PGresult* last) {
    while (flush(last) || PQisBusy(connection_.get()) != 0) {
        const auto awaited = unsent_ ? server::Awaited::either : server::Awaited::readable;
        await(awaited);
        if (PQconsumeInput(connection_.get()) == 0) lose(last);
        progress_.report();
    }
}

// Whether something is left to be sent.
bool Session::flush(const PGresult* last) {
    if (!unsent_) return false;
    const int left = PQflush(connection_.get());
    if (left < 0) lose(last);
    unsent_ = left > 0;
    return unsent_;
}

void Session::interrupt() noexcept {
    const Ending ending(*this);
    try {
        // One that is heard later would end another statement.
        if (!cancelWithin(kLongestEnd)) giveUp();
        receive(nullptr);
    } catch (const LostConnection&) {
        // What comes next finds that out.
        queued_.clear();
    }
}

// By a thread, since the library waits for the server's answer.
bool Session::cancelWithin(std::chrono::milliseconds limit) const {
    std::promise<void> heard;
    const std::future<void> end = heard.get_future();
    std::shared_ptr<PGcancel> cancel(PQgetCancel(connection_.get()), &PQfreeCancel);
    try {
        std::thread([cancel = std::move(cancel), heard = std::move(heard)]() mutable {
            std::array<char, 256> reason{};
            PQcancel(cancel.get(), reason.data(), static_cast<int>(reason.size()));
            heard.set_value();
        }).detach();
    } catch (const std::system_error&) {
        return false;
    }
    return end.wait_for(limit) == std::future_status::ready;
}

// Whatever is still done there belongs to a connection that is gone.
void Session::giveUp() {
    connection_.reset();
    lose();
}

void Session::await(server::Awaited awaited) {
    using std::chrono::milliseconds;
    const auto left = std::chrono::duration_cast<milliseconds>(until_ - Clock::now());
    const bool ready = server::awaitSocket(PQsocket(connection_.get()), awaited, progress_,
                                           until_ == kForever ? milliseconds::max() : std::max(left, milliseconds(0)));
    if (!ready) giveUp();
}

// A server that ends says why, and its failure is then the last answer.
void Session::lose(const PGresult* last) const {
    if (!connection_) throw LostConnection{server::Loss::silent, {}};
    server::Loss loss = server::Loss::closed;
    std::string words = lastWords(connection_.get());
    if (last != nullptr) noteEnd(last, loss, words);
    throw LostConnection{loss, words};
}

Prepared Session::newStatement() { return {ownName_ + std::to_string(++names_), gone_}; }

CachedStatement& Session::prepare(std::string_view sql, const tsql::Shape& shape) {
    if (CachedStatement* known = cache_.find(shape)) return *known;
    CachedStatement entry;
    entry.translation = byCatalog([&] { return tsql::translateForPostgres(sql, catalog_); });
    if (tsql::runsAsItIs(entry.translation.kind)) entry.statement = newStatement();
    return cache_.keep(shape, std::move(entry));
}

// A session that waits for its next statement is told before it takes it.
bool Session::isOvertaken() {
    struct Free {
        void operator()(PGnotify* notice) const { PQfreemem(notice); }
    };
    while (const std::unique_ptr<PGnotify, Free> notice{PQnotifies(connection_.get())}) {
        const std::string_view text = notice->extra;
        std::int64_t number = 0;
        std::from_chars(text.data(), text.data() + text.size(), number);
        toldOf_ = std::max(toldOf_, number);
    }
    return toldOf_ > catalog_.version();
}

void Session::forgetSchema() {
    catalog_.clear();
    cache_.clear();
}

void Session::forgetDefinition(const std::string& object) {
    catalog_.forget(object);
    cache_.clear();
}

void Session::schemaChanged(const PGresult* before) {
    if (textOf(before, 0, 0) == std::to_string(catalog_.version())) {
        catalog_.setVersion(catalog_.version() + 1);
    } else {
        forgetSchema();
    }
}

// Clocks are put forward and back at quarters of an hour.
bool Session::isOfTheZone() {
    constexpr std::time_t kQuarter = 900;
    const std::time_t quarter = std::time(nullptr) / kQuarter;
    if (quarter == zoneSeen_) return true;
    zoneSeen_ = quarter;
    return zone_ == localZone();
}

bool Session::alive() {
    if (!isOfTheZone()) return false;
    pollfd entry{PQsocket(connection_.get()), POLLIN, 0};
    while (::poll(&entry, 1, 0) > 0) {
        // A server that ends tells so, or just ends.
        if (PQconsumeInput(connection_.get()) == 0 || PQstatus(connection_.get()) == CONNECTION_BAD) return false;
    }
    return PQstatus(connection_.get()) == CONNECTION_OK;
}

bool Session::reset() noexcept {
    progress_.set({});
    if (PQstatus(connection_.get()) == CONNECTION_BAD || !queued_.empty()) return false;
    const PGTransactionStatusType status = PQtransactionStatus(connection_.get());
    if (status == PQTRANS_IDLE) return true;
    if (status != PQTRANS_INTRANS && status != PQTRANS_INERROR) return false;
    try {
        queue(Fixed::rollback);
        return send().failure() == nullptr;
    } catch (...) {
        return false;
    }
}

}  // namespace orvenmod::store::postgres
