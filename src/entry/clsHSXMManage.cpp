#include <orvenmod/clsHSXMManage.h>

#include "entry/entry.h"
#include "entry/windows.h"
#include "frame/appstate.h"
#include "store/classrights.h"

namespace orvenmod {

clsHSXMManage::clsHSXMManage() {
    initializeClass();
    objectCreated();
}

clsHSXMManage::~clsHSXMManage() {
    dropConnectionOfObject();
    objectDestroyed();
}

bool clsHSXMManage::mainInterface() {
    const RunningEntry running;
    appState().gRightPrefix.assign(1, store::kClassRights);
    appState().gConnStr = DBConnection;
    showModal(windows().frmHSXM);
    dropConnection();
    return false;
}

}  // namespace orvenmod
