// The commands of the item list that change a category or a detail without opening the editor. The list's window calls
// them from its menus; they have no failure handler of their own.
#pragma once

#include "hierarchy/listwindow.h"

namespace orvenmod {

class ItemCommands {
public:
    explicit ItemCommands(ListWindow& list) : list_(list) {}

    void MenuEditDelete_Click();
    void MenuLockDetail_Click();
    void MenuUnLockDetail_Click();
    /// Shows which bills use the selected item.
    void MenuItemUsage_Click();
    void MenuParentEditNew_Click();
    void MenuParentEditUpdate_Click();
    void MenuParentEditDelete_Click();

private:
    ListWindow& list_;
};

}  // namespace orvenmod
