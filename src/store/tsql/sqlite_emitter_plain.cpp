// The forms that stay in the database: SQLite's own functions where the server's have a counterpart. What is given up
// is only the failure of a division by zero or an overflow, which become null or a wider number.
//
//   convert(varchar(10),fdate,120)     substr("tblItem"."fdate", 1, 10)
//   fname like 'a%'                    (rtrim("tblItem"."fname") LIKE 'a%')
//   fname like '[ab]%'                 (ts_like("tblItem"."fname", '[ab]%')): nothing of SQLite's own will do
#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {

std::string SqliteEmitter::storedFunction(const Expression& call) {
    const auto operand = [&](std::size_t i) { return value(*call.operands[i]); };
    const std::string& name = call.name;
    if (name == "upper" || name == "lower" || name == "abs" || name == "replace") {
        return name == "replace" ? "" : name + "(" + arguments(call) + ")";
    }
    if (name == "left") {
        return "substr(" + operand(0) + ", 1, " + operand(1) + ")";
    }
    if (name == "right") {
        return "substr(" + operand(0) + ", max(1, length(" + operand(0) + ") - " + operand(1) + " + 1))";
    }
    if (name == "substring") {
        return "substr(" + arguments(call) + ")";
    }
    if (name == "charindex" && call.operands.size() == 2) {
        return "instr(lower(" + operand(1) + "), lower(" + operand(0) + "))";
    }
    if (name == "space") {
        return "printf('%*s', " + operand(0) + ", '')";
    }
    if (name == "round" && call.operands.size() == 2 && !call.type.isInteger() &&
        call.operands[1]->kind == ExpressionKind::literal) {
        return "round(" + arguments(call) + ")";
    }
    if (name == "sign") {
        return "((" + operand(0) + " > 0) - (" + operand(0) + " < 0))";
    }
    if (name == "floor" || name == "ceiling") {
        const std::string whole = "CAST(" + operand(0) + " AS INTEGER)";
        return name == "floor" ? "(" + whole + " - (" + operand(0) + " < " + whole + "))"
                               : "(" + whole + " + (" + operand(0) + " > " + whole + "))";
    }
    return storedDateFunction(call);
}

std::string SqliteEmitter::storedDateFunction(const Expression& call) {
    if (call.name == "getdate" || call.name == "sysdatetime") {
        return "datetime('now', 'localtime')";
    }
    if (call.name == "getutcdate") {
        return "datetime('now')";
    }
    const bool simple = call.part == "day" || call.part == "month" || call.part == "year" || call.part == "hour" ||
                        call.part == "minute" || call.part == "second";
    if (call.name == "dateadd" && simple && call.part != "month" && call.part != "year") {
        return "datetime(" + value(*call.operands[1]) + ", " + value(*call.operands[0]) + " || ' " + call.part + "s')";
    }
    if (call.name == "datediff" && call.part == "day") {
        return "CAST(julianday(date(" + value(*call.operands[1]) + ")) - julianday(date(" + value(*call.operands[0]) +
               ")) AS INTEGER)";
    }
    if (call.name == "datepart" && simple) {
        const char* format = call.part == "year"     ? "%Y"
                             : call.part == "month"  ? "%m"
                             : call.part == "day"    ? "%d"
                             : call.part == "hour"   ? "%H"
                             : call.part == "minute" ? "%M"
                                                     : "%S";
        return "CAST(strftime('" + std::string(format) + "', " + arguments(call) + ") AS INTEGER)";
    }
    return "";
}

std::string SqliteEmitter::storedConversion(const std::string& inner, const Type& from, const Type& to) {
    if (from.isInteger() && to.isText() && (to.length < 0 || to.length >= 20) && to.kind != Kind::character &&
        to.kind != Kind::nchar) {
        return "CAST(" + inner + " AS TEXT)";
    }
    if (from.isInteger() && to.isText() && from.kind == Kind::integer && to.length >= 11 && to.kind == Kind::varchar) {
        return "CAST(" + inner + " AS TEXT)";
    }
    if (from.isNumber() && to.isInteger()) {
        return "CAST(" + inner + " AS INTEGER)";
    }
    if (from.isNumber() && to.isDecimal()) {
        return "round(" + inner + ", " + std::to_string(to.scale) + ")";
    }
    if (from.isText() && to.isNationalText() && to.kind == Kind::nvarchar) {
        return "substr(" + inner + ", 1, " + std::to_string(to.length) + ")";
    }
    return "";
}

/// convert(varchar(n), date, style) in the styles that are a piece of the stored text.
std::string SqliteEmitter::storedStyle(const Expression& cast) {
    const Expression& style = *cast.operands[1];
    const Type& to = cast.type;
    if (!cast.operands[0]->type.isDate() || !to.isText() || style.kind != ExpressionKind::literal || cast.attempt) {
        return "";
    }
    const std::string number = literals_[static_cast<std::size_t>(style.literal)].value();
    const std::string text = value(*cast.operands[0]);
    if (number == "120" && to.length >= 10) {
        return "substr(" + text + ", 1, " + std::to_string(std::min(to.length, 19)) + ")";
    }
    if (number == "23" && to.length >= 10) {
        return "substr(" + text + ", 1, 10)";
    }
    if (number == "112" && to.length >= 8) {
        return "replace(substr(" + text + ", 1, 10), '-', '')";
    }
    return "";
}

/// A pattern without brackets means the same to SQLite's LIKE.
std::string SqliteEmitter::storedLike(const Expression& expression) {
    const Expression& pattern = *expression.operands[1];
    if (expression.operands.size() > 2 || pattern.kind != ExpressionKind::literal) {
        return "";
    }
    const std::string text = literals_[static_cast<std::size_t>(pattern.literal)].value();
    if (text.find('[') != std::string::npos || text.ends_with(' ')) {
        return "";
    }
    return "(rtrim(" + value(*expression.operands[0]) + (expression.negated ? ") NOT LIKE " : ") LIKE ") +
           quoteText(text) + ")";
}

}  // namespace orvenmod::store::tsql
