// Splits a statement into tokens. Used by the shape scanner and by the parser, so that both count the same literals.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "store/tsql/shape.h"

namespace orvenmod::store::tsql {

struct Token {
    enum class Kind {
        end,
        word,        ///< a bare identifier or keyword
        quotedName,  ///< [name] or "name"
        variable,    ///< @name, @@name
        literal,
        symbol,  ///< ( ) , . = <> <= >= != !< !> < > + - * / % & | ^ ~
    };

    Kind kind = Kind::end;
    std::string_view text;  ///< as written, with its brackets or quotes
    std::size_t offset = 0;
    Literal literal;  ///< of Kind::literal

    /// A word in the given spelling, without regard to case; `lowerCase` in lower case.
    bool isWord(std::string_view lowerCase) const;
    bool isSymbol(std::string_view symbol) const { return kind == Kind::symbol && text == symbol; }
    /// An identifier without its brackets or quotes, doubled ones made single.
    std::string name() const;
};

class Lexer {
public:
    explicit Lexer(std::string_view sql) : sql_(sql) {}

    /// The next token; Kind::end behind the last, and for a ';' with nothing behind it.
    /// Throws Error 102 and 105.
    Token next();

    /// Passes what is plainly no literal, for a caller that looks for these; next() goes on with what follows.
    void skipPlain();

private:
    void skipBlanks();
    Token numberToken(std::size_t start);
    Token textToken(std::size_t start, LiteralKind kind);
    Token binaryToken(std::size_t start);
    Token moneyToken(std::size_t start);
    Token nameToken(std::size_t start, char closing);
    Token wordToken(std::size_t start, Token::Kind kind);
    Token symbolToken(std::size_t start);
    void finish(Token& token);
    char at(std::size_t position) const { return position < sql_.size() ? sql_[position] : '\0'; }
    void skipWord();
    bool startsWideBlank(std::size_t position) const;
    bool startsNumber(std::size_t position) const;

    std::string_view sql_;
    std::size_t at_ = 0;
    bool signMayFollow_ = false;  ///< a '-' next to a digit belongs to the literal
};

/// Compares ASCII letters without regard to case.
bool sameName(std::string_view left, std::string_view right);
/// ASCII letters in lower case.
std::string lowerName(std::string_view name);

}  // namespace orvenmod::store::tsql
