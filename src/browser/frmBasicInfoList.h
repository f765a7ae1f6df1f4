// The window that clsBasicInfo.mainInterface shows: categories on the left, search bar and list on the right, and for a
// bill the items chosen below. It serves as management window, as picker of one item and as picker of many items for a
// bill; the three differ by gIsReturn, gItemCalled and gItemClassId. It takes its orders from AppState and leaves its
// results there.
//
// One object for the process. Its controls and most of its values live from one show() to the end of it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "browser/billarea.h"
#include "browser/itemlist.h"
#include "browser/seekbar.h"
#include "editor/listhost.h"
#include "frame/scaling.h"
#include "hierarchy/listwindow.h"
#include "platform/controls.h"
#include "platform/window.h"

namespace orvenmod {

class frmBasicInfoList : public ListWindow, public ListHost {
public:
    /// The process's window, made on first use.
    static frmBasicInfoList& instance();

    /// Shows the window modally. A failure while it loads goes to the caller, and the window is gone. Throws
    /// std::logic_error where it is shown already.
    void show();

    // What other windows ask of this one while it is shown.
    platform::Tree& tv1() override;
    platform::ListGrid& vsf1() override;
    void getListInfo(std::int16_t intType) override;
    bool findInfo(std::int16_t intType);
    bool findInfo2(const std::string& strParamSQL) override;

    /// Writes the list to a file that the user names; false where none was named.
    bool exportToExcel();

private:
    // The parts of one showing.
    struct Shown;

    void connectEvents();
    void connectMenus();
    void hideFrame3();
    void setPos();

    void Form_Load();
    void buildCaptions();
    void Form_Resize();
    void Form_Unload();
    void tv1_NodeClick(const std::string& key);
    void vsf1_DblClick();
    void returnSelected();
    void cmdFind_Click();
    void cmdAddItem_Click();
    void Toolbar1_ButtonClick(const std::string& key);
    void exportAndTell();
    void connectHeading();

    void MenuEditNew_Click();
    void MenuEditUpdate_Click();
    void MenuImport_Click();

    Shown& shown();

    std::unique_ptr<Shown> shown_;
    std::int32_t treeItemId_ = 0;  // stays from the last use
};

}  // namespace orvenmod
