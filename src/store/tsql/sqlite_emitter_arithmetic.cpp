// Values and conditions.
//
// SQLite's numbers have no types: an int grows beyond its range, a decimal has no scale, and a division by zero is
// null. Where the server would fail or round, the shared way calls a function that does the same:
//
//   fitemid+1       ts_range(("tblItem"."fitemid" + ?1), 'int')               8115 beyond int
//   fprice/3        ts_decdiv("tblItem"."fprice", ?1, 20, 6)                  six decimals, 8134
//   fprice+1        ts_decadd("tblItem"."fprice", ?1, 19, 4)                  all of its digits
//   fdate+1         ts_dateadd('day', (?1), "tblItem"."fdate")
//
// The stored way gives that up, so that the plain shell can read it: ("tblItem"."fprice" * 1.0 / 3).
#include "store/tsql/sqlite_emitter.h"

namespace orvenmod::store::tsql {

std::string SqliteEmitter::integerArithmetic(const Expression& expression, const std::string& left,
                                             const std::string& right) {
    const std::string plain = "(" + left + " " + spelling(expression.op) + " " + right + ")";
    switch (expression.op) {
        case Operator::divide:
            return stored_ ? plain : "ts_idiv(" + left + ", " + right + ")";
        case Operator::modulo:
            return stored_ ? plain : "ts_imod(" + left + ", " + right + ")";
        case Operator::bitAnd:
        case Operator::bitOr:
            return plain;
        // SQLite has no sign for it.
        case Operator::bitXor:
            return "((" + left + " | " + right + ") - (" + left + " & " + right + "))";
        default:
            return stored_ ? plain : "ts_range(" + plain + ", " + quoteText(printType(expression.type)) + ")";
    }
}

std::string sized(const std::string& function, const std::string& arguments, const Type& type) {
    return function + "(" + arguments + ", " + std::to_string(type.precision) + ", " + std::to_string(type.scale) + ")";
}

std::string SqliteEmitter::decimalArithmetic(const Expression& expression, const std::string& left,
                                             const std::string& right) {
    const std::string plain = "(" + left + " " + spelling(expression.op) + " " + right + ")";
    const std::string both = left + ", " + right;
    if (expression.op == Operator::modulo) {
        return "ts_decmod(" + both + ")";
    }
    if (expression.op == Operator::divide) {
        // Two decimals that are whole are integers to SQLite, which would divide them as such.
        return stored_ ? "(" + left + " * 1.0 / " + right + ")" : sized("ts_decdiv", both, expression.type);
    }
    if (stored_) {
        return plain;
    }
    if (!expression.type.isWideDecimal()) {
        return sized("ts_decimal", plain, expression.type);
    }
    const char* name = expression.op == Operator::multiply   ? "ts_decmul"
                       : expression.op == Operator::subtract ? "ts_decsub"
                                                             : "ts_decadd";
    return sized(name, both, expression.type);
}

std::string SqliteEmitter::unary(const Expression& expression) {
    if (expression.op != Operator::negate || !expression.type.isWideDecimal()) {
        return Emitter::unary(expression);
    }
    const std::string operand = value(*expression.operands[0]);
    if (!stored_) {
        return sized("ts_decsub", "0, " + operand, expression.type);
    }
    // A literal that is kept as a text keeps its digits.
    const bool text = expression.operands[0]->kind == ExpressionKind::literal && operand.starts_with('\'');
    return text ? "'-" + operand.substr(1) : "(- " + operand + ")";
}

std::string SqliteEmitter::floatArithmetic(const Expression& expression, const std::string& left,
                                           const std::string& right) {
    if (expression.op == Operator::divide) {
        return stored_ ? "(" + left + " * 1.0 / " + right + ")" : "ts_div(" + left + ", " + right + ")";
    }
    return "(" + left + " " + spelling(expression.op) + " " + right + ")";
}

/// A date and whole days go through dateadd, anything else through the days since 1900 as a float.
std::string SqliteEmitter::dateArithmetic(const Expression& expression) {
    const Expression& left = *expression.operands[0];
    const Expression& right = *expression.operands[1];
    const bool minus = expression.op == Operator::subtract;
    if (left.type.isDate() && right.type.isInteger()) {
        return "ts_dateadd('day', " + std::string(minus ? "-" : "") + "(" + value(right) + "), " + value(left) + ")";
    }
    if (right.type.isDate() && left.type.isInteger() && !minus) {
        return "ts_dateadd('day', " + value(left) + ", " + value(right) + ")";
    }
    const auto days = [this](const Expression& side) {
        return "ts_cast(" + value(side) + ", " + quoteText(printType(side.type)) + ", 'float')";
    };
    return "ts_cast((" + days(left) + (minus ? " - " : " + ") + days(right) + "), 'float', " +
           quoteText(printType(expression.type)) + ")";
}

}  // namespace orvenmod::store::tsql
