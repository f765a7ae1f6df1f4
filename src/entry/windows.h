// Which windows the entries open. A window that isn't built has no opener, and its entry shows nothing.
#pragma once

#include <functional>

namespace orvenmod {

struct Windows {
    std::function<void()> frmBasicInfoList;
    std::function<void()> frmHSXM;
    std::function<void()> frmJCBasicInfo;
    std::function<void()> frmJCZLList;
};

/// The component's windows; a test may put its own openers in.
Windows& windows();

/// Shows the window modally where it has an opener.
void showModal(const std::function<void()>& opener);

}  // namespace orvenmod
