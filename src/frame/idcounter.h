// Ids that follow each other, most of them given out by a counter of tblMaxNum.
#pragma once

#include <cstdint>

namespace orvenmod {

/// The statements on one counter. Each routine words them in its own way.
struct IdCounter {
    const char* read;     ///< its row, with fMaxNum: the id given out last
    const char* start;    ///< makes the row, with 1
    const char* advance;  ///< adds 1
};

/// The next id. It is taken on gConn, which is open, by two statements without a transaction: it is used up where what
/// follows fails. Throws what the store throws, and a ConversionFailure for a null and beyond 32 bits.
std::int32_t takeId(const IdCounter& counter);

/// The id, or the code of an item, behind the last one. Throws a ConversionFailure beyond 32 bits.
std::int32_t idAfter(std::int32_t last);

}  // namespace orvenmod
