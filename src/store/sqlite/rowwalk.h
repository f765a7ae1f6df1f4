// Some columns of all rows of a list, as they lie in the file: see tsql/keyedlist.h. Rows whose keys stand close to
// each other come in one run, since to step over a few that aren't the list's takes less than to find the next one:
//
//   keys  3 4 7 | 900 901      between 3 and 7, between 900 and 901
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "store/recordset.h"
#include "store/sqlite/keyquery.h"
#include "store/tsql/translation.h"

namespace orvenmod::store::sqlite {

/// The positions of keys, no two of which are equal, in the order of the keys.
std::vector<std::uint32_t> positionsByKey(const Keys& keys);

class RowWalk {
public:
    /// `walk` as tsql::keyedWalk() makes it. Throws Failure.
    RowWalk(Database& database, const tsql::Translation& walk);

    /// The rows of keys that ascend, in their order. Throws Failure, tsql::Error.
    Recordset read(std::span<const std::int64_t> keys);

private:
    void readRun(std::span<const std::int64_t> keys, Recordset& rows);
    [[noreturn]] void failOnMissingRow();

    Database& database_;
    std::vector<tsql::ResultColumn> columns_;
    Statement statement_;
};

}  // namespace orvenmod::store::sqlite
