// Aggregates that SQLite has not, or not as exact. ts_single stands around a query in the place of a value: SQLite
// would take the first of several rows, the server refuses.
//
//   select (select c from u) from t
//   (SELECT ts_single("c1") FROM (SELECT .. AS "c1" FROM "u" ..))      512 where u has two rows
#include <algorithm>
#include <cmath>

#include "store/sqlite/functioncall.h"
#include "store/tsql/functions.h"

namespace orvenmod::store::sqlite {

namespace {

// The state of the group, made with its first row; null where memory is out.
template <typename State>
State* madeState(sqlite3_context* context) {
    return static_cast<State*>(sqlite3_aggregate_context(context, static_cast<int>(sizeof(State))));
}

// Null for a group without a row.
template <typename State>
State* stateOf(sqlite3_context* context) {
    return static_cast<State*>(sqlite3_aggregate_context(context, 0));
}

// The only row's value. The state begins zeroed.
struct Single {
    sqlite3_value* value;
    std::int64_t rows;
};

void refuseRows(sqlite3_context* context) noexcept {
    FunctionCall call(context, 0, nullptr);
    try {
        call.fail(tsql::Error(tsql::kSubqueryRows));
    } catch (const std::bad_alloc&) {
        call.failForMemory();
    }
}

void singleStep(sqlite3_context* context, int, sqlite3_value** values) {
    auto* state = madeState<Single>(context);
    if (state == nullptr) return sqlite3_result_error_nomem(context);
    if (++state->rows > 1) {
        return refuseRows(context);
    }
    state->value = sqlite3_value_dup(values[0]);
    if (state->value == nullptr) sqlite3_result_error_nomem(context);
}

void singleFinal(sqlite3_context* context) {
    const auto* state = stateOf<Single>(context);
    if (state == nullptr || state->value == nullptr) return sqlite3_result_null(context);
    // Also called after a failure, to give the memory back.
    if (state->rows == 1) sqlite3_result_value(context, state->value);
    sqlite3_value_free(state->value);
}

// SQLite aligns the state to eight bytes.
typedef tsql::Int128 Units __attribute__((aligned(8)));

// Of decimals, in units of the type's last digit: of a sum nothing is lost, however many there are.
struct Total {
    Units units;
    std::int64_t count;
    int precision;
    int scale;
};

using Combine = tsql::Int128 (*)(tsql::Int128, tsql::Int128);

tsql::Int128 sumOf(tsql::Int128 left, tsql::Int128 right) {
    tsql::Int128 sum = 0;
    if (__builtin_add_overflow(left, right, &sum))
        throw tsql::Error(tsql::kArithmeticOverflow, {"expression", "numeric"});
    return sum;
}
tsql::Int128 leastOf(tsql::Int128 left, tsql::Int128 right) { return std::min(left, right); }
tsql::Int128 greatestOf(tsql::Int128 left, tsql::Int128 right) { return std::max(left, right); }

template <Combine combine>
void totalStep(FunctionCall& call, Total& total) {
    const tsql::Int128 units = tsql::decimalUnits(call.number(0), total.scale);
    total.units = total.count++ == 0 ? units : combine(total.units, units);
}

template <Combine combine>
void totalStep(sqlite3_context* context, int count, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
    auto* total = madeState<Total>(context);
    if (total == nullptr) return sqlite3_result_error_nomem(context);
    total->precision = sqlite3_value_int(values[1]);
    total->scale = sqlite3_value_int(values[2]);
    FunctionCall call(context, count, values);
    guarded(call, [&] { totalStep<combine>(call, *total); });
}

void totalFinal(sqlite3_context* context) {
    const auto* total = stateOf<Total>(context);
    if (total == nullptr) return sqlite3_result_null(context);
    FunctionCall call(context, 0, nullptr);
    guarded(call, [&] { call.give(tsql::decimalOfUnits(total->units, total->precision, total->scale)); });
}

// Mean and squares of the distance from it, kept running so that large values lose nothing.
struct Spread {
    std::int64_t count;
    double mean;
    double squares;
};

void spreadStep(sqlite3_context* context, int, sqlite3_value** values) {
    if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
    auto* state = madeState<Spread>(context);
    if (state == nullptr) return sqlite3_result_error_nomem(context);
    const double value = sqlite3_value_double(values[0]);
    const double distance = value - state->mean;
    ++state->count;
    state->mean += distance / static_cast<double>(state->count);
    state->squares += distance * (value - state->mean);
}

enum class Rows { sample, population };
enum class Measure { variance, deviation };

template <Rows rows, Measure measure>
void spreadFinal(sqlite3_context* context) {
    const auto* state = stateOf<Spread>(context);
    const std::int64_t count = state == nullptr ? 0 : state->count - (rows == Rows::population ? 0 : 1);
    if (count <= 0) return sqlite3_result_null(context);
    const double variance = state->squares / static_cast<double>(count);
    sqlite3_result_double(context, measure == Measure::deviation ? std::sqrt(variance) : variance);
}

using Step = void (*)(sqlite3_context*, int, sqlite3_value**);
using Final = void (*)(sqlite3_context*);

struct AggregateEntry {
    const char* name;
    int arguments;
    Step step;
    Final final;
};

constexpr AggregateEntry kEntries[] = {
    {"ts_decsum", 3, totalStep<sumOf>, totalFinal},
    {"ts_decmin", 3, totalStep<leastOf>, totalFinal},
    {"ts_decmax", 3, totalStep<greatestOf>, totalFinal},
    {"ts_single", 1, singleStep, singleFinal},
    {"ts_stdev", 1, spreadStep, spreadFinal<Rows::sample, Measure::deviation>},
    {"ts_stdevp", 1, spreadStep, spreadFinal<Rows::population, Measure::deviation>},
    {"ts_var", 1, spreadStep, spreadFinal<Rows::sample, Measure::variance>},
    {"ts_varp", 1, spreadStep, spreadFinal<Rows::population, Measure::variance>},
};

}  // namespace

void registerAggregates(sqlite3* database, Runtime& runtime) {
    for (const AggregateEntry& entry : kEntries) {
        checkRegistered(sqlite3_create_function_v2(database, entry.name, entry.arguments,
                                                   SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, &runtime,
                                                   nullptr, entry.step, entry.final, nullptr));
    }
}

}  // namespace orvenmod::store::sqlite
