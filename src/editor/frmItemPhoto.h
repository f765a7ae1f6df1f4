// A dialog that shows and chooses an item's photo. No command of the component opens it; the suite may. It leaves its
// choice in gPhotoPath and gPhotoCleared.
#pragma once

#include <memory>

#include "platform/window.h"

namespace orvenmod {

class frmItemPhoto {
public:
    static frmItemPhoto& instance();
    void show();

private:
    void Form_Load();
    void getItemPhoto();
    void cmdOK_Click();
    void cmdClear_Click();

    std::unique_ptr<platform::Window> window_;
};

}  // namespace orvenmod
