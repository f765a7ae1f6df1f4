// The editor of one item of a class. It has no fixed fields: it lays itself out from the class's metadata when it
// opens. It takes its orders from AppState (gEditMode, gItemClassId, gCurParentId, gCurItemId) and refreshes the list
// behind it when it closes after a save.
#pragma once

#include <memory>
#include <string>

#include "editor/listhost.h"

namespace orvenmod {

class frmBasicInfo {
public:
    /// The process's window, made on first use.
    static frmBasicInfo& instance();

    /// Shows the window modally over the list `host`, which may be none. A failure while it loads goes to the caller.
    void show(ListHost* host);
    bool isShown() const { return shown_ != nullptr; }

    /// Adds a row to the list of attachments. Throws std::logic_error where the window isn't shown.
    void addAttachment(const std::string& caption, const std::string& fileName);

private:
    struct Shown;

    void connectEvents();
    void Form_Load();
    void Form_Resize();
    void Form_Unload();
    void MenuFileSave_Click();
    void MenuNewAfterSave_Click();
    void Toolbar1_ButtonClick(const std::string& key);
    void newItem();
    void copyItem();
    void clearControlValue();
    bool checkEmpty();
    /// Brings the field's value to the front and puts the keyboard into it.
    void showField(int row);
    Shown& shown();

    std::unique_ptr<Shown> shown_;
    ListHost* host_ = nullptr;
};

}  // namespace orvenmod
