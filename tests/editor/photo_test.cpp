// The photo of goods: chosen, stored, taken out again.
#include <filesystem>

#include "editor/editortest.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

using platform::Picture;

class EditorPhoto : public EditorTest {
protected:
    void choose(User& user, const std::string& path) {
        user.chooseTab("SSTab1", 2);
        user.chooseFile(path);
        user.click("cmdAdd");
    }

    void saveChange(User& user) {
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    }

    void storePhoto() {
        stage.openItem(101, [&](User& user) {
            choose(user, path_);
            saveChange(user);
        });
    }

    Rows stored(int id) {
        return database().rows("select fHZ,datalength(fPhoto) from ICItemPhoto where fItemId=" + std::to_string(id));
    }

    std::string path_ = stage.makeFile("照片.bmp", redBitmap());
};

TEST_F(EditorPhoto, isStoredWithANewItem) {
    stage.openNew([&](User& user) {
        typeName(user, "垫圈");
        choose(user, path_);
        EXPECT_FALSE(user.control<Picture>("pict1").empty());
        EXPECT_EQ(appState().gPhotoPath, path_);
        EXPECT_EQ(stored(203), Rows{}) << "nothing is stored before the save";
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
        EXPECT_EQ(appState().gPhotoPath, "");
        EXPECT_TRUE(user.control<Picture>("pict1").empty());
    });
    EXPECT_EQ(stored(203), (Rows{{".bmp", "58"}}));
}

TEST_F(EditorPhoto, goesOutAndComesInAgainWithAChange) {
    storePhoto();
    stage.openItem(101, [&](User& user) {
        EXPECT_FALSE(user.control<Picture>("pict1").empty());
        EXPECT_EQ(fs::path(appState().gPhotoPath).filename(), "Temp001.bmp");
        EXPECT_EQ(Stage::contents(appState().gPhotoPath), redBitmap());
        saveChange(user);
    });
    EXPECT_EQ(stored(101), (Rows{{".bmp", "58"}}));
}

TEST_F(EditorPhoto, aSecondSaveInARowLosesIt) {
    storePhoto();
    stage.openItem(101, [&](User& user) {
        user.chooseMenu("MenuNewAfterSave");
        saveChange(user);
        EXPECT_EQ(stored(101).size(), 1U);
        EXPECT_FALSE(user.control<Picture>("pict1").empty());
        saveChange(user);
        EXPECT_FALSE(user.control<Picture>("pict1").empty()) << "it still shows";
    });
    EXPECT_EQ(stored(101), Rows{});
}

TEST_F(EditorPhoto, clearedIsGoneWithTheNextSave) {
    storePhoto();
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 2);
        user.click("cmdClear");
        EXPECT_TRUE(user.control<Picture>("pict1").empty());
        EXPECT_EQ(stored(101).size(), 1U);
        saveChange(user);
    });
    EXPECT_EQ(stored(101), Rows{});
}

TEST_F(EditorPhoto, isCopiedWithTheItem) {
    storePhoto();
    stage.openItem(101, [&](User& user) {
        user.clickTool("Copy");
        user.answer(MessageKind::question, "内六角螺丝名称已经存在,是否继续!", Answer::yes);
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(stored(203), (Rows{{".bmp", "58"}}));
    EXPECT_EQ(stored(101), (Rows{{".bmp", "58"}}));
}

TEST_F(EditorPhoto, aCancelledDialogChangesNothing) {
    stage.openNew([&](User& user) {
        choose(user, "");
        EXPECT_EQ(appState().gPhotoPath, "");
        EXPECT_TRUE(user.control<Picture>("pict1").empty());
    });
}

TEST_F(EditorPhoto, aFileThatIsNoPictureShowsNothingAndSaysNothing) {
    const std::string text = stage.makeFile("note.jpg", "no picture");
    stage.openNew([&](User& user) {
        choose(user, text);
        EXPECT_TRUE(user.control<Picture>("pict1").empty());
        EXPECT_EQ(appState().gPhotoPath, text);
    });
}

TEST_F(EditorPhoto, aPhotoOfNoBytesIsStoredAndShowsNothing) {
    const std::string empty = stage.makeFile("empty.jpg", "");
    stage.openItem(101, [&](User& user) {
        choose(user, empty);
        saveChange(user);
    });
    EXPECT_EQ(stored(101), (Rows{{".jpg", "0"}}));
    stage.openItem(101, [&](User& user) { EXPECT_TRUE(user.control<Picture>("pict1").empty()); });
}

TEST_F(EditorPhoto, ofTwoStoredRowsTheLastShows) {
    storePhoto();
    database().execute("insert into ICItemPhoto(fItemId,fPhoto,fHZ) select fItemId,fPhoto,'.jpg' from ICItemPhoto");
    database().execute("update ICItemPhoto set fHZ=null where fHZ='.jpg'");
    stage.openItem(101, [&](User&) { EXPECT_EQ(fs::path(appState().gPhotoPath).filename(), "Temp001.jpg"); });
}

TEST_F(EditorPhoto, anotherClassReadsNone) {
    storePhoto();
    database().execute("update ICItemPhoto set fItemId=201");
    appState().gItemClassId = 2;
    appState().gItemTable = "tblSupplier";
    appState().gViewName = "vtblSupplier";
    appState().gPhotoPath = "";
    stage.openItem(201, [&](User&) {
        EXPECT_EQ(appState().gPhotoPath, "");
        for (const std::string& sql : stage.statements())
            EXPECT_EQ(sql.find("ICItemPhoto"), std::string::npos) << sql;
    });
}

TEST_F(EditorPhoto, needsNoRight) {
    appState().gIsAdmin = 0;
    stage.openNew([&](User& user) {
        choose(user, path_);
        EXPECT_EQ(appState().gPhotoPath, path_);
        user.click("cmdClear");
        EXPECT_EQ(appState().gPhotoPath, "");
    });
}

}  // namespace
}  // namespace orvenmod::test
