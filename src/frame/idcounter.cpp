#include "frame/idcounter.h"

#include "frame/conversion.h"
#include "frame/openrows.h"

namespace orvenmod {

std::int32_t takeId(const IdCounter& counter) {
    const store::Recordset row = openRows(counter.read);
    const std::int32_t last = row.eof() ? 0 : toInt32(required(row.field("fmaxnum")));
    appState().gConn->execute(row.eof() ? counter.start : counter.advance);
    // The store has refused to advance a counter of 32 bits any further; a wider column would let it pass.
    return idAfter(last);
}

std::int32_t idAfter(std::int32_t last) { return toInt32(last + 1.0); }

}  // namespace orvenmod
