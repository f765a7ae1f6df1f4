// The manager of the dictionaries: all of them in a tree, the entries of the chosen one in a list.
// clsJCZL.mainInterface shows it.
//
// One object for the process. It is loaded by show(), or unseen by the first call of loaded(), and stays loaded until
// the window in front of the host has closed.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "dictionary/frmJCZLType.h"
#include "dictionary/refreshedlist.h"

namespace orvenmod {

class frmJCBasicInfo : public EntryWindow, public DictionaryTree {
public:
    static frmJCBasicInfo& instance();

    /// Shows the window modally. A failure while it loads goes to the caller, and the window is gone.
    void show();
    /// The window, loaded unseen where it isn't yet.
    frmJCBasicInfo& loaded();
    void unload();

    platform::Tree& tv1() override;
    platform::ListGrid& vsf1() override;
    void getListInfo(const std::int16_t& intType) override;
    bool getDetail(const std::int16_t& fItemClassId);
    bool refreshEntries(std::int16_t itemClassId) override { return getDetail(itemClassId); }
    bool exportToExcel();

private:
    // The parts of one loading.
    struct Loaded;

    frmJCBasicInfo();
    ~frmJCBasicInfo() override;

    void make();
    void connectEvents();
    void connectMenus();
    Loaded& form();

    void Form_Load();
    void Form_Resize();
    void tv1_NodeClick(const std::string& key);
    void Toolbar1_ButtonClick(const std::string& key);
    void MenuJCZLNew1_Click();
    void MenuJCZLUpdate1_Click();
    void MenuJCZLNew_Click();
    void MenuUpdateJCZL_Click();
    void MenuDelJCZL_Click();

    bool takeSelectedClass(const char* refusalOfRoot);

    std::unique_ptr<Loaded> form_;
};

}  // namespace orvenmod
