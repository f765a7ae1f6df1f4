// What the categories' dialog and the commands need of the window that shows an item class: its tree, its list and the
// call that reads them again. Implemented by that window, called from its own events. One thread, the host's.
#pragma once

#include <cstdint>

#include "platform/listgrid.h"
#include "platform/tree.h"

namespace orvenmod {

class ListWindow {
public:
    virtual ~ListWindow() = default;

    /// The categories: the root "D0", a category "D" + its id.
    virtual platform::Tree& tv1() = 0;
    /// The details: column 1 of a data row is the item's id.
    virtual platform::ListGrid& vsf1() = 0;
    /// Reads the tree (1), the list (2) or both (3) again. What fails goes to the caller.
    virtual void getListInfo(std::int16_t intType) = 0;
};

}  // namespace orvenmod
