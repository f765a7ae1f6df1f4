// Every operation of a load and of a save fails once: the database stays as it was, the text is shown, what was typed
// stays, and the next press of the button works.
#include <algorithm>
#include <fstream>

#include "editor/editortest.h"
#include "editor/frmBasicInfo.h"

namespace orvenmod::test {
namespace {

const std::string kNoTransaction = "ROLLBACK TRANSACTION 请求没有对应的 BEGIN TRANSACTION。";
const std::string kNoConnection = "对象变量或 With 块变量未设置";
const std::string kNoTitle;  // the start-up gives the event loop its title

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

    // Counted from 1, as the faults are.
    static int placeOf(const Texts& operations, const std::string& operation) {
        return static_cast<int>(std::find(operations.begin(), operations.end(), operation) - operations.begin()) + 1;
    }

    void storePhotoAndAttachment() {
        database().execute("insert into ICItemPhoto(fItemId,fPhoto,fHZ) values(101,0x4142,'.bmp')");
        database().execute("insert into tblItemFJ(fItemId,fEntryId,fName,fFileName) values(101,1,'图纸','a.pdf')");
    }

    void fillIn(User& user) {
        typeName(user, "垫圈");
        user.pickCell("fps1", kValue, kSupplierRow, 1);
        user.chooseTab("SSTab1", 1);
        user.chooseFile(file_);
        user.click("cmdAddFJ");
        user.typeCell("fps2", 3, user.control<EntryGrid>("fps2").rowCount(), "附件");
        user.chooseTab("SSTab1", 2);
        user.chooseFile(file_);
        user.click("cmdAdd");
    }

    // What the user sees of what was typed, chosen and added.
    static Texts screen(User& user) {
        Texts all = values(user);
        all.push_back(chosenId(user, kSupplierRow));
        all.push_back(chosenId(user, kCategoryRow));
        const auto& attachments = user.control<EntryGrid>("fps2");
        for (int row = 1; row <= attachments.rowCount(); ++row)
            all.push_back(attachments.text(3, row) + attachments.text(5, row) + attachments.cellTag(1, row));
        all.push_back(appState().gPhotoPath);
        all.push_back(std::to_string(appState().gEditMode));
        return all;
    }

    std::string counter() {
        const Rows rows = database().rows("select fMaxNum from tblMaxNum where fTableName='tblItem'");
        return rows.empty() ? "" : rows[0][0];
    }

    using Open = std::function<void(const Steps&)>;

    // Saves with the n-th operation failing, then without a fault in the same window. `after` sees each failed save.
    void sweepSave(const Open& open, const std::string& success, const Texts& operations,
                   const std::function<void(int)>& after) {
        open([&](User& user) {
            fillIn(user);
            stage.forgetStatements();
            user.answer(MessageKind::information, success);
            user.clickTool("Save");
            Texts sent = failable();
            sent.resize(std::min(sent.size(), operations.size()));  // the next proposal follows
            ASSERT_EQ(sent, operations);
        });
        for (int n = 1; n <= static_cast<int>(operations.size()); ++n) {
            SCOPED_TRACE(std::to_string(n) + ": " + operations[static_cast<std::size_t>(n - 1)]);
            open([&](User& user) { failAndSaveAgain(user, n, success, placeOf(operations, "begin"), after); });
        }
        EXPECT_EQ(stage.connectionsAlive(), 0);
    }

    void failAndSaveAgain(User& user, int n, const std::string& success, int begin,
                          const std::function<void(int)>& after) {
        fillIn(user);
        const Rows before = dump();
        const Texts typed = screen(user);
        const std::size_t shown = script().messages().size();
        std::vector<ShownMessage> told = {{MessageKind::critical, stage.faults().text, kTitle}};
        // The rollback is refused where no transaction is open; the event loop shows that.
        if (n == 1) told.push_back({MessageKind::critical, kNoConnection, kNoTitle});
        if (n > 1 && n <= begin) told.push_back({MessageKind::critical, kNoTransaction, kNoTitle});
        for (const ShownMessage& box : told)
            user.answer(box.kind, box.text);
        stage.faults() = {.failAt = n};
        user.clickTool("Save");
        stage.faults() = {};
        const auto& messages = script().messages();
        EXPECT_EQ((std::vector(messages.begin() + static_cast<std::ptrdiff_t>(shown), messages.end())), told);
        EXPECT_EQ(dump(), before);
        EXPECT_EQ(screen(user), typed) << "what was typed stays";
        after(n);
        user.answer(MessageKind::information, success);
        user.clickTool("Save");
        EXPECT_NE(dump(), before);
    }

