// Every store operation of every command fails once: the database stays as told, the window lives on, and the next
// command works.
#include <algorithm>

#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "hierarchy/hierarchytest.h"

namespace orvenmod::test {
namespace {

using platform::ListGrid;

struct Command {
    std::string name;
    std::string database = {};  ///< a statement that sets the stage
    Steps prepare;              ///< before the operations are counted
    Steps act;                  ///< the command itself
    Texts questions = {};       ///< asked before anything reaches the store
    std::string success;        ///< told at the end
    bool rollsBack = false;     ///< a failure before the transaction brings a second one
    bool countsAnId = false;    ///< may lose an id
};

/// The database as a whole, as far as these commands can touch it.
Rows snapshot(Database& database, bool withCounter) {
    Rows all =
        database.rows("select fitemid,fnumber,fname,fnbnumber,fdepth,fparentid,fislock from tblItem order by fitemid");
    for (const Rows& more : {database.rows("select fitemid,fnumber from ICItem order by fitemid"),
                             database.rows("select fitemid,fentryid from tblItemFJ order by fitemid,fentryid")}) {
        all.insert(all.end(), more.begin(), more.end());
    }
    if (withCounter) {
        const Rows counter = database.rows("select * from tblMaxNum order by fTableName");
        all.insert(all.end(), counter.begin(), counter.end());
    }
    return all;
}

/// Runs the command with the n-th operation failing (0 for none); the count of operations.
int run(const Command& command, int failAt, std::vector<ShownMessage>& shown, Rows& before, Rows& after,
        Texts& operations) {
    HierarchyStage stage;
    stage.catalogueOneFieldAFamily();
    stage.database().addCategory(3, 15, "00", "空");
    if (!command.database.empty()) stage.database().execute(command.database);
    const std::string second = rollbackFailure(stage);
    int count = 0;
    const auto watched = [&](User& user) {
        before = snapshot(stage.database(), !command.countsAnId);
        for (const std::string& question : command.questions)
            user.answer(MessageKind::question, question, Answer::yes);
        stage.forgetStatements();
        stage.faults().count = 0;
        stage.faults().failAt = failAt;
        if (failAt == 0) {
            user.answer(MessageKind::information, command.success);
        } else {
            user.answer(MessageKind::critical, kFault);
        }
        const std::size_t told = stage.script().messages().size();
        // Only a failure between the connect and the transaction leaves a rollback that fails.
        if (failAt > 1 && command.rollsBack && failAt <= static_cast<int>(operations.size()) &&
            std::find(operations.begin(), operations.begin() + failAt - 1, "begin") ==
                operations.begin() + failAt - 1) {
            user.answer(MessageKind::critical, second);
        }
        command.act(user);
        count = stage.faults().count;
        stage.faults().failAt = 0;
        shown.assign(stage.script().messages().begin() + static_cast<std::ptrdiff_t>(told),
                     stage.script().messages().end());
        if (failAt == 0) operations = stage.operations();
        if (failAt != 0) closeDB();
        after = snapshot(stage.database(), !command.countsAnId);
        if (failAt == 0) return;
        // The next command works.
        for (const std::string& question : command.questions)
            user.answer(MessageKind::question, question, Answer::yes);
        user.answer(MessageKind::information, command.success);
        command.act(user);
    };
    stage.open([&](User& list) {
        if (command.prepare) command.prepare(list);
        if (command.name.rfind("dialog", 0) != 0) return watched(list);
        stage.script().onWindow("frmParent", watched);
        list.click(command.name == "dialogNew" ? "MenuParentEditNew" : "MenuParentEditUpdate");
    });
    stage.finish();
    return count;
}

class HierarchyFaults : public testing::TestWithParam<Command> {};

TEST_P(HierarchyFaults, eachOperationFailsOnce) {
    const Command& command = GetParam();
    std::vector<ShownMessage> shown;
    Rows before;
    Rows after;
    Texts operations;
    const int count = run(command, 0, shown, before, after, operations);
    ASSERT_GT(count, 2);
    EXPECT_NE(before, after);
    std::erase(operations, "close");
    for (int n = 1; n <= count; ++n) {
        SCOPED_TRACE("operation " + std::to_string(n) + " fails");
        run(command, n, shown, before, after, operations);
        ASSERT_FALSE(shown.empty());
        EXPECT_EQ(before, after);
    }
}

const Steps kSelectRow = [](User& user) { user.selectRow("vsf1", 1); };

void enter(User& user, const std::string& name, const std::string& shortCode, int parent) {
    user.pick("cmb", parent, 0);
    user.type("txt", name, 0);
    user.type("txt", shortCode, 1);
}

INSTANTIATE_TEST_SUITE_P(Commands, HierarchyFaults,
                         testing::Values(Command{.name = "dialogNew",
                                                 .prepare = [](User& user) { user.clickNode("tv1", "D0"); },
                                                 .act =
                                                     [](User& user) {
                                                         enter(user, "新类", "07", 2);
                                                         user.click("cmdOperate");
                                                     },
                                                 .success = kSaved,
                                                 .countsAnId = true},
                                         Command{.name = "dialogUpdate",
                                                 .prepare = [](User& user) { user.clickNode("tv1", "D13"); },
                                                 .act =
                                                     [](User& user) {
                                                         enter(user, "螺钉", "09",
                                                               user.control<platform::Combo>("cmb", 0).rowCount() - 1);
                                                         user.click("cmdOperate");
                                                     },
                                                 .success = kSaved,
                                                 .rollsBack = true},
                                         Command{.name = "delete",
                                                 .prepare = kSelectRow,
                                                 .act = [](User& user) { user.click("MenuEditDelete"); },
                                                 .questions = {"确定要删除吗？"},
                                                 .success = "数据删除成功！",
                                                 .rollsBack = true},
                                         Command{.name = "lock",
                                                 .prepare = kSelectRow,
                                                 .act = [](User& user) { user.click("MenuLockDetail"); },
                                                 .questions = {"确定要禁用吗？"},
                                                 .success = "禁用成功！"},
                                         Command{.name = "unlock",
                                                 .database = "update tblItem set fIsLock=1 where fItemId=101",
                                                 .prepare = kSelectRow,
                                                 .act = [](User& user) { user.click("MenuUnLockDetail"); },
                                                 .questions = {"确定要反禁用吗？"},
                                                 .success = "反禁用成功！"},
                                         Command{.name = "deleteCategory",
                                                 .prepare = [](User& user) { user.clickNode("tv1", "D15"); },
                                                 .act = [](User& user) { user.click("MenuParentEditDelete"); },
                                                 .questions = {"确定要删除吗？"},
                                                 .success = "删除成功!"}),
                         [](const testing::TestParamInfo<Command>& each) { return each.param.name; });

struct Opening {
    std::string name;
    std::string button;
    int operations;
};

class DialogFaults : public testing::TestWithParam<Opening> {};

TEST_P(DialogFaults, aDialogThatCannotReadItsCategoriesOpensAllTheSame) {
    for (int n = 1; n <= GetParam().operations; ++n) {
        SCOPED_TRACE("operation " + std::to_string(n) + " fails");
        HierarchyStage stage;
        stage.open([&](User& list) {
            list.clickNode("tv1", "D13");
            stage.faults() = {.failAt = n};
            stage.script().onWindow("frmParent", [&](User& user) {
                EXPECT_FALSE(appState().gConn);
                EXPECT_EQ(stage.faults().count, n);
                EXPECT_EQ(user.control<platform::Combo>("cmb", 0).rowCount(), n < 3 ? 0 : 4);
                EXPECT_EQ(user.control<platform::Edit>("txt", 0).text(), "");
                user.click("cmdClose");
            });
            list.answer(MessageKind::critical, kFault);
            list.click(GetParam().button);
            EXPECT_EQ(stage.faults().count, n) << "closing it reads nothing";
            stage.faults() = {};
            stage.script().onWindow(
                "frmParent", [&](User& user) { EXPECT_EQ(user.control<platform::Combo>("cmb", 0).rowCount(), 4); });
            list.click(GetParam().button);
        });
        stage.finish();
    }
}

INSTANTIATE_TEST_SUITE_P(Modes, DialogFaults,
                         testing::Values(Opening{"new", "MenuParentEditNew", 2},
                                         Opening{"change", "MenuParentEditUpdate", 3}),
                         [](const testing::TestParamInfo<Opening>& each) { return each.param.name; });

class RightFaults : public testing::TestWithParam<std::string> {};

TEST_P(RightFaults, aRightThatCannotBeReadIsNoRight) {
    for (int n = 1; n <= 2; ++n) {
        SCOPED_TRACE("operation " + std::to_string(n) + " fails");
        HierarchyStage stage;
        appState().gIsAdmin = 0;
        for (const char* right : {"Y301", "Y302", "Y303", "Y306"})
            stage.database().grant(7, right);
        stage.open([&](User& list) {
            list.clickNode("tv1", "D13");
            list.selectRow("vsf1", 1);
            const Rows before = snapshot(stage.database(), true);
            stage.faults() = {.failAt = n};
            list.answer(MessageKind::critical, kFault);
            list.click(GetParam());
            EXPECT_EQ(stage.faults().count, n);
            EXPECT_EQ(snapshot(stage.database(), true), before);
            // Where the query failed the connection stays, for the next command.
            EXPECT_EQ(appState().gConn != nullptr, n == 2);
            closeDB();
        });
        stage.finish();
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, RightFaults,
                         testing::Values("MenuEditDelete", "MenuParentEditNew", "MenuParentEditUpdate",
                                         "MenuParentEditDelete"),
                         [](const testing::TestParamInfo<std::string>& each) { return each.param; });

TEST(TreeFaults, aTreeThatCannotBeReadAgainIsToldOnceTheDialogHasClosed) {
    for (int n = 1; n <= 2; ++n) {
        SCOPED_TRACE("operation " + std::to_string(n) + " fails");
        HierarchyStage stage;
        stage.openNew([&](User& user) {
            enter(user, "新类", "07", 0);
            user.answer(MessageKind::information, kSaved);
            user.click("cmdOperate");
            stage.faults() = {.failAt = n};
            user.answer(MessageKind::critical, kFault);
            user.click("cmdClose");
        });
        stage.faults() = {};
        closeDB();
        EXPECT_EQ(stage.asked, std::vector<int>({3, 1}));
        EXPECT_EQ(stage.database().value("select count(*) from tblItem where fnumber='07'"), "1");
        stage.finish();
    }
}

}  // namespace
}  // namespace orvenmod::test
