// A window that is never shown: its text boxes carry values between the designer's windows. They last until
// frmHSXMDetailNew or frmHSXMDetailSetup closes.
#pragma once

#include <string>

namespace orvenmod {

struct frmItem {
    std::string txtFItemClassId;  ///< the class of field setup; part of the name proposed for a new field
    std::string txtIsUpdate;      ///< "0" lets frmHSXMNew save
    std::string txtParamSQL;      ///< the class id of the tree node clicked last
    std::string txtTable;         ///< the table of the class whose fields are shown

    static frmItem& instance();
    /// Empties all four.
    void unload() { *this = {}; }
};

}  // namespace orvenmod
