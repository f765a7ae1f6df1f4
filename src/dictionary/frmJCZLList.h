// The entries of one dictionary, to manage it or to pick one for the host. clsJCZL.mainSingleInterface shows it.
#pragma once

#include <cstdint>
#include <memory>

#include "dictionary/entrywindow.h"

namespace orvenmod {

class frmJCZLList : public EntryWindow {
public:
    static frmJCZLList& instance();

    void unload() override;

    platform::ListGrid& vsf1() override;
    /// Reads the entries; with `fType` 0 also the dictionary's name into gItemName.
    bool getDetail(const std::int32_t& fItemClassId, const std::int16_t& fType = 0);
    bool refreshEntries(std::int16_t itemClassId) override { return getDetail(itemClassId, 1); }

private:
    // The parts of one loading.
    struct Loaded;

    frmJCZLList();
    ~frmJCZLList() override;

    bool isLoaded() const override { return form_ != nullptr; }
    platform::Window& make() override;
    EntryWindow& other() override;
    Loaded& form();

    void Form_Load() override;
    void cmd_Click(int Index);
    void vsf1_DblClick();
    void returnSelected();

    std::unique_ptr<Loaded> form_;
};

}  // namespace orvenmod
