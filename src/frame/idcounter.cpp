#include "frame/idcounter.h"

#include <limits>

#include "frame/conversion.h"
#include "frame/openrows.h"

namespace orvenmod {

namespace {
constexpr int kOverflow = 6;
}

std::int32_t takeId(const IdCounter& counter) {
    const store::Recordset row = openRows(counter.read);
    const std::int32_t last = row.eof() ? 0 : toInt32(required(row.field("fmaxnum")));
    appState().gConn->execute(row.eof() ? counter.start : counter.advance);
    // The store has refused to advance a counter of 32 bits any further; a wider column would let it pass.
    if (last == std::numeric_limits<std::int32_t>::max()) throw ConversionFailure(kOverflow, "溢出");
    return last + 1;
}

}  // namespace orvenmod
