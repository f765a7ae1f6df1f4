// The dialog that creates a dictionary. gEditMode decides how it looks, gDictTypeEditMode what its button does: the two
// are separate, so that a dialog opened for a change still creates, and is refused since the id is taken.
//
// An object serves one showing.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/controls.h"
#include "platform/tree.h"
#include "platform/window.h"

namespace orvenmod {

/// The window behind the dialog: it shows the dictionaries in a tree.
class DictionaryTree {
public:
    virtual ~DictionaryTree() = default;

    virtual platform::Tree& tv1() = 0;
    /// Reads the tree again. What fails goes to the caller.
    virtual void getListInfo(const std::int16_t& intType) = 0;
};

class frmJCZLType {
public:
    /// The window behind outlives the dialog.
    explicit frmJCZLType(DictionaryTree& behind);
    void show();

private:
    void Form_Load();
    void cmdOK_Click();
    bool checkInput();
    bool getBillInfo();
    bool insert();
    bool update();
    void showInserted();
    void showUpdated();

    DictionaryTree& behind_;
    std::unique_ptr<platform::Window> window_;
    platform::Edit& txt1_;
    platform::Edit& txt_;
    platform::Button& cmdOK_;
};

}  // namespace orvenmod
