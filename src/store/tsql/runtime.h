// The functions that emitted SQLite text calls and the embedded store registers on its connections. Arguments come
// already converted to the types told, in the representation of values.h. Unless told otherwise a null argument gives
// null, and functions are deterministic. Failures are Errors by number.
//
//   fnumber=5    ts_cast("tblItem"."fnumber", 'varchar(30)', 'int') = ?1
//
// PostgreSQL's text calls them by the same names in the schema orven, where an argument has its native type and a
// conversion is named by what it gives (ts_bigint, ts_text, ts_try_numeric); see postgres_emitter.h.
//
// A type argument is printType's text, always a constant of the statement (worth keeping as auxiliary data).
//
// Conversions
//   ts_cast(v, from, to)                 convert(v, from, to)
//   ts_convert(v, from, to, style)       likewise with convert's style
//   ts_store(v, from, to, table, column) likewise as an assignment (2628 with table and column)
//   ts_try(v, from, to[, style])         ts_cast or ts_convert, null where that fails (try_cast, try_convert)
//
// Arithmetic. Decimals are numbers; p and s are the result's precision and scale.
//   ts_range(v, type)          the integer v, or 8115 {"expression", type} beyond its range; 220 for smallint, tinyint
//   ts_decimal(v, p, s)        v rounded half away from zero to s digits; 8115 beyond p digits
//   ts_idiv(a, b)  ts_imod(a, b)   integers, towards zero; 8134
//   ts_div(a, b)               floats; 8134
//   ts_decdiv(a, b, p, s)      decimals, cut (not rounded) to s digits; 8134, 8115
//   ts_decmod(a, b)            decimals and their remainder, sign of a; 8134
//
// Text. Positions and lengths count characters from 1; comparison within replace, charindex, patindex ignores case.
//   ts_like(v, pattern[, escape])       1 or 0; trailing blanks of v may be skipped by the pattern's end
//   ts_left(t, n) ts_right(t, n)        536 for n < 0
//   ts_substring(t, start, n)           start may be < 1; 537 for n < 0
//   ts_replace(t, old, new)  ts_charindex(find, t[, start])  ts_patindex(pattern, t)
//   ts_reverse(t) ts_replicate(t, n) ts_space(n)       n < 0 gives null
//   ts_stuff(t, start, n, new)          null for a start outside t or n < 0; a null `new` is the empty text
//   ts_str(float[, length[, decimals]]) right-aligned; stars where it does not fit
//   ts_upper(t) ts_lower(t)             beyond ASCII as well
//   ts_ascii(t) ts_char(n) ts_unicode(t) ts_nchar(n) ts_quotename(t[, quote])
//   ts_datalength(v, type)              bytes
//   ts_concat(a, b, ...)                texts, null as the empty text
//   ts_isnumeric(text) ts_isdate(text)  1 or 0, also for null (0)
//   ts_soundex(t) ts_difference(a, b) ts_format is not offered
//
// Numbers. Floats unless told.
//   ts_sqrt ts_exp ts_log(x[, base]) ts_log10 ts_sin ts_cos ts_tan ts_cot ts_asin ts_acos ts_atan ts_atn2(y, x)
//   ts_degrees ts_radians               3623 for a domain error
//   ts_pi()  ts_rand([seed])            rand is not deterministic
//   ts_floor(v) ts_ceiling(v)           a whole number, of v's own representation
//   ts_round(v, n[, cut])               any number; n may be < 0; cut <> 0 truncates; half away from zero
//   ts_power(base, exponent, type)      in base's type: 8115 beyond it; integers stay whole, decimals keep their scale
//   ts_sign(v) ts_abs(v)                of v's own representation
//
// Dates; part is a constant: year quarter month dayofyear day week weekday hour minute second millisecond
//   ts_getdate() ts_getutcdate()        the connection's clock; one value within one statement; not deterministic
//   ts_dateadd(part, n, date)           517 {"datetime"} beyond the range
//   ts_datediff(part, from, to)         boundaries crossed; 535 beyond int
//   ts_datepart(part, date)  ts_datename(part, date)     English names of months and weekdays
//   ts_eomonth(date[, months])  ts_datefromparts(y, m, d)   289 for no date
//   ts_newid()                          upper-case text with dashes; not deterministic
//   ts_today() is not offered
//
// Aggregates
//   ts_single(v)                        the only row's v, null for none; 512 for a second row
//   ts_stdev(x) ts_stdevp(x) ts_var(x) ts_varp(x)        floats
//
// Failing
//   ts_fail(number, argument ...)       raises that Error; never returns
//
// Collation
//   ts_order      the order of texts (ORDER BY, < <= > >=, BETWEEN, min, max): signs, digits, Chinese by sound, letters
//                 without case. Equality stays with NOCASE, which indexes have. Not for stored objects.
//
// Names of indexes. SQLite's indexes share one name space, so they are kept as "<table>.<index>"; those that stand
// for a primary key or unique constraint as "<table>.constraint.pk.<name>" and "<table>.constraint.uq.<name>": a
// doubled key in them, or SQLITE_CONSTRAINT_PRIMARYKEY / a constraint of the table's own (index origin 'pk' or 'u'), is
// 2627; in any other index 2601.
#pragma once

#include <string_view>

namespace orvenmod::store::tsql {

/// How a constraint's or an index's name is kept.
inline constexpr std::string_view kPrimaryKeyInfix = ".constraint.pk.";
inline constexpr std::string_view kUniqueInfix = ".constraint.uq.";

}  // namespace orvenmod::store::tsql
