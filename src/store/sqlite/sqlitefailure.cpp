// Only a failure comes here, so that nothing is kept for it: what a message leaves out is asked of SQLite's own tables.
#include "store/sqlite/sqlitefailure.h"

#include <string_view>
#include <utility>
#include <vector>

#include "store/sqlite/createtext.h"
#include "store/sqlite/statement.h"
#include "store/tsql/error.h"
#include "store/tsql/runtime.h"

namespace orvenmod::store::sqlite {

namespace {

constexpr std::string_view kKeyPrefix = "UNIQUE constraint failed: ";
constexpr std::string_view kNullPrefix = "NOT NULL constraint failed: ";
constexpr std::string_view kKeptMark = " /*orven ";
constexpr std::string_view kCheckPrefix = "CHECK constraint failed: ";
constexpr std::string_view kJoinLimit = "at most 64 tables in a join";
constexpr std::string_view kIndexMark = "index '";

std::string afterPrefix(const std::string& text, std::string_view prefix) {
    return text.starts_with(prefix) ? text.substr(prefix.size()) : std::string();
}

// "t.a, t.b" gives table t and columns a, b.
void splitColumns(const std::string& list, ConstraintReport& report) {
    std::size_t at = 0;
    while (at < list.size()) {
        const std::size_t end = std::min(list.find(", ", at), list.size());
        const std::string item = list.substr(at, end - at);
        const std::size_t dot = item.find('.');
        report.table = item.substr(0, dot);
        if (dot != std::string::npos) report.columns.push_back(item.substr(dot + 1));
        at = end + 2;
    }
}

std::string queryText(sqlite3* handle, const char* text, const std::string& first, const std::string& second = {}) {
    sqlite3_stmt* raw = nullptr;
    sqlite3_prepare_v2(handle, text, -1, &raw, nullptr);
    const Statement statement(raw);
    sqlite3_bind_text(raw, 1, first.data(), static_cast<int>(first.size()), SQLITE_STATIC);
    if (!second.empty()) sqlite3_bind_text(raw, 2, second.data(), static_cast<int>(second.size()), SQLITE_STATIC);
    if (sqlite3_step(raw) != SQLITE_ROW) return {};
    const auto* result = reinterpret_cast<const char*>(sqlite3_column_text(raw, 0));
    return result == nullptr ? std::string() : result;
}

void readIndex(sqlite3* handle, ConstraintReport& report) {
    report.table =
        queryText(handle, "SELECT tbl_name FROM sqlite_master WHERE type = 'index' AND name = ?1", report.index);
    const std::string text =
        queryText(handle, "SELECT sql FROM sqlite_master WHERE type = 'index' AND name = ?1", report.index);
    for (IndexPart& part : indexPartsOf(text))
        report.columns.push_back(std::move(part.key.column));
}

// The server's name of the constraint or index, and whether it is a constraint.
void nameConstraint(ConstraintReport& report) {
    const std::size_t primary = report.index.find(tsql::kPrimaryKeyInfix);
    const std::size_t unique = report.index.find(tsql::kUniqueInfix);
    if (primary != std::string::npos) {
        report.key = report.primary = true;
        report.constraint = report.index.substr(primary + tsql::kPrimaryKeyInfix.size());
    } else if (unique != std::string::npos) {
        report.key = true;
        report.constraint = report.index.substr(unique + tsql::kUniqueInfix.size());
    } else if (report.index.starts_with(report.table + ".")) {
        report.constraint = report.index.substr(report.table.size() + 1);
    } else {
        report.constraint = report.index;
    }
}

// The index that has just these columns, for a report that names columns only. Empty for the table's own key.
std::string indexOf(sqlite3* handle, const ConstraintReport& report, bool& own) {
    std::string columns;
    for (const std::string& column : report.columns)
        columns += (columns.empty() ? "" : ",") + column;
    const std::string found = queryText(
        handle,
        "SELECT origin || name FROM pragma_index_list(?1) AS l WHERE \"unique\" = 1 AND (SELECT group_concat(i.name) "
        "FROM pragma_index_info(l.name) AS i) = ?2 COLLATE NOCASE ORDER BY origin = 'c' LIMIT 1",
        report.table, columns);
    own = !found.starts_with('c');
    return own ? std::string() : found.substr(1);
}

// The name of a constraint within the table's text: CONSTRAINT "name" PRIMARY KEY; one made of the table's where it
// has none.
std::string ownName(sqlite3* handle, const ConstraintReport& report) {
    constexpr std::string_view kConstraint = "CONSTRAINT \"";
    const std::string text =
        queryText(handle, "SELECT sql FROM sqlite_master WHERE type = 'table' AND name = ?1", report.table);
    const std::size_t key = text.find(report.primary ? "\" PRIMARY KEY" : "\" UNIQUE");
    const std::size_t start = key == std::string::npos ? key : text.rfind(kConstraint, key);
    if (start == std::string::npos) return (report.primary ? "PK_" : "UQ_") + report.table;
    const std::size_t name = start + kConstraint.size();
    return text.substr(name, key - name);
}

}  // namespace

ConstraintReport constraintReport(sqlite3* handle, int code) {
    ConstraintReport report;
    const std::string message = sqlite3_errmsg(handle);
    if (code == SQLITE_CONSTRAINT_NOTNULL) {
        splitColumns(afterPrefix(message, kNullPrefix), report);
        return report;
    }
    if (code == SQLITE_CONSTRAINT_CHECK) {
        // One without a name is told by its text, without what it keeps for itself.
        report.constraint = afterPrefix(message.substr(0, message.find(kKeptMark)), kCheckPrefix);
        return report;
    }
    const std::string what = afterPrefix(message, kKeyPrefix);
    if (what.starts_with(kIndexMark)) {
        report.index = what.substr(kIndexMark.size(), what.size() - kIndexMark.size() - 1);
        readIndex(handle, report);
        nameConstraint(report);
        return report;
    }
    splitColumns(what, report);
    bool own = true;
    if (code == SQLITE_CONSTRAINT_UNIQUE) report.index = indexOf(handle, report, own);
    report.key = own;
    report.primary = code != SQLITE_CONSTRAINT_UNIQUE;
    if (own) {
        report.constraint = ownName(handle, report);
    } else {
        nameConstraint(report);
    }
    return report;
}

Failure worded(const ConstraintReport& report, int code, const DatabaseFile& file, const char* statement,
               const std::string& key) {
    const auto text = [&](int number, std::vector<std::string> arguments) {
        return tsql::worded(file.language, number, arguments);
    };
    if (code == SQLITE_CONSTRAINT_NOTNULL) {
        return text(tsql::kNullRefused,
                    {report.columns.empty() ? "" : report.columns.front(), report.table, statement});
    }
    if (code == SQLITE_CONSTRAINT_CHECK)
        return text(tsql::kConstraintConflict, {statement, "CHECK", report.constraint, report.table});
    if (report.key) {
        return text(tsql::kDuplicateKey,
                    {report.primary ? "PRIMARY KEY" : "UNIQUE KEY", report.constraint, report.table, key});
    }
    return text(tsql::kDuplicateInIndex, {report.table, report.constraint, key});
}

Failure failureOf(sqlite3* handle, int code, const DatabaseFile& file) {
    const auto text = [&](int number, const std::vector<std::string>& arguments) {
        return tsql::worded(file.language, number, arguments);
    };
    const std::string message = handle == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(handle);
    switch (code & 0xFF) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return text(tsql::kBusy, {file.path});
        case SQLITE_FULL:
            return text(tsql::kDiskFull, {file.path});
        case SQLITE_IOERR:
            return text(tsql::kInputOutput, {file.path, message});
        case SQLITE_READONLY:
            return text(tsql::kReadOnly, {file.path});
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return text(tsql::kNoDatabase, {file.path});
        case SQLITE_CANTOPEN:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return text(tsql::kUnreadable, {file.path, message});
        case SQLITE_NOMEM:
            return text(tsql::kOutOfMemory, {});
        case SQLITE_TOOBIG:
            return text(tsql::kTruncated, {});
        case SQLITE_ERROR:
            if (message == "integer overflow") return text(tsql::kArithmeticOverflow, {"expression", "bigint"});
            if (message == kJoinLimit) return text(tsql::kTooManyTables, {"64"});
            break;
        default:
            break;
    }
    return text(tsql::kStoreReports, {file.path, message});
}

}  // namespace orvenmod::store::sqlite