    void removeNewItems() {
        for (const char* table : {"tblItem", "ICItem", "ICItemPhoto", "tblItemFJ"})
            database().execute("delete from " + std::string(table) + " where fItemId>202 or fItemId<10");
    }

    std::string file_;
};

TEST_F(EditorFaults, everyOperationOfTheLoadFailsOnce) {
    storePhotoAndAttachment();
    stage.openItem(101, [](User&) {});
    const Texts operations = failable();
    ASSERT_EQ(operations, (Texts{"connect", "open", "open", "open", "connect", "open", "open", "open"}))
        << "fields, suppliers, categories; the item, its photo, its attachments";
    // What stands in the window then: the rows of the grid, whether the item is in it, and its attachments.
    struct Filled {
        int rows;
        bool item;
        int attachments;
    };
    const std::vector<Filled> filled = {{},
                                        {0, false, 1},
                                        {kSupplierRow, true, 1},
                                        {kCategoryRow, true, 1},
                                        {},
                                        {kCategoryRow, false, 0},
                                        {kCategoryRow, true, 0},
                                        {kCategoryRow, true, 0}};
    const Rows before = dump();
    for (std::size_t n = 1; n <= operations.size(); ++n) {
        SCOPED_TRACE(std::to_string(n) + ": " + operations[n - 1]);
        stage.faults() = {.failAt = static_cast<int>(n)};
        if (operations[n - 1] == "connect") {
            // The connection is opened outside the trap: the failure goes to whoever shows the window.
            EXPECT_THROW(frmBasicInfo::instance().show(&stage.list), store::Failure);
            EXPECT_FALSE(frmBasicInfo::instance().isShown());
        } else {
            script().answer(MessageKind::critical, stage.faults().text, Answer::ok);
            stage.openItem(101, [&](User& user) {
                EXPECT_EQ(script().messages().back().title, kTitle);
                EXPECT_TRUE(user.window().shown());
                const Filled& expected = filled[n - 1];
                const auto& fields = user.control<EntryGrid>("fps1");
                EXPECT_EQ(fields.rowCount(), expected.rows);
                if (fields.rowCount() >= kNameRow) {
                    EXPECT_EQ(value(user, kNameRow), expected.item ? "内六角螺丝" : "");
                }
                EXPECT_EQ(user.control<EntryGrid>("fps2").rowCount(), expected.attachments);
                EXPECT_EQ(stage.connectionsAlive(), 0);
            });
        }
        stage.faults() = {};
        EXPECT_EQ(dump(), before);
    }
    stage.openItem(101, [](User& user) { EXPECT_EQ(value(user, kNameRow), "内六角螺丝"); });
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorFaults, everyOperationOfAnOpeningForANewItemFailsOnce) {
    stage.openNew([](User&) {}, 13);
    const Texts operations = failable();
    ASSERT_EQ(operations, (Texts{"connect", "open", "open", "open", "open", "connect", "open", "open"}))
        << "fields, suppliers, categories, the preselected one; the longest code and the highest";
    const std::vector<int> rows = {0, 0, kSupplierRow, kCategoryRow, kCategoryRow, 0, kCategoryRow, kCategoryRow};
    for (std::size_t n = 1; n <= operations.size(); ++n) {
        SCOPED_TRACE(std::to_string(n) + ": " + operations[n - 1]);
        stage.faults() = {.failAt = static_cast<int>(n)};
        if (operations[n - 1] == "connect") {
            EXPECT_THROW(frmBasicInfo::instance().show(&stage.list), store::Failure);
        } else {
            script().answer(MessageKind::critical, stage.faults().text, Answer::ok);
            stage.openNew(
                [&](User& user) {
                    EXPECT_EQ(user.control<EntryGrid>("fps1").rowCount(), rows[n - 1]);
                    if (n > 2) {
                        EXPECT_EQ(value(user, kShortCodeRow), n > 6 ? "001" : "003");
                    }
                    if (n > 6) {
                        EXPECT_EQ(value(user, kCodeRow), "01.01.001");
                    }
                    EXPECT_EQ(stage.connectionsAlive(), 0);
                },
                13);
        }
        stage.faults() = {};
    }
    stage.openNew([](User& user) { EXPECT_EQ(value(user, kCodeRow), "01.01.003"); }, 13);
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorFaults, everyOperationOfAnInsertFailsOnce) {
    // Code, name, counter read and moved, category; both rows, the photo, the attachment.
    const Texts operations = {"connect", "open",    "open",      "open",   "execute",   "open",   "begin",
                              "execute", "execute", "openTable", "addRow", "openTable", "addRow", "commit"};
    const int moved = placeOf(operations, "execute");
    const int begin = placeOf(operations, "begin");
    sweepSave(
        [&](const Steps& steps) {
            removeNewItems();
            database().execute("update tblMaxNum set fMaxNum=202 where fTableName='tblItem'");
            appState().gCurItemId = 55;
            stage.openNew(steps, 13);
        },
        "数据保存成功!", operations,
        [&](int n) {
            EXPECT_EQ(counter(), n > moved ? "203" : "202") << "a failed save uses up the id";
            EXPECT_EQ(appState().gCurItemId, n >= begin ? 203 : 55) << "and keeps it";
        });
}

TEST_F(EditorFaults, everyOperationOfTheFirstInsertOfADatabaseFailsOnce) {
    const Texts operations = {"connect", "open",      "open",   "open",      "execute", "begin", "execute",
                              "execute", "openTable", "addRow", "openTable", "addRow",  "commit"};
    const int made = placeOf(operations, "execute");
    sweepSave(
        [&](const Steps& steps) {
            removeNewItems();
            database().execute("delete from tblMaxNum");
            stage.openNew(steps);
        },
        "数据保存成功!", operations, [&](int n) { EXPECT_EQ(counter(), n > made ? "1" : ""); });
}

TEST_F(EditorFaults, everyOperationOfAnUpdateFailsOnce) {
    // Lock, code, name, category; both rows, the photo deleted and stored, a caption, the new attachment.
    const Texts operations = {"connect", "open",      "open",   "open",    "open",      "begin",  "execute", "execute",
                              "execute", "openTable", "addRow", "execute", "openTable", "addRow", "commit"};
    sweepSave(
        [&](const Steps& steps) {
            database().execute("delete from ICItemPhoto");
            database().execute("delete from tblItemFJ");
            database().execute("update tblItem set fName='内六角螺丝' where fItemId=101");
            storePhotoAndAttachment();
            stage.openItem(101, steps);
        },
        "数据修改成功!", operations, [&](int) { EXPECT_EQ(counter(), "202"); });
}

TEST_F(EditorFaults, aRollbackThatFailsAfterAFailureIsShownAndTheWindowLivesOn) {
    stage.openNew([&](User& user) {
        fillIn(user);
        const Rows before = dump();
        const Texts typed = screen(user);
        stage.afterOperation([&](const store::TraceRecord& record) {
            if (record.failed && record.operation == "execute") stage.faults() = {.failAt = 1, .text = "回滚失败"};
        });
        stage.faults() = {.failAt = 7};  // the class table's row
        user.answer(MessageKind::critical, "注入的故障");
        user.answer(MessageKind::critical, "回滚失败");
        user.clickTool("Save");
        stage.afterOperation({});
        stage.faults() = {};
        EXPECT_EQ(screen(user), typed);
        EXPECT_EQ(dump(), before);

        // The connection and its transaction stayed; the next save stumbles over them and does away with both.
        user.answer(MessageKind::critical, "事务已经开始，不能再开始一个。");
        user.clickTool("Save");
        EXPECT_EQ(screen(user), typed);
        EXPECT_EQ(dump(), before);
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
        EXPECT_NE(dump(), before);
    });
    EXPECT_EQ(stage.connectionsAlive(), 0);
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
