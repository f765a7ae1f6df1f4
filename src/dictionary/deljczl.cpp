#include "dictionary/deljczl.h"

#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "hierarchy/usageguard.h"

namespace orvenmod {

// The partner balances are probed for an entry as well, though its id comes from another counter.
bool delJCZL() {
    const auto deleteEntry = [] {
        openDB();
        const std::int32_t id = appState().gCurItemId;
        const std::string usage = usageOf(id, Guarded::entry);
        if (usage.empty()) {
            appState().gConn->execute("delete from tblSubType where fitemid=" + std::to_string(id));
        } else {
            showWarning(usage);
        }
        return usage.empty();
    };
    return trapped(deleteEntry, showWarning);
}

}  // namespace orvenmod
