// Attachments: added, opened, deleted.
#include <filesystem>

#include "editor/binaryfile.h"
#include "editor/editortest.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

class EditorAttachments : public EditorTest {
protected:
    int rowsOf(User& user) { return user.control<EntryGrid>("fps2").rowCount(); }
    std::string stored() { return database().value("select count(*) from tblItemFJ where fItemId=101"); }
};

TEST_F(EditorAttachments, areStoredWithTheItem) {
    const std::string path = stage.makeFile("图 纸.pdf", std::string("a\0b", 3));
    stage.openNew([&](User& user) {
        typeName(user, "垫圈");
        user.chooseTab("SSTab1", 1);
        user.chooseFile(path);
        user.click("cmdAddFJ");
        const auto& rows = user.control<EntryGrid>("fps2");
        EXPECT_EQ(rows.text(3, 1), "");
        EXPECT_EQ(rows.text(4, 1), "图 纸.pdf");
        EXPECT_EQ(rows.text(5, 1), path);
        EXPECT_EQ(rows.cellTag(1, 1), "");
        user.typeCell("fps2", 3, 1, "图纸");
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
        EXPECT_EQ(rows.rowCount(), 0);
    });
    EXPECT_EQ(database().rows("select fEntryId,fName,fFileName,datalength(fFJ) from tblItemFJ where fItemId=203"),
              (Rows{{"1", "图纸", "图 纸.pdf", "3"}}));
}

TEST_F(EditorAttachments, aBlankNameStopsTheSave) {
    const std::string path = stage.makeFile("a.txt", "a");
    stage.openNew([&](User& user) {
        typeName(user, "垫圈");
        user.chooseTab("SSTab1", 1);
        for (int i = 0; i < 2; ++i) {
            user.chooseFile(path);
            user.click("cmdAddFJ");
        }
        user.typeCell("fps2", 3, 1, "甲");
        user.typeCell("fps2", 3, 2, "  ");
        user.answer(MessageKind::warning, "附件第2行名称不能为空!");
        user.clickTool("Save");
    });
    EXPECT_EQ(item(203), Rows{});
}

TEST_F(EditorAttachments, aCancelledDialogAddsNothing) {
    stage.openNew([&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.chooseFile("");
        user.click("cmdAddFJ");
        EXPECT_EQ(rowsOf(user), 0);
    });
}

TEST_F(EditorAttachments, deletingAStoredOneAsksOnceAndDeletesAtOnce) {
    stage.storeAttachment(4, "a.txt", "a");
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.answer(MessageKind::question, "确定要删除吗？", Answer::no);
        user.clickCell("fps2", 1, 1);
        EXPECT_EQ(rowsOf(user), 1);
        stage.forgetStatements();
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.clickCell("fps2", 1, 1);
        EXPECT_EQ(rowsOf(user), 0);
        EXPECT_EQ(stage.statements(), Texts{"delete from tblItemFJ where fitemid=101 and fEntryId=4"});
        EXPECT_EQ(stored(), "0");
    });
}

TEST_F(EditorAttachments, deletingANewOneTouchesTheGridAlone) {
    const std::string path = stage.makeFile("a.txt", "a");
    stage.openNew([&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.chooseFile(path);
        user.click("cmdAddFJ");
        stage.forgetStatements();
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.clickCell("fps2", 1, 1);
        EXPECT_EQ(rowsOf(user), 0);
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

TEST_F(EditorAttachments, aDeleteThatFailsLeavesTheRowOffTheScreen) {
    stage.storeAttachment(4, "a.txt", "a");
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 1);
        stage.faults() = {.failAt = 2};
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.answer(MessageKind::critical, stage.faults().text);
        user.clickCell("fps2", 1, 1);
        stage.faults() = {};
        EXPECT_EQ(rowsOf(user), 0);
    });
    EXPECT_EQ(stored(), "1");
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorAttachments, theRightsAreAsked) {
    appState().gIsAdmin = 0;
    stage.storeAttachment(4, "a.txt", "a");
    const std::string refused = "您无此权限，请与系统管理员联系！";
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 1);
        stage.forgetStatements();
        user.answer(MessageKind::warning, refused);
        user.click("cmdAddFJ");
        EXPECT_EQ(stage.lastStatement(), "select fuserid from tblUserPrivillenge  where fuserid=7  and fNumber='Y307'");
        user.answer(MessageKind::warning, refused);
        user.clickCell("fps2", 1, 1);
        EXPECT_EQ(stage.lastStatement(), "select fuserid from tblUserPrivillenge  where fuserid=7  and fNumber='Y309'");
        user.answer(MessageKind::warning, refused);
        user.clickCell("fps2", 2, 1);
        EXPECT_EQ(stage.lastStatement(), "select fuserid from tblUserPrivillenge  where fuserid=7  and fNumber='Y310'");
    });
    EXPECT_EQ(stored(), "1");
    EXPECT_TRUE(script().documents().empty());
}

