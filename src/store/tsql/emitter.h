// What the emitters share: the structure of queries and changes, names, literals and parameters. A target's emitter
// writes what its language has of its own: how texts compare, conversions, functions, joined changes and definitions.
//
// Queries stand in emitter_query.cpp, _set.cpp and _codes.cpp, expressions in _expression.cpp, literals in
// _literal.cpp, changes in _change.cpp, what definitions have in common in _ddl.cpp.
//
// Two ways of writing:
// - shared: literals are parameters, and what the target has not is called as a ts_ function (runtime.h);
// - stored: for what stays in the database (views, defaults, checks). Literals stand in the text, and the target's own
//   functions serve wherever one will do, so that its plain shell reads it.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "store/tsql/ast.h"
#include "store/tsql/shape.h"
#include "store/tsql/translation.h"
#include "store/tsql/values.h"

namespace orvenmod::store::tsql {

class Emitter {
public:
    virtual ~Emitter() = default;

    /// Fills everything of the translation but its fixed literals. `sql` is the statement's own text.
    void emit(const Statement& statement, std::string_view sql, Translation& translation);

protected:
    explicit Emitter(const std::vector<Literal>& literals) : literals_(literals) {}

    using Names = std::vector<std::string>;
    enum class Collation { none, equality, order };
    enum class Side { left, right };
    enum class ItemNaming { byNumber, byExpression };

    // The target's own.
    virtual std::string tableName(const ObjectInfo& object) const = 0;    ///< quoted
    virtual std::string columnName(const ColumnInfo& column) const = 0;   ///< quoted; of a table or view
    virtual std::string equalityForm(const std::string& text) const = 0;  ///< what equal texts have in common
    /// What the value of that type is ordered by.
    virtual std::string orderForm(const std::string& value, const Type& type) const = 0;
    virtual bool ordersByForm(const Type& type) const { return type.isText(); }
    /// A side of a comparison; `common` is the type of both sides where they are numbers.
    virtual std::string comparable(const Expression& expression, Collation collation, Side side,
                                   const Type& common) = 0;
    /// A name of that type, at the right.
    virtual std::string comparedName(const std::string& name, const Type& type, Collation collation,
                                     const Type& common) const = 0;
    virtual std::string placeholder(std::size_t number, const Parameter& parameter) const = 0;
    virtual std::string inlineText(const Datum& datum, const Type& type) const = 0;
    virtual std::string nullText(const Type& type) const = 0;
    virtual std::string signsBesideDigits(const std::string& text) const = 0;  ///< 0 for none, more for some
    virtual std::string inByteOrder(const std::string& text) const = 0;        ///< as it compares by its bytes
    virtual std::string derived(const std::string& query) const = 0;  ///< a query as a source that needs no name
    virtual std::string direction(const OrderItem& order, const Expression* key) const = 0;
    virtual std::string distinctSelect(const Query& query, const Names* names) = 0;
    /// The rows of a query that has these names, those that compare as equal made one.
    virtual std::string madeDistinct(const std::string& rows, const Query& query, const Names& names) const = 0;
    virtual std::string matched(const Query& query, const Names& names) = 0;
    virtual std::size_t mostBranches() const = 0;  ///< selects that one compound takes
    virtual std::string comparableQuery(const Query& query, const Type& common) = 0;
    virtual std::string scalarQuery(const Query& query) = 0;
    virtual std::string integerArithmetic(const Expression& expression, const std::string& left,
                                          const std::string& right) = 0;
    virtual std::string decimalArithmetic(const Expression& expression, const std::string& left,
                                          const std::string& right) = 0;
    virtual std::string floatArithmetic(const Expression& expression, const std::string& left,
                                        const std::string& right) = 0;
    virtual std::string dateArithmetic(const Expression& expression) = 0;
    virtual std::string conversion(const Expression& expression) = 0;
    virtual std::string like(const Expression& expression) = 0;
    virtual std::string function(const Expression& call) = 0;
    /// A query whose rows are read or stored one after the other, so that their order shows.
    virtual std::string deliveredRows(const Query& query) { return this->query(query); }
    virtual void emitJoinedUpdate(const UpdateStatement& statement) = 0;
    virtual void emitJoinedDelete(const DeleteStatement& statement) = 0;
    virtual void emitStatement(const CreateTableStatement& statement) = 0;
    virtual void emitStatement(const AlterTableStatement& statement) = 0;
    virtual void emitStatement(const CreateIndexStatement& statement) = 0;
    virtual void emitStatement(const CreateViewStatement& statement) = 0;
    virtual void emitStatement(const DropStatement& statement) = 0;
    virtual void emitStatement(const TruncateStatement& statement) = 0;
    virtual void emitSelectInto(const Query& query) = 0;

    // Statements.
    void emitStatement(const QueryStatement& statement);
    void emitStatement(const InsertStatement& statement);
    void emitStatement(const UpdateStatement& statement);
    void emitStatement(const DeleteStatement& statement);
    void emitStatement(const TransactionStatement& statement);
    void addColumns(const Query& query);
    void startDefinition(const std::string& table);
    void add(std::string statement) { translation_->statements.push_back(std::move(statement)); }

