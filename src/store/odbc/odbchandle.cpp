#include "store/odbc/odbchandle.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "store/odbc/nativesigns.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::odbc {

namespace {

constexpr int kStatementTerminated = 3621;

// "[unixODBC][FreeTDS][SQL Server]text" without the layers.
std::string withoutLayers(const std::string& text) {
    std::size_t at = 0;
    while (at < text.size() && text[at] == '[') {
        const std::size_t end = text.find(']', at);
        if (end == std::string::npos) break;
        at = end + 1;
    }
    return at == text.size() ? text : text.substr(at);
}

struct StateMeaning {
    std::string_view state;  ///< of the standard; two letters mean the whole group
    FailureKind kind;
};

constexpr StateMeaning kStateMeanings[] = {
    {"08", FailureKind::connection},    {"IM002", FailureKind::connection},   {"28000", FailureKind::connection},
    {"01000", FailureKind::connection}, {"HYT00", FailureKind::busy},         {"HYT01", FailureKind::busy},
    {"40001", FailureKind::busy},       {"42S02", FailureKind::noSuchObject}, {"42S22", FailureKind::noSuchObject},
    {"42S01", FailureKind::duplicate},  {"42S21", FailureKind::duplicate},    {"22001", FailureKind::truncation},
    {"22003", FailureKind::overflow},   {"22012", FailureKind::divide},       {"22018", FailureKind::conversion},
    {"22007", FailureKind::conversion}, {"22008", FailureKind::conversion},   {"23", FailureKind::key}};

// By the server's number; where a driver has none of its own, by the standard's state.
FailureKind kindOf(int number, const std::string& state) {
    const FailureKind known = tsql::kindOf(number);
    if (known != FailureKind::other) return known;
    // A server gives this state to most of its failures; what it means by one, its number tells.
    if (number == 0 && (state == "42000" || state == "37000")) return FailureKind::syntax;
    const auto* found = std::ranges::find_if(
        kStateMeanings, [&](const StateMeaning& meaning) { return state.starts_with(meaning.state); });
    return found == std::end(kStateMeanings) ? FailureKind::other : found->kind;
}

}  // namespace

OdbcHandle::OdbcHandle(SQLSMALLINT type, SQLHANDLE parent) : type_(type) {
    if (SQL_SUCCEEDED(SQLAllocHandle(type, parent, &handle_))) return;
    throw Failure(FailureKind::connection, 0, "ODBC 管理器无法分配句柄。");
}

OdbcHandle::~OdbcHandle() {
    if (handle_ != SQL_NULL_HANDLE) SQLFreeHandle(type_, handle_);
}

OdbcHandle::OdbcHandle(OdbcHandle&& other) noexcept
    : type_(other.type_), handle_(std::exchange(other.handle_, static_cast<SQLHANDLE>(SQL_NULL_HANDLE))) {}

OdbcHandle& OdbcHandle::operator=(OdbcHandle&& other) noexcept {
    std::swap(type_, other.type_);
    std::swap(handle_, other.handle_);
    return *this;
}

void OdbcHandle::check(SQLRETURN result) const {
    if (!SQL_SUCCEEDED(result)) throw failure();
}

std::vector<Diagnostic> OdbcHandle::diagnostics() const {
    std::vector<Diagnostic> records;
    for (SQLSMALLINT record = 1;; ++record) {
        SQLCHAR state[6] = {};
        SQLCHAR buffer[2048] = {};
        SQLINTEGER native = 0;
        SQLSMALLINT length = 0;
        if (!SQL_SUCCEEDED(SQLGetDiagRec(type_, handle_, record, state, &native, buffer, sizeof buffer, &length)))
            return records;
        records.push_back(
            {reinterpret_cast<const char*>(state), native, withoutLayers(reinterpret_cast<const char*>(buffer))});
    }
}

Failure OdbcHandle::failure() const {
    std::vector<Diagnostic> records = diagnostics();
    // Hints come along with failures, in front of them or behind: "the statement has been terminated" and the like.
    const auto isHint = [](const Diagnostic& record) {
        return record.number == kStatementTerminated || (record.state.starts_with("01") && !lossOf(record.number));
    };
    const auto isCause = [](const Diagnostic& record) { return tsql::kindOf(record.number) != FailureKind::other; };
    if (!std::all_of(records.begin(), records.end(), isHint)) std::erase_if(records, isHint);
    if (records.empty()) return {FailureKind::other, 0, "ODBC 驱动程序没有说明原因。"};
    const auto known = std::find_if(records.begin(), records.end(), isCause);
    const Diagnostic& cause = known == records.end() ? records.front() : *known;
    std::string text = cause.text;
    for (const Diagnostic& record : records) {
        if (text.find(record.text) == std::string::npos) text += "\n" + record.text;
    }
    return {kindOf(cause.number, cause.state), cause.number, text};
}

}  // namespace orvenmod::store::odbc
