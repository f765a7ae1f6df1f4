// Two readers need the same tokens: the shape scanner, which sees every statement and only wants its literals, and the
// parser, which sees a shape once. If they disagreed about one literal, every later statement of the shape would bind
// the wrong value. So one lexer serves both, and skipPlain() is all that the scanner has for itself.
//
// The hard case is a minus. Behind a sign it belongs to the number, so that values(-3) is one literal and no sum;
// behind a name or a number it subtracts.
//
//   b=-3     literal -3        a-3      symbol -, literal 3
//   (-3)     literal -3        4-3      literal 4, symbol -, literal 3
#include "store/tsql/lexer.h"

#include <array>

#include "store/text.h"
#include "store/tsql/error.h"

namespace orvenmod::store::tsql {
namespace {

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

constexpr bool isWordStart(char c) {
    return (asciiLower(c) >= 'a' && asciiLower(c) <= 'z') || c == '_' || c == '#' ||
           static_cast<unsigned char>(c) >= 0x80;
}

// U+3000, the blank of Chinese input methods, separates words as a blank does.
constexpr std::string_view kWideBlank = "\xE3\x80\x80";

// Most of a statement is words, so that their bytes are looked up in a table. A byte that may begin a wide blank isn't
// among them.
constexpr std::array<bool, 256> kPlainWordBytes = [] {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0; byte < plain.size(); ++byte) {
        const char c = static_cast<char>(byte);
        plain[byte] = (isWordStart(c) || isDigit(c) || c == '@' || c == '$') && c != kWideBlank[0];
    }
    return plain;
}();

// Whether a bare word begins there, and no text as in N'...'.
bool isWord(std::string_view sql, std::size_t position) {
    const char c = sql[position];
    return isWordStart(c) && !(asciiLower(c) == 'n' && position + 1 < sql.size() && sql[position + 1] == '\'');
}

bool isHexDigit(char c) { return isDigit(c) || (asciiLower(c) >= 'a' && asciiLower(c) <= 'f'); }

}  // namespace

bool sameName(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) {
        return false;
    }
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (asciiLower(left[i]) != asciiLower(right[i])) {
            return false;
        }
    }
    return true;
}

std::string lowerName(std::string_view name) { return asciiLower(name); }

bool Token::isWord(std::string_view lowerCase) const { return kind == Kind::word && sameName(text, lowerCase); }

std::string Token::name() const {
    if (kind != Kind::quotedName) {
        return std::string(text);
    }
    const char closing = text.back();
    std::string result;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        result += text[i];
        if (text[i] == closing) {
            ++i;
        }
    }
    return result;
}

void Lexer::skipBlanks() {
    while (at_ < sql_.size()) {
        if (isBlank(sql_[at_])) {
            ++at_;
        } else if (sql_[at_] == kWideBlank[0] && startsWideBlank(at_)) {
            at_ += kWideBlank.size();
        } else {
            return;
        }
    }
}

bool Lexer::startsWideBlank(std::size_t position) const {
    return sql_.substr(position, kWideBlank.size()) == kWideBlank;
}

bool Lexer::startsNumber(std::size_t position) const {
    return isDigit(at(position)) || (at(position) == '.' && isDigit(at(position + 1)));
}

void Lexer::finish(Token& token) {
    token.text = sql_.substr(token.offset, at_ - token.offset);
    // A bracket that closes ends a value, and a point stands within a name.
    signMayFollow_ = token.kind == Token::Kind::symbol && token.text[0] != ')' && token.text[0] != '.';
}

Token Lexer::next() {
    skipBlanks();
    const std::size_t start = at_;
    const char c = at(start);
    if (start >= sql_.size()) {
        Token end;
        end.offset = start;
        return end;
    }
    if (isDigit(c) && c == '0' && asciiLower(at(start + 1)) == 'x') {
        return binaryToken(start);
    }
    if (startsNumber(start) || (c == '-' && signMayFollow_ && startsNumber(start + 1))) {
        return numberToken(start);
    }
    if (c == '\'') {
        return textToken(start, LiteralKind::text);
    }
    if (isWord(sql_, start)) {
        return wordToken(start, Token::Kind::word);
    }
    if (isWordStart(c)) {
        return textToken(start, LiteralKind::nationalText);
    }
    if (c == '[' || c == '"') {
        return nameToken(start, c == '[' ? ']' : '"');
    }
    if (c == '$') {
        return moneyToken(start);
    }
    if (c == '@') {
        return wordToken(start, Token::Kind::variable);
    }
    return symbolToken(start);
}

