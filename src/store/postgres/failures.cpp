#include "store/postgres/failures.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "store/text.h"
#include "store/tsql/error.h"
#include "store/tsql/messages.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::postgres {

namespace {

using tsql::worded;

// What a run-time function raises.
constexpr std::string_view kOfTheDialect = "OV000";
constexpr char kBetweenArguments = '\x1f';

// The first with regexp_instr, which the run-time functions call.
constexpr int kLeastVersion = 150000;
constexpr const char* kLeastVersionText = "15";

std::vector<std::string> argumentsOf(const std::string& detail) {
    std::vector<std::string> arguments;
    if (detail.empty()) return arguments;
    std::size_t at = 0;
    for (;;) {
        const std::size_t end = detail.find(kBetweenArguments, at);
        arguments.push_back(detail.substr(at, end - at));
        if (end == std::string::npos) return arguments;
        at = end + 1;
    }
}

Failure ofTheDialect(const PGresult* failure, tsql::Language language) {
    const std::string text = field(failure, PG_DIAG_MESSAGE_PRIMARY);
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return worded(language, number, argumentsOf(field(failure, PG_DIAG_MESSAGE_DETAIL)));
}

struct Code {
    std::string_view state;
    int number;
    std::vector<std::string> arguments;
};

// The type that a value is too large for. Its words are in the server's language, the name of its function isn't:
//
//   int4pl int24mul int8inc       the widest of its operands
//   int82 int84 i4toi2 dtoi4 numeric_int8     that into which it converts
std::string typeOutOfRange(std::string_view function) {
    if (function.starts_with("float")) return "float";
    if (function == "pg_strtoint32") return "int";
    if (function == "int82" || function == "i4toi2") return "smallint";
    if (function == "int84") return "int";
    if (function.find("int") == function.npos && function.find("toi") == function.npos) return "numeric";
    const auto names = [&function](char size) { return function.find(size) != function.npos; };
    if (names('8')) return "bigint";
    return names('4') ? "int" : "smallint";
}

constexpr const char* kDigits = "0123456789";

// "Process 12 waits for ShareLock on transaction 34; ..." tells first of the one that was ended.
std::string firstNumber(const std::string& text) {
    const std::size_t start = text.find_first_of(kDigits);
    if (start == std::string::npos) return "?";
    return text.substr(start, text.find_first_not_of(kDigits, start) - start);
}

std::string oneLine(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == ' '))
        text.pop_back();
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\t'; }, ' ');
    text.erase(std::unique(text.begin(), text.end(), [](char a, char b) { return a == ' ' && b == ' '; }), text.end());
    return text;
}

}  // namespace

Failure reported(const PGresult* failure, const ServerAddress& address) {
    const tsql::Language language = address.language;
    const std::string state = field(failure, PG_DIAG_SQLSTATE);
    if (state == kOfTheDialect) return ofTheDialect(failure, language);
    const std::string words = field(failure, PG_DIAG_MESSAGE_PRIMARY);
    const Code codes[] = {
        {"22012", tsql::kDivisionByZero, {}},
        {"22003", tsql::kArithmeticOverflow, {"expression", typeOutOfRange(field(failure, PG_DIAG_SOURCE_FUNCTION))}},
        {"22001", tsql::kTruncated, {}},
        {"22008", tsql::kDateOutOfRange, {"varchar", "datetime"}},
        {"21000", tsql::kSubqueryRows, {}},
        {"22021", tsql::kNoText, {}},
        {"22P05", tsql::kNoText, {}},
        {"40P01", tsql::kDeadlock, {firstNumber(field(failure, PG_DIAG_MESSAGE_DETAIL))}},
        {"40001", tsql::kDeadlock, {"?"}},
        {"55P03", tsql::kLockTimeout, {}},
        {"53100", tsql::kNoSpace, {address.database}},
        {"42501", tsql::kNoRight, {address.database, words}},
        {"25006", tsql::kNoRight, {address.database, words}},
    };
    for (const Code& code : codes) {
        if (code.state == state) return worded(language, code.number, code.arguments);
    }
    return worded(language, tsql::kStoreReports, {address.database, words});
}

bool isSchemaChange(const PGresult* failure) {
    constexpr std::string_view kStates[] = {
        "42P01", "42703", "42883", "42704",  // a table, column, function or other object that isn't there
        "42P07", "42701", "42710",           // or is there already
        "0A000", "42804",                    // a plan whose columns have changed
        "26000",                             // a statement that somebody between us and the server has forgotten
    };
    const std::string state = field(failure, PG_DIAG_SQLSTATE);
    return std::find(std::begin(kStates), std::end(kStates), state) != std::end(kStates);
}

bool isConstraint(const PGresult* failure) { return field(failure, PG_DIAG_SQLSTATE).starts_with("23"); }

// The name stands behind the one word that calls it a column.
std::optional<CopyPlace> placeInCopy(const std::string& context, const std::string& table) {
    const std::size_t named = context.find(table);
    if (named == std::string::npos) return std::nullopt;
    const std::size_t number = context.find_first_of(kDigits, named + table.size());
    if (number == std::string::npos) return std::nullopt;
    CopyPlace place;
    std::from_chars(context.data() + number, context.data() + context.size(), place.line);
    const std::size_t behind = std::min(context.find_first_not_of(kDigits, number), context.size());
    const std::string words = context.substr(behind, context.find(':', behind) - behind);
    const std::size_t blank = words.find(' ', words.find_first_not_of(", "));
    if (blank != std::string::npos) place.column = trimmed(std::string_view(words).substr(blank));
    return place;
}

Failure connectFailure(const PGconn* connection, const ServerAddress& address, const Refusal& refusal) {
    const tsql::Language language = address.language;
    const auto is = [&refusal](const char* state) { return refusal.states.find(state) != std::string::npos; };
    const auto says = [&refusal](const char* text) { return refusal.words.find(text) != std::string::npos; };
    // A pooler's states say nothing.
    if (PQconnectionNeedsPassword(connection) != 0 || is(": 28P01") || is(": 28000") || says("authentication failed"))
        return worded(language, tsql::kLoginFailed, {PQuser(connection)});
    // Missing, or the role may not connect to it.
    if (is(": 3D000") || is(": 42501")) return worded(language, tsql::kCannotOpenDatabase, {PQdb(connection)});
    const auto limit = std::max(address.connectTimeout, std::chrono::seconds(2));
    if (says("timeout expired") || (address.connectTimeout.count() > 0 && refusal.taken >= limit)) {
        return worded(language, tsql::kServerSilent, {address.server, std::to_string(limit.count())});
    }
    return worded(language, tsql::kServerUnreachable, {address.server, refusal.words});
}

Failure setUpFailure(const PGresult* failure, const ServerAddress& address) {
    // What a new session prepares is there already: its connection has been another session's.
    if (field(failure, PG_DIAG_SQLSTATE) != "42P05") return reported(failure, address);
    return worded(address.language, tsql::kSharedSessions, {address.server});
}

std::optional<Failure> unfitServer(int version, const ServerAddress& address) {
    if (version >= kLeastVersion) return std::nullopt;
    constexpr int kMajor = 10000;
    return worded(address.language, tsql::kServerTooOld,
                  {address.server, std::to_string(version / kMajor), kLeastVersionText});
}

std::string lastWords(const PGconn* connection) { return oneLine(PQerrorMessage(connection)); }

}  // namespace orvenmod::store::postgres
