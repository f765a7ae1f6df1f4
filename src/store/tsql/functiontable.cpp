// One row a function, instead of one routine: the binder counts and converts the arguments by it and takes the type of
// the result from it; see functiontable.h for the letters.
//
//   {"substring", 3, 3, "tii", 't'}    substring(fname,'2',3): '2' becomes 2, the result is as long as fname
//   {"dateadd", 2, 2, "id", 'd'}       the part of the date in front isn't counted
#include "store/tsql/functiontable.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvenmod::store::tsql {
namespace {

constexpr std::array kFunctions = std::to_array<FunctionInfo>({
    {"abs", 1, 1, "n", '1'},           {"acos", 1, 1, "f", 'f'},       {"ascii", 1, 1, "t", 'i'},
    {"asin", 1, 1, "f", 'f'},          {"atan", 1, 1, "f", 'f'},       {"atn2", 2, 2, "f", 'f'},
    {"ceiling", 1, 1, "n", 'w'},       {"char", 1, 1, "i", 'c'},       {"charindex", 2, 3, "tti", 'i'},
    {"concat", 2, -1, "t", 'x'},       {"cos", 1, 1, "f", 'f'},        {"cot", 1, 1, "f", 'f'},
    {"datalength", 1, 1, "a", 'i'},    {"dateadd", 2, 2, "id", 'd'},   {"datediff", 2, 2, "d", 'i'},
    {"datefromparts", 3, 3, "i", 'D'}, {"datename", 1, 1, "d", 's'},   {"datepart", 1, 1, "d", 'i'},
    {"day", 1, 1, "d", 'i'},           {"degrees", 1, 1, "f", 'f'},    {"difference", 2, 2, "t", 'i'},
    {"eomonth", 1, 2, "di", 'D'},      {"exp", 1, 1, "f", 'f'},        {"floor", 1, 1, "n", 'w'},
    {"getdate", 0, 0, "", 'd'},        {"getutcdate", 0, 0, "", 'd'},  {"isdate", 1, 1, "t", 'i'},
    {"isnumeric", 1, 1, "t", 'i'},     {"left", 2, 2, "ti", 't'},      {"len", 1, 1, "t", 'i'},
    {"log", 1, 2, "f", 'f'},           {"log10", 1, 1, "f", 'f'},      {"lower", 1, 1, "t", 't'},
    {"ltrim", 1, 1, "t", 't'},         {"month", 1, 1, "d", 'i'},      {"nchar", 1, 1, "i", 's'},
    {"newid", 0, 0, "", 'u'},          {"patindex", 2, 2, "t", 'i'},   {"pi", 0, 0, "", 'f'},
    {"power", 2, 2, "n", '1'},         {"quotename", 1, 2, "t", 's'},  {"radians", 1, 1, "f", 'f'},
    {"rand", 0, 1, "i", 'f'},          {"replace", 3, 3, "t", 'x'},    {"replicate", 2, 2, "ti", 'x'},
    {"reverse", 1, 1, "t", 't'},       {"right", 2, 2, "ti", 't'},     {"round", 2, 3, "nii", '1'},
    {"rtrim", 1, 1, "t", 't'},         {"sign", 1, 1, "n", '1'},       {"sin", 1, 1, "f", 'f'},
    {"soundex", 1, 1, "t", 'x'},       {"space", 1, 1, "i", 'x'},      {"sqrt", 1, 1, "f", 'f'},
    {"square", 1, 1, "f", 'f'},        {"str", 1, 3, "fii", 'x'},      {"stuff", 4, 4, "tiit", 'x'},
    {"substring", 3, 3, "tii", 't'},   {"sysdatetime", 0, 0, "", 'd'}, {"tan", 1, 1, "f", 'f'},
    {"trim", 1, 1, "t", 't'},          {"unicode", 1, 1, "t", 'i'},    {"upper", 1, 1, "t", 't'},
    {"year", 1, 1, "d", 'i'},
});

constexpr std::array kAggregates = std::to_array<std::string_view>(
    {"count", "count_big", "sum", "avg", "min", "max", "stdev", "stdevp", "var", "varp"});

// Known by name, so that their user hears "not supported" and not that there is no such function.
constexpr std::array kRefused = std::to_array<std::string_view>(
    {"object_id",    "object_name",    "db_name",        "db_id",         "user_name",
     "suser_sname",  "suser_name",     "host_name",      "user_id",       "col_length",
     "col_name",     "app_name",       "scope_identity", "ident_current", "row_number",
     "rank",         "dense_rank",     "ntile",          "lag",           "lead",
     "checksum",     "objectproperty", "columnproperty", "format",        "string_agg",
     "grouping",     "checksum_agg",   "isjson",         "json_value",    "openjson",
     "string_split", "parse",          "try_parse",      "formatmessage", "hashbytes",
     "translate",    "concat_ws",      "switchoffset",   "textptr",       "serverproperty"});

constexpr std::array kParts = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"year", "year"},       {"yy", "year"},
    {"yyyy", "year"},       {"quarter", "quarter"},
    {"qq", "quarter"},      {"q", "quarter"},
    {"month", "month"},     {"mm", "month"},
    {"m", "month"},         {"dayofyear", "dayofyear"},
    {"dy", "dayofyear"},    {"y", "dayofyear"},
    {"day", "day"},         {"dd", "day"},
    {"d", "day"},           {"week", "week"},
    {"wk", "week"},         {"ww", "week"},
    {"weekday", "weekday"}, {"dw", "weekday"},
    {"w", "weekday"},       {"hour", "hour"},
    {"hh", "hour"},         {"minute", "minute"},
    {"mi", "minute"},       {"n", "minute"},
    {"second", "second"},   {"ss", "second"},
    {"s", "second"},        {"millisecond", "millisecond"},
    {"ms", "millisecond"},
});

}  // namespace

const FunctionInfo* findFunction(std::string_view name) {
    const auto found = std::find_if(kFunctions.begin(), kFunctions.end(),
                                    [&](const FunctionInfo& function) { return function.name == name; });
    return found == kFunctions.end() ? nullptr : &*found;
}

bool isAggregate(std::string_view name) {
    return std::find(kAggregates.begin(), kAggregates.end(), name) != kAggregates.end();
}

bool isRefusedFunction(std::string_view name) {
    return std::find(kRefused.begin(), kRefused.end(), name) != kRefused.end();
}

std::string_view datePart(std::string_view name) {
    for (const auto& [known, part] : kParts) {
        if (known == name) {
            return part;
        }
    }
    return {};
}

}  // namespace orvenmod::store::tsql
