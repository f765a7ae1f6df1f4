// The window that adds a field to class gItemClassId. Its grid has one row a property: the label, the value that the
// user sets, and a hidden column with the value's code where it is chosen from a list. It stays open after a save.
#pragma once

#include <string>

#include "designer/classbrowser.h"
#include "designer/dialog.h"
#include "designer/newfield.h"

namespace orvenmod {

class frmHSXMDetailNew final : private Dialog {
public:
    /// The process's window, made on first use.
    static frmHSXMDetailNew& instance();

    /// Shows the window modally; after each save `opener` shows the fields of the class clicked last.
    void show(ClassBrowser& opener);

private:
    void connectEvents() override;
    void Form_Load() override;
    void Form_Unload();
    void layOutRows();
    bool loadFieldForm();
    bool proposeFieldName();
    void fillLookups();
    void fps1_ComboCloseUp(int Col, int Row, int SelChange);
    void setNumberRowsLocked(bool locked);
    bool checkInput();
    bool insert();
    void addField();
    void Toolbar1_ButtonClick(const std::string& key);
    void save();

    NewField typedField() const;
    bool refuse(const std::string& text, int row);

    ClassBrowser* opener_ = nullptr;
};

}  // namespace orvenmod
