// Resolves a tree's names against a catalog, notes the types and puts in the server's silent conversions.
//
// Whether '5' stands beside a text or a number, and whether a name is a column, only the catalog tells. It is asked
// here and nowhere later, so that an emitter writes what it finds and every target fails alike.
//
//   select fname from tblItem where fitemid='5'   the literal gets a conversion to int
//   select fname from tblItem where fnumber=5     the column gets it: a text is below a number in precedence
//   select count(*), fname from tblItem           8120: fname is in no group
//
// A bound tree holds for every value of its literals, or else the literal is fixed: of "order by 2" and "order by 3"
// each has a translation of its own.
//
// binder.cpp has statements' common parts, binder_query.cpp queries, binder_grouping.cpp the rules of group by,
// binder_expression.cpp and binder_function.cpp expressions, binder_change.cpp and binder_ddl.cpp the rest.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "store/tsql/ast.h"
#include "store/tsql/catalog.h"
#include "store/tsql/shape.h"

namespace orvenmod::store::tsql {

class Binder {
public:
    Binder(const Catalog& catalog, const std::vector<Literal>& literals) : catalog_(catalog), literals_(literals) {}

    /// Throws Error for a name that doesn't exist and for what doesn't fit together.
    void bind(Statement& statement);

    /// The literals whose value the tree now depends on: a translation serves a statement only with equal ones.
    const std::set<int>& fixedLiterals() const { return fixed_; }

    /// Binds a view's query and names its columns, whether or not the view exists.
    void bindView(CreateViewStatement& statement);

    /// Text literals get their own length instead of the longest: for statements that are not shared.
    void useExactLengths() { exactLengths_ = true; }

private:
    struct Scope {
        std::vector<const Source*> sources;
        const Scope* parent = nullptr;
    };

    // Statements.
    void bindStatement(QueryStatement& statement);
    void bindStatement(InsertStatement& statement);
    void bindStatement(UpdateStatement& statement);
    void bindStatement(DeleteStatement& statement);
    void bindStatement(CreateTableStatement& statement);
    void bindStatement(AlterTableStatement& statement);
    void bindStatement(CreateIndexStatement& statement);
    void bindStatement(CreateViewStatement& statement);
    void bindStatement(DropStatement& statement);
    void bindStatement(TruncateStatement& statement);
    void bindStatement(TransactionStatement&) {}
    void bindInsertColumns(InsertStatement& statement);
    void bindInsertRows(InsertStatement& statement);
    void bindInsertQuery(InsertStatement& statement);
    void wrap(QueryPtr& query);
    const Source* bindTarget(const std::string& target, std::vector<SourcePtr>& from, Scope& scope);
    void assign(ExpressionPtr& value, const ObjectInfo& object, int column);
    void bindDefinition(ColumnDefinition& column);
    const ObjectInfo& findTable(const std::string& name, int missing) const;
    int columnOf(const ObjectInfo& object, const std::string& name) const;

    // Queries.
    void bindQuery(Query& query, const Scope* parent);
    void bindSelect(Query& query, const Scope* parent);
    void bindSetOperation(Query& query, const Scope* parent);
    void bindSources(std::vector<SourcePtr>& from, Scope& scope, const Scope* parent);
    void bindSource(Source& source, Scope& scope, const Scope* parent);
    void bindJoin(Source& source, Scope& scope, const Scope* parent);
    void nameDerivedColumns(Source& source);
    void addToScope(Source& source, Scope& scope);
    void expandStars(Select& select, const Scope& scope);
    void bindTop(Select& select);
    void bindOrderBy(Query& query, const Scope& scope);
    void bindSetOrderBy(Query& query);
    int itemNamed(const Select& select, const Expression& expression);
    int itemLike(const Select& select, const Expression& expression);
    int ordinalOf(const Expression& expression, std::size_t count);
    void coerceColumn(Query& query, std::size_t column, const Type& type);
    void checkGrouping(const Query& query);
    void checkGrouped(const Expression& expression, const Select& select, const std::set<const Source*>& own,
                      int error);
    void fixLiterals(const Expression& left, const Expression& right);

    // Expressions. A condition gives true or false, a value anything else.
    void bindCondition(ExpressionPtr& expression, const Scope& scope);
    void bindValue(ExpressionPtr& expression, const Scope& scope);
    void bindColumn(Expression& expression, const Scope& scope);
    void bindArithmetic(Expression& expression, const Scope& scope);
    void bindUnary(Expression& expression, const Scope& scope);
    void bindComparison(Expression& expression, const Scope& scope);
    void bindLike(Expression& expression, const Scope& scope);
    void bindInList(Expression& expression, const Scope& scope);
    void bindInQuery(Expression& expression, const Scope& scope);
    void bindBetween(Expression& expression, const Scope& scope);
    void bindCase(Expression& expression, const Scope& scope);
    void bindCast(Expression& expression, const Scope& scope);
    void bindSubquery(Expression& expression, const Scope& scope);
    void bindFunction(ExpressionPtr& expression, const Scope& scope);
    void bindAggregate(Expression& expression, const Scope& scope);
    void bindArguments(Expression& expression, const Scope& scope, std::string_view arguments);
    void bindIsNull(Expression& expression, const Scope& scope);
    void bindCoalesce(Expression& expression, const Scope& scope);
    void rewriteAsCase(ExpressionPtr& expression);
    Type literalType(const Expression& literal) const;
    Type operandType(const Expression& operand, const Type& other);
    Type numberOf(const Type& type) const;

    /// Puts a conversion over the expression where its type differs.
    void coerce(ExpressionPtr& expression, const Type& type);
    /// Converts the side of lower precedence where the classes differ; `op` for the message.
    void coercePair(ExpressionPtr& left, ExpressionPtr& right, const char* op);

    const Catalog& catalog_;
    const std::vector<Literal>& literals_;
    std::set<int> fixed_;
    bool exactLengths_ = false;
    // What an aggregate means depends on the clause that is being bound, however deep it stands there; the clause sets
    // these before it descends.
    int aggregateError_ = 0;         ///< the failure that an aggregate gives here; 0 where one may stand
    bool* aggregateSeen_ = nullptr;  ///< of the select that is being bound
    int nextId_ = 1;
    std::vector<SourcePtr> pseudoSources_;  ///< the tables to which check conditions are bound
};

bool isCondition(const Expression& expression);

}  // namespace orvenmod::store::tsql
