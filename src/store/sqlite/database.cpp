#include "store/sqlite/database.h"

#include <unistd.h>

#include <algorithm>
#include <thread>
#include <utility>

#include "store/sqlite/functions.h"
#include "store/sqlite/sqlitefailure.h"
#include "store/tsql/translator.h"

namespace orvenmod::store::sqlite {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int kStepsPerClockCheck = 10'000;
constexpr milliseconds kProgressEvery{100};
// In KiB, which SQLite tells from pages by the sign.
constexpr const char* kCacheSize = "PRAGMA cache_size = -16000";
// In bytes; a log that was longer is cut to it when it is used from its beginning again. A usual one stays below.
constexpr const char* kLogSize = "PRAGMA journal_size_limit = 16777216";

// "file:" with the signs escaped that mean something in it.
std::string uriOf(const std::string& path) {
    std::string uri = "file:";
    for (const char c : path) {
        if (c == '?' || c == '#' || c == '%') {
            constexpr char kHex[] = "0123456789ABCDEF";
            uri += '%';
            uri += kHex[(c >> 4) & 0xF];
            uri += kHex[c & 0xF];
        } else {
            uri += c;
        }
    }
    return uri + "?immutable=1";
}

}  // namespace

Database::Database(DatabaseFile file) : file_(std::move(file)), identity_(file_.identify()) {
    try {
        open();
    } catch (...) {
        sqlite3_close_v2(std::exchange(handle_, nullptr));
        throw;
    }
}

Database::~Database() {
    natives_.clear();
    cache_.clear();
    catalog_.detach();
    sqlite3_close_v2(handle_);
}

