// What the tests of frmBasicInfoList share: a stage with four goods and a small, known list and search bar.
#pragma once

#include <gtest/gtest.h>

#include <orvenmod/clsBasicInfo.h>

#include <string>

#include "frame/appstate.h"
#include "platform/controls.h"
#include "platform/entrygrid.h"
#include "platform/listgrid.h"
#include "platform/tree.h"
#include "support/stage.h"
#include "support/windowtest.h"

namespace orvenmod::test {

/// The arguments of an entry.
struct Call {
    std::int16_t itemClass = 3;
    std::int16_t isReturn = 0;
    Variant itemCalled = {};
    Variant paramSql = {};
    std::string findValue = {};
};

inline const Call kManagement{};
inline const Call kPicker{.isReturn = 1};
inline const Call kBillPicker{.isReturn = 1, .itemCalled = 1};

/// User 7 of the suite in the temporary folder, an administrator, on a database with the goods of Database::addGoods.
/// Class 3 lists code, name, model, stock and smallest quantity and searches code, name, smallest quantity and the day
/// it was filed.
class BrowserStage : public Stage {
public:
    explicit BrowserStage(MakeScript makeScript = newMemoryScript);
    BrowserStage(MakeScript makeScript, std::unique_ptr<Site> site);

    /// Opens the window, plays the steps and closes it; every box must have been answered.
    void open(const Call& call, const Steps& steps);
    /// Opens the window for one whose load fails.
    void openInVain(const Call& call, const std::string& failure);

    /// Behind the connection string of the next entries, such as ";Busy Timeout=50".
    std::string connectionSuffix;

    /// What stood in the properties after the last open.
    std::string fItemId, fNumber, fName;

private:
    void prepare();
};

/// fNumber, fName, fModel, fTimeQty, fMinQty and searches for class 3.
void seedGoodsLists(Database& database);

/// The first shown columns of the list: all data rows, the columns from 2 to `lastColumn`.
Rows listRows(User& user, int lastColumn = 3);
/// The codes of the list's rows.
Texts codes(User& user);

class BrowserTest : public ::testing::Test {
protected:
    Database& database() { return stage.database(); }
    Script& script() { return stage.script(); }
    /// Expects the editor to open next, in the mode and on the item (-1 for any), and closes it.
    void expectEditor(std::int16_t mode, std::int32_t item = -1) {
        script().onWindow("frmBasicInfo", [mode, item](User&) {
            EXPECT_EQ(appState().gEditMode, mode);
            if (item >= 0) {
                EXPECT_EQ(appState().gCurItemId, item);
            }
        });
    }

    BrowserStage stage;
};

}  // namespace orvenmod::test