TEST_F(EditorAttachments, aNewOneIsOpenedWhereItLies) {
    const std::string path = stage.makeFile("a b.txt", "a");
    stage.openNew([&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.chooseFile(path);
        user.click("cmdAddFJ");
        user.clickCell("fps2", 2, 1);
    });
    EXPECT_EQ(script().documents(), Texts{path});
}

TEST_F(EditorAttachments, aNewOneThatVanishedCannotBeOpenedAndTheEditorLivesOn) {
    const std::string path = stage.makeFile("a.txt", "a");
    stage.openNew([&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.chooseFile(path);
        user.click("cmdAddFJ");
        fs::remove(path);
        user.answer(MessageKind::critical, "找不到文件：" + path);
        user.clickCell("fps2", 2, 1);
        EXPECT_EQ(rowsOf(user), 1);
    });
    EXPECT_TRUE(script().documents().empty());
}

TEST_F(EditorAttachments, aStoredOneIsTakenOutOpenedAndRemoved) {
    stage.storeAttachment(4, "a.txt", "first");
    stage.storeAttachment(5, "b.txt", "second");
    std::string first;
    std::string second;
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.clickCell("fps2", 2, 1);
        first = script().documents().at(0);
        EXPECT_EQ(Stage::contents(first), "first");
        EXPECT_EQ(fs::path(first).filename(), "a.txt");
        user.clickCell("fps2", 2, 2);
        second = script().documents().at(1);
        EXPECT_FALSE(fs::exists(first)) << "the one opened before goes";
        EXPECT_EQ(Stage::contents(second), "second");
    });
    EXPECT_FALSE(fs::exists(second)) << "and the last one with the window";
}

TEST_F(EditorAttachments, twoRowsOfOneEntryAppendTheirNames) {
    stage.storeAttachment(4, "a.txt", "first");
    stage.storeAttachment(4, "b.txt", "second");
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.clickCell("fps2", 2, 1);
        ASSERT_EQ(script().documents().size(), 2U);
        EXPECT_EQ(fs::path(script().documents()[1]).filename(), "a.txtb.txt");
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.clickCell("fps2", 1, 1);
    });
    EXPECT_EQ(stored(), "0") << "both rows of the entry go";
}

TEST_F(EditorAttachments, aFileThatVanishedUndoesTheItem) {
    const std::string path = stage.makeFile("a.txt", "a");
    stage.openNew([&](User& user) {
        typeName(user, "垫圈");
        user.chooseTab("SSTab1", 1);
        user.chooseFile(path);
        user.click("cmdAddFJ");
        user.typeCell("fps2", 3, 1, "甲");
        fs::remove(path);
        user.answer(MessageKind::critical, "文件不存在：" + path);
        user.clickTool("Save");
        EXPECT_EQ(value(user, kNameRow), "垫圈");
    });
    EXPECT_EQ(item(203), Rows{});
    EXPECT_EQ(goods(203), Rows{});
    EXPECT_EQ(database().value("select fMaxNum from tblMaxNum where fTableName='tblItem'"), "203")
        << "the id is used up";
}

TEST_F(EditorAttachments, contentsComeBackTheSame) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{64} << 20}) {
        database().execute("delete from tblItemFJ");
        std::string content(size, '\0');
        for (std::size_t i = 0; i < size; ++i)
            content[i] = static_cast<char>(i * 31 >> 3);
        stage.storeAttachment(1, "big.bin", content);
        stage.openItem(101, [&](User& user) {
            user.chooseTab("SSTab1", 1);
            user.clickCell("fps2", 2, 1);
            EXPECT_TRUE(Stage::contents(script().documents().back()) == content) << size;
        });
    }
}

TEST_F(EditorAttachments, anyOtherCellDoesNothing) {
    stage.storeAttachment(4, "a.txt", "first");
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 1);
        stage.forgetStatements();
        user.control<EntryGrid>("fps2").buttonClick.raise(4, 1);
        EXPECT_EQ(stage.statements(), Texts{});
    });
}

}  // namespace
}  // namespace orvenmod::test
