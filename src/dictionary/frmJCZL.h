// The dialog that creates (gEditMode 0) or changes (1) one entry of the dictionary gItemClassId. It stays open after a
// save.
//
// An object serves one showing.
#pragma once

#include <memory>
#include <string>

#include "platform/controls.h"
#include "platform/window.h"

namespace orvenmod {

class frmJCZL {
public:
    frmJCZL();
    void show();

private:
    void Form_Load();
    void cmdOK_Click();
    bool getDetailInfo();
    bool insertDetail();
    bool updateDetail();
    bool checkInput(void (*showRefusal)(const std::string&));

    std::unique_ptr<platform::Window> window_;
    platform::Edit& code_;  // txt(0)
    platform::Edit& name_;  // txt(1)
    platform::Button& cmdOK_;
};

}  // namespace orvenmod
