// A statement made ready for a target: what to run, what to bind, what comes back.
#pragma once

#include <string>
#include <vector>

#include "store/tsql/type.h"

namespace orvenmod::store::tsql {

enum class StatementKind { query, change, ddl, beginTransaction, commitTransaction, rollbackTransaction };

/// Whether the target has it as one statement that can be prepared.
inline bool runsAsItIs(StatementKind kind) { return kind == StatementKind::query || kind == StatementKind::change; }

/// What is bound to one parameter of the target's text: a literal of the statement, converted when it is bound.
struct Parameter {
    enum class Use {
        value,     ///< converted from `from` to `to`
        trimmed,   ///< likewise, then trailing blanks cut (text that is compared)
        folded,    ///< likewise, then trailing blanks cut and ASCII letters made small: foldedText()
        likeLow,   ///< the inclusive lower bound of texts that match the pattern: its plain prefix, trailing blanks cut
        likeHigh,  ///< the exclusive upper bound: the successor of that prefix in lower case; without a prefix U+10FFFF
        foldedLow,       ///< as likeLow, with ASCII letters made small
        likePattern,     ///< the pattern for PostgreSQL's own LIKE: serverPattern() of like.h
        likeExpression,  ///< the pattern as PostgreSQL's regular expression: serverExpression() of like.h
    };

    int literal = 0;  ///< index among the shape's literals
    Type from;        ///< the literal's type; a text's length is the literal's own when it is bound
    Type to;
    Use use = Use::value;
    bool assignment = false;  ///< a text too long is refused (2628 with table and column) instead of cut
    std::string table;        ///< of the assignment
    std::string column;
};

struct ResultColumn {
    std::string name;
    Type type;
};

/// A literal whose value is part of the translation: a statement of the same shape uses it only with equal text.
struct FixedLiteral {
    int literal = 0;
    std::string text;
};

struct Translation {
    StatementKind kind = StatementKind::query;
    /// The target's text. Several for DDL, run in order as one unit; parameters only in a single one.
    /// PostgreSQL's text tells the type of each parameter by a cast, $1::integer, so that each is sent as a text of
    /// unknown type: numbers in digits, dates as YYYY-MM-DD HH:MM:SS[.fff], binary contents as \\x and hex digits.
    std::vector<std::string> statements;
    std::vector<Parameter> parameters;  ///< of ?1, ?2, ... or $1, $2, ...
    std::vector<ResultColumn> columns;  ///< of a query
    std::string table;                  ///< the table that a change or DDL touches, without an owner, as declared
    std::vector<FixedLiteral> fixedLiterals;
    bool cacheable = true;  ///< false for DDL
};

}  // namespace orvenmod::store::tsql
