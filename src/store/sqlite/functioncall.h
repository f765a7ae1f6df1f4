// One call of a run-time function: its arguments, its result, its failure. Used by the functions_*.cpp only.
//
// A function is written as if it were called by us, throws what the server would answer, and is wrapped for SQLite
// here:
//
//   void left(FunctionCall& call) { call.give(tsql::leftPart(call.text(0), call.integer(1))); }
//   strict<left>("ts_left", 2)
//
//   ts_left('abc', -1)    536 waits in the Runtime; SQLite carries a text on its way out, and Database::fail throws it
//   ts_left(null, 1)      null, and the function isn't asked
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "store/sqlite/binding.h"
#include "store/sqlite/runtime.h"
#include "store/tsql/dates.h"
#include "store/tsql/error.h"
#include "store/tsql/type.h"

namespace orvenmod::store::sqlite {

class FunctionCall {
public:
    FunctionCall(sqlite3_context* context, int count, sqlite3_value** values)
        : context_(context), count_(count), values_(values) {}

    int count() const { return count_; }
    bool isNull(int i) const { return sqlite3_value_type(values_[i]) == SQLITE_NULL; }
    bool anyNull() const;
    std::string_view text(int i) const;
    std::int64_t integer(int i) const { return sqlite3_value_int64(values_[i]); }
    double real(int i) const { return sqlite3_value_double(values_[i]); }
    tsql::Datum datum(int i) const { return datumOf(values_[i]); }
    /// A value of the declared type.
    tsql::Datum datum(int i, const tsql::Type& type) const {
        return type.isDecimal() ? decimalOf(values_[i]) : datumOf(values_[i]);
    }
    /// An operand of decimal arithmetic.
    tsql::Datum number(int i) const;
    /// A constant argument that is a type's text or a part of a date; read once a statement.
    const tsql::Type& type(int i);
    tsql::DatePart datePart(int i) const;
    tsql::DateTime date(int i) const;

    void giveNull() { sqlite3_result_null(context_); }
    void give(std::int64_t value) { sqlite3_result_int64(context_, value); }
    void give(double value);
    void give(std::string_view text);
    void give(const tsql::Datum& value);
    void giveDate(const tsql::DateTime& date) { give(std::string_view(tsql::printStored(date))); }
    /// The argument itself.
    void giveArgument(int i) { sqlite3_result_value(context_, values_[i]); }

    Runtime& runtime() { return *static_cast<Runtime*>(sqlite3_user_data(context_)); }
    /// Called where nothing may be thrown.
    void fail(const tsql::Error& error) noexcept;
    void failForMemory() { sqlite3_result_error_nomem(context_); }

private:
    sqlite3_context* context_;
    int count_;
    sqlite3_value** values_;
    tsql::Type transient_;
};

enum class Nulls { giveNull, areSeen };

/// No exception crosses SQLite: a failure waits in the Runtime.
template <typename Work>
void guarded(FunctionCall& call, const Work& work) {
    try {
        work();
    } catch (const tsql::Error& error) {
        call.fail(error);
    } catch (const std::bad_alloc&) {
        call.failForMemory();
    }
}

template <auto body, Nulls nulls>
void callFunction(sqlite3_context* context, int count, sqlite3_value** values) {
    FunctionCall call(context, count, values);
    if (nulls == Nulls::giveNull && call.anyNull()) return call.giveNull();
    guarded(call, [&call] { body(call); });
}

/// Whether a function gives the same for the same arguments, so that SQLite may call it once for a constant.
enum class Results { same, varying };

struct FunctionEntry {
    const char* name;
    int arguments;  ///< -1 for any
    void (*body)(sqlite3_context*, int, sqlite3_value**);
    Results results = Results::same;
};

/// A function that gives null for a null argument.
template <auto body>
constexpr FunctionEntry strict(const char* name, int arguments, Results results = Results::same) {
    return {name, arguments, callFunction<body, Nulls::giveNull>, results};
}
/// A function that sees its null arguments.
template <auto body>
constexpr FunctionEntry open(const char* name, int arguments, Results results = Results::same) {
    return {name, arguments, callFunction<body, Nulls::areSeen>, results};
}

void registerConversions(sqlite3* database, Runtime& runtime);
void registerTextFunctions(sqlite3* database, Runtime& runtime);
void registerNumberFunctions(sqlite3* database, Runtime& runtime);
void registerDateFunctions(sqlite3* database, Runtime& runtime);
void registerAggregates(sqlite3* database, Runtime& runtime);

/// A handle that lacks a function would be kept for the next use. Throws std::bad_alloc.
inline void checkRegistered(int code) {
    if (code != SQLITE_OK) throw std::bad_alloc();
}

template <typename Entries>
void registerEntries(sqlite3* database, Runtime& runtime, const Entries& entries) {
    for (const FunctionEntry& entry : entries) {
        const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (entry.results == Results::same ? SQLITE_DETERMINISTIC : 0);
        checkRegistered(sqlite3_create_function_v2(database, entry.name, entry.arguments, flags, &runtime, entry.body,
                                                   nullptr, nullptr, nullptr));
    }
}

}  // namespace orvenmod::store::sqlite
