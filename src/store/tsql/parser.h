// Reads a statement into its tree, by recursive descent. One routine a construct; the parts of the grammar stand in
// parser_query.cpp, parser_expression.cpp, parser_change.cpp and parser_ddl.cpp.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/tsql/ast.h"
#include "store/tsql/lexer.h"

namespace orvenmod::store::tsql {

class Parser {
public:
    /// Splits the text at once. Throws Error 102 and 105.
    explicit Parser(std::string_view sql);

    /// The one statement of the text. Throws Error 102, 156, or kNotSupported for what this store doesn't know.
    Statement parse();

    const std::vector<Literal>& literals() const { return literals_; }

private:
    /// So that no statement, however it came about, exhausts the stack.
    static constexpr int kDeepest = 200;

    // Tokens.
    const Token& peek(std::size_t ahead = 0) const;
    const Token& take();
    bool takeWord(std::string_view word);
    bool takeSymbol(std::string_view symbol);
    void expectWord(std::string_view word);
    void expectSymbol(std::string_view symbol);
    [[noreturn]] void fail() const;
    /// What was taken since the token at `start`, as written.
    std::string textSince(std::size_t start) const;
    bool isName() const;
    std::string takeName();
    std::string takeWholeNumber();
    std::string takeObjectName();
    std::optional<std::string> takeAlias();

    // Queries.
    QueryPtr parseQuery();
    QueryPtr parseOrderedQuery();
    QueryPtr parseIntersection();
    QueryPtr parseQueryTerm();
    QueryPtr parseSelect();
    ExpressionPtr parseTop(Select* select);
    SelectItem parseSelectItem();
    std::vector<OrderItem> parseOrderBy();
    std::vector<SourcePtr> parseFrom();
    SourcePtr parseJoined();
    SourcePtr parseSource();
    std::optional<JoinKind> takeJoin();
    void parseSourceAlias(Source& source);
    void skipHints();

    // Expressions.
    ExpressionPtr parseCondition();
    ExpressionPtr parseConjunction();
    ExpressionPtr parseNegation();
    ExpressionPtr parsePredicate();
    ExpressionPtr parseComparison(ExpressionPtr left);
    ExpressionPtr parseLike(ExpressionPtr left, bool negated);
    ExpressionPtr parseIn(ExpressionPtr left, bool negated);
    ExpressionPtr parseBetween(ExpressionPtr left, bool negated);
    ExpressionPtr parseSum();
    ExpressionPtr parseProduct();
    ExpressionPtr parseUnary();
    ExpressionPtr parsePrimary();
    ExpressionPtr parseBracket();
    ExpressionPtr parseCase();
    ExpressionPtr parseCast(const std::string& word);
    ExpressionPtr parseConvert(const std::string& word);
    ExpressionPtr parseFunction();
    ExpressionPtr parseColumn();
    void skipCollation();
    bool atBracketedCompound() const;
    Type parseTypeName(std::string* declared);

    // Changes.
    InsertStatement parseInsert();
    UpdateStatement parseUpdate();
    DeleteStatement parseDelete();

    // Definitions.
    Statement parseCreate();
    CreateTableStatement parseCreateTable();
    CreateIndexStatement parseCreateIndex(bool unique);
    CreateViewStatement parseView();
    Statement parseAlter();
    AlterTableStatement parseAlterTable();
    ColumnDefinition parseColumnDefinition(std::vector<KeyConstraint>& keys, std::vector<CheckConstraint>& checks);
    void parseColumnOption(ColumnDefinition& column, std::vector<KeyConstraint>& keys,
                           std::vector<CheckConstraint>& checks);
    void parseTableConstraint(std::vector<KeyConstraint>& keys, std::vector<CheckConstraint>& checks);
    CheckConstraint parseCheck(const std::string& name);
    bool atTableConstraint() const;
    std::vector<IndexColumn> parseIndexColumns();
    std::vector<IndexColumn> parseIndexOptions();
    DropStatement parseDrop();
    TransactionStatement parseTransaction();

    std::vector<Token> tokens_;
    std::vector<Literal> literals_;
    std::vector<int> literalOfToken_;
    std::size_t at_ = 0;
    int depth_ = 0;
};

/// Whether the dialect reserves the word (in lower case), so that it is no bare identifier.
bool isReservedWord(std::string_view lowerCase);

}  // namespace orvenmod::store::tsql
