// Writes a bound tree as PostgreSQL's text; what is shared with other targets stands in emitter.h. Queries stand in
// postgres_emitter_query.cpp, conversions in _conversion.cpp, functions in _function.cpp, changes in _change.cpp,
// definitions in _ddl.cpp, names and types in postgresnames.h.
//
//   select fname from tblItem where fnumber='A01' and fitemid<9
//
//   SELECT "tblItem"."fname" FROM "tblitem" AS "tblItem"
//     WHERE ((lower(rtrim("tblItem"."fnumber") COLLATE "C") = $1::text) AND ("tblItem"."fitemid" < $2::integer))
//
// PostgreSQL has types where SQLite has none, so that integers overflow and decimals are exact by themselves. A value
// is written so that its native type is nativeType() of its own or a narrower one of the same family; what a function
// takes is cast where that matters. Functions of the runtime stand in the schema orven; beside those of runtime.h:
//
//   orven.ts_first(text)      aggregate: the first text of a group, all of which compare as equal
//   orven.ts_min(text) ts_max(text)      aggregates by ts_order
//   orven.ts_order(text)      the key by which texts are ordered
//   orven.define(object, command ...)    runs definitions of a table or view; views that depend on it are made again
//   orven.mend_views()        makes views again whose tables or columns had been missing
//
// Failures of PostgreSQL's own that stand for the dialect's: 22012 is 8134, 22003 is 8115, 21000 is 512.
//
// Texts are equal, grouped and indexed as lower(rtrim(x) COLLATE "C"). No text in a query of a group is that of a
// group's key, so that the first one is taken:
//
//   select c,count(*) from t group by c
//   SELECT orven.ts_first("t"."c"), count(*) FROM "t" AS "t" GROUP BY lower(rtrim("t"."c") COLLATE "C")
#pragma once

#include <set>
#include <string>
#include <vector>

#include "store/tsql/emitter.h"

namespace orvenmod::store::tsql {

class PostgresEmitter : public Emitter {
public:
    explicit PostgresEmitter(const std::vector<Literal>& literals) : Emitter(literals) {}

private:
    using Groups = std::vector<const Expression*>;
    enum class IndexKind { plain, unique };
    enum class JoinSide { kept, outer };  ///< of an outer one, columns may be null

    // Statements.
    void emitStatement(const CreateTableStatement& statement) override;
    void emitStatement(const AlterTableStatement& statement) override;
    void emitStatement(const CreateIndexStatement& statement) override;
    void emitStatement(const CreateViewStatement& statement) override;
    void emitStatement(const DropStatement& statement) override;
    void emitStatement(const TruncateStatement& statement) override;
    void emitSelectInto(const Query& query) override;
    void emitJoinedUpdate(const UpdateStatement& statement) override;
    void emitJoinedDelete(const DeleteStatement& statement) override;
    std::string joinedBy(const std::vector<const Source*>& others, std::vector<const Expression*> conditions,
                         const Expression* where, const char* word);
    std::string columnDefinition(const ColumnDefinition& column, const std::vector<KeyConstraint>& keys);
    std::string indexColumns(const std::vector<IndexColumn>& columns, const std::vector<ColumnInfo>& known) const;
    void addColumn(const std::string& table, const ColumnDefinition& column);
    void addKey(const std::string& table, const KeyConstraint& key, const std::vector<ColumnInfo>& columns);
    std::string keyText(const std::string& name, const KeyConstraint& key,
                        const std::vector<ColumnInfo>& columns) const;
    void addIndex(const std::string& keptName, const std::string& declared, const std::string& table,
                  const std::string& columns, IndexKind kind);
    void addColumnComment(const std::string& table, const ColumnInfo& column, const std::string& defaultText);
    void dropConstraint(const AlterTableStatement& statement, const std::string& name);
    void define(const std::string& object, const std::vector<std::string>& commands);

    // Names and literals.
    std::string tableName(const ObjectInfo& object) const override;
    std::string columnName(const ColumnInfo& column) const override;
    std::string placeholder(std::size_t number, const Parameter& parameter) const override;
    std::string inlineText(const Datum& datum, const Type& type) const override;
    std::string inlined(int index, const Type& type, Parameter::Use use, const Expression* conversion) const override;
    std::string nullText(const Type& type) const override;

    // Queries.
    std::string derived(const std::string& query) const override { return "(" + query + ") AS \"orven.rows\""; }
    std::string direction(const OrderItem& order, const Expression* key) const override;
    std::string select(const Query& query, const Names* names) override;
    std::string deliveredRows(const Query& query) override { return deliveredRows(query, nullptr); }
    std::string deliveredRows(const Query& query, const Names* names);
    std::string unaskedOrder(const Query& query);
    std::string havingCondition(const Select& select) override;
    std::string distinctSelect(const Query& query, const Names* names) override;
    std::string madeDistinct(const std::string& rows, const Query& query, const Names& names) const override;
    std::string matched(const Query& query, const Names& names) override;
    std::size_t mostBranches() const override { return 10000; }
    std::string comparableQuery(const Query& query) override;
    std::string scalarQuery(const Query& query) override { return "(" + this->query(query) + ")"; }
    Groups groupedBy(const Select& select) const;
    void noteOuterSides(const Source& source, JoinSide side);

    // Expressions.
    std::string value(const Expression& expression) override;
    std::string waiting(const Expression& expression, const std::string& text) const;
    std::string integerArithmetic(const Expression& expression, const std::string& left,
                                  const std::string& right) override;
    std::string decimalArithmetic(const Expression& expression, const std::string& left,
                                  const std::string& right) override;
    std::string floatArithmetic(const Expression& expression, const std::string& left,
                                const std::string& right) override;
    std::string dateArithmetic(const Expression& expression) override;
    std::string equalityForm(const std::string& text) const override;
    std::string orderForm(const std::string& text) const override { return "orven.ts_order(" + text + ")"; }
    std::string comparable(const Expression& expression, Collation collation, Side side) override;
    std::string comparedName(const std::string& name, Collation collation) const override;
    std::string like(const Expression& expression) override;

    // Conversions.
    std::string conversion(const Expression& expression) override;
    std::string exactConversion(const Expression& inner, const Type& to);
    std::string storedConversion(const Expression& inner, const Type& to);
    std::string storedStyle(const Expression& cast);
    std::string converted(const std::string& text, const Type& from, const Expression& conversion);

    // Functions.
    std::string function(const Expression& call) override;
    std::string aggregate(const Expression& call);
    std::string builtin(const Expression& call);
    std::string argument(const Expression& operand, char kind);
    std::string argumentsOf(const Expression& call);

    const Query* delivered_ = nullptr;
    Groups groups_;             ///< by which the rows are grouped that the expression is of
    std::set<int> outerSides_;  ///< sources whose columns may be null by an outer join
};

/// The text cast to a type: CAST(x AS integer).
std::string castTo(const std::string& text, const std::string& type);
/// A value in the widest type of its family, by which functions are overloaded: integers as bigint.
std::string widened(const std::string& text, const Type& type);

}  // namespace orvenmod::store::tsql
