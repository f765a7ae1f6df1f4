// The scalar functions and aggregates of the dialect as data. Those with a rule of types of their own (isnull,
// coalesce, choose, nullif, iif) are not among them.
#pragma once

#include <string_view>

namespace orvenmod::store::tsql {

struct FunctionInfo {
    std::string_view name;
    int least;
    int most;  ///< -1 for any number
    /// One letter an argument, the last for all that follow: t text, i int, f float, n number, d date, a any.
    std::string_view arguments;
    /// t text as long as the first argument, x text, s nvarchar, c char(1), i int, f float, d datetime, D date,
    /// u uniqueidentifier, 1 the first argument's type, w that type as a whole number.
    char result;
};

/// Null for an unknown name; the name in lower case.
const FunctionInfo* findFunction(std::string_view name);
bool isAggregate(std::string_view name);
/// A function of the server that this store has not.
bool isRefusedFunction(std::string_view name);

/// The part of a date by any of its names ("dd", "day"), or "" for none.
std::string_view datePart(std::string_view name);

}  // namespace orvenmod::store::tsql
