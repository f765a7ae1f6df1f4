// What a run sends, and what stays where the store fails in its middle.
#include <algorithm>
#include <functional>

#include "support/spreadsheet.h"
#include "transfer/importtest.h"

namespace orvenmod::test {
namespace {

const std::vector<std::string> kHeadings = {"短代码", "名称"};

class ImportRun : public ImportTest {
protected:
    Texts failable() const {
        Texts all = stage.operations();
        std::erase(all, "close");
        return all;
    }
    /// Refuses a model that another item has.
    void requireModelsOnce() {
        database().execute("update ICItem set fModel=fNumber");
        database().execute("create unique index ux on ICItem(fModel)");
        modelsOnce_ = true;
    }
    // A server's database outlives the test.
    void TearDown() override {
        if (modelsOnce_) database().execute("drop index ICItem.ux");
    }
    /// Items without their row in the class's table, and the other way round.
    std::string halves() {
        return database().value(
                   "select count(*) from tblItem where fItemClassId=3 and fIsDetail=1 and fItemId not in "
                   "(select fItemId from ICItem)") +
               database().value("select count(*) from ICItem where fItemId not in (select fItemId from tblItem)");
    }

private:
    bool modelsOnce_ = false;
};

TEST_F(ImportRun, aRowSendsWhatTheEditorSendsInItsOrder) {
    const std::string file = stage.workbook({kHeadings, {"9", "垫圈"}});
    Texts imported;
    stage.import([&](User& user) {
        toCheck(user, file);
        stage.forgetStatements();
        user.click("cmdNext");
        imported = stage.statements();
        EXPECT_EQ(stage.operations(), (Texts{"connect", "begin", "open", "open", "open", "execute", "execute",
                                             "execute", "commit", "close"}));
    });
    database().execute("delete from tblItem where fItemId=203");
    database().execute("delete from ICItem where fItemId=203");
    database().execute("update tblMaxNum set fMaxNum=202");
    Texts saved;
    stage.openNew([&](User& user) {
        user.typeCell("fps1", kValue, kShortCodeRow, "9");
        typeName(user, "垫圈");
        stage.forgetStatements();
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
        saved = stage.statements();
    });
    saved.resize(imported.size());  // the next proposal follows
    EXPECT_EQ(imported, saved);
}

TEST_F(ImportRun, aRowThatTheStoreRefusesTakesNoOtherWithIt) {
    requireModelsOnce();
    const std::string file =
        stage.workbook({{"短代码", "名称", "规格型号"}, {"7", "a", "M1"}, {"8", "b", "M1"}, {"9", "c", "M2"}});
    stage.import([&](User& user) {
        toCheck(user, file);
        user.click("cmdNext");
        EXPECT_EQ(caption(user, "lblResult"), "新增 2 行，修改 0 行，拒绝 1 行。");
        EXPECT_EQ(shownRows(user, "vsfResult", 2)[0], (Texts{"3", "拒绝"}));
        EXPECT_NE(shownRows(user, "vsfResult", 5)[0][4], "");
    });
    EXPECT_EQ(stage.added().size(), 2U);
    EXPECT_EQ(halves(), "00");
}

TEST_F(ImportRun, whereAllOrNothingIsWantedTheFirstFailureStoresNothing) {
    requireModelsOnce();
    const std::string before = database().dump();
    const std::string file = stage.workbook({{"短代码", "名称", "规格型号"}, {"7", "a", "M1"}, {"8", "b", "M1"}});
    stage.import([&](User& user) {
        user.type("txtFile", file, -1);
        user.click("cmdNext");
        user.pick("cmbFailing", 1, -1);
        user.click("cmdNext");
        user.click("cmdNext");
        EXPECT_EQ(caption(user, "lblResult"), "新增 0 行，修改 0 行，拒绝 1 行。");
    });
    EXPECT_EQ(stage.added(), Texts{});
    EXPECT_TRUE(stage.behind.refreshes.empty());
}

TEST_F(ImportRun, whereAllOrNothingIsWantedARefusedRowStoresNothing) {
    const std::string file = stage.workbook({kHeadings, {"7", "a"}, {"", "b"}});
    stage.import([&](User& user) {
        user.type("txtFile", file, -1);
        user.click("cmdNext");
        user.pick("cmbFailing", 1, -1);
        user.click("cmdNext");
        user.answer(MessageKind::warning, "有拒绝的行，全部没有存入！");
        user.click("cmdNext");
    });
    EXPECT_EQ(stage.added(), Texts{});
}

TEST_F(ImportRun, everyOperationFailsOnceAndLeavesWholeRowsThatASecondRunCompletes) {
    const std::string file = stage.workbook({kHeadings, {"7", "a"}, {"8", "b"}, {"9", "c"}});
    Texts operations;
    const auto removeAdded = [&] {
        for (const char* table : {"tblItem", "ICItem"})
            database().execute("delete from " + std::string(table) + " where fItemId>202");
    };
    stage.import([&](User& user) {
        toCheck(user, file);
        stage.forgetStatements();
        user.click("cmdNext");
        operations = failable();
    });
    ASSERT_EQ(operations.size(), 3U + 3U * 6U) << "connect, begin, six a row, commit";
    for (int n = 1; n <= static_cast<int>(operations.size()); ++n) {
        SCOPED_TRACE(std::to_string(n) + ": " + operations[static_cast<std::size_t>(n - 1)]);
        removeAdded();
        stage.import([&](User& user) {
            toCheck(user, file);
            if (n == 1) user.answer(MessageKind::critical, kFault);
            stage.faults() = {.failAt = n};
            user.click("cmdNext");
            stage.faults() = {};
            // One that failed once goes well when its rows are stored one by one.
            EXPECT_EQ(stage.added().size(), n == 1 ? 0U : 3U);
            EXPECT_EQ(halves(), "00");
        });
        EXPECT_EQ(stage.connectionsAlive(), 0);
        stage.import([&](User& user) {
            toCheck(user, file);
            EXPECT_EQ(caption(user, "lblCounts"),
                      n == 1 ? "共 3 行：新增 3，修改 0，相同 0，拒绝 0" : "共 3 行：新增 0，修改 0，相同 3，拒绝 0");
        });
    }
}

TEST_F(ImportRun, everyOperationOfTheTakingBackFailsWithTheNextAndWhatIsLeftIsToldAsItIs) {
    const std::string file = stage.workbook({{"短代码", "名称", "所属分类"}, {"7", "a", "五金/垫圈"}, {"8", "b", ""}});
    const auto imported = [&](const std::function<void(User&)>& takeBack) {
        stage.import([&](User& user) {
            user.type("txtFile", file, -1);
            user.click("cmdNext");
            user.pick("cmbCategory", 1, -1);
            user.click("cmdNext");
            user.click("cmdNext");
            user.answer(MessageKind::question, "确定要撤回新增的行吗？", Answer::yes);
            stage.forgetStatements();
            takeBack(user);
        });
    };
    std::size_t operations = 0;
    imported([&](User& user) {
        user.click("cmdTakeBack");
        operations = failable().size();
    });
    ASSERT_GT(operations, 10U);
    ASSERT_EQ(stage.added(), Texts{});
    for (int n = 2; n <= static_cast<int>(operations); ++n) {
        SCOPED_TRACE(n);
        imported([&](User& user) {
            stage.faults() = {.failAt = n, .times = 2};
            user.click("cmdTakeBack");
            stage.faults() = {};
            const auto items = static_cast<std::size_t>(std::stoi(
                database().value("select count(*) from tblItem where fItemClassId=3 and fIsDetail=1 and fItemId>202")));
            const Texts left = stage.added();
            const std::string told = "新增 " + std::to_string(items) + " 行，修改 0 行，拒绝 0 行。";
            EXPECT_EQ(caption(user, "lblResult").substr(0, told.size()), told);
            EXPECT_EQ(caption(user, "lblResult").find("分类") != std::string::npos, left.size() > items);
            EXPECT_EQ(halves(), "00");
            user.answer(MessageKind::question, "确定要撤回新增的行吗？", Answer::yes);
            user.click("cmdTakeBack");
        });
        EXPECT_EQ(stage.connectionsAlive(), 0);
        EXPECT_EQ(stage.added(), Texts{});
    }
}

TEST_F(ImportRun, everyOperationOfTheCheckFailsOnceAndIsTold) {
    const std::string file = stage.workbook({kHeadings, {"7", "a"}});
    Texts operations;
    stage.import([&](User& user) {
        user.type("txtFile", file, -1);
        user.click("cmdNext");
        stage.forgetStatements();
        user.click("cmdNext");
        operations = failable();
    });
    ASSERT_EQ(operations, (Texts{"connect", "open", "open"}));
    for (int n = 1; n <= 3; ++n) {
        stage.import([&](User& user) {
            user.type("txtFile", file, -1);
            user.click("cmdNext");
            user.answer(MessageKind::critical, kFault);
            stage.faults() = {.failAt = n};
            user.click("cmdNext");
            stage.faults() = {};
            EXPECT_TRUE(user.control<platform::Frame>("FrameColumns").visible());
            user.click("cmdNext");
            EXPECT_TRUE(user.control<platform::Frame>("FrameCheck").visible());
        });
    }
}

TEST_F(ImportRun, anItemThatIsDeletedBehindTheCheckIsRefusedAndNotToldAsChanged) {
    const std::string file = stage.workbook({{"代码", "名称"}, {"02.001", "新开关"}});
    stage.import([&](User& user) {
        toCheck(user, file);
        for (const char* table : {"tblItem", "ICItem"})
            database().execute("delete from " + std::string(table) + " where fItemId=103");
        user.click("cmdNext");
        EXPECT_EQ(caption(user, "lblResult"), "新增 0 行，修改 0 行，拒绝 1 行。");
        EXPECT_EQ(shownRows(user, "vsfResult", 5)[0][4], "核对以后，该项目已被删除");
    });
}

TEST_F(ImportRun, aCheckThatFailsOrIsCancelledBehindTheRunLeavesItsResult) {
    const std::string file = stage.workbook({kHeadings, {"7", "a"}, {"", "b"}});
    const Rows expected = {{"3", "拒绝", "", "b", "短代码：没有代码"}, {"2", "新增", "7", "a", ""}};
    const std::string refused = database().folder().file("refused.xlsx");
    stage.import([&](User& user) {
        toCheck(user, file);
        user.click("cmdNext");
        stage.faults() = {.failAt = 2};
        user.answer(MessageKind::critical, kFault);
        user.click("cmdBack");
        stage.faults() = {};
        EXPECT_EQ(shownRows(user, "vsfResult", 5), expected);
        user.cancelProgress(1);
        user.click("cmdBack");
        EXPECT_TRUE(user.control<platform::Frame>("FrameResult").visible());
        EXPECT_EQ(shownRows(user, "vsfResult", 5), expected);
        user.chooseFile(refused);
        user.answer(MessageKind::information, "拒绝的行已保存！");
        user.click("cmdSaveFailed");
    });
    EXPECT_EQ(readSpreadsheet(refused), (Lines{{"短代码", "名称", "未导入的原因"}, {"", "b", "短代码：没有代码"}}));
}

TEST_F(ImportRun, aSecondCheckForgetsWhyTheStoreRefusedTheFirstRun) {
    requireModelsOnce();
    const std::string file =
        stage.workbook({{"短代码", "名称", "规格型号"}, {"7", "a", "M1"}, {"8", "b", "M1"}, {"", "c", "M2"}});
    const std::string refused = database().folder().file("refused.xlsx");
    stage.import([&](User& user) {
        toCheck(user, file);
        user.click("cmdNext");
        EXPECT_EQ(caption(user, "lblResult"), "新增 1 行，修改 0 行，拒绝 2 行。");
        user.click("cmdBack");
        EXPECT_EQ(caption(user, "lblCounts"), "共 3 行：新增 1，修改 0，相同 1，拒绝 1");
        user.chooseFile(refused);
        user.answer(MessageKind::information, "拒绝的行已保存！");
        user.click("cmdSaveRefused");
    });
    EXPECT_EQ(readSpreadsheet(refused).size(), 2U);
}

TEST_F(ImportRun, aRefusedCellThatASpreadsheetCannotHoldIsCutAndThatIsTold) {
    constexpr std::size_t kMost = 32767;
    const std::string longest = std::string(kMost, 'x');
    const std::string list = stage.text("短代码,名称\n," + longest + "\n,x" + longest + "\n");
    const std::string refused = database().folder().file("refused.xlsx");
    stage.import([&](User& user) {
        toCheck(user, list);
        user.chooseFile(refused);
        user.answer(MessageKind::information, "拒绝的行已保存！其中 1 格太长，电子表格的一格存不下，已截短。");
        user.click("cmdSaveRefused");
    });
    const Lines saved = readSpreadsheet(refused);
    ASSERT_EQ(saved.size(), 3U);
    EXPECT_EQ(saved[1][1], longest);
    EXPECT_EQ(saved[1][2].find("只存下"), std::string::npos);
    EXPECT_EQ(saved[2][1], longest);
    EXPECT_NE(saved[2][2].find("；名称：只存下前 32767 个字"), std::string::npos) << saved[2][2];
    stage.import([&](User& user) {
        toCheck(user, refused);
        EXPECT_EQ(shownRows(user, "vsfCheck", 2)[1], (Texts{"3", "拒绝"}));
    });
}

TEST_F(ImportRun, theTemplateHasTheCaptionsAndIsBroughtInWhenFilled) {
    const std::string file = database().folder().file("template.xlsx");
    stage.import([&](User& user) {
        user.chooseFile(file);
        user.answer(MessageKind::information, "模板已保存！");
        user.click("cmdTemplate");
        user.type("txtFile", file, -1);
        user.answer(MessageKind::warning, "文件里没有数据！");
        user.click("cmdNext");
    });
    EXPECT_EQ(readSpreadsheet(file),
              (Lines{{"短代码*", "名称*", "规格型号", "最低库存", "建档日期", "主供应商", "所属分类"}}));
    EXPECT_EQ(readSpreadsheetChoices(file), (Lines{{"华东供应", "华南供应"}}));
}

}  // namespace
}  // namespace orvenmod::test
