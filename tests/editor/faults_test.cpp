// Every operation of a command fails once: the database stays as it was, the text is shown, the next command works.
#include <algorithm>
#include <fstream>

#include "editor/editortest.h"
#include "editor/frmBasicInfo.h"

namespace orvenmod::test {
namespace {

const std::string kNoTransaction = "ROLLBACK TRANSACTION 请求没有对应的 BEGIN TRANSACTION。";
const std::string kNoConnection = "对象变量或 With 块变量未设置";

class EditorFaults : public EditorTest {
protected:
    EditorFaults() : file_(database().folder().file("a.bmp")) { std::ofstream(file_) << "content"; }

    // Everything but the counter, which a failed save may have moved.
    Rows dump() {
        Rows all;
        for (const char* table : {"tblItem", "ICItem", "ICItemPhoto", "tblItemFJ"}) {
            for (auto& row : database().rows(std::string("select * from ") + table + " order by fItemId")) {
                all.push_back(std::move(row));
            }
        }
        return all;
    }

    // The operations that can fail, in order.
    Texts failable() const {
        Texts all = stage.operations();
        std::erase(all, "close");
        return all;
    }

    void fillIn(User& user) {
        typeName(user, "垫圈");
        user.chooseTab("SSTab1", 1);
        user.chooseFile(file_);
        user.click("cmdAddFJ");
        user.typeCell("fps2", 3, 1, "附件");
        user.chooseTab("SSTab1", 2);
        user.chooseFile(file_);
        user.click("cmdAdd");
    }

    // Saves with the n-th operation failing, and expects the boxes told; then without a fault.
    void sweepSave(const std::function<void(const Steps&)>& open, const std::string& success) {
        Texts operations;
        open([&](User& user) {
            fillIn(user);
            stage.forgetStatements();
            user.answer(MessageKind::information, success);
            user.clickTool("Save");
            operations = failable();
        });
        const auto begin = std::find(operations.begin(), operations.end(), "begin") - operations.begin() + 1;
        const auto commit = std::find(operations.begin(), operations.end(), "commit") - operations.begin() + 1;
        ASSERT_GT(commit - begin, 4) << "class row, item row, photo and attachment lie within";
        for (int n = 1; n <= commit; ++n) {
            SCOPED_TRACE(std::to_string(n) + ": " + operations[static_cast<std::size_t>(n - 1)]);
            open([&](User& user) {
                fillIn(user);
                const Rows before = dump();
                stage.faults() = {.failAt = n};
                user.answer(MessageKind::critical, stage.faults().text);
                if (n == 1) user.answer(MessageKind::critical, kNoConnection);
                if (n > 1 && n <= begin) user.answer(MessageKind::critical, kNoTransaction);
                user.clickTool("Save");
                stage.faults() = {};
                EXPECT_EQ(dump(), before);
                EXPECT_EQ(value(user, kNameRow), "垫圈") << "what was typed stays";
                EXPECT_EQ(user.control<EntryGrid>("fps2").rowCount(), 1);
            });
        }
        EXPECT_EQ(stage.connectionsAlive(), 0);
    }

    std::string file_;
};

TEST_F(EditorFaults, everyOperationOfTheLoadFailsOnce) {
    stage.openItem(101, [](User&) {});
    const Texts operations = failable();
    ASSERT_GE(operations.size(), 8U);
    for (std::size_t n = 1; n <= operations.size(); ++n) {
        SCOPED_TRACE(std::to_string(n) + ": " + operations[n - 1]);
        stage.faults() = {.failAt = static_cast<int>(n)};
        if (operations[n - 1] == "connect") {
            // The connection is opened outside the trap: the failure goes to whoever shows the window.
            EXPECT_THROW(frmBasicInfo::instance().show(&stage.list), store::Failure);
            EXPECT_FALSE(frmBasicInfo::instance().isShown());
        } else {
            script().answer(MessageKind::critical, stage.faults().text, Answer::ok);
            stage.openItem(101, [](User& user) { EXPECT_TRUE(user.window().shown()); });
        }
        stage.faults() = {};
    }
    stage.openItem(101, [](User& user) { EXPECT_EQ(value(user, kNameRow), "内六角螺丝"); });
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorFaults, everyOperationOfAnInsertFailsOnce) {
    sweepSave(
        [&](const Steps& steps) {
            database().execute("delete from ICItem where fItemId>202");
            database().execute("delete from tblItem where fItemId>202");
            stage.openNew(steps, 13);
        },
        "数据保存成功!");
}

TEST_F(EditorFaults, everyOperationOfAnUpdateFailsOnce) {
    sweepSave(
        [&](const Steps& steps) {
            database().execute("delete from tblItemFJ");
            stage.openItem(101, steps);
        },
        "数据修改成功!");
}

TEST_F(EditorFaults, aProposalThatFailsIsTheFirstCode) {
    stage.openNew([&](User& user) {
        stage.faults() = {.failAt = 2};
        user.answer(MessageKind::critical, stage.faults().text);
        user.clickTool("Copy");
        stage.faults() = {};
        EXPECT_EQ(value(user, kShortCodeRow), "001");
    });
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

}  // namespace
}  // namespace orvenmod::test