    // Queries. With names, every column of the result gets its name; without, none matters.
    std::string query(const Query& query, const Names* names = nullptr);
    virtual std::string select(const Query& query, const Names* names);
    std::string rankedSelect(const Query& query, const Names* names);
    std::string setOperation(const Query& query, const Names* names);
    std::string unionAll(const Query& query, const Names& names);
    std::string branch(const Query& query, const Names* names);
    std::string columnList(const Query& query, const Names& names) const;
    std::string items(const Select& select, const Names* names);
    std::string clauses(const Query& query);
    std::string rowsOf(const Query& query);
    virtual std::string havingCondition(const Select& select) { return condition(*select.having); }
    std::string orderBy(const Query& query, ItemNaming naming);
    std::string orderByNames(const Query& query, const Names& names) const;
    std::string sources(const std::vector<SourcePtr>& from);
    std::string source(const Source& source);
    const Expression* soughtCode(const Query& query) const;
    std::string nameOf(const Expression& column) const;
    std::string codeCandidates(const Expression& code, const std::string& rows);
    std::string codeKeys(const std::string& text) const;
    const std::string& aliasOf(const Source& source);

    // Expressions.
    virtual std::string value(const Expression& expression);
    std::string condition(const Expression& expression);
    virtual std::string comparison(const Expression& expression);
    virtual std::string between(const Expression& expression);
    std::string inList(const Expression& expression);
    std::string quantified(const Expression& expression);
    std::string groupKey(const Expression& expression);
    std::string sortKey(const Expression& expression);
    std::string literal(const Expression& expression, const Type& type, Parameter::Use use = Parameter::Use::value,
                        const Expression* conversion = nullptr);
    std::string parameter(int index, const Type& type, Parameter::Use use, const Expression* conversion);
    virtual std::string inlined(int index, const Type& type, Parameter::Use use, const Expression* conversion) const;
    std::string column(const Expression& expression);
    std::string arithmetic(const Expression& expression);
    virtual std::string unary(const Expression& expression);
    std::string caseWhen(const Expression& expression);
    std::string arguments(const Expression& call);
    /// Functions that every target writes alike, isnull by the target's word; empty for the others.
    std::string sharedFunction(const Expression& call, const char* isnull);
    bool mayUseIndex(const Expression& like) const;
    const Literal& literalOf(const Expression& expression) const {
        return literals_[static_cast<std::size_t>(expression.literal)];
    }

    const std::vector<Literal>& literals_;
    Translation* translation_ = nullptr;
    std::string_view sql_;
    bool inline_ = false;       ///< literals stand in the text
    bool stored_ = false;       ///< the target's own functions wherever one will do
    bool bareColumns_ = false;  ///< columns without their table, as a check wants them
    int conditional_ = 0;       ///< within what may not be evaluated: a literal is converted only when it is

private:
    std::map<int, std::string> aliases_;
    std::set<std::string> usedAliases_;
};

/// The name in double quotes.
std::string quoteName(std::string_view name);
/// The text in single quotes.
std::string quoteText(std::string_view text);
std::string hexDigits(std::string_view bytes);
std::string joined(const std::vector<std::string>& parts, const char* separator = ", ");
bool hasText(const Query& query);
bool isConstant(const Expression& expression);
/// Whether it is the same for every row.
bool isConstantExpression(const Expression& expression);
/// The length that the dialect tells of a text.
std::string lengthOf(const std::string& text);
bool isOrdering(Operator op);

/// Whether values of one type stand for values of the other as they are.
bool sameRepresentation(const Type& from, const Type& to);
/// Whether converting a literal may fail, so that it has to wait until the value is needed.
bool mayFail(const Type& from, const Type& to);

// What definitions have in common.

const ColumnInfo* findColumn(const std::vector<ColumnInfo>& columns, const std::string& name);
ColumnInfo infoOf(const ColumnDefinition& definition);
std::vector<ColumnInfo> infoOf(const std::vector<ColumnDefinition>& definitions);
bool isPrimary(const std::vector<KeyConstraint>& keys, const std::string& name);
/// The name of a constraint, made up where it has none.
std::string keyName(const std::string& table, const KeyConstraint& key);
/// How the store keeps it: with the table and the infix of runtime.h.
std::string keptKeyName(const std::string& table, const KeyConstraint& key);
/// The column by whose index the system finds a row in a table without a key.
inline constexpr std::string_view kItemId = "fitemid";
/// The name of that index; empty for a table that needs none.
std::string itemIdIndex(const CreateTableStatement& statement, const std::vector<ColumnInfo>& columns);
/// Whether the one text that an index carries is served as a code; see emitter_codes.cpp.
bool isCodeIndex(const CreateIndexStatement& statement);

}  // namespace orvenmod::store::tsql
