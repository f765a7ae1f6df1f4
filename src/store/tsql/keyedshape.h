// Whether a bound query is of the kind that can be read by keys; see keyedlist.h.
#pragma once

#include <optional>
#include <set>
#include <vector>

#include "store/tsql/ast.h"
#include "store/tsql/catalog.h"
#include "store/tsql/shape.h"

namespace orvenmod::store::tsql {

/// Whether it is one select over one table or view, with an order, of nothing but columns.
bool isListOfColumns(const Query& query);

/// Whether it is a view's select of plain values over one table and what is joined to it by keys.
bool isViewByKeys(const Query& view, const Catalog& catalog);

/// The table at the left end of the joins.
const Source& drivingTable(const Source& source);

/// Whether a row of the table has a key that SQLite gives it and no column hides.
bool hasRowKey(const Source& table);

/// The positions of the columns of its one source that the expressions of a query name.
enum class Clauses { items, condition, conditionAndOrder };
std::set<int> columnsNamed(const Query& query, Clauses clauses);

/// The tables of the joins that these columns of the view need.
std::set<const Source*> tablesNeeded(const Query& view, const std::set<int>& columns);

/// The column of the driving table by whose equality form the rows can come instead of in the list's order, which is
/// the ascending one of a text that is never null. Null for none.
const Expression* columnOfOrder(const Query& list, const Query& view, const std::vector<Literal>& viewLiterals);

/// A joined table on which alone a condition stands, and of which a row must have one.
struct Partner {
    const Source* table;
    const Expression* key;        ///< of the table
    const Expression* reference;  ///< to it, a column of the driving table
};

/// The partner where the condition lets no row without one through.
std::optional<Partner> partnerOf(const Query& list, const Query& view);

/// What the condition of a list asks of a row.
enum class ConditionOn { nothing, joinedTables, drivingTable };
ConditionOn conditionOn(const Query& list, const Query& view);

}  // namespace orvenmod::store::tsql
