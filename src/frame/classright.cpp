#include "frame/classright.h"

#include "frame/appstate.h"
#include "frame/mdlMain.h"

namespace orvenmod {

bool isClassRightGranted(const char* digits) {
    return isHaveRight(appState().gRightPrefix + std::to_string(appState().gItemClassId) + digits);
}

}  // namespace orvenmod
