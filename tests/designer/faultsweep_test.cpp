// Each save is run once for each of its store operations with that one failing: metadata, table, view and counters stay
// as they were, the user hears of it, and the next press saves.
#include "designer/designertest.h"
#include "frame/mdlMain.h"

namespace orvenmod::test {
namespace {

/// Where a save's operations lie: 1 is the connect.
struct Course {
    int firstTrapped;  ///< what fails before goes up and leaves the store open, the connect apart
    int begin;         ///< what fails up to here has no transaction to roll back
    int commit;
};

class FaultSweep : public DesignerTest {
protected:
    void sweep(User& dialog, const Course& course, const std::function<void()>& press) {
        const std::string before = database().dump();
        for (int failing = 1; failing <= course.commit; ++failing) {
            SCOPED_TRACE("operation " + std::to_string(failing));
            stage.faults() = {.failAt = failing};
            dialog.answer(MessageKind::critical, kFault);
            const bool untrapped = failing < course.firstTrapped;
            if (!untrapped && failing <= course.begin) dialog.answer(MessageKind::critical, kNoTransaction);
            press();
            EXPECT_TRUE(dialog.window().shown());
            EXPECT_EQ(appState().gConn == nullptr, failing == 1 || failing > course.begin);
            closeDB();
            EXPECT_EQ(stage.connectionsAlive(), 0);
            EXPECT_EQ(database().dump(), before);
        }
        stage.faults() = {};
    }
};

TEST_F(FaultSweep, aNewClassLeavesNothingBehindWhateverStatementFails) {
    open([&](User& user) {
        stage.inNewClass(user, [&](User& dialog) {
            typeClass(dialog, {"50", "设备"});
            const auto press = [&] { dialog.click("cmdOK"); };
            sweep(dialog, {.firstTrapped = 3, .begin = 3, .commit = 30}, press);
            dialog.answer(MessageKind::information, kClassSaved);
            press();
            EXPECT_EQ(stage.faults().count, 32) << "30 of the save, and 2 of the tree behind";
        });
        EXPECT_TRUE(user.control<platform::Tree>("tv1").has("D50"));
    });
    stage.finish();
}

TEST_F(FaultSweep, aTreeThatCantBeRefreshedLeavesTheClassAndTheDialog) {
    open([&](User& user) {
        stage.inNewClass(user, [&](User& dialog) {
            typeClass(dialog, {"50", "设备"});
            stage.faults() = {.failAt = 32};
            dialog.answer(MessageKind::information, kClassSaved);
            dialog.answer(MessageKind::critical, kFault);
            dialog.click("cmdOK");
            EXPECT_TRUE(dialog.window().shown());
            stage.faults() = {};
        });
    });
    EXPECT_EQ(database().value("select fItemName from tblItemClass where fItemClassId=50"), "设备");
}

TEST_F(FaultSweep, aNewFieldLeavesNothingBehindWhateverStatementFails) {
    stage.withClass({"50", "设备"}, {{.name = "客户", .lookup = 1}});
    open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.inNewField(user, [&](User& dialog) {
            typeField(dialog, numberField("重量"));
            const auto press = [&] { dialog.clickTool("Save"); };
            sweep(dialog, {.firstTrapped = 2, .begin = 4, .commit = 16}, press);
            dialog.answer(MessageKind::information, kFieldSaved);
            press();
            EXPECT_EQ(stage.faults().count, 21) << "16 of the save, 3 of the grid behind, 2 of the proposal";
        });
    });
    EXPECT_TRUE(database().rows("select FSelfA2 from vtblSelfA1").empty());
    stage.finish();
}

TEST_F(FaultSweep, fieldSetupLeavesNothingBehindWhateverStatementFails) {
    stage.withClass({"50", "设备"}, {{.name = "客户", .lookup = 1}});
    database().execute("insert into tblSystemInfo(fTypeId,fValue) values(71,'1')");
    open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.inSetup(user, [&](User& dialog) {
            dialog.clickCell("fps1", 2, 4);
            const auto press = [&] { dialog.clickTool("Save"); };
            // connect, begin, 2 updates, the class, 6 for its view, 27 for the stock view, commit
            sweep(dialog, {.firstTrapped = 2, .begin = 2, .commit = 39}, press);
            dialog.answer(MessageKind::information, kFieldSaved);
            press();
            EXPECT_EQ(stage.faults().count, 39);
        });
    });
    EXPECT_TRUE(database().rows("select fStockPlaceIdNumber from vTimeStock").empty());
    stage.finish();
}

}  // namespace
}  // namespace orvenmod::test
