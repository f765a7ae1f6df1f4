// Between files and PostgreSQL servers.
#include "store/copy/sides.h"

namespace orvenmod::store::test {

std::vector<Road> roads() {
    using enum SideKind;
    return {{embedded, embedded}, {embedded, postgres}, {postgres, embedded}, {postgres, postgres}};
}

}  // namespace orvenmod::store::test
