// The gate in front of every delete of a detail item and of a dictionary entry: what a bill or a balance of the suite
// still points to stays. Which columns of which bill can hold an id is read at each delete from the suite's catalogues
// of bill fields, so that a field added there is guarded at once. The probes run family by family, and the first family
// with a hit ends the guard.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orvenmod {

/// What differs between the two deletes.
struct GuardedDelete {
    int catalogueType = 1;                ///< fFieldType of the bill fields: 1 items, 2 dictionary entries
    bool locks = true;                    ///< a disabled one is refused by name
    bool stockBalances = true;            ///< stock balances are probed
    std::vector<std::string> statements;  ///< the deletes, each up to the id
    bool inTransaction = true;            ///< the deletes run in one, which a failure rolls back
    void (*showFailure)(const std::string&) = nullptr;
};

/// True where the id was deleted. Shows refusals and failures itself. With `inTransaction`, the rollback of a failure
/// among the probes fails in its turn; that second failure goes to the caller and leaves the store open.
bool deleteUnused(std::int32_t id, const GuardedDelete& what);

}  // namespace orvenmod
