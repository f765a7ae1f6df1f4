// The manager of the dictionaries: all of them in a tree, the entries of the chosen one in a list.
// clsJCZL.mainInterface shows it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "dictionary/entrywindow.h"
#include "dictionary/frmJCZLType.h"

namespace orvenmod {

class frmJCBasicInfo : public EntryWindow, public DictionaryTree {
public:
    static frmJCBasicInfo& instance();

    void unload() override;

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

    bool isLoaded() const override { return form_ != nullptr; }
    platform::Window& make() override;
    EntryWindow& other() override;
    void connectEvents();
    void connectMenus();
    Loaded& form();

    void Form_Load() override;
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
