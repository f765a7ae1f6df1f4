// Where the keyboard goes in frmBasicInfoList, so that a clerk with a keypad or a scanner needs no mouse:
//
//   search text --Up, Down, or Enter on the search button--> list --Enter--> quantity --Enter--> the list's next row
//   list --a letter or a digit--> search text
#pragma once

#include <string>

#include "platform/controls.h"
#include "platform/entrygrid.h"
#include "platform/listgrid.h"
#include "platform/window.h"

namespace orvenmod {

class ListKeys {
public:
    explicit ListKeys(platform::Window& window);

    void connect();
    /// To the list where it has rows, else to the value that is searched.
    void toListOrSearch();

private:
    void txtSearch_KeyDown(int key);
    void vsf1_Typed(const std::string& text);
    void fps1_LeftByEnter();
    bool standsOnLastAdded() const;

    platform::ListGrid& vsf1_;
    platform::EntryGrid& fps1_;
    platform::Edit& txtSearch_;
    platform::DatePicker& dtp_;
};

}  // namespace orvenmod
