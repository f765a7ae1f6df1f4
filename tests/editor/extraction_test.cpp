// Photos and attachments on their way out of the database: what stands in their way is told, and the window lives on.
#include <filesystem>
#include <fstream>

#include "editor/editortest.h"
#include "frame/services.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

class EditorExtraction : public EditorTest {
protected:
    void storeAttachment(int entry, const std::string& fileName) {
        database().execute("insert into tblItemFJ(fItemId,fEntryId,fName,fFileName,fFJ) values(101," +
                           std::to_string(entry) + ",'附件','" + fileName + "',0x4142)");
    }

    // As a file that another program holds: what lies there can't be removed.
    static void block(const std::string& path) {
        fs::remove_all(path);
        fs::create_directory(path);
        std::ofstream(path + "/held") << "x";
    }

    static void open(User& user, int row) {
        user.chooseTab("SSTab1", 1);
        user.clickCell("fps2", 2, row);
    }

    const Texts& opened() { return script().documents(); }
};

TEST_F(EditorExtraction, everyOperationOfOpeningAnAttachmentFailsOnce) {
    storeAttachment(4, "a.txt");
    stage.openItem(101, [&](User& user) {
        stage.forgetStatements();
        open(user, 1);
        EXPECT_EQ(stage.operations(), (Texts{"connect", "open", "close"}));
        for (const int n : {1, 2}) {
            stage.faults() = {.failAt = n};
            user.answer(MessageKind::critical, stage.faults().text);
            open(user, 1);
            stage.faults() = {};
            EXPECT_EQ(opened().size(), 1U);
            EXPECT_EQ(stage.connectionsAlive(), 0);
        }
        open(user, 1);
        EXPECT_EQ(opened().size(), 2U);
    });
}

TEST_F(EditorExtraction, everyOperationOfDeletingAnAttachmentFailsOnce) {
    for (const int n : {1, 2})
        storeAttachment(n, "a.txt");
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 1);
        for (const int n : {1, 2}) {
            stage.faults() = {.failAt = n};
            user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
            user.answer(MessageKind::critical, stage.faults().text);
            user.clickCell("fps2", 1, 1);
            stage.faults() = {};
            EXPECT_EQ(user.control<EntryGrid>("fps2").rowCount(), 2 - n) << "off the screen all the same";
            EXPECT_EQ(stage.connectionsAlive(), 0);
        }
    });
    EXPECT_EQ(database().value("select count(*) from tblItemFJ"), "2");
}

TEST_F(EditorExtraction, anOpenedFileThatIsHeldStopsTheNextOpening) {
    storeAttachment(4, "a.txt");
    storeAttachment(5, "b.txt");
    stage.openItem(101, [&](User& user) {
        open(user, 1);
        const std::string held = opened().at(0);
        block(held);
        user.answer(MessageKind::critical, "文件无法删除：" + held);
        open(user, 2);
        EXPECT_EQ(opened().size(), 1U);
        EXPECT_EQ(stage.connectionsAlive(), 0);
        fs::remove_all(held);
        open(user, 2);
        EXPECT_EQ(opened().size(), 2U);
    });
}

TEST_F(EditorExtraction, anOpenedFileThatIsHeldWhenTheWindowClosesIsTold) {
    storeAttachment(4, "a.txt");
    std::string held;
    stage.openItem(101, [&](User& user) {
        user.answer(MessageKind::information, "数据修改成功!");
        user.chooseMenu("MenuNewAfterSave");
        user.clickTool("Save");
        open(user, 1);
        held = opened().at(0);
        block(held);
        user.answer(MessageKind::critical, "文件无法删除：" + held);
    });
    fs::remove_all(held);
}

TEST_F(EditorExtraction, aPhotoThatCannotBeWrittenIsToldAfterTheFieldsAreFilled) {
    database().execute("insert into ICItemPhoto(fItemId,fPhoto,fHZ) values(101,0x4142,'.bmp')");
    storeAttachment(4, "a.txt");
    const std::string path = services().folders.temporary() + "/Temp001.bmp";
    block(path);
    script().answer(MessageKind::critical, "文件无法删除：" + path, Answer::ok);
    stage.openItem(101, [&](User& user) {
        EXPECT_EQ(value(user, kNameRow), "内六角螺丝");
        EXPECT_EQ(chosenId(user, kCategoryRow), "13");
        EXPECT_EQ(user.control<EntryGrid>("fps2").rowCount(), 0);
        EXPECT_EQ(appState().gPhotoPath, "");
        EXPECT_EQ(stage.connectionsAlive(), 0);
    });
    fs::remove_all(path);
    stage.openItem(101, [&](User& user) { EXPECT_EQ(user.control<EntryGrid>("fps2").rowCount(), 1); });
}

TEST_F(EditorExtraction, aNewRowCanTakeTheNumberOfOneThatIsThere) {
    const std::string file = database().folder().file("new.txt");
    std::ofstream(file) << "new";
    storeAttachment(1, "a.txt");
    storeAttachment(2, "b.txt");
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.clickCell("fps2", 1, 1);
        user.chooseFile(file);
        user.click("cmdAddFJ");
        user.typeCell("fps2", 3, 2, "说明");
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(database().rows("select fEntryId,fFileName from tblItemFJ order by fFileName"),
              (Rows{{"2", "b.txt"}, {"2", "new.txt"}}));
}

}  // namespace
}  // namespace orvenmod::test
