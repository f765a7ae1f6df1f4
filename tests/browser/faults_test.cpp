// Every command of the window with each of its store operations failing in turn: the failure is told, nothing leaks,
// the database and the window are as told, and the next command works.
#include <gtest/gtest.h>

#include "browser/browsertest.h"
#include "frame/appstate.h"
#include "support/windowedrows.h"

namespace orvenmod::test {
namespace {

class Faults : public BrowserTest {
protected:
    /// Plays `command` in a window of its own: once to count its operations, then with each of them failing. `check`
    /// runs after every failure and is told which operation it was.
    void sweep(const Call& call, const Steps& prepare, const Steps& command,
               const std::function<void(User&, int)>& check = {}) {
        int operations = 0;
        stage.open(call, [&](User& user) {
            prepare(user);
            stage.faults() = {};
            command(user);
            operations = stage.faults().count;
        });
        ASSERT_GT(operations, 0);
        for (int n = 1; n <= operations; ++n) {
            SCOPED_TRACE("operation " + std::to_string(n) + " of " + std::to_string(operations));
            stage.open(call, [&](User& user) {
                prepare(user);
                const std::size_t before = script().messages().size();
                stage.faults() = {};
                stage.faults().failAt = n;
                user.answer(MessageKind::critical, kFault);
                command(user);
                stage.faults() = {};
                EXPECT_EQ(script().messages().size(), before + 1);
                if (check) check(user, n);
                if (user.window().shown()) expectNextCommandWorks(user);
            });
            EXPECT_EQ(stage.connectionsAlive(), 0);
            EXPECT_FALSE(appState().gConn);
        }
    }
    static void expectNextCommandWorks(User& user) {
        user.clickNode("tv1", "D12");
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002"}));
        user.clickNode("tv1", "D0");
        EXPECT_EQ(codes(user).size(), 4U);
    }
};

const Steps kNothing = [](User&) {};

TEST_F(Faults, ofTheEntryAreToldAndLeaveTheResultsEmpty) {
    int operations = 0;
    stage.faults() = {};
    stage.open(kPicker, [&](User&) { operations = stage.faults().count; });
    for (int n = 1; n <= operations; ++n) {
        SCOPED_TRACE("operation " + std::to_string(n));
        stage.faults() = {};
        stage.faults().failAt = n;
        if (n == 1) {
            clsBasicInfo info;
            EXPECT_THROW(info.mainInterface(3, "", "", stage.connectionString(), 1), store::Failure)
                << "the first connect goes up to the host";
        } else if (n < operations - 1) {
            stage.openInVain(kPicker, kFault);
        } else {
            script().answer(MessageKind::critical, kFault, Answer::ok);
            stage.open(kPicker, [](User& user) {
                EXPECT_EQ(user.control<platform::Combo>("PC", 0).rowCount(), 0) << "the search bar tells its own";
                EXPECT_EQ(codes(user).size(), 4U);
            });
        }
        EXPECT_EQ(stage.connectionsAlive(), 0);
        EXPECT_FALSE(appState().gConn);
        stage.faults() = {};
        stage.open(kPicker, [](User& user) { user.doubleClickRow("vsf1", 1); });
        EXPECT_EQ(stage.fItemId, "101");
    }
}

TEST_F(Faults, ofANodeClickKeepTheList) {
    sweep(
        kManagement, kNothing, [](User& user) { user.clickNode("tv1", "D14"); },
        [](User& user, int) { EXPECT_EQ(codes(user).size(), 4U); });
}

TEST_F(Faults, ofASearchKeepTheList) {
    sweep(
        kPicker,
        [](User& user) {
            user.pick("PC", 2, 0);
            user.type("txtSearch", "螺");
        },
        [](User& user) { user.click("cmdFind"); }, [](User& user, int) { EXPECT_EQ(codes(user).size(), 4U); });
}

TEST_F(Faults, ofARowThatIsLookedAtKeepTheList) {
    stage.readByWindows().rows = 2;
    sweep(
        kManagement, [](User& user) { user.selectRow("vsf1", 1); }, [](User& user) { user.selectRow("vsf1", 4); },
        [](User& user, int) { EXPECT_EQ(codes(user).size(), 4U); });
}

TEST_F(Faults, ofRowsThatAreCopiedKeepTheList) {
    stage.readByWindows().rows = 2;
    sweep(
        kManagement,
        [](User& user) {
            user.selectRow("vsf1", 1);
            user.control<platform::ListGrid>("vsf1").setSelected(4, true);
        },
        [](User& user) { user.press("Ctrl+C"); },
        [](User& user, int) {
            EXPECT_EQ(user.copied(), "");
            EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002", "02.001", "03"}));
        });
}

TEST_F(Faults, ofARightCheckRefuseTheCommand) {
    stage.set("SystemLogin", "IsAdmin", "0");
    for (const char* right : {"Y302", "Y303", "Y304", "Y305", "Y306"})
        database().grant(7, right);
    const std::vector<Steps> commands = {
        [](User& user) { user.click("cmdUpdateDetail"); }, [](User& user) { user.chooseMenu("MenuEditDelete"); },
        [](User& user) { user.click("cmdUpdateParent"); }, [](User& user) { user.chooseMenu("MenuParentEditDelete"); }};
    for (const Steps& command : commands) {
        sweep(
            kManagement,
            [](User& user) {
                // Nothing is selected: with its right a command ends at once.
                user.clickNode("tv1", "D0");
                user.control<platform::ListGrid>("vsf1").setCurrentRow(0);
                appState().gEditMode = 9;
                appState().gCurItemId = 9;
            },
            command,
            [](User&, int) {
                EXPECT_EQ(appState().gEditMode, 9);
                EXPECT_EQ(appState().gCurItemId, 9);
            });
    }
}

TEST_F(Faults, ofARightCheckOpenNoEditor) {
    stage.set("SystemLogin", "IsAdmin", "0");
    database().grant(7, "Y304");
    stage.open(kManagement, [this](User& user) {
        for (const int operation : {1, 2}) {
            stage.faults() = {.failAt = operation};
            user.answer(MessageKind::critical, stage.faults().text);
            user.click("cmdAddDetail");
            stage.faults() = {};
        }
        expectEditor(0);
        user.click("cmdAddDetail");
    });
}

TEST_F(Faults, ofAddingToTheBillAddNothing) {
    sweep(
        kBillPicker, kNothing, [](User& user) { user.doubleClickRow("vsf1", 3); },
        [](User& user, int) { EXPECT_EQ(user.control<platform::EntryGrid>("fps1").rowCount(), 0); });
}

TEST_F(Faults, ofTheHandOverCloseTheWindowAndLeaveWhatWasWritten) {
    sweep(
        kBillPicker,
        [&](User& user) {
            database().execute("delete from tblItemInput");
            database().execute("insert into tblItemInput(fItemId,fStockId,fQty,fUserId,fEntryId) values(1,0,1,7,1)");
            user.doubleClickRow("vsf1", 3);
            user.doubleClickRow("vsf1", 4);
        },
        [](User& user) { user.click("cmdAddItem"); },
        [&](User& user, int n) {
            EXPECT_FALSE(user.window().shown());
            EXPECT_EQ(appState().gRetItemId, "-1");
            const Rows expected[] = {{{"1"}}, {{"1"}}, {}, {{"103"}}};  // connect, delete, insert, insert
            EXPECT_EQ(database().rows("select fItemId from tblItemInput order by fEntryId"), expected[n - 1]);
        });
}

}  // namespace
}  // namespace orvenmod::test
