// From and to a server of the dialect.
#include "store/copy/sides.h"

namespace orvenmod::store::test {

std::vector<Road> roads() {
    using enum SideKind;
    return {{embedded, server}, {server, embedded}};
}

}  // namespace orvenmod::store::test