void Database::open() {
    const bool create = file_.access == DatabaseFile::Access::create;
    const bool exists = identity_ != DatabaseFile::Identity{};
    const bool readOnly = file_.access == DatabaseFile::Access::readOnly || (exists && !identity_.writable);
    const int flags = readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
    int code = sqlite3_open_v2(file_.path.c_str(), &handle_, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code != SQLITE_OK) throw failureOf(handle_, code, file_);
    sqlite3_extended_result_codes(handle_, 1);
    sqlite3_busy_handler(handle_, &Database::onBusy, this);
    // A name in double quotes is a name: one that is unknown must not become a text.
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(handle_, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    // Opening reads nothing; this does, so that a file that is none is told now.
    code = sqlite3_exec(handle_, "PRAGMA schema_version", nullptr, nullptr, nullptr);
    if ((code & 0xFF) == SQLITE_CANTOPEN && readOnly && ::access((file_.path + "-wal").c_str(), F_OK) != 0) {
        // A write-ahead database in a folder where its shared memory can't be made; nobody else can write to it either.
        sqlite3_close_v2(std::exchange(handle_, nullptr));
        code = sqlite3_open_v2(uriOf(file_.path).c_str(), &handle_,
                               SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
        if (code == SQLITE_OK) code = sqlite3_exec(handle_, "PRAGMA schema_version", nullptr, nullptr, nullptr);
    }
    if (code != SQLITE_OK) throw failureOf(handle_, code, file_);
    // Readers and one writer side by side. A database that is busy just now keeps its mode until the next opening.
    if (!readOnly) tryRun("PRAGMA journal_mode = WAL");
    tryRun(kLogSize);
    tryRun(kCacheSize);
    tryRun("PRAGMA temp_store = MEMORY");
    registerFunctions(handle_, runtime_);
    catalog_.attach(handle_, file_);
    if (!exists) identity_ = file_.identify();
}

CachedStatement& Database::prepare(std::string_view sql, const tsql::Shape& shape) {
    if (CachedStatement* known = cache_.find(shape)) return *known;
    catalog_.refresh();
    CachedStatement entry;
    entry.translation = tsql::translateForSqlite(sql, catalog_);
    if (tsql::runsAsItIs(entry.translation.kind)) entry.statement = prepareNative(entry.translation.statements.front());
    return cache_.keep(shape, std::move(entry));
}

void Database::forget(const CachedStatement& entry) {
    catalog_.clear();
    cache_.drop(entry);
}

Statement Database::prepareNative(const std::string& text) {
    sqlite3_stmt* statement = nullptr;
    // The old call on purpose: statements of the newer one follow a change of the schema by themselves, although the
    // translation they came from no longer holds. Where another program has made fprice a text, the comparison must
    // become another one, and not the same one of a column that has changed.
    const int code = sqlite3_prepare(handle_, text.c_str(), static_cast<int>(text.size()) + 1, &statement, nullptr);
    if (code != SQLITE_OK) fail(code);
    return Statement(statement);
}

Statement Database::prepareLasting(const std::string& text) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(handle_, text.c_str(), static_cast<int>(text.size()) + 1, &statement, nullptr);
    if (code != SQLITE_OK) fail(code);
    return Statement(statement);
}

sqlite3_stmt* Database::nativeStatement(const char* text) {
    const auto known = std::find_if(natives_.begin(), natives_.end(), [&](const auto& n) { return n.first == text; });
    if (known != natives_.end()) return known->second.get();
    // The newer call: BEGIN and COMMIT were not translated, so that no change of the schema concerns them.
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v3(handle_, text, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (code != SQLITE_OK) fail(code);
    natives_.emplace_back(text, Statement(statement));
    return statement;
}

void Database::run(const char* text) {
    sqlite3_stmt* statement = nativeStatement(text);
    int code = SQLITE_ROW;
    while (code == SQLITE_ROW)
        code = sqlite3_step(statement);
    if (code == SQLITE_DONE) {
        sqlite3_reset(statement);
        return;
    }
    const ResetStatement reset(statement);
    fail(code);
}

void Database::tryRun(const char* text) noexcept { sqlite3_exec(handle_, text, nullptr, nullptr, nullptr); }

void Database::setProgress(std::function<void()> progress) {
    runtime_.progress = std::move(progress);
    sqlite3_progress_handler(handle_, runtime_.progress ? kStepsPerClockCheck : 0, &Database::onProgress, this);
}

int Database::onProgress(void* self) { return static_cast<Database*>(self)->reportProgress() ? 0 : 1; }

bool Database::reportProgress() noexcept {
    if (!runtime_.progress) return true;
    const auto now = Clock::now();
    if (now - runtime_.lastProgress < kProgressEvery) return true;
    try {
        runtime_.progress();
    } catch (...) {
        runtime_.interruption = std::current_exception();
    }
    runtime_.lastProgress = Clock::now();
    return runtime_.interruption == nullptr;
}

int Database::onBusy(void* self, int count) {
    auto& database = *static_cast<Database*>(self);
    const auto now = Clock::now();
    if (count == 0) database.waitingSince_ = now;
    if (now - database.waitingSince_ >= database.file_.busyTimeout) return 0;
    // Often at first, since most writers are done soon; then fifty times a second.
    std::this_thread::sleep_for(milliseconds(std::min(count + 1, 20)));
    return database.reportProgress() ? 1 : 0;
}

void Database::fail(int code) {
    // SQLite only knows that it was stopped; why stands in the runtime.
    if (runtime_.interruption) std::rethrow_exception(std::exchange(runtime_.interruption, nullptr));
    if (runtime_.error) {
        const tsql::Error error = *std::exchange(runtime_.error, std::nullopt);
        throw error;
    }
    throw failureOf(handle_, code, file_);
}

bool Database::reset() noexcept {
    // Statements are reset after each run; one that an exception left half-way would hold its lock.
    for (sqlite3_stmt* at = sqlite3_next_stmt(handle_, nullptr); at != nullptr; at = sqlite3_next_stmt(handle_, at)) {
        if (sqlite3_stmt_busy(at) != 0) sqlite3_reset(at);
    }
    if (sqlite3_get_autocommit(handle_) == 0) {
        tryRun("ROLLBACK");
        catalog_.clear();
    }
    runtime_.progress = nullptr;
    sqlite3_progress_handler(handle_, 0, nullptr, nullptr);
    return true;
}

}  // namespace orvenmod::store::sqlite
