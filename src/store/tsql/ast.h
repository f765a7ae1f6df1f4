// The tree of a statement. The parser makes it, the binder resolves its names, notes its types and puts in the
// conversions that the server makes silently, an emitter writes it for a target. It knows nothing of any target.
//
//   select fname from tblItem where fitemid='5'
//
//   QueryStatement
//     Select   items  column fname                            varchar(80)
//              from   table tblItem
//              where  comparison =
//                       column fitemid                        int
//                       conversion, put in by the binder      int
//                         literal 0                           varchar
//
// A literal is an index and not a value, so that one tree serves every statement of its shape.
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "store/tsql/catalog.h"
#include "store/tsql/type.h"

namespace orvenmod::store::tsql {

struct Expression;
struct Query;
struct Source;
using ExpressionPtr = std::unique_ptr<Expression>;
using QueryPtr = std::unique_ptr<Query>;
using SourcePtr = std::unique_ptr<Source>;

enum class Operator {
    none,
    add,
    subtract,
    multiply,
    divide,
    modulo,
    bitAnd,
    bitOr,
    bitXor,
    bitNot,
    negate,
    plus,
    equal,
    notEqual,
    less,
    lessEqual,
    greater,
    greaterEqual,
    logicalAnd,
    logicalOr,
    logicalNot,
};

/// The operator as written: "+", "<=", "and".
const char* spelling(Operator op);

enum class ExpressionKind {
    literal,
    null,
    column,
    unary,       ///< negate, plus, bitNot
    arithmetic,  ///< + - * / % & | ^; + of texts concatenates
    comparison,
    logical,     ///< and, or, not
    like,        ///< value, pattern[, escape]
    inList,      ///< value, members
    inQuery,     ///< value, query
    between,     ///< value, low, high
    isNull,      ///< value
    exists,      ///< query
    quantified,  ///< value op any/all (query)
    caseWhen,    ///< when, then, when, then ..., else (a null pointer where there is none)
    function,
    cast,  ///< cast, convert, try_cast, try_convert: value[, style]
    subquery,
    conversion  ///< put in by the binder: value
};

struct Expression {
    ExpressionKind kind = ExpressionKind::null;
    Operator op = Operator::none;
    std::string name;       ///< of a column or function, lower case for functions
    std::string qualifier;  ///< of a column
    std::string part;       ///< of a date function: "day"
    int literal = -1;       ///< index among the statement's literals
    std::vector<ExpressionPtr> operands;
    QueryPtr query;
    bool negated = false;   ///< not like, not in, is not null ...
    bool distinct = false;  ///< count(distinct x)
    bool star = false;      ///< count(*)
    bool all = false;       ///< quantified: all
    bool attempt = false;   ///< try_cast, try_convert
    Type target;            ///< of a cast

    // Noted by the binder.
    Type type;
    const Source* source = nullptr;        ///< of a column
    int column = -1;                       ///< its position in the source
    bool aggregate = false;                ///< the function is one
    const ObjectInfo* assigned = nullptr;  ///< of a conversion: the table whose column takes the value
    int assignedColumn = -1;
};

struct SelectItem {
    ExpressionPtr expression;  ///< null for a star, until the binder expands it
    std::string qualifier;     ///< of a star
    std::string name;          ///< the column's name; "" for none
};

enum class JoinKind { inner, left, right, full, cross };

struct Source {
    enum class Kind { table, derived, join };

    Kind kind = Kind::table;
    std::string name;
    std::string alias;
    QueryPtr query;                          ///< derived
    std::vector<std::string> columnAliases;  ///< derived
    JoinKind join = JoinKind::inner;
    SourcePtr left;
    SourcePtr right;
    ExpressionPtr on;

    // Noted by the binder.
    const ObjectInfo* object = nullptr;
    std::vector<ColumnInfo> columns;
    int id = 0;  ///< unique within the statement

    const std::string& exposedName() const { return alias.empty() ? name : alias; }
};

struct OrderItem {
    ExpressionPtr expression;
    bool descending = false;
    int item = -1;  ///< the select item that it names, where it does; `expression` is then null
};

struct Select {
    bool distinct = false;
    ExpressionPtr top;
    bool topPercent = false;
    bool topWithTies = false;
    std::string into;
    std::vector<SelectItem> items;
    std::vector<SourcePtr> from;
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;

