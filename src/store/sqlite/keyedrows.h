// A list's rows by their keys: see tsql/keyedlist.h.
//
// The keys are read at once, eight bytes a row, the rows a window at a time when one of them is looked at. A handle of
// its own holds a read transaction meanwhile, so that the rows are those of the moment at which the list was opened,
// whoever saves what since:
//
//   here                             elsewhere
//   list: keys 1 2 3, window of 1
//                                    update 2; delete 3; commit      goes on at once
//   row 2: as it was
//
// What that costs is the log of the database: none of it can be used again while an older reader is there. When it is
// as long as a bound the rows are fetched whole and the transaction ends.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "store/listrows.h"
#include "store/sqlite/databasefile.h"

namespace orvenmod::store::sqlite {

struct KeyedLimits {
    /// A list over a table of so many rows is fetched whole, since that hardly takes longer.
    std::int64_t smallTable = 20'000;
    /// So few rows are all fetched by their keys, and hold nothing up.
    std::size_t fewRows = 4096;
    /// A day of a few clerks' saves stays below; to read that much again takes a reader less than a second. Not counted
    /// from the opening: who saves opens the list anew, and a reader would always be there.
    std::uint64_t mostLog = 64ULL << 20;
};

/// Whose list it is.
struct ListSource {
    std::string connectionString;
    DatabaseFile::Identity file;  ///< that the connection has open
    std::function<void()> progress;
};

/// The rows of a list that is of the kind. Null where it must be fetched whole: for its shape, or where no snapshot can
/// be held beside writers. Throws Failure, tsql::Error.
std::unique_ptr<ListRows> openByKeys(const ListSource& source, std::string_view sql, const KeyedLimits& limits = {});

}  // namespace orvenmod::store::sqlite
