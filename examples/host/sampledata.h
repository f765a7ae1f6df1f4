// Fills a database that has just been created with the data of a small wholesaler of hardware and household goods:
// the same rows each time, so that pictures and measurements can be compared.
#pragma once

#include "store/connection.h"

namespace orvenmod::sample {

/// How many goods a database for looking around has.
inline constexpr int kUsualGoods = 360;
inline constexpr int kMostGoods = 1000000;

/// Adds everything in one transaction. `goods` from 1 to kMostGoods. Throws store::Failure, and then adds nothing.
void fillSampleData(store::Connection& connection, int goods);

}  // namespace orvenmod::sample
