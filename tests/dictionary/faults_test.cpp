// Every store operation of every command fails once: the database stays as told, the window lives on, and the next
// command works.
#include "dictionary/dictionarytest.h"
#include "frame/appstate.h"
#include "frame/mdlMain.h"

namespace orvenmod::test {
namespace {

enum class In { list, manager };

struct Command {
    std::string name;
    In window = In::list;     ///< with the first entry of dictionary 501 selected
    Steps act;                ///< in that window
    std::string dialog = {};  ///< the window that `steps` works in, "" for none
    Steps steps = {};         ///< the command itself where it lies in a dialog
    bool asks = false;
    std::string success;
    MessageKind failureBox = MessageKind::warning;
    int operations = 0;  ///< of the command proper, before its list is read again
};

class DictionaryFaults : public testing::TestWithParam<Command> {};

Rows snapshot(Database& database) {
    Rows all = database.rows("select fitemid,fnumber,fname,fitemclassid from tblSubType order by fitemid");
    const Rows classes = database.rows("select fitemclassid,fitemname from tblItemClass order by fitemclassid");
    all.insert(all.end(), classes.begin(), classes.end());
    return all;
}

/// Opens the window with the first entry of dictionary 501 selected.
void open(DictionaryStage& stage, In window, const Steps& steps) {
    const Steps selected = [&](User& user) {
        if (window == In::manager) user.clickNode("tv1", "D501");
        user.selectRow("vsf1", 1);
        steps(user);
    };
    if (window == In::manager) return stage.openManager(selected);
    stage.openList(501, 1, selected);
}

void runFailing(const Command& command, int failAt) {
    SCOPED_TRACE("operation " + std::to_string(failAt) + " fails");
    DictionaryStage stage;
    const auto watched = [&](User& user, const Steps& act) {
        const Rows before = snapshot(stage.database());
        if (command.asks) user.answer(MessageKind::question, kAskDelete, Answer::yes);
        user.answer(command.failureBox, kFault);
        stage.faults().count = 0;
        stage.faults().failAt = failAt;
        act(user);
        stage.faults().failAt = 0;
        EXPECT_EQ(snapshot(stage.database()), before);
        EXPECT_FALSE(appState().gConn);
        if (command.asks) user.answer(MessageKind::question, kAskDelete, Answer::yes);
        user.answer(MessageKind::information, command.success);
        act(user);
        EXPECT_NE(snapshot(stage.database()), before);
    };
    const Steps inWindow = [&](User& user) {
        if (command.dialog.empty()) return watched(user, command.act);
        stage.script().onWindow(command.dialog, [&](User& dialog) { watched(dialog, command.steps); });
        command.act(user);
    };
    open(stage, command.window, inWindow);
    stage.finish();
}

TEST_P(DictionaryFaults, eachOperationFailsOnce) {
    for (int n = 1; n <= GetParam().operations; ++n)
        runFailing(GetParam(), n);
}

const Steps kFillEntry = [](User& user) {
    user.type("txt", "09", 0);
    user.type("txt", "件", 1);
    user.click("cmdOK");
};

const Steps kFillDictionary = [](User& user) {
    user.type("txt1", "503");
    user.type("txt", "材质");
    user.click("cmdOK");
};

// No command of the windows sets this mode.
const Steps kRename = [](User& user) {
    appState().gDictTypeEditMode = 1;
    user.type("txt1", "502");
    user.type("txt", "色号");
    user.click("cmdOK");
};

Steps choose(const char* menu) {
    return [menu](User& user) { user.chooseMenu(menu); };
}

Steps press(int button) {
    return [button](User& user) { user.click("cmd", button); };
}

Command newEntry(In window, const Steps& act) {
    return {.name = window == In::list ? "newEntry" : "newEntryOfTheManager",
            .window = window,
            .act = act,
            .dialog = "frmJCZL",
            .steps = kFillEntry,
            .success = kSaved,
            .failureBox = MessageKind::critical,
            .operations = 5};
}

Command changedEntry(In window, const Steps& act) {
    return {.name = window == In::list ? "changedEntry" : "changedEntryOfTheManager",
            .window = window,
            .act = act,
            .dialog = "frmJCZL",
            .steps = kFillEntry,
            .success = kChanged,
            .failureBox = MessageKind::critical,
            .operations = 3};
}

Command deletedEntry(In window, const Steps& act) {
    return {.name = window == In::list ? "deletedEntry" : "deletedEntryOfTheManager",
            .window = window,
            .act = act,
            .asks = true,
            .success = kDeleted,
            .operations = 14};
}

INSTANTIATE_TEST_SUITE_P(Commands, DictionaryFaults,
                         testing::Values(newEntry(In::list, press(1)), changedEntry(In::list, press(2)),
                                         deletedEntry(In::list, press(3)), newEntry(In::manager, choose("MenuJCZLNew")),
                                         changedEntry(In::manager, choose("MenuUpdateJCZL")),
                                         deletedEntry(In::manager, choose("MenuDelJCZL")),
                                         Command{.name = "newDictionary",
                                                 .window = In::manager,
                                                 .act = choose("MenuJCZLNew1"),
                                                 .dialog = "frmJCZLType",
                                                 .steps = kFillDictionary,
                                                 .success = kSaved,
                                                 .operations = 3},
                                         Command{.name = "renamedDictionary",
                                                 .window = In::manager,
                                                 .act = choose("MenuJCZLNew1"),
                                                 .dialog = "frmJCZLType",
                                                 .steps = kRename,
                                                 .success = kChanged,
                                                 .operations = 2}),
                         [](const testing::TestParamInfo<Command>& each) { return each.param.name; });

/// A dialog that reads what is to be changed when it opens.
struct Opening {
    std::string name;
    In window;
    Steps act;
    std::string dialog;
    std::string caption;
    std::string field;  ///< shows it
    int index;
};

class DialogFaults : public testing::TestWithParam<Opening> {};

TEST_P(DialogFaults, aDialogThatCannotReadItsRowOpensEmpty) {
    const Opening& opening = GetParam();
    for (int n = 1; n <= 2; ++n) {
        SCOPED_TRACE("operation " + std::to_string(n) + " fails");
        DictionaryStage stage;
        open(stage, opening.window, [&](User& user) {
            stage.faults() = {.failAt = n};
            stage.script().onWindow(opening.dialog, [&](User& dialog) {
                EXPECT_FALSE(appState().gConn);
                EXPECT_EQ(dialog.window().caption(), opening.caption);
                EXPECT_EQ(dialog.control<platform::Button>("cmdOK").caption(), "修改(&U)");
                EXPECT_EQ(dialog.control<platform::Edit>(opening.field, opening.index).text(), "");
            });
            user.answer(MessageKind::warning, kFault);
            opening.act(user);
            EXPECT_EQ(stage.faults().count, n);
            stage.faults() = {};
            stage.script().onWindow(opening.dialog, [&](User& dialog) {
                EXPECT_NE(dialog.control<platform::Edit>(opening.field, opening.index).text(), "");
            });
            opening.act(user);
        });
        stage.finish();
    }
}

INSTANTIATE_TEST_SUITE_P(Dialogs, DialogFaults,
                         testing::Values(Opening{"entryOfTheList", In::list, press(2), "frmJCZL", "单位修改", "txt", 0},
                                         Opening{"entryOfTheManager", In::manager, choose("MenuUpdateJCZL"), "frmJCZL",
                                                 "单位(501)修改", "txt", 0},
                                         Opening{"dictionary", In::manager, choose("MenuJCZLUpdate1"), "frmJCZLType",
                                                 "基础资料类别修改", "txt1", -1}),
                         [](const testing::TestParamInfo<Opening>& each) { return each.param.name; });

struct Guarded {
    std::string name;
    In window;
    Steps act;
};

class RightFaults : public testing::TestWithParam<Guarded> {};

TEST_P(RightFaults, aRightThatCannotBeReadIsNoRight) {
    for (int n = 1; n <= 2; ++n) {
        SCOPED_TRACE("operation " + std::to_string(n) + " fails");
        DictionaryStage stage;
        appState().gIsAdmin = 0;
        for (const char* right : {"Z01", "Z02", "Z04", "Z05", "Z06"})
            stage.database().grant(7, right);
        const Rows before = snapshot(stage.database());
        open(stage, GetParam().window, [&](User& user) {
            stage.faults() = {.failAt = n};
            user.answer(MessageKind::critical, kFault);
            GetParam().act(user);
            EXPECT_EQ(stage.faults().count, n);
            // Where the query failed the connection stays, for the next command.
            EXPECT_EQ(appState().gConn != nullptr, n == 2);
            closeDB();
        });
        EXPECT_EQ(snapshot(stage.database()), before);
        stage.finish();
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, RightFaults,
                         testing::Values(Guarded{"newOfTheList", In::list, press(1)},
                                         Guarded{"changeOfTheList", In::list, press(2)},
                                         Guarded{"deleteOfTheList", In::list, press(3)},
                                         Guarded{"newDictionary", In::manager, choose("MenuJCZLNew1")},
                                         Guarded{"changedDictionary", In::manager, choose("MenuJCZLUpdate1")},
                                         Guarded{"newEntry", In::manager, choose("MenuJCZLNew")},
                                         Guarded{"changedEntry", In::manager, choose("MenuUpdateJCZL")},
                                         Guarded{"deletedEntry", In::manager, choose("MenuDelJCZL")}),
                         [](const testing::TestParamInfo<Guarded>& each) { return each.param.name; });

/// Adds an entry; the operations behind its own five, which read the list again, are to fail.
void addInVain(In window, int failAt) {
    SCOPED_TRACE("operation " + std::to_string(failAt) + " fails");
    DictionaryStage stage;
    open(stage, window, [&](User& user) {
        stage.script().onWindow("frmJCZL", [&](User& dialog) {
            stage.faults() = {.failAt = failAt};
            dialog.answer(MessageKind::information, kSaved);
            dialog.answer(MessageKind::warning, kFault);
            kFillEntry(dialog);
            stage.faults() = {};
            EXPECT_FALSE(appState().gConn);
            EXPECT_TRUE(dialog.window().shown());
        });
        if (window == In::list) {
            user.click("cmd", 1);
        } else {
            user.chooseMenu("MenuJCZLNew");
        }
    });
    EXPECT_EQ(stage.entries().size(), 5U);
    stage.finish();
}

TEST(DictionaryListFaults, aListThatIsReadAgainInVainIsToldByAWarning) {
    for (int n = 6; n <= 7; ++n)
        addInVain(In::list, n);
}

TEST(DictionaryListFaults, anUnseenListThatIsReadInVainIsToldByAWarning) {
    for (int n = 6; n <= 10; ++n)
        addInVain(In::manager, n);
}

TEST(DictionaryListFaults, aTreeThatIsReadAgainInVainIsToldAndTheNameStays) {
    for (int n = 3; n <= 4; ++n) {
        SCOPED_TRACE("operation " + std::to_string(n) + " fails");
        DictionaryStage stage;
        stage.openManager([&](User& manager) {
            stage.script().onWindow("frmJCZLType", [&](User& dialog) {
                stage.faults() = {.failAt = n};
                dialog.answer(MessageKind::information, kChanged);
                dialog.answer(MessageKind::critical, kFault);
                kRename(dialog);
                stage.faults() = {};
                closeDB();
            });
            manager.chooseMenu("MenuJCZLNew1");
        });
        EXPECT_EQ(stage.database().value("select fitemname from tblItemClass where fitemclassid=502"), "色号");
        stage.finish();
    }
}

TEST(DictionaryListFaults, anUnseenManagerThatCannotBeLoadedIsToldAndLeftOut) {
    DictionaryStage stage;
    stage.openList(501, 0, [&](User& list) {
        stage.script().onWindow("frmJCZL", [&](User& user) {
            stage.faults().count = 0;
            stage.faults().failAt = 7;
            user.answer(MessageKind::information, kSaved);
            user.answer(MessageKind::critical, kFault);
            kFillEntry(user);
            stage.faults().failAt = 0;
            closeDB();
        });
        list.click("cmd", 1);
        EXPECT_EQ(listRows(list).size(), 3U);
    });
    stage.finish();
}

}  // namespace
}  // namespace orvenmod::test
