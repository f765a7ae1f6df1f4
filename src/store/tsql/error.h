// A failure by number with its arguments, before it is worded: the connection words it in its language.
#pragma once

#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace orvenmod::store::tsql {

/// Thrown by the scanner, parser, binder, conversions and functions. The arguments in the order in which the
/// server's wording has them:
///
///   102 {near}  103 {name}  105 {text}  156 {keyword}  170/40000 {what is not supported, as written}
///   107 {alias}  109 {}  110 {}  111 {}  116 {}  120 {} (insert...select, fewer)  121 {} (more)
///   128 {name}  137 {variable}  145 {}  147 {}  155 {word, "dateadd"}  164 {}  174 {function, count}  189 {function,
///   from, to} 195 {function}  205 {}  206 {from, to}  207 {column}  208 {object}  209 {column}  213 {}  214 {} 220
///   {type, value}  232 {type, value}  241 {}  242 {from, to}  244 {type, value}  245 {from, value, to}  248 {value}
///   257 {from, to}  264 {column}  296 {}  402 {left, right, operator}  403/8117 {type, operator or function}
///   408/1008 {}  512 {}  515 {column, table}  529 {from, to}  536 {function}  537 {function}  544 {table}
///   1011 {alias}  1013 {alias}  1033 {}  1054 {}  1060 {}  1505 {table, index, key}  1750 {}
///   1908 {}  1911 {column, table}  1913 {index, table}  2601 {table, index, key}  2627 {"PRIMARY KEY" or "UNIQUE KEY",
///   constraint, table, key} 2628 {table, column, value}  2705 {column, table}  2714 {object}  2715 {type}  2716
///   {position, type}  2748 {size} 2749/2750/2751/2753 {}  2760 {}  3621 {}  3701 {"drop" or "alter",
///   "table"/"view"/"index"/"procedure", name} 3705 {"DROP TABLE"/"DROP VIEW", name, kind}  3728 {name}  3902 {}  3903
///   {}  4104 {identifier}  4145 {near} 4403/4406 {view}  4502 {view}  4506 {column, view}  4511 {position, view}  4701
///   {table}  4901 {column, table} 4902 {table}  4922 {"DROP COLUMN"/"ALTER COLUMN", column}  4924 {verb, column,
///   table}  5074 {dependent kind, name, column} 8101 {table}  8102 {column}  8110 {table}  8111 {table}  8114 {from,
///   to}  8115 {from or "expression", to} 8116 {type, position, function}  8120 {column}  8121 {column}  8127 {column}
///   8134 {}  8152 {}  8155 {position, alias}  8156 {column, alias} 8158/8159 {alias}  8162 {}  10727 {}
class Error : public std::exception {
public:
    Error(int number, std::vector<std::string> arguments = {}) : number_(number), arguments_(std::move(arguments)) {}

    int number() const { return number_; }
    const std::vector<std::string>& arguments() const { return arguments_; }
    const char* what() const noexcept override { return "a failure of the dialect, not yet worded"; }

private:
    int number_;
    std::vector<std::string> arguments_;
};

/// The number under which a construct is refused that the dialect has and this store does not know.
/// Argument: the construct. Of kind syntax.
inline constexpr int kNotSupported = 40000;

}  // namespace orvenmod::store::tsql
