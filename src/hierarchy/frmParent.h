// The dialog that creates (gEditMode 0) and changes (1) the categories of the current item class. It composes the full
// code from the parent's and the short code while the user types, and stays open after a save for the next category.
//
// An object serves one showing.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "hierarchy/categorychange.h"
#include "hierarchy/listwindow.h"
#include "platform/controls.h"
#include "platform/window.h"

namespace orvenmod {

class frmParent {
public:
    /// The window behind outlives the dialog; its tree is read again when the dialog closes after a save.
    explicit frmParent(ListWindow& behind);

    void show();

private:
    void connectEvents();
    void Form_Load();
    void Form_Unload();
    void cmb_Click();
    void shortCode_Change();
    void cmdOperate_Click();

    bool loadParentInfo();
    void listParents();
    void selectParent(const std::string& id);
    void showCategory();
    bool checkInput();
    bool insertParent();
    bool updateParent();

    std::string parentCell(int column) const;
    std::string composedCode(const std::string& shortCode) const;
    CategoryChange entered() const;

    ListWindow& behind_;
    std::unique_ptr<platform::Window> window_;
    platform::Tabs& SSTab1_;
    platform::Combo& cmb_;   // what the user sees | the parent's id | its code
    platform::Edit& name_;   // txt(0)
    platform::Edit& short_;  // txt(1)
    platform::Edit& code_;   // txt(2)
    platform::Button& cmdOperate_;
    bool saved_ = false;
};

}  // namespace orvenmod
