// The entries of one dictionary, to manage it or to pick one for the host. clsJCZL.mainSingleInterface shows it.
//
// One object for the process. It is loaded by show(), or unseen by the first call of loaded(), and stays loaded until
// the window in front of the host has closed.
#pragma once

#include <cstdint>
#include <memory>

#include "dictionary/refreshedlist.h"

namespace orvenmod {

class frmJCZLList : public EntryWindow {
public:
    static frmJCZLList& instance();

    /// Shows the window modally. A failure while it loads goes to the caller, and the window is gone.
    void show();
    /// The window, loaded unseen where it isn't yet.
    frmJCZLList& loaded();
    void unload();

    platform::ListGrid& vsf1() override;
    /// Reads the entries; with `fType` 0 also the dictionary's name into gItemName.
    bool getDetail(const std::int32_t& fItemClassId, const std::int16_t& fType = 0);
    bool refreshEntries(std::int16_t itemClassId) override { return getDetail(itemClassId, 1); }

private:
    // The parts of one loading.
    struct Loaded;

    frmJCZLList();
    ~frmJCZLList() override;

    void make();
    Loaded& form();

    void Form_Load();
    void cmd_Click(int Index);
    void vsf1_DblClick();
    void returnSelected();

    std::unique_ptr<Loaded> form_;
};

}  // namespace orvenmod
