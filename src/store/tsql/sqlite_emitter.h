// Writes a bound tree as SQLite's text. Queries stand in sqlite_emitter_query.cpp and _set.cpp, expressions in
// _expression.cpp, comparisons in _comparison.cpp, conversions in _conversion.cpp, functions in _function.cpp (and
// their plain forms in _plain.cpp), changes in _change.cpp, definitions in _ddl.cpp.
//
// Two ways of writing:
// - shared: literals are parameters, and what SQLite has not is called as ts_ function (runtime.h);
// - stored: for what stays in the database (views, defaults, checks). Literals stand in the text, and functions of
//   SQLite's own serve wherever one will do, so that the plain sqlite3 shell reads it.
//
//                      shared                                   stored
//   fitemid/2          ts_idiv("tblItem"."fitemid", ?1)         ("tblItem"."fitemid" / 2)
//   left(fname,3)      ts_left("tblItem"."fname", ?1)           substr("tblItem"."fname", 1, 3)
//
// Texts are equal, grouped and indexed as rtrim(x) COLLATE NOCASE, and ordered as rtrim(x) COLLATE ts_order, for which
// no index is kept.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "store/tsql/ast.h"
#include "store/tsql/shape.h"
#include "store/tsql/translation.h"

namespace orvenmod::store::tsql {

class SqliteEmitter {
public:
    explicit SqliteEmitter(const std::vector<Literal>& literals) : literals_(literals) {}

    /// Fills everything of the translation but its fixed literals. `sql` is the statement's own text.
    void emit(const Statement& statement, std::string_view sql, Translation& translation);

private:
    using Names = std::vector<std::string>;
    enum class Collation { none, equality, order };
    enum class ItemNaming { byNumber, byExpression };

    // Statements.
    void emitStatement(const QueryStatement& statement);
    void emitStatement(const InsertStatement& statement);
    void emitStatement(const UpdateStatement& statement);
    void emitStatement(const DeleteStatement& statement);
    void emitStatement(const CreateTableStatement& statement);
    void emitStatement(const AlterTableStatement& statement);
    void emitStatement(const CreateIndexStatement& statement);
    void emitStatement(const CreateViewStatement& statement);
    void emitStatement(const DropStatement& statement);
    void emitStatement(const TruncateStatement& statement);
    void emitStatement(const TransactionStatement& statement);
    void emitSelectInto(const Query& query);
    void emitJoinedUpdate(const UpdateStatement& statement);
    std::string columnDefinition(const ColumnDefinition& column, const std::vector<KeyConstraint>& keys);
    void addTableExtras(const CreateTableStatement& statement, const std::vector<ColumnInfo>& columns);
    std::string storedDefault(const ColumnDefinition& column);
    void dropColumn(const ObjectInfo& table, const std::string& column);
    void dropConstraint(const AlterTableStatement& statement, const std::string& name);
    void addKeyIndex(const std::string& table, const KeyConstraint& key, const std::vector<ColumnInfo>& columns);
    std::string indexColumns(const std::vector<IndexColumn>& columns, const std::vector<ColumnInfo>& known) const;

    // Queries. With names, every column of the result gets its name; without, none matters.
    std::string query(const Query& query, const Names* names = nullptr);
    std::string select(const Query& query, const Names* names);
    std::string rankedSelect(const Query& query, const Names* names);
    std::string distinctSelect(const Query& query, const Names* names);
    std::string setOperation(const Query& query, const Names* names);
    std::string unionAll(const Query& query, const Names& names);
    std::string branch(const Query& query, const Names* names);
    std::string matched(const Query& query, const Names& names);
    std::string columnList(const Query& query, const Names& names);
    std::string items(const Select& select, const Names* names);
    std::string clauses(const Select& select);
    std::string groupByItems(const Select& select);
    std::string orderBy(const Query& query, ItemNaming naming);
    std::string orderByNames(const Query& query, const Names& names);
    std::string sources(const std::vector<SourcePtr>& from);
    std::string source(const Source& source);
    std::string comparableQuery(const Query& query);
    std::string scalarQuery(const Query& query);
    const std::string& aliasOf(const Source& source);

    // Expressions.
    std::string value(const Expression& expression);
    std::string condition(const Expression& expression);
    std::string literal(const Expression& expression, const Type& type, Parameter::Use use = Parameter::Use::value,
                        const Expression* conversion = nullptr);
    std::string parameter(int index, const Type& type, Parameter::Use use, const Expression* conversion);
    std::string inlined(int index, const Type& type, Parameter::Use use, const Expression* conversion) const;
    std::string column(const Expression& expression);
    std::string arithmetic(const Expression& expression);
    std::string integerArithmetic(const Expression& expression, const std::string& left, const std::string& right);
    std::string decimalArithmetic(const Expression& expression, const std::string& left, const std::string& right);
    std::string floatArithmetic(const Expression& expression, const std::string& left, const std::string& right);
    std::string dateArithmetic(const Expression& expression);
    std::string unary(const Expression& expression);
    std::string caseWhen(const Expression& expression);
    std::string conversion(const Expression& expression);
    std::string storedConversion(const std::string& inner, const Type& from, const Type& to);
    std::string storedStyle(const Expression& cast);

    // Comparisons.
    std::string comparison(const Expression& expression);
    std::string comparable(const Expression& expression, Collation collation);
    std::string groupKey(const Expression& expression);
    std::string sortKey(const Expression& expression);
    const char* orderCollation() const;
    std::string like(const Expression& expression);
    std::string storedLike(const Expression& expression);
    std::string inList(const Expression& expression);
    std::string quantified(const Expression& expression);
    bool mayUseIndex(const Expression& like) const;

    // Functions.
    std::string function(const Expression& call);
    std::string aggregate(const Expression& call);
    std::string storedFunction(const Expression& call);
    std::string storedDateFunction(const Expression& call);
    std::string builtin(const Expression& call);
    std::string arguments(const Expression& call, std::size_t first = 0);

    const std::vector<Literal>& literals_;
    Translation* translation_ = nullptr;
    std::string_view sql_;
    bool inline_ = false;       ///< literals stand in the text
    bool stored_ = false;       ///< built-in functions wherever one will do
    bool bareColumns_ = false;  ///< columns without their table, as a check wants them
    int conditional_ = 0;       ///< within what may not be evaluated: a literal is converted only when it is
    std::map<int, std::string> aliases_;
    std::set<std::string> usedAliases_;
};

/// The name in double quotes.
std::string quoteName(std::string_view name);
/// The text in single quotes.
std::string quoteText(std::string_view text);
/// Whether values of one type stand for values of the other as they are.
bool sameRepresentation(const Type& from, const Type& to);

}  // namespace orvenmod::store::tsql
