// The gate in front of every delete of a detail item and of a dictionary entry: what a bill or a balance of the suite
// still points to stays. Which columns of which bill can hold an id is read at each delete from the suite's catalogues
// of bill fields, so that a field added there is guarded at once. The probes run family by family, and the first family
// with a hit ends the guard.
#pragma once

#include <cstdint>
#include <string>

namespace orvenmod {

/// What an id belongs to. The catalogues tell the two apart; stock balances are kept of items alone.
enum class Guarded { item, entry };

/// What to tell the user of the first family with a hit, "" where nothing points to the id. Reads on gConn, which is
/// open; what fails goes to the caller.
std::string usageOf(std::int32_t id, Guarded what);

}  // namespace orvenmod
