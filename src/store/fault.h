// Fails an operation of a store on demand, for fault sweeps: run a command once to count its operations, then
// once for each n with the n-th failing.
#pragma once

#include <memory>
#include <string>

#include "store/connection.h"

namespace orvenmod::store {

/// Which operation is to fail, and how many there have been: connect, execute, open, openList, openUnseen, each
/// fetch of a list's rows and each tending of them where they aren't fetched whole, openTable, update of a table row,
/// each part of a read, outline, openLoader, each call of a loader, begin, commit and rollback each count as one. A
/// failing operation has no effect on the target.
struct FaultPlan {
    int count = 0;
    int failAt = 0;  ///< 1 for the first; 0 for none
    int times = 1;   ///< how many fail from there on
    std::string text = "注入的故障";
    int number = 50000;  ///< no store gives it
};

class FaultyStore : public Store {
public:
    FaultyStore(Store& target, FaultPlan& plan);
    std::unique_ptr<Connection> connect(const std::string& connectionString) override;

private:
    Store& target_;
    FaultPlan& plan_;
};

}  // namespace orvenmod::store
