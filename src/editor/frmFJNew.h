// A dialog that adds an attachment to the editor's list. No command of the component opens it; the suite may.
#pragma once

#include <memory>

#include "platform/window.h"

namespace orvenmod {

class frmFJNew {
public:
    static frmFJNew& instance();
    void show();

private:
    void PowerButton1_Click();

    std::unique_ptr<platform::Window> window_;
};

}  // namespace orvenmod
