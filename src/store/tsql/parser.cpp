// The beginning of a statement, and what all of the grammar uses.
//
// What is no statement and what this store only doesn't know are told apart, since the first is a slip and the second a
// limit: a script of another program that meets it should hear so.
//
//   select id frm t where           102 't'
//   select id from t where from     156 'from': a word that the dialect reserves
//   exec sp_help                    40000 'exec'
#include "store/tsql/parser.h"

#include <array>

#include "store/tsql/error.h"

namespace orvenmod::store::tsql {
namespace {

/// The word that opens a statement which the dialect has and this store has not.
constexpr std::array kRefusedStatements = std::to_array<std::string_view>(
    {"exec",  "execute", "declare",    "set",         "use",      "grant",    "revoke",    "deny",       "print",
     "if",    "while",   "merge",      "backup",      "restore",  "dbcc",     "waitfor",   "raiserror",  "kill",
     "save",  "go",      "bulk",       "checkpoint",  "shutdown", "with",     "return",    "goto",       "open",
     "fetch", "close",   "deallocate", "reconfigure", "begin",    "readtext", "writetext", "updatetext", "throw"});

}  // namespace

Parser::Parser(std::string_view sql) {
    Lexer lexer(sql);
    do {
        tokens_.push_back(lexer.next());
        literalOfToken_.push_back(-1);
        if (tokens_.back().kind == Token::Kind::literal) {
            literalOfToken_.back() = static_cast<int>(literals_.size());
            literals_.push_back(tokens_.back().literal);
        }
    } while (tokens_.back().kind != Token::Kind::end);
}

Statement Parser::parse() {
    const Token& first = peek();
    Statement statement;
    if (first.isWord("select") || first.isSymbol("(")) {
        QueryStatement query;
        query.query = parseOrderedQuery();
        if (takeWord("option")) {
            throw Error(kNotSupported, {"option"});
        }
        statement = std::move(query);
    } else if (first.isWord("insert")) {
        statement = parseInsert();
    } else if (first.isWord("update")) {
        statement = parseUpdate();
    } else if (first.isWord("delete")) {
        statement = parseDelete();
    } else if (first.isWord("create")) {
        statement = parseCreate();
    } else if (first.isWord("alter")) {
        statement = parseAlter();
    } else if (first.isWord("drop")) {
        statement = parseDrop();
    } else if (takeWord("truncate")) {
        expectWord("table");
        statement = TruncateStatement{takeObjectName()};
    } else {
        statement = parseTransaction();
    }
    if (peek().kind != Token::Kind::end) {
        fail();
    }
    return statement;
}

TransactionStatement Parser::parseTransaction() {
    TransactionStatement statement;
    const bool transactionNext = peek(1).isWord("tran") || peek(1).isWord("transaction");
    if (peek().isWord("begin") && transactionNext) {
        statement.kind = TransactionStatement::Kind::begin;
    } else if (peek().isWord("commit")) {
        statement.kind = TransactionStatement::Kind::commit;
    } else if (peek().isWord("rollback")) {
        statement.kind = TransactionStatement::Kind::rollback;
    } else {
        for (const std::string_view word : kRefusedStatements) {
            if (peek().isWord(word)) {
                throw Error(kNotSupported, {std::string(word)});
            }
        }
        fail();
    }
    take();
    if (transactionNext || peek().isWord("work")) {
        take();
    }
    return statement;
}

const Token& Parser::peek(std::size_t ahead) const {
    return tokens_[at_ + ahead < tokens_.size() ? at_ + ahead : tokens_.size() - 1];
}

const Token& Parser::take() {
    const Token& token = peek();
    if (at_ + 1 < tokens_.size()) {
        ++at_;
    }
    return token;
}

std::string Parser::textSince(std::size_t start) const {
    const std::string_view last = tokens_[at_ - 1].text;
    return {tokens_[start].text.data(), last.data() + last.size()};
}

bool Parser::takeWord(std::string_view word) {
    if (!peek().isWord(word)) {
        return false;
    }
    take();
    return true;
}

bool Parser::takeSymbol(std::string_view symbol) {
    if (!peek().isSymbol(symbol)) {
        return false;
    }
    take();
    return true;
}

void Parser::expectWord(std::string_view word) {
    if (!takeWord(word)) {
        fail();
    }
}

void Parser::expectSymbol(std::string_view symbol) {
    if (!takeSymbol(symbol)) {
        fail();
    }
}

void Parser::fail() const {
    const Token& token = peek();
    if (token.kind == Token::Kind::end) {
        // The server names the last thing that it read.
        std::string last = tokens_.size() > 1 ? std::string(tokens_[tokens_.size() - 2].text) : std::string();
        const bool reserved = tokens_.size() > 1 && isReservedWord(lowerName(last));
        throw Error(reserved ? kSyntaxNearKeyword : kSyntaxNear, {std::move(last)});
    }
    if (token.kind == Token::Kind::variable) {
        throw Error(kUndeclaredVariable, {std::string(token.text)});
    }
    const bool reserved = token.kind == Token::Kind::word && isReservedWord(lowerName(token.text));
    const std::string near = token.kind == Token::Kind::literal ? token.literal.value() : std::string(token.text);
    throw Error(reserved ? kSyntaxNearKeyword : kSyntaxNear, {near});
}

bool Parser::isName() const {
    const Token& token = peek();
    return token.kind == Token::Kind::quotedName ||
           (token.kind == Token::Kind::word && !isReservedWord(lowerName(token.text)));
}

std::string Parser::takeName() {
    if (!isName()) {
        fail();
    }
    std::string name = take().name();
    // Counted in bytes, of which a character has four at most: no name that the server takes is refused.
    constexpr std::size_t kMostCharacters = 128;
    if (name.size() > kMostCharacters * 4) {
        throw Error(kNameTooLong, {name, std::to_string(kMostCharacters)});
    }
    return name;
}

std::string Parser::takeObjectName() {
    // owner.name, database..name: the last part is the name, and the only owner there is is dbo.
    std::string name = takeName();
    std::string owner;
    while (takeSymbol(".")) {
        owner = std::exchange(name, peek().isSymbol(".") ? std::string("dbo") : takeName());
    }
    if (!owner.empty() && !sameName(owner, "dbo")) {
        throw Error(kUnknownObject, {owner + "." + name});
    }
    if (name.starts_with('#')) {
        throw Error(kNotSupported, {"temporary tables"});
    }
    return name;
}

std::optional<std::string> Parser::takeAlias() {
    const bool announced = takeWord("as");
    // select 1 as 'n'
    if (peek().kind == Token::Kind::literal && peek().literal.kind <= LiteralKind::nationalText &&
        peek().literal.kind >= LiteralKind::text) {
        return take().literal.value();
    }
    if (!announced && !isName()) {
        return std::nullopt;
    }
    return takeName();
}

}  // namespace orvenmod::store::tsql