    // Noted by the binder.
    bool aggregates = false;
};

enum class SetOperator { none, unite, except, intersect };

struct Query {
    std::unique_ptr<Select> select;  ///< where op is none
    SetOperator op = SetOperator::none;
    bool all = false;
    QueryPtr left;
    QueryPtr right;
    std::vector<OrderItem> orderBy;

    // Noted by the binder.
    std::vector<ColumnInfo> columns;
};

struct Assignment {
    std::string column;
    ExpressionPtr value;  ///< null for the word default
    int position = -1;    ///< of the column in its table; noted by the binder
};

struct InsertStatement {
    std::string table;
    std::vector<std::string> columns;
    std::vector<std::vector<ExpressionPtr>> rows;  ///< a null pointer for the word default
    QueryPtr query;
    bool defaultValues = false;

    const ObjectInfo* object = nullptr;  ///< noted by the binder
    std::vector<int> positions;          ///< of the columns; noted by the binder
};

struct UpdateStatement {
    std::string target;  ///< a table, or an alias of the from clause
    std::vector<Assignment> assignments;
    std::vector<SourcePtr> from;  ///< never empty once bound
    ExpressionPtr where;
    ExpressionPtr top;
    bool joined = false;              ///< a from clause was written
    const Source* changed = nullptr;  ///< noted by the binder
};

struct DeleteStatement {
    std::string target;
    std::vector<SourcePtr> from;
    ExpressionPtr where;
    ExpressionPtr top;
    bool joined = false;
    const Source* changed = nullptr;
};

struct IndexColumn {
    std::string name;
    bool descending = false;
};

struct KeyConstraint {
    bool primary = false;
    std::string name;
    std::vector<IndexColumn> columns;
};

struct CheckConstraint {
    std::string name;
    ExpressionPtr condition;
    std::string text;  ///< of the condition, as written
};

struct ColumnDefinition {
    std::string name;
    Type type;
    std::string declaredType;  ///< as written
    bool notNull = false;
    bool identity = false;
    std::string identitySeed = "1";
    ExpressionPtr defaultValue;
    std::string defaultText;  ///< as written
    bool withValues = false;
};

struct CreateTableStatement {
    std::string name;
    std::vector<ColumnDefinition> columns;
    std::vector<KeyConstraint> keys;
    std::vector<CheckConstraint> checks;
};

struct AlterTableStatement {
    std::string name;
    std::vector<ColumnDefinition> columns;  ///< to add
    std::vector<KeyConstraint> keys;        ///< to add
    std::vector<std::string> dropColumns;
    std::vector<std::string> dropConstraints;

    const ObjectInfo* object = nullptr;
};

struct CreateIndexStatement {
    std::string name;
    std::string table;
    bool unique = false;
    std::vector<IndexColumn> columns;
    std::vector<IndexColumn> included;

    const ObjectInfo* object = nullptr;
};

struct CreateViewStatement {
    std::string name;
    std::vector<std::string> columnAliases;
    QueryPtr query;
    bool alter = false;
};

struct DropName {
    std::string name;
    std::string table;  ///< of an index
};

struct DropStatement {
    enum class Kind { table, view, index };

    Kind kind = Kind::table;
    std::vector<DropName> names;
    bool ifExists = false;
};

struct TruncateStatement {
    std::string table;
};

struct TransactionStatement {
    enum class Kind { begin, commit, rollback };

    Kind kind = Kind::begin;
};

struct QueryStatement {
    QueryPtr query;
};

using Statement = std::variant<QueryStatement, InsertStatement, UpdateStatement, DeleteStatement, CreateTableStatement,
                               AlterTableStatement, CreateIndexStatement, CreateViewStatement, DropStatement,
                               TruncateStatement, TransactionStatement>;

ExpressionPtr makeExpression(ExpressionKind kind);
/// A copy of an unbound expression. Throws Error kNotSupported for one that holds a query.
ExpressionPtr clone(const Expression& expression);

}  // namespace orvenmod::store::tsql
