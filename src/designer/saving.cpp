#include "designer/saving.h"

#include <exception>

#include "frame/appstate.h"
#include "frame/mdlMain.h"

namespace orvenmod {

bool saved(const std::function<void()>& work) {
    try {
        work();
        closeDB();
        return true;
    } catch (const std::exception& failure) {
        showCritical(failure.what());
        appState().gConn->rollbackTrans();
        closeDB();
        return false;
    }
}

}  // namespace orvenmod
