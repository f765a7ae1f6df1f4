// A list's query as two: one that gives the keys of its rows in their order, and one that gives some rows by their
// keys. So a list of a million rows costs its keys, and of the rows those that somebody looks at.
//
//   select fNumber, fHName from vICItem where fUnit='把' order by fNumber
//
//   keys  SELECT v."orven.key" FROM (SELECT a.rowid AS "orven.key", .. FROM "ICItem" AS "a") AS v WHERE .. ORDER BY ..
//   rows  SELECT v."fNumber", v."fHName", v."orven.key" FROM (SELECT a.rowid AS "orven.key", ..) AS v WHERE
//   v."orven.key" IN
//         (SELECT value FROM json_each(?1))
//
// It is done where each row of the result is one of one table, the driving one, and reading it later gives the same:
//
//   - one table, or one view that was made here over tables that are joined to the driving one by a key of theirs, at
//     most one row each. A joined table that a query doesn't need is left out of it;
//   - columns as they are, and in a view also isnull(column, constant): nothing that could fail on a row, or give
//     another value tomorrow;
//   - an order, and no distinct, top, group or union.
//
// The order of texts is that of ts_order, which no index has. Without a condition the rows come by the index of the
// equality form instead, and their texts with them: that order is the same for texts of plain ASCII, and whoever reads
// the keys puts the others in their places. So do they where the condition is on joined tables alone, a category's:
// then the keys come as they are found, and each text would have to be fetched from a place of its own. As a category's
// codes mostly stand together, they are passed through from one of them on in both directions. Where the index of the
// code has the reference to the joined table too, that table alone is asked, and its key takes the place of the row's:
//
//   marks  SELECT v."orven.key" FROM (SELECT b."fItemId" AS "orven.key", .. FROM "tblItem" AS "b") AS v WHERE ..
//   from   SELECT rtrim("a"."fNumber") COLLATE NOCASE, "a".rowid, "a"."fItemId" FROM "ICItem" AS "a" WHERE .. >= ?1 ..
//
// Who walks through all rows mostly wants a column or two, which are read as they lie in the file, from the tables that
// they need: a sum of the driving table's numbers reads that table alone.
//
//   walk   SELECT v."fPrice", v."orven.key" FROM (SELECT a.rowid AS "orven.key", .. FROM "ICItem" AS "a") AS v
//          WHERE v."orven.key" BETWEEN ?1 AND ?2 ORDER BY v."orven.key"
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "store/tsql/catalog.h"
#include "store/tsql/translation.h"

namespace orvenmod::store::tsql {

/// The queries that put rows in order that were found as it came. Each gives a text in its equality form, the key of
/// its row, and a mark, which is what was found. All but the last come by the text, and of one text in any order.
struct TextOrder {
    std::string all;
    std::string from;        ///< those from its parameter on
    std::string before;      ///< those before its parameter, the last one first, without nulls
    std::string of;          ///< those of some marks, in any order; its one parameter is as that of KeyedList::rows
    bool oneRowEach = true;  ///< no two rows have one mark
};

/// The rows of another table instead of the keys: the marks are references to them.
struct PartnerList {
    Translation marks;
    TextOrder order;
};

struct KeyedList {
    enum class Order {
        told,   ///< the keys come in the order of the list
        ascii,  ///< they come as those of a TextOrder
        none,   ///< they come as they are found, and are the marks of `texts`
    };

    std::string greatestKey;  ///< the query of it
    Translation keys;
    Order order = Order::told;
    TextOrder texts;                          ///< with Order::none
    std::optional<PartnerList> partner = {};  ///< likewise, where indexes alone give its rows
    /// Its one parameter is a text, "[7,3]", and each row has its key behind the columns. They come in any order.
    Translation rows;
};

/// Nothing for a query that isn't of the kind. Throws Error as translateForSqlite() does.
std::optional<KeyedList> keyedList(std::string_view sql, const Catalog& catalog);

/// Some columns of a query that is of the kind, by their positions from 0, each once: of all rows of its driving table
/// whose keys stand between the two parameters, in the order of the keys, each with its key behind the columns. Whether
/// a row is one of the list only the list's keys tell. Throws as keyedList().
Translation keyedWalk(std::string_view sql, const Catalog& catalog, std::span<const int> columns);

}  // namespace orvenmod::store::tsql
