// The rows of a list that may never be looked at, as the entries of a field that its user leaves alone: they are
// counted when the list is opened, and fetched whole when somebody looks at one.
//
//   editor opens     ten fields, each  select * from tblItem where .. order by fnumber    counted, 0.3 ms each
//   field dropped    its rows, those of the moment at which the list was opened           10 ms
//
// A snapshot is held meanwhile as for a list by its keys (keyedrows.h), one for all lists of a connection between which
// nobody has written. Its queries are of the same kind: nothing of them could fail on a row.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "store/listrows.h"
#include "store/sqlite/snapshot.h"

namespace orvenmod::store::sqlite {

struct UnseenLimits {
    /// A list over a table of so many rows, or of so few of its own, is fetched whole and holds nothing up.
    std::int64_t smallTable = 20'000;
    std::size_t fewRows = 1000;
    /// See KeyedLimits.
    std::uint64_t mostLog = 64ULL << 20;
};

/// The rows of a list that is of the kind, of what `connection` would read now. Null where it is to be fetched whole.
/// Throws Failure, tsql::Error.
std::unique_ptr<ListRows> openUnseenRows(Database& connection, const std::string& connectionString,
                                         SharedSnapshot& shared, std::string_view sql, const UnseenLimits& limits = {});

}  // namespace orvenmod::store::sqlite
