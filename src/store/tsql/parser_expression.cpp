// Expressions, a routine a level of precedence; each reads the next tighter one and then its own operators from the
// left.
//
//   or            parseCondition
//   and           parseConjunction
//   not           parseNegation
//   = like in ..  parsePredicate      does not repeat: a = b = c is no expression
//   + - & | ^     parseSum
//   * / %         parseProduct
//   - + ~         parseUnary
//   literal, name, (..), case, f(..)  parsePrimary
//
// A value stands at parseSum. That a bracket opens a condition, a value or a query shows only within, so parseBracket
// reads the widest, and the binder refuses a condition where a value belongs.
#include <array>

#include "store/tsql/error.h"
#include "store/tsql/parser.h"

namespace orvenmod::store::tsql {
namespace {

struct Comparison {
    std::string_view symbol;
    Operator op;
};

constexpr std::array kComparisons = {Comparison{"=", Operator::equal},        Comparison{"<>", Operator::notEqual},
                                     Comparison{"!=", Operator::notEqual},    Comparison{"<", Operator::less},
                                     Comparison{"<=", Operator::lessEqual},   Comparison{"!>", Operator::lessEqual},
                                     Comparison{">", Operator::greater},      Comparison{">=", Operator::greaterEqual},
                                     Comparison{"!<", Operator::greaterEqual}};

constexpr std::array kSums = {Comparison{"+", Operator::add}, Comparison{"-", Operator::subtract},
                              Comparison{"&", Operator::bitAnd}, Comparison{"|", Operator::bitOr},
                              Comparison{"^", Operator::bitXor}};

constexpr std::array kProducts = {Comparison{"*", Operator::multiply}, Comparison{"/", Operator::divide},
                                  Comparison{"%", Operator::modulo}};

template <std::size_t count>
Operator operatorOf(const Token& token, const std::array<Comparison, count>& known) {
    for (const Comparison& entry : known) {
        if (token.isSymbol(entry.symbol)) {
            return entry.op;
        }
    }
    return Operator::none;
}

ExpressionPtr binary(ExpressionKind kind, Operator op, ExpressionPtr left, ExpressionPtr right) {
    ExpressionPtr result = makeExpression(kind);
    result->op = op;
    result->operands.push_back(std::move(left));
    result->operands.push_back(std::move(right));
    return result;
}

bool isDateFunction(std::string_view name) {
    return name == "dateadd" || name == "datediff" || name == "datepart" || name == "datename";
}

}  // namespace

ExpressionPtr Parser::parseCondition() {
    ExpressionPtr left = parseConjunction();
    while (takeWord("or")) {
        left = binary(ExpressionKind::logical, Operator::logicalOr, std::move(left), parseConjunction());
    }
    return left;
}

ExpressionPtr Parser::parseConjunction() {
    ExpressionPtr left = parseNegation();
    while (takeWord("and")) {
        left = binary(ExpressionKind::logical, Operator::logicalAnd, std::move(left), parseNegation());
    }
    return left;
}

ExpressionPtr Parser::parseNegation() {
    if (!takeWord("not")) {
        return parsePredicate();
    }
    ExpressionPtr result = makeExpression(ExpressionKind::logical);
    result->op = Operator::logicalNot;
    result->operands.push_back(parseNegation());
    return result;
}

ExpressionPtr Parser::parsePredicate() {
    if (takeWord("exists")) {
        ExpressionPtr result = makeExpression(ExpressionKind::exists);
        expectSymbol("(");
        result->query = parseOrderedQuery();
        expectSymbol(")");
        return result;
    }
    ExpressionPtr left = parseSum();
    if (operatorOf(peek(), kComparisons) != Operator::none) {
        return parseComparison(std::move(left));
    }
    if (takeWord("is")) {
        ExpressionPtr result = makeExpression(ExpressionKind::isNull);
        result->negated = takeWord("not");
        expectWord("null");
        result->operands.push_back(std::move(left));
        return result;
    }
    const bool negated = takeWord("not");
    if (takeWord("like")) {
        return parseLike(std::move(left), negated);
    }
    if (takeWord("in")) {
        return parseIn(std::move(left), negated);
    }
    if (takeWord("between")) {
        return parseBetween(std::move(left), negated);
    }
    if (negated) {
        fail();
    }
    return left;
}

ExpressionPtr Parser::parseComparison(ExpressionPtr left) {
    const Operator op = operatorOf(take(), kComparisons);
    const bool any = peek().isWord("any") || peek().isWord("some");
    if (!any && !peek().isWord("all")) {
        return binary(ExpressionKind::comparison, op, std::move(left), parseSum());
    }
    take();
    ExpressionPtr result = makeExpression(ExpressionKind::quantified);
    result->op = op;
    result->all = !any;
    result->operands.push_back(std::move(left));
    expectSymbol("(");
    result->query = parseOrderedQuery();
    expectSymbol(")");
    return result;
}

ExpressionPtr Parser::parseLike(ExpressionPtr left, bool negated) {
    ExpressionPtr result = binary(ExpressionKind::like, Operator::none, std::move(left), parseSum());
    result->negated = negated;
    if (takeWord("escape")) {
        result->operands.push_back(parseSum());
    }
    return result;
}

ExpressionPtr Parser::parseIn(ExpressionPtr left, bool negated) {
    expectSymbol("(");
    ExpressionPtr result = makeExpression(ExpressionKind::inList);
    result->negated = negated;
    result->operands.push_back(std::move(left));
    if (peek().isWord("select") || atBracketedCompound()) {
        result->kind = ExpressionKind::inQuery;
        result->query = parseOrderedQuery();
        expectSymbol(")");
        return result;
    }
    do {
        result->operands.push_back(parseSum());
    } while (takeSymbol(","));
    expectSymbol(")");
    // x in ((select ..)): a query in two brackets is one all the same.
    if (result->operands.size() == 2 && result->operands[1]->kind == ExpressionKind::subquery) {
        result->kind = ExpressionKind::inQuery;
        result->query = std::move(result->operands[1]->query);
        result->operands.pop_back();
    }
    return result;
}

/// Whether a bracket opens the first part of a union: (select ..) union ..
bool Parser::atBracketedCompound() const {
    if (!peek().isSymbol("(")) {
        return false;
    }
    std::size_t ahead = 0;
    int open = 0;
    do {
        open += peek(ahead).isSymbol("(") ? 1 : peek(ahead).isSymbol(")") ? -1 : 0;
        ++ahead;
    } while (open > 0 && peek(ahead).kind != Token::Kind::end);
    return peek(ahead).isWord("union") || peek(ahead).isWord("except") || peek(ahead).isWord("intersect");
}

ExpressionPtr Parser::parseBetween(ExpressionPtr left, bool negated) {
    ExpressionPtr result = binary(ExpressionKind::between, Operator::none, std::move(left), parseSum());
    result->negated = negated;
    expectWord("and");
    result->operands.push_back(parseSum());
    return result;
}

ExpressionPtr Parser::parseSum() {
    ExpressionPtr left = parseProduct();
    for (Operator op = operatorOf(peek(), kSums); op != Operator::none; op = operatorOf(peek(), kSums)) {
        take();
        left = binary(ExpressionKind::arithmetic, op, std::move(left), parseProduct());
    }
    return left;
}

ExpressionPtr Parser::parseProduct() {
    ExpressionPtr left = parseUnary();
    for (Operator op = operatorOf(peek(), kProducts); op != Operator::none; op = operatorOf(peek(), kProducts)) {
        take();
        left = binary(ExpressionKind::arithmetic, op, std::move(left), parseUnary());
    }
    return left;
}

ExpressionPtr Parser::parseUnary() {
    Operator op = Operator::none;
    if (peek().isSymbol("-")) {
        op = Operator::negate;
    } else if (peek().isSymbol("+")) {
        op = Operator::plus;
    } else if (peek().isSymbol("~")) {
        op = Operator::bitNot;
    } else {
        ExpressionPtr primary = parsePrimary();
        skipCollation();
        return primary;
    }
    take();
    if (++depth_ > kDeepest) {
        throw Error(kNotSupported, {"a statement nested this deep"});
    }
    ExpressionPtr result = makeExpression(ExpressionKind::unary);
    result->op = op;
    result->operands.push_back(parseUnary());
    --depth_;
    return result;
}

/// Texts compare without regard to case anyway; another collation is not to be had.
void Parser::skipCollation() {
    if (!takeWord("collate")) {
        return;
    }
    const std::string collation = lowerName(takeName());
    if (collation.find("_ci_") == std::string::npos && collation != "database_default") {
        throw Error(kNotSupported, {"collate " + collation});
    }
}

ExpressionPtr Parser::parsePrimary() {
    const Token& token = peek();
    if (token.kind == Token::Kind::literal) {
        ExpressionPtr result = makeExpression(ExpressionKind::literal);
        result->literal = literalOfToken_[at_];
        take();
        return result;
    }
    if (token.isSymbol("(")) {
        return parseBracket();
    }
    if (takeWord("null")) {
        return makeExpression(ExpressionKind::null);
    }
    if (takeWord("case")) {
        return parseCase();
    }
    if (takeWord("current_timestamp")) {
        ExpressionPtr result = makeExpression(ExpressionKind::function);
        result->name = "getdate";
        return result;
    }
    if (token.kind == Token::Kind::variable) {
        throw Error(token.text.starts_with("@@") ? kNotSupported : kUndeclaredVariable, {std::string(token.text)});
    }
    if (token.kind == Token::Kind::word && peek(1).isSymbol("(")) {
        return parseFunction();
    }
    return parseColumn();
}

ExpressionPtr Parser::parseBracket() {
    expectSymbol("(");
    if (++depth_ > kDeepest) {
        throw Error(kNotSupported, {"a statement nested this deep"});
    }
    ExpressionPtr result;
    if (peek().isWord("select") || atBracketedCompound()) {
        result = makeExpression(ExpressionKind::subquery);
        result->query = parseOrderedQuery();
    } else {
        result = parseCondition();
    }
    expectSymbol(")");
    --depth_;
    return result;
}

ExpressionPtr Parser::parseCase() {
    ExpressionPtr result = makeExpression(ExpressionKind::caseWhen);
    ExpressionPtr base;
    if (!peek().isWord("when")) {
        base = parseSum();
    }
    do {
        expectWord("when");
        // case x when 1 .. is case when x=1 .., so that the binder knows one form.
        if (base) {
            result->operands.push_back(binary(ExpressionKind::comparison, Operator::equal, clone(*base), parseSum()));
        } else {
            result->operands.push_back(parseCondition());
        }
        expectWord("then");
        result->operands.push_back(parseSum());
    } while (peek().isWord("when"));
    result->operands.push_back(takeWord("else") ? parseSum() : nullptr);
    expectWord("end");
    return result;
}

ExpressionPtr Parser::parseCast(const std::string& word) {
    ExpressionPtr result = makeExpression(ExpressionKind::cast);
    result->attempt = word == "try_cast";
    expectSymbol("(");
    result->operands.push_back(parseSum());
    expectWord("as");
    result->target = parseTypeName(nullptr);
    expectSymbol(")");
    return result;
}

ExpressionPtr Parser::parseConvert(const std::string& word) {
    ExpressionPtr result = makeExpression(ExpressionKind::cast);
    result->attempt = word == "try_convert";
    expectSymbol("(");
    result->target = parseTypeName(nullptr);
    expectSymbol(",");
    result->operands.push_back(parseSum());
    if (takeSymbol(",")) {
        result->operands.push_back(parseSum());
    }
    expectSymbol(")");
    return result;
}

ExpressionPtr Parser::parseFunction() {
    const std::string name = lowerName(peek().text);
    // The dialect reserves the words of these functions.
    const bool plainWord = name == "left" || name == "right" || name == "coalesce" || name == "nullif" ||
                           name == "convert" || name == "try_convert" || !isReservedWord(name);
    if (!plainWord) {
        fail();
    }
    take();
    if (name == "cast" || name == "try_cast") {
        return parseCast(name);
    }
    if (name == "convert" || name == "try_convert") {
        return parseConvert(name);
    }
    ExpressionPtr result = makeExpression(ExpressionKind::function);
    result->name = name;
    expectSymbol("(");
    if (isDateFunction(name)) {
        if (!isName()) {
            fail();
        }
        result->part = lowerName(takeName());
        expectSymbol(",");
    }
    if (takeSymbol("*")) {
        result->star = true;
    } else if (!peek().isSymbol(")")) {
        result->distinct = takeWord("distinct");
        if (!result->distinct) {
            takeWord("all");
        }
        do {
            // iif's first argument is a condition.
            result->operands.push_back(name == "iif" && result->operands.empty() ? parseCondition() : parseSum());
        } while (takeSymbol(","));
    }
    expectSymbol(")");
    if (peek().isWord("over")) {
        throw Error(kNotSupported, {"over"});
    }
    return result;
}

ExpressionPtr Parser::parseColumn() {
    ExpressionPtr result = makeExpression(ExpressionKind::column);
    result->name = takeName();
    while (takeSymbol(".")) {
        result->qualifier = std::exchange(result->name, peek().isSymbol(".") ? std::string("dbo") : takeName());
    }
    if (peek().isSymbol("(")) {
        throw Error(kUnknownFunction, {result->qualifier + "." + result->name});
    }
    return result;
}

/// `declared` takes the type as written, without blanks before its brackets. Throws Error 243 for no type.
Type Parser::parseTypeName(std::string* declared) {
    std::string text = takeName();
    if (sameName(text, "double") && takeWord("precision")) {
        text = "float";
    }
    if (takeSymbol("(")) {
        text += "(";
        while (!peek().isSymbol(")")) {
            if (peek().kind != Token::Kind::literal && !peek().isWord("max") && !peek().isSymbol(",")) {
                fail();
            }
            text += take().text;
        }
        take();
        text += ")";
    }
    if (declared == nullptr && text.find('(') == std::string::npos) {
        // In a cast, a text without a length has 30; in a column's definition it has 1.
        const auto plain = parseType(text + "(30)");
        if (plain && plain->length == 30) {
            return *plain;
        }
    }
    const auto type = parseType(text);
    if (!type) {
        const std::string name = text.substr(0, text.find('('));
        if (parseType(name) && text != name) {
            throw Error(kWidthNotAllowed, {"1", text});
        }
        throw Error(declared != nullptr ? kUnknownType : kUnknownCastType, {name});
    }
    if (declared != nullptr) {
        *declared = text;
    }
    return *type;
}

}  // namespace orvenmod::store::tsql
