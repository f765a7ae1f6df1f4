// Fills a database that has just been created with the data of a small wholesaler of hardware and household goods:
// the same rows each time, so that pictures and measurements can be compared.
#pragma once

#include <functional>
#include <string>

namespace orvenmod::sample {

/// How many goods a database for looking around has.
inline constexpr int kUsualGoods = 360;
inline constexpr int kMostGoods = 1000000;

/// Gives every statement of the sample to `execute`, in their order. `goods` from 1 to kMostGoods.
void writeSample(const std::function<void(const std::string& sql)>& execute, int goods);

/// Adds everything in one transaction of the connection: orvenmod::Statements, or whatever has its calls. What a call
/// throws goes on to the caller, and nothing is added.
template <class Connection>
void fillSampleData(Connection& connection, int goods) {
    connection.beginTrans();
    try {
        writeSample([&connection](const std::string& sql) { connection.execute(sql); }, goods);
        connection.commitTrans();
    } catch (...) {
        if (connection.inTransaction()) connection.rollbackTrans();
        throw;
    }
}

}  // namespace orvenmod::sample
