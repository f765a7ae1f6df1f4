// The window that tells which fields of a class are visible and what they are called. Every save regenerates the
// class's view and the stock view. The class is that of frmItem.txtFItemClassId.
#pragma once

#include <string>

#include "designer/dialog.h"
#include "store/flight.h"

namespace orvenmod {

class frmHSXMDetailSetup final : private Dialog {
public:
    /// The process's window, made on first use.
    static frmHSXMDetailSetup& instance();

    /// Shows the window modally. A store that can't be reached is a failure of the caller.
    void show();

private:
    void connectEvents() override;
    void Form_Load() override;
    void Form_Unload();
    bool loadFieldList();
    bool saveFieldSetup();
    void updateFields(store::Flight& flight, const std::string& itemClass);
    void MenuUnLock_Click();
    void Toolbar1_ButtonClick(const std::string& key);
};

}  // namespace orvenmod
