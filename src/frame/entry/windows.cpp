#include "frame/entry/windows.h"

#include "browser/frmBasicInfoList.h"
#include "designer/frmHSXM.h"

namespace orvenmod {

Windows& windows() {
    static Windows all{[] { frmBasicInfoList::instance().show(); }, [] { frmHSXM::instance().show(); }, {}, {}};
    return all;
}

void showModal(const std::function<void()>& opener) {
    if (opener) opener();
}

}  // namespace orvenmod
