#include "dictionary/deljczl.h"

#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "hierarchy/usageguard.h"

namespace orvenmod {

// The partner balances are probed for an entry as well, though its id comes from another counter.
bool delJCZL() {
    GuardedDelete entry;
    entry.catalogueType = 2;
    entry.locks = false;
    entry.stockBalances = false;
    entry.statements = {"delete from tblSubType where fitemid="};
    entry.inTransaction = false;
    entry.showFailure = showWarning;
    return deleteUnused(appState().gCurItemId, entry);
}

}  // namespace orvenmod
