// Functions of numbers, as translated statements call them.
//
// SQLite computes in 64-bit integers and floats, and turns one into the other or gives null where a server fails. So
// each operation whose result depends on a type gets what the binder found out as constants behind its operands (a
// type's text, a precision and a scale), and checks its result against them.
//
//   7/2                            ts_idiv(7, 2)                 3
//   cast(10 as decimal(9,4))/3     ts_decdiv(.., 3, p, s)        s digits, the rest cut
//   fprice>5                       ts_deckey("fprice", 18, 4) > ts_deckey(5, 18, 4)
//   sqrt(-1)                       ts_sqrt(-1)                   3623, where SQLite gives null
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "store/sqlite/functioncall.h"
#include "store/tsql/functions.h"
#include "store/tsql/values.h"

namespace orvenmod::store::sqlite {

namespace {

using tsql::Datum;

void range(FunctionCall& call) {
    const tsql::Type& type = call.type(1);
    call.give(tsql::convert(call.datum(0), tsql::typeOf(tsql::Kind::bigint), type).integer);
}

void decimal(FunctionCall& call) {
    call.give(
        tsql::roundedDecimal(call.number(0), static_cast<int>(call.integer(1)), static_cast<int>(call.integer(2))));
}

void integerDivide(FunctionCall& call) { call.give(tsql::integerQuotient(call.integer(0), call.integer(1))); }
void integerModulo(FunctionCall& call) { call.give(tsql::integerRemainder(call.integer(0), call.integer(1))); }

void divide(FunctionCall& call) {
    if (call.real(1) == 0) throw tsql::Error(tsql::kDivisionByZero);
    call.give(call.real(0) / call.real(1));
}

// Of two decimals, with precision and scale of the result behind them.
template <Datum (*compute)(const Datum&, const Datum&, int, int)>
void decimals(FunctionCall& call) {
    call.give(
        compute(call.number(0), call.number(1), static_cast<int>(call.integer(2)), static_cast<int>(call.integer(3))));
}
void decimalModulo(FunctionCall& call) { call.give(tsql::decimalRemainder(call.number(0), call.number(1))); }

void decimalKey(FunctionCall& call) {
    call.give(tsql::decimalKey(call.number(0), static_cast<int>(call.integer(1)), static_cast<int>(call.integer(2))));
}

// A function of one float; outside its domain the server refuses.
template <double (*compute)(double)>
void real(FunctionCall& call) {
    const double result = compute(call.real(0));
    // log10(0) and cot(0) are infinite; exp(1000) is too, but that is an overflow, which give() tells.
    if (std::isnan(result) || (std::isinf(result) && call.real(0) <= 0)) throw tsql::Error(tsql::kFloatDomain);
    call.give(result);
}

double cotangent(double x) { return 1 / std::tan(x); }
double degrees(double x) { return x * 180 / std::numbers::pi; }
double radians(double x) { return x * std::numbers::pi / 180; }

void logarithmOf(FunctionCall& call) {
    const double value = call.real(0);
    const double base = call.count() > 1 ? call.real(1) : std::numbers::e;
    if (value <= 0 || base <= 0 || base == 1) throw tsql::Error(tsql::kFloatDomain);
    call.give(call.count() > 1 ? std::log(value) / std::log(base) : std::log(value));
}

void arcTangent2(FunctionCall& call) { call.give(std::atan2(call.real(0), call.real(1))); }
void pi(FunctionCall& call) { call.give(std::numbers::pi); }

void random(FunctionCall& call) {
    static thread_local std::mt19937_64 engine{std::random_device{}()};
    if (call.count() > 0) engine.seed(static_cast<std::uint64_t>(call.integer(0)));
    call.give(std::uniform_real_distribution<double>(0, 1)(engine));
}

template <double (*compute)(double), Datum (*exactly)(const Datum&)>
void whole(FunctionCall& call) {
    const Datum value = call.number(0);
    if (value.kind == Datum::Kind::decimal) return call.give(exactly(value));
    // A whole number stays one, however large.
    if (value.kind != Datum::Kind::real) return call.giveArgument(0);
    call.give(compute(value.real));
}

void round(FunctionCall& call) {
    const bool cut = call.count() > 2 && call.integer(2) != 0;
    call.give(tsql::roundedNumber(call.number(0), call.integer(1), cut));
}

void power(FunctionCall& call) { call.give(tsql::powerOf(call.real(0), call.real(1), call.type(2))); }

void sign(FunctionCall& call) {
    const double value = call.real(0);
    call.give(std::int64_t{(value > 0) - (value < 0)});
}

void absolute(FunctionCall& call) {
    Datum value = call.number(0);
    if (value.kind == Datum::Kind::decimal) {
        value.text.erase(0, value.text.find_first_not_of('-'));
        return call.give(value);
    }
    if (value.kind == Datum::Kind::real) return call.give(std::fabs(value.real));
    if (value.integer == std::numeric_limits<std::int64_t>::min())
        throw tsql::Error(tsql::kArithmeticOverflow, {"expression", "bigint"});
    call.give(value.integer < 0 ? -value.integer : value.integer);
}

constexpr FunctionEntry kEntries[] = {
    strict<range>("ts_range", 2),
    strict<decimal>("ts_decimal", 3),
    strict<integerDivide>("ts_idiv", 2),
    strict<integerModulo>("ts_imod", 2),
    strict<divide>("ts_div", 2),
    strict<decimals<tsql::decimalSum>>("ts_decadd", 4),
    strict<decimals<tsql::decimalDifference>>("ts_decsub", 4),
    strict<decimals<tsql::decimalProduct>>("ts_decmul", 4),
    strict<decimals<tsql::decimalQuotient>>("ts_decdiv", 4),
    strict<decimalKey>("ts_deckey", 3),
    strict<decimalModulo>("ts_decmod", 2),
    strict<real<std::sqrt>>("ts_sqrt", 1),
    strict<real<std::exp>>("ts_exp", 1),
    strict<logarithmOf>("ts_log", -1),
    strict<real<std::log10>>("ts_log10", 1),
    strict<real<std::sin>>("ts_sin", 1),
    strict<real<std::cos>>("ts_cos", 1),
    strict<real<std::tan>>("ts_tan", 1),
    strict<real<cotangent>>("ts_cot", 1),
    strict<real<std::asin>>("ts_asin", 1),
    strict<real<std::acos>>("ts_acos", 1),
    strict<real<std::atan>>("ts_atan", 1),
    strict<arcTangent2>("ts_atn2", 2),
    strict<real<degrees>>("ts_degrees", 1),
    strict<real<radians>>("ts_radians", 1),
    strict<pi>("ts_pi", 0),
    strict<random>("ts_rand", -1, Results::varying),
    strict<whole<std::floor, tsql::decimalFloor>>("ts_floor", 1),
    strict<whole<std::ceil, tsql::decimalCeiling>>("ts_ceiling", 1),
    strict<round>("ts_round", -1),
    strict<power>("ts_power", 3),
    strict<sign>("ts_sign", 1),
    strict<absolute>("ts_abs", 1),
};

}  // namespace

void registerNumberFunctions(sqlite3* database, Runtime& runtime) { registerEntries(database, runtime, kEntries); }

}  // namespace orvenmod::store::sqlite
