// Writes a bound tree as SQLite's text; what is shared with other targets stands in emitter.h. Queries stand in
// sqlite_emitter_query.cpp, arithmetic in _arithmetic.cpp, comparisons in _comparison.cpp, conversions in
// _conversion.cpp, functions in _function.cpp (and their plain forms in _plain.cpp), changes in _change.cpp,
// definitions in _ddl.cpp.
//
//                      shared                                   stored
//   fitemid/2          ts_idiv("tblItem"."fitemid", ?1)         ("tblItem"."fitemid" / 2)
//   left(fname,3)      ts_left("tblItem"."fname", ?1)           substr("tblItem"."fname", 1, 3)
//
// Texts are equal, grouped and indexed as rtrim(x) COLLATE NOCASE, and ordered as rtrim(x) COLLATE ts_order, for which
// no index is kept.
#pragma once

#include <string>
#include <vector>

#include "store/tsql/emitter.h"

namespace orvenmod::store::tsql {

class SqliteEmitter : public Emitter {
public:
    explicit SqliteEmitter(const std::vector<Literal>& literals) : Emitter(literals) {}

protected:
    std::string tableName(const ObjectInfo& object) const override { return quoteName(object.name); }
    std::string derived(const std::string& query) const override { return "(" + query + ")"; }
    std::string equalityForm(const std::string& text) const override;
    std::string like(const Expression& expression) override;
    /// Between what the texts stand that match a pattern with a plain beginning.
    std::string likeBounds(const Expression& expression);

private:
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
    std::string columnDefinition(const ColumnDefinition& column, const std::vector<KeyConstraint>& keys);
    void addTableExtras(const CreateTableStatement& statement, const std::vector<ColumnInfo>& columns);
    std::string storedDefault(const ColumnDefinition& column);
    void dropColumn(const ObjectInfo& table, const std::string& column);
    void dropConstraint(const AlterTableStatement& statement, const std::string& name);
    void addKeyIndex(const std::string& table, const KeyConstraint& key, const std::vector<ColumnInfo>& columns);
    std::string indexColumns(const std::vector<IndexColumn>& columns, const std::vector<ColumnInfo>& known) const;

    // Names, literals and queries.
    std::string columnName(const ColumnInfo& column) const override { return quoteName(column.name); }
    std::string placeholder(std::size_t number, const Parameter&) const override {
        return "?" + std::to_string(number);
    }
    std::string inlineText(const Datum& value, const Type& type) const override;
    std::string nullText(const Type&) const override { return "NULL"; }
    std::string signsBesideDigits(const std::string& text) const override { return text + " GLOB '*[^0-9]*'"; }
    std::string inByteOrder(const std::string& text) const override { return text; }
    std::string direction(const OrderItem& order, const Expression*) const override {
        return order.descending ? " DESC" : "";
    }
    std::string distinctSelect(const Query& query, const Names* names) override;
    std::string madeDistinct(const std::string& rows, const Query& query, const Names& names) const override;
    std::string matched(const Query& query, const Names& names) override;
    /// SQLite takes 500 selects in one compound.
    std::size_t mostBranches() const override { return 200; }
    std::string comparableQuery(const Query& query, const Type& common) override;
    std::string scalarQuery(const Query& query) override;
    std::string groupByItems(const Select& select);

    // Expressions.
    std::string integerArithmetic(const Expression& expression, const std::string& left,
                                  const std::string& right) override;
    std::string decimalArithmetic(const Expression& expression, const std::string& left,
                                  const std::string& right) override;
    std::string floatArithmetic(const Expression& expression, const std::string& left,
                                const std::string& right) override;
    std::string dateArithmetic(const Expression& expression) override;
    std::string unary(const Expression& expression) override;
    std::string conversion(const Expression& expression) override;
    std::string storedConversion(const std::string& inner, const Type& from, const Type& to);
    std::string storedStyle(const Expression& cast);

    // Comparisons.
    std::string orderForm(const std::string& text, const Type& type) const override;
    bool ordersByForm(const Type& type) const override { return type.isText() || type.isWideDecimal(); }
    std::string comparable(const Expression& expression, Collation collation, Side side, const Type& common) override;
    std::string comparedName(const std::string& name, const Type& type, Collation collation,
                             const Type& common) const override;
    std::string comparison(const Expression& expression) override;
    std::string between(const Expression& expression) override;
    bool comparesByNumber(const Expression& left, const Expression& right) const;
    std::string ordered(const Expression& column, Operator op, const Expression& number);
    std::string comparedNumber(const std::string& text, const Type& type, Collation collation,
                               const Type& common) const;
    const char* orderCollation() const;
    std::string storedLike(const Expression& expression);

    // Functions.
    std::string function(const Expression& call) override;
    std::string aggregate(const Expression& call);
    std::string total(const Expression& call, const std::string& distinct, const std::string& operand);
    std::string storedFunction(const Expression& call);
    std::string storedDateFunction(const Expression& call);
    std::string builtin(const Expression& call);
};

/// The call of a function of decimals, which takes precision and scale of its result behind its arguments.
std::string sized(const std::string& function, const std::string& arguments, const Type& type);

}  // namespace orvenmod::store::tsql
