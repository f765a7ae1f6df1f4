#include <orvenmod/clsJCZL.h>

#include "entry/entry.h"
#include "entry/windows.h"
#include "frame/appstate.h"
#include "store/classrights.h"

namespace orvenmod {

clsJCZL::clsJCZL() {
    initializeClass();
    objectCreated();
}

clsJCZL::~clsJCZL() {
    dropConnectionOfObject();
    objectDestroyed();
}

bool clsJCZL::mainInterface(const std::string& strDBConnection) {
    const RunningEntry running;
    AppState& state = appState();
    state.gRightPrefix.assign(1, store::kDictionaryRights);
    state.gItemCalled = 1;
    state.gConnStr = strDBConnection;
    showModal(windows().frmJCBasicInfo);
    dropConnection();
    return false;
}

bool clsJCZL::mainSingleInterface(const std::int16_t& intIsReturn, const std::int16_t& intFitemClassId,
                                  const std::string& strDBConnection) {
    const RunningEntry running;
    AppState& state = appState();
    state.gRetName.clear();
    state.gRetNumber.clear();
    state.gRetItemId.clear();
    state.gRightPrefix.assign(1, store::kDictionaryRights);
    state.gIsReturn = intIsReturn;
    state.gItemCalled = intIsReturn;
    state.gConnStr = strDBConnection;
    state.gItemClassId = intFitemClassId;
    showModal(windows().frmJCZLList);
    fName = state.gRetName;
    fNumber = state.gRetNumber;
    fItemId = state.gRetItemId;
    dropConnection();
    return false;
}

}  // namespace orvenmod
