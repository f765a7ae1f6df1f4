#include "entry/windows.h"

#include "browser/frmBasicInfoList.h"
#include "designer/frmHSXM.h"
#include "dictionary/frmJCBasicInfo.h"
#include "dictionary/frmJCZLList.h"

namespace orvenmod {

Windows& windows() {
    static Windows all{[] { frmBasicInfoList::instance().show(); }, [] { frmHSXM::instance().show(); },
                       [] { frmJCBasicInfo::instance().show(); }, [] { frmJCZLList::instance().show(); }};
    return all;
}

void showModal(const std::function<void()>& opener) {
    if (opener) opener();
}

}  // namespace orvenmod
