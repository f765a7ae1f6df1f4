// What the designer's dialogs ask of the window behind them. Implemented by frmHSXM; a failure goes to the caller
// unless told otherwise.
#pragma once

#include <cstdint>
#include <string>

namespace orvenmod {

class ClassBrowser {
public:
    virtual ~ClassBrowser() = default;

    /// Fills the tree of classes anew.
    virtual void getListInfo() = 0;
    /// Shows the fields of class `strParam`. False after a failure, which it shows itself; a store that can't be
    /// reached is a failure of the caller.
    virtual bool findInfo(const std::string& strParam, std::int16_t intType) = 0;
};

}  // namespace orvenmod
