// Every store operation of every command fails once: the database stays as told, the window lives on, and the next
// command works.
#include "dictionary/dictionarytest.h"
#include "frame/appstate.h"
#include "frame/mdlMain.h"

namespace orvenmod::test {
namespace {

struct Command {
    std::string name;
    Steps act;                ///< in the list of dictionary 501 with its first row selected, or in the manager
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
    if (command.dialog == "frmJCZLType") {
        stage.openManager(inWindow);
    } else {
        stage.openList(501, 1, [&](User& user) {
            user.selectRow("vsf1", 1);
            inWindow(user);
        });
    }
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

INSTANTIATE_TEST_SUITE_P(Commands, DictionaryFaults,
                         testing::Values(Command{.name = "newEntry",
                                                 .act = [](User& user) { user.click("cmd", 1); },
                                                 .dialog = "frmJCZL",
                                                 .steps = kFillEntry,
                                                 .success = kSaved,
                                                 .failureBox = MessageKind::critical,
                                                 .operations = 5},
                                         Command{.name = "changedEntry",
                                                 .act = [](User& user) { user.click("cmd", 2); },
                                                 .dialog = "frmJCZL",
                                                 .steps = kFillEntry,
                                                 .success = kChanged,
                                                 .failureBox = MessageKind::critical,
                                                 .operations = 3},
                                         Command{.name = "deletedEntry",
                                                 .act = [](User& user) { user.click("cmd", 3); },
                                                 .asks = true,
                                                 .success = kDeleted,
                                                 .operations = 14},
                                         Command{.name = "newDictionary",
                                                 .act = [](User& user) { user.chooseMenu("MenuJCZLNew1"); },
                                                 .dialog = "frmJCZLType",
                                                 .steps =
                                                     [](User& user) {
                                                         user.type("txt1", "503");
                                                         user.type("txt", "材质");
                                                         user.click("cmdOK");
                                                     },
                                                 .success = kSaved,
                                                 .operations = 3}),
                         [](const testing::TestParamInfo<Command>& each) { return each.param.name; });

TEST(DictionaryListFaults, aListThatIsReadAgainInVainIsToldByAWarning) {
    DictionaryStage stage;
    stage.openList(501, 1, [&](User& list) {
        stage.script().onWindow("frmJCZL", [&](User& user) {
            stage.faults().count = 0;
            stage.faults().failAt = 7;  // the sixth connects anew
            user.answer(MessageKind::information, kSaved);
            user.answer(MessageKind::warning, kFault);
            kFillEntry(user);
            stage.faults().failAt = 0;
        });
        list.click("cmd", 1);
    });
    EXPECT_EQ(stage.entries().size(), 5U);
    stage.finish();
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
