// What the tests of the editor share: a stage with four goods, two suppliers and a class of seven fields.
//
//   row   1 短代码 | 2 代码 (locked) | 3 名称 | 4 规格型号 | 5 最低库存 (number) | 6 建档日期 (date) | 7 主供应商
//   (lookup)
//         8 所属分类
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "editor/fieldrow.h"
#include "editor/listhost.h"
#include "frame/appstate.h"
#include "platform/controls.h"
#include "platform/entrygrid.h"
#include "support/stage.h"
#include "support/windowtest.h"

namespace orvenmod::test {

using platform::EntryGrid;

inline constexpr int kModelRow = 4;
inline constexpr int kMinQtyRow = 5;
inline constexpr int kDayRow = 6;
inline constexpr int kSupplierRow = 7;
inline constexpr int kCategoryRow = 8;

/// The list behind the editor: notes what it was asked.
class NotedList : public ListHost {
public:
    bool findInfo2(const std::string& strParamSQL) override {
        refreshes.push_back(strParamSQL);
        return true;
    }
    Texts refreshes;
};

/// What the list tells the editor: goods, an administrator, the title of the boxes.
void chooseGoods(const std::string& connectionString);

class EditorStage : public Stage {
public:
    explicit EditorStage(MakeScript makeScript = newMemoryScript);
    EditorStage(MakeScript makeScript, std::unique_ptr<Site> site);

    /// Opens the editor for a new item under the category, plays the steps and closes it.
    void openNew(const Steps& steps, int category = 0);
    /// Opens it for the item.
    void openItem(int item, const Steps& steps);

    /// A file in the test's own folder.
    std::string makeFile(const std::string& name, const std::string& content);
    /// A stored attachment of item 101.
    void storeAttachment(int entry, const std::string& fileName, const std::string& content);

    NotedList list;

private:
    void prepare();
    void open(const Steps& steps);
};

/// A bitmap of one red pixel.
const std::string& redBitmap();

/// The value column of the rows from 1.
Texts values(User& user);
std::string value(User& user, int row);
std::string chosenId(User& user, int row);
/// Types the name that every item must have.
void typeName(User& user, const std::string& name);

class EditorTest : public ::testing::Test {
protected:
    Database& database() { return stage.database(); }
    Script& script() { return stage.script(); }
    /// tblItem's row as texts.
    Rows item(int id);
    Rows goods(int id);

    EditorStage stage;
};

}  // namespace orvenmod::test
