// The dialog that makes an item class of three typed values: its id, its name and its table.
#pragma once

#include <string>

#include "designer/classbrowser.h"
#include "designer/dialog.h"

namespace orvenmod {

class frmHSXMNew final : private Dialog {
public:
    /// The process's window, made on first use.
    static frmHSXMNew& instance();

    /// Shows the dialog modally; after a save it closes itself and has `opener` fill its tree anew.
    void show(ClassBrowser& opener);

private:
    void connectEvents() override;
    void Form_Load() override;
    void proposeTableName();
    bool checkInput();
    bool insert();
    void cmdOK_Click();

    bool refuse(const std::string& text, const char* name, int index);

    ClassBrowser* opener_ = nullptr;
};

}  // namespace orvenmod
