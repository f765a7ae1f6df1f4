// Function calls, by the first of three ways that fits: a function of SQLite's own that does exactly the same, in what
// is stored one that nearly does (_plain.cpp), else the ts_ function of the server's name.
//
//   len(fname)        length(rtrim("tblItem"."fname"))
//   year(fdate)       CAST(substr("tblItem"."fdate", 1, 4) AS INTEGER)
//   left(fname,3)     ts_left("tblItem"."fname", ?1), stored substr("tblItem"."fname", 1, 3)
//   avg(fprice)       ts_decdiv(sum("tblItem"."fprice"), count("tblItem"."fprice"), 38, 6)
#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {

std::string SqliteEmitter::function(const Expression& call) {
    if (call.aggregate) {
        return aggregate(call);
    }
    std::string text = builtin(call);
    if (text.empty() && stored_) {
        text = storedFunction(call);
    }
    if (!text.empty()) {
        return text;
    }
    const std::string& name = call.name;
    if (name == "dateadd" || name == "datediff" || name == "datepart" || name == "datename") {
        return "ts_" + name + "(" + quoteText(call.part) + ", " + arguments(call) + ")";
    }
    if (name == "datalength" || name == "power") {
        return "ts_" + name + "(" + arguments(call) + ", " + quoteText(printType(call.operands[0]->type)) + ")";
    }
    if (name == "sysdatetime") {
        return "ts_getdate()";
    }
    return "ts_" + name + "(" + arguments(call) + ")";
}

/// What SQLite's own functions do exactly as the server's; empty for the others.
std::string SqliteEmitter::builtin(const Expression& call) {
    const std::string& name = call.name;
    const std::string shared = sharedFunction(call, "ifnull");
    if (!shared.empty()) {
        return shared;
    }
    if (name == "ltrim" || name == "rtrim" || name == "trim") {
        return name + "(" + arguments(call) + ")";
    }
    if (name == "square") {
        const std::string operand = value(*call.operands[0]);
        return "(1.0 * " + operand + " * " + operand + ")";
    }
    if (name == "year" || name == "month" || name == "day") {
        const char* place = name == "year" ? ", 1, 4)" : name == "month" ? ", 6, 2)" : ", 9, 2)";
        return "CAST(substr(" + arguments(call) + place + " AS INTEGER)";
    }
    return "";
}

std::string SqliteEmitter::aggregate(const Expression& call) {
    const std::string distinct = call.distinct ? "DISTINCT " : "";
    // count(distinct fname) counts what compares as different.
    if (call.name == "count" || call.name == "count_big") {
        return call.star ? "count(*)" : "count(" + distinct + groupKey(*call.operands[0]) + ")";
    }
    const std::string operand = value(*call.operands[0]);
    if (call.name == "min" || call.name == "max") {
        return call.name + "(" + operand + (call.type.isText() ? orderCollation() : "") + ")";
    }
    const std::string sum = "sum(" + distinct + operand + ")";
    const std::string count = "count(" + distinct + operand + ")";
    const std::string type = quoteText(printType(call.type));
    const std::string size = ", " + std::to_string(call.type.precision) + ", " + std::to_string(call.type.scale) + ")";
    if (call.name == "sum") {
        if (stored_ || call.type.isFloat()) {
            return sum;
        }
        return call.type.isInteger() ? "ts_range(" + sum + ", " + type + ")" : "ts_decimal(" + sum + size;
    }
    if (call.name == "avg") {
        if (call.type.isFloat()) {
            return "avg(" + distinct + operand + ")";
        }
        if (stored_) {
            return call.type.isInteger() ? "(" + sum + " / " + count + ")" : "(" + sum + " * 1.0 / " + count + ")";
        }
        return call.type.isInteger() ? "ts_idiv(" + sum + ", " + count + ")" : "ts_decdiv(" + sum + ", " + count + size;
    }
    return "ts_" + call.name + "(" + distinct + operand + ")";
}

}  // namespace orvenmod::store::tsql
