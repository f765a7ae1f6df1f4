// Function calls: PostgreSQL's own where one does exactly the same, else the runtime's of the server's name.
//
//   len(fname)        length(rtrim("tblItem"."fname"))
//   year(fdate)       CAST(extract(year FROM "tblItem"."fdate") AS integer)
//   left(fname,3)     orven.ts_left("tblItem"."fname", $1::integer)
//   avg(fprice)       orven.ts_decdiv(sum("tblItem"."fprice"), count("tblItem"."fprice"), 38, 6)
#include <algorithm>

#include "store/tsql/functiontable.h"
#include "store/tsql/postgres_emitter.h"
#include "store/tsql/postgresnames.h"

namespace orvenmod::store::tsql {

/// An argument of the kind that functiontable.h tells, in the type by which the runtime's functions are found.
std::string PostgresEmitter::argument(const Expression& operand, char kind) {
    const std::string text = value(operand);
    const Type& type = operand.type;
    // Days, months and years of a time are those of 1900-01-01.
    if (kind == 'D' && type.kind == Kind::time) {
        return "orven.ts_datetime(" + text + ", 'time', 'datetime')";
    }
    const bool bare = operand.kind == ExpressionKind::literal || operand.kind == ExpressionKind::column;
    switch (kind) {
        case 'f':
            return type.kind == Kind::floating ? text : castTo(text, "double precision");
        case 'i':
        case 't':
            return text;
        default:
            return bare && (type.kind == Kind::datetime || type.kind == Kind::bigint || type.kind == Kind::floating)
                       ? text
                       : widened(text, type);
    }
}

std::string PostgresEmitter::argumentsOf(const Expression& call) {
    const FunctionInfo* function = findFunction(call.name);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < call.operands.size(); ++i) {
        const std::string_view kinds = function->arguments;
        const char kind = kinds[std::min(i, kinds.size() - 1)];
        const std::string text = argument(*call.operands[i], call.name == "eomonth" && kind == 'd' ? 'D' : kind);
        texts.push_back(i == 0 ? waiting(call, text) : text);
    }
    return joined(texts);
}

std::string PostgresEmitter::function(const Expression& call) {
    if (call.aggregate) {
        return aggregate(call);
    }
    const std::string own = builtin(call);
    if (!own.empty()) {
        return own;
    }
    const std::string& name = call.name;
    std::string arguments = argumentsOf(call);
    if (!call.part.empty()) {
        arguments = quoteText(call.part) + ", " + arguments;
    }
    if (name == "datalength" || name == "power") {
        arguments += ", " + quoteText(printType(call.operands[0]->type));
    }
    const std::string text = "orven.ts_" + (name == "sysdatetime" ? "getdate" : name) + "(" + arguments + ")";
    // What is of the argument's own type was called in the widest of its family.
    const bool narrowed = (name == "round" || name == "power") &&
                          ((call.type.isInteger() && call.type.kind != Kind::bigint) || call.type.kind == Kind::real);
    return narrowed ? castTo(text, nativeType(call.type)) : text;
}

std::string PostgresEmitter::builtin(const Expression& call) {
    const std::string& name = call.name;
    const std::string shared = sharedFunction(call, "coalesce");
    if (!shared.empty()) {
        return shared;
    }
    if (name == "ltrim" || name == "rtrim" || name == "concat") {
        return name + "(" + arguments(call) + ")";
    }
    if (name == "trim") {
        return "btrim(" + arguments(call) + ")";
    }
    if (name == "year" || name == "month" || name == "day") {
        return castTo("extract(" + name + " FROM " + argument(*call.operands[0], 'D') + ")", "integer");
    }
    if (name == "square") {
        const std::string operand = argument(*call.operands[0], 'f');
        return "(" + operand + " * " + operand + ")";
    }
    if (name == "abs") {
        return castTo("abs(" + arguments(call) + ")", nativeType(call.type));
    }
    if (name == "sign") {
        return castTo("sign(" + arguments(call) + ")", nativeType(call.type));
    }
    if (name == "floor" || name == "ceiling") {
        const std::string operand = arguments(call);
        return call.type.isInteger() ? castTo(operand, nativeType(call.type))
                                     : (name == "floor" ? "floor(" : "ceil(") + operand + ")";
    }
    if (name == "round" && call.operands.size() == 2 && call.type.isDecimal()) {
        return "round(" + value(*call.operands[0]) + ", " + castTo(value(*call.operands[1]), "integer") + ")";
    }
    return "";
}

std::string PostgresEmitter::aggregate(const Expression& call) {
    if (call.star) {
        return "count(*)";
    }
    // What is aggregated is of the rows and not of the group.
    Groups none;
    groups_.swap(none);
    const std::string key = groupKey(*call.operands[0]);
    const std::string operand = value(*call.operands[0]);
    groups_.swap(none);
    const std::string distinct = call.distinct ? "DISTINCT " : "";
    // count(distinct fname) counts what compares as different.
    if (call.name == "count" || call.name == "count_big") {
        return "count(" + (call.distinct ? distinct + key : operand) + ")";
    }
    if (call.name == "min" || call.name == "max") {
        if (call.type.isBinary()) {
            return "decode(" + call.name + "(encode(" + operand + ", 'hex') COLLATE \"C\"), 'hex')";
        }
        return (call.type.isText() ? "orven.ts_" : "") + call.name + "(" + operand + ")";
    }
    const Type& type = call.operands[0]->type;
    const std::string summand = type.kind == Kind::real ? castTo(operand, "double precision") : operand;
    const std::string sum = "sum(" + distinct + summand + ")";
    const std::string count = "count(" + distinct + operand + ")";
    if (call.name == "sum") {
        return call.type.isFloat() ? sum : castTo(sum, nativeColumnType(call.type));
    }
    if (call.name == "avg") {
        if (call.type.isFloat()) {
            return "avg(" + distinct + summand + ")";
        }
        return call.type.isInteger()
                   ? castTo("div(" + sum + ", " + count + ")", nativeType(call.type))
                   : "orven.ts_decdiv(" + sum + ", " + count + ", " + std::to_string(call.type.precision) + ", " +
                         std::to_string(call.type.scale) + ")";
    }
    const char* own = call.name == "stdev"    ? "stddev_samp("
                      : call.name == "stdevp" ? "stddev_pop("
                      : call.name == "var"    ? "var_samp("
                                              : "var_pop(";
    return own + distinct + castTo(operand, "double precision") + ")";
}

}  // namespace orvenmod::store::tsql
