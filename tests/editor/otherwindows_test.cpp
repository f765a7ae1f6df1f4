// The two dialogs that no command opens.
#include <fstream>

#include "editor/editortest.h"
#include "editor/frmBasicInfo.h"
#include "editor/frmFJNew.h"
#include "editor/frmItemPhoto.h"

namespace orvenmod::test {
namespace {

class EditorDialogs : public EditorTest {};

TEST_F(EditorDialogs, frmFJNewAddsARowThatCountsAsStored) {
    const std::string path = database().folder().file("a.txt");
    std::ofstream(path) << "a";
    script().onWindow("frmFJNew", [&](User& user) {
        user.answer(MessageKind::warning, "附件名称不能为空！");
        user.click("PowerButton1");
        user.type("txt", " 图纸 ");
        user.chooseFile("");
        user.click("PowerButton1");
        user.chooseFile(path);
        user.click("PowerButton1");
    });
    stage.openNew([&](User& user) {
        frmFJNew::instance().show();
        const auto& rows = user.control<EntryGrid>("fps2");
        ASSERT_EQ(rows.rowCount(), 1);
        EXPECT_EQ(rows.text(3, 1), "图纸");
        EXPECT_EQ(rows.text(4, 1), "a.txt");
        EXPECT_EQ(rows.text(5, 1), "");
    });
}

TEST_F(EditorDialogs, frmFJNewCloses) {
    script().onWindow("frmFJNew", [](User& user) { user.click("cmdClose"); });
    frmFJNew::instance().show();
    script().finish();
}

TEST_F(EditorDialogs, frmItemPhotoShowsTheStoredPhoto) {
    appState().gAppPath = database().folder().path();
    database().execute("insert into ICItemPhoto(fItemId,fPhoto,fHZ) values(101,0x4142,'.bmp')");
    appState().gEditMode = 1;
    appState().gCurItemId = 101;
    appState().gPhotoPath = "before";
    script().onWindow("frmItemPhoto", [&](User& user) {
        EXPECT_EQ(appState().gPhotoPath, database().folder().file("Temp001.jpg"));
        EXPECT_EQ(Stage::contents(appState().gPhotoPath), "AB");
        user.click("cmdClear");
        EXPECT_EQ(appState().gPhotoPath, "");
        EXPECT_EQ(appState().gPhotoCleared, 1);
        user.chooseFile("");
        user.click("cmdOK");
        EXPECT_EQ(appState().gPhotoPath, "");
        user.chooseFile(database().folder().file("b.jpg"));
        user.click("cmdOK");
        EXPECT_EQ(appState().gPhotoPath, database().folder().file("b.jpg"));
        user.click("cmdExit");
    });
    stage.forgetStatements();
    frmItemPhoto::instance().show();
    script().finish();
    EXPECT_EQ(stage.statements(), Texts{"select * from ICItemPhoto where fitemid=101"});
}

TEST_F(EditorDialogs, frmItemPhotoTellsAFailureAndOpensWithoutAPicture) {
    appState().gEditMode = 1;
    appState().gCurItemId = 101;
    stage.faults() = {.failAt = 2};
    script().answer(MessageKind::critical, stage.faults().text, Answer::ok);
    script().onWindow("frmItemPhoto", [](User& user) {
        EXPECT_TRUE(user.control<platform::Picture>("pict1").empty());
        EXPECT_EQ(appState().gPhotoPath, "");
    });
    frmItemPhoto::instance().show();
    stage.faults() = {};
    script().finish();
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorDialogs, frmItemPhotoStartsEmptyForANewItem) {
    appState().gEditMode = 0;
    appState().gPhotoPath = "before";
    appState().gPhotoCleared = 1;
    script().onWindow("frmItemPhoto", [](User&) {
        EXPECT_EQ(appState().gPhotoPath, "");
        EXPECT_EQ(appState().gPhotoCleared, 0);
    });
    frmItemPhoto::instance().show();
    script().finish();
}

}  // namespace
}  // namespace orvenmod::test
