#include "designer/saving.h"

#include <exception>

#include "frame/mdlMain.h"

namespace orvenmod {

bool saved(const std::function<void()>& work) {
    try {
        work();
        closeDB();
        return true;
    } catch (const std::exception& failure) {
        showCritical(failure.what());
        rollbackTrans();
        closeDB();
        return false;
    }
}

}  // namespace orvenmod
