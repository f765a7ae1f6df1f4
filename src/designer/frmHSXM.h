// The designer's main window, shown by clsHSXMManage.mainInterface: the tree of item classes on the left, the fields of
// the class clicked on the right. It changes nothing itself; new classes, new fields and field setup are dialogs of
// their own. No right is tested: whoever can open it can change the schema.
//
// One object for the process; its controls live from one show() to the end of it.
#pragma once

#include <string>
#include <vector>

#include "designer/classbrowser.h"
#include "designer/dialog.h"
#include "frame/scaling.h"
#include "platform/keys.h"

namespace orvenmod {

class frmHSXM final : private Dialog, private ClassBrowser {
public:
    /// The process's window, made on first use.
    static frmHSXM& instance();

    /// Shows the window modally. A failure while it loads goes to the caller, and the window is gone. Throws
    /// std::logic_error where it is shown already.
    void show();

private:
    void connectEvents() override;
    void Form_Load() override;
    void Form_Resize();

    void getListInfo() override;
    bool findInfo(const std::string& strParam, std::int16_t intType) override;
    void fillGrid(const std::string& strParam);

    void tv1_NodeClick(const std::string& key);
    void vsf1_MouseDown(platform::MouseButton button);
    void Toolbar1_ButtonClick(const std::string& key);
    void MenuExit_Click();
    void MenuHSXMNew_Click();
    void MenuDetailNew_Click();
    void MenuDetailSetup_Click();

    std::string selectedClass() const;

    std::vector<ControlPos> positions_;
};

}  // namespace orvenmod