Token Lexer::numberToken(std::size_t start) {
    Token token;
    token.kind = Token::Kind::literal;
    token.offset = start;
    std::size_t position = start + (sql_[start] == '-' ? 1U : 0U);
    // Zeros in front are no digits of the type: 0.50 is a decimal(2,2).
    std::size_t significant = position;
    while (at(significant) == '0') {
        ++significant;
    }
    while (isDigit(at(position))) {
        ++position;
    }
    int whole = static_cast<int>(position > significant ? position - significant : 0);
    Literal& literal = token.literal;
    literal.kind = LiteralKind::integer;
    if (at(position) == '.') {
        const std::size_t point = position++;
        while (isDigit(at(position))) {
            ++position;
        }
        literal.kind = LiteralKind::decimal;
        literal.scale = static_cast<int>(position - point - 1);
    } else {
        // Ten digits compare as their numbers do.
        const std::string_view digits = sql_.substr(significant, static_cast<std::size_t>(whole));
        if (whole > 10 || (whole == 10 && digits > "2147483647")) {
            literal.kind = LiteralKind::decimal;
        }
    }
    const std::size_t exponent = position + (at(position + 1) == '+' || at(position + 1) == '-' ? 2U : 1U);
    if (asciiLower(at(position)) == 'e' && isDigit(at(exponent))) {
        literal.kind = LiteralKind::real;
        for (position = exponent; isDigit(at(position));) {
            ++position;
        }
    }
    literal.precision = whole + literal.scale > 0 ? whole + literal.scale : 1;
    if (literal.kind == LiteralKind::decimal && literal.precision > 38) {
        throw Error(kNumberTooLong, {std::string(sql_.substr(start, position - start))});
    }
    at_ = position;
    literal.text = sql_.substr(start, position - start);
    literal.offset = start;
    finish(token);
    return token;
}

Token Lexer::textToken(std::size_t start, LiteralKind kind) {
    Token token;
    token.kind = Token::Kind::literal;
    token.offset = start;
    token.literal.kind = kind;
    token.literal.offset = start;
    const std::size_t first = start + (kind == LiteralKind::nationalText ? 2U : 1U);
    std::size_t position = first;
    while (true) {
        position = sql_.find('\'', position);
        if (position == std::string_view::npos) {
            throw Error(kUnclosedQuote, {std::string(sql_.substr(first))});
        }
        if (at(position + 1) != '\'') {
            break;
        }
        token.literal.doubledQuotes = true;
        position += 2;
    }
    token.literal.text = sql_.substr(first, position - first);
    at_ = position + 1;
    finish(token);
    return token;
}

Token Lexer::binaryToken(std::size_t start) {
    Token token;
    token.kind = Token::Kind::literal;
    token.offset = start;
    at_ = start + 2;
    while (isHexDigit(at(at_))) {
        ++at_;
    }
    token.literal.kind = LiteralKind::binary;
    token.literal.offset = start;
    token.literal.text = sql_.substr(start + 2, at_ - start - 2);
    finish(token);
    return token;
}

Token Lexer::moneyToken(std::size_t start) {
    Token token;
    token.kind = Token::Kind::literal;
    token.offset = start;
    at_ = start + 1 + (at(start + 1) == '-' ? 1U : 0U);
    while (isDigit(at(at_)) || at(at_) == '.') {
        ++at_;
    }
    token.literal.kind = LiteralKind::money;
    token.literal.offset = start;
    token.literal.text = sql_.substr(start + 1, at_ - start - 1);
    finish(token);
    return token;
}

Token Lexer::nameToken(std::size_t start, char closing) {
    std::size_t position = start + 1;
    while (true) {
        position = sql_.find(closing, position);
        if (position == std::string_view::npos) {
            throw Error(kUnclosedQuote, {std::string(sql_.substr(start + 1))});
        }
        if (at(position + 1) != closing) {
            break;
        }
        position += 2;
    }
    Token token;
    token.kind = Token::Kind::quotedName;
    token.offset = start;
    at_ = position + 1;
    if (at_ - start == 2) {
        throw Error(kEmptyName);
    }
    finish(token);
    return token;
}

void Lexer::skipWord() {
    for (++at_; at_ < sql_.size(); ++at_) {
        const char c = sql_[at_];
        if (!kPlainWordBytes[static_cast<unsigned char>(c)] && (c != kWideBlank[0] || startsWideBlank(at_))) return;
    }
}

void Lexer::skipPlain() {
    while (at_ < sql_.size()) {
        const char c = sql_[at_];
        if (isBlank(c)) {
            ++at_;
        } else if (c == '=' || c == ',' || c == '(') {
            ++at_;
            signMayFollow_ = true;
        } else if (kPlainWordBytes[static_cast<unsigned char>(c)] && isWord(sql_, at_)) {
            skipWord();
            signMayFollow_ = false;
        } else {
            return;
        }
    }
}

Token Lexer::wordToken(std::size_t start, Token::Kind kind) {
    Token token;
    token.kind = kind;
    token.offset = start;
    skipWord();
    finish(token);
    return token;
}

Token Lexer::symbolToken(std::size_t start) {
    Token token;
    token.kind = Token::Kind::symbol;
    token.offset = start;
    const char c = sql_[start];
    if (std::string_view("=(),.+*%&|^~").find(c) != std::string_view::npos) {
        at_ = start + 1;
        finish(token);
        return token;
    }
    if (c == ';') {
        at_ = start + 1;
        skipBlanks();
        if (at_ < sql_.size()) {
            throw Error(kSyntaxNear, {";"});
        }
        token.kind = Token::Kind::end;
        return token;
    }
    const std::string_view two = sql_.substr(start, 2);
    // The system writes no comments, so that one comes out of a value that somebody typed.
    if (two == "--" || two == "/*") {
        throw Error(kSyntaxNear, {std::string(two)});
    }
    if (two == "<>" || two == "<=" || two == ">=" || two == "!=" || two == "!<" || two == "!>") {
        at_ = start + 2;
    } else if (std::string_view("<>-/").find(c) != std::string_view::npos) {
        at_ = start + 1;
    } else {
        throw Error(kSyntaxNear, {std::string(1, c)});
    }
    finish(token);
    return token;
}

}  // namespace orvenmod::store::tsql
