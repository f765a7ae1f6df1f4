// Files that are not what they should be: vanished, folders, unreadable, hostile by name, or too large for the disk.
#include <filesystem>

#include "editor/binaryfile.h"
#include "editor/editortest.h"
#include "frame/services.h"
#include "support/machinelimits.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

class EditorBadFiles : public EditorTest {
protected:
    void attach(User& user, const std::string& path) {
        user.chooseTab("SSTab1", 1);
        user.chooseFile(path);
        user.click("cmdAddFJ");
        user.typeCell("fps2", 3, 1, "附件");
    }
    void choosePhoto(User& user, const std::string& path) {
        user.chooseTab("SSTab1", 2);
        user.chooseFile(path);
        user.click("cmdAdd");
    }
    /// Saves a new item that has the file; the save is refused with the text and leaves nothing.
    void expectRefused(const std::function<void(User&)>& addFile, const std::function<void(User&)>& save,
                       const std::string& text) {
        stage.openNew([&](User& user) {
            typeName(user, "垫圈");
            addFile(user);
            user.answer(MessageKind::critical, text);
            save(user);
            EXPECT_EQ(value(user, kNameRow), "垫圈") << "what was typed stays";
        });
        EXPECT_EQ(item(203), Rows{});
        EXPECT_EQ(goods(203), Rows{});
        EXPECT_EQ(stage.connectionsAlive(), 0);
    }
    static void saveByTool(User& user) { user.clickTool("Save"); }
};

/// What nobody should be able to make a file of another folder of.
Texts hostileNames() {
    return {"../../etc/passwd",
            "../a.txt",
            "..\\..\\boot.ini",
            "/etc/passwd",
            "\\\\server\\share\\a.txt",
            "C:\\Windows\\x.exe",
            "C:x",
            "C:",
            "D:/",
            "a.txt:stream",
            "..",
            ".",
            "...",
            ". . .",
            "",
            "/",
            "a/b\nc",
            "a\tb\r\n.txt",
            "\x01\x02",
            "a\x7F.txt",
            "a\xC2\x85.txt",
            "txt.exe\xE2\x80\xAE.txt",
            "  ",
            " a.txt ",
            "a.txt. . ",
            "nul\\",
            "~",
            "-rf",
            "$(reboot).txt",
            std::string(220, 'x') + ".txt"};
}

TEST_F(EditorBadFiles, hostileNamesStayInTheirFolder) {
    const fs::path folder = services().folders.attachments();
    for (const std::string& name : hostileNames()) {
        SCOPED_TRACE(name);
        database().execute("delete from tblItemFJ");
        stage.storeAttachment(1, name, "content");
        stage.openItem(101, [&](User& user) {
            user.chooseTab("SSTab1", 1);
            user.clickCell("fps2", 2, 1);
            const fs::path opened = script().documents().back();
            EXPECT_EQ(opened.lexically_normal().parent_path(), folder);
            EXPECT_EQ(opened.lexically_normal(), opened);
            EXPECT_TRUE(fs::is_regular_file(opened));
            EXPECT_EQ(fs::status(opened).permissions() & fs::perms::owner_exec, fs::perms::none);
            EXPECT_EQ(Stage::contents(opened), "content");
        });
        EXPECT_TRUE(fs::is_empty(folder)) << "and nothing stays there";
    }
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all) << "nobody else reads there";
}

TEST_F(EditorBadFiles, aNameKeepsWhatIsHarmlessInIt) {
    EXPECT_EQ(plainFileName("../../图纸 v1.2.pdf"), "图纸 v1.2.pdf");
    EXPECT_EQ(plainFileName("C:\\图纸\\总图.dwg"), "总图.dwg");
    EXPECT_EQ(plainFileName(".profile"), ".profile");
    EXPECT_EQ(plainFileName("a\n.txt"), "a.txt");
    EXPECT_EQ(plainFileName("a\xC2\x85\xE2\x80\xAE\xE2\x81\xA6.txt"), "a.txt") << "letters that show as others too";
    EXPECT_EQ(plainFileName("±×…※.txt"), "±×…※.txt");
    EXPECT_EQ(plainFileName("..."), "附件");
    EXPECT_TRUE(plainFileName(std::string(400, 'x') + ".txt").ends_with("x.txt"));
    for (const std::string& name : hostileNames())
        EXPECT_LE(plainFileName(name).size(), 200U) << name;
}

TEST_F(EditorBadFiles, aHostileSuffixOfAPhotoStaysInItsFolder) {
    for (const char* suffix : {"/../../evil.jpg", "\\..\\evil.jpg", ":x", ".jp\ng"}) {
        SCOPED_TRACE(suffix);
        database().execute("delete from ICItemPhoto");
        database().execute(std::string("insert into ICItemPhoto(fItemId,fPhoto,fHZ) values(101,0x4142,'") + suffix +
                           "')");
        stage.openItem(101, [](User&) {
            const fs::path shown = appState().gPhotoPath;
            EXPECT_EQ(shown.lexically_normal().parent_path(), fs::path(services().folders.temporary()));
            EXPECT_EQ(Stage::contents(shown), "AB");
        });
    }
}

TEST_F(EditorBadFiles, aPhotoThatVanishedUndoesTheItem) {
    const std::string path = stage.makeFile("a.bmp", redBitmap());
    expectRefused(
        [&](User& user) {
            choosePhoto(user, path);
            fs::remove(path);
        },
        saveByTool, "文件不存在：" + path);
}

TEST_F(EditorBadFiles, aFolderGivenAsAnAttachmentUndoesTheItem) {
    const std::string folder = database().folder().path();
    expectRefused([&](User& user) { attach(user, folder); }, saveByTool, "不是文件：" + folder);
}

TEST_F(EditorBadFiles, anUnreadablePhotoUndoesTheItem) {
    const std::string path = stage.makeFile("a.bmp", redBitmap());
    expectRefused(
        [&](User& user) {
            choosePhoto(user, path);
            fs::permissions(path, fs::perms::none);
        },
        [](User& user) {
            const BoundByPermissions bound;
            user.clickTool("Save");
        },
        "文件无法打开：" + path);
}

TEST_F(EditorBadFiles, anUnreadablePictureShowsNothingAndSaysNothing) {
    const std::string path = stage.makeFile("a.bmp", redBitmap());
    fs::permissions(path, fs::perms::none);
    stage.openNew([&](User& user) {
        const BoundByPermissions bound;
        choosePhoto(user, path);
        EXPECT_TRUE(user.control<platform::Picture>("pict1").empty());
        EXPECT_EQ(appState().gPhotoPath, path);
    });
}

TEST_F(EditorBadFiles, anUnreadableAttachmentUndoesTheItem) {
    const std::string path = stage.makeFile("a.txt", "a");
    expectRefused(
        [&](User& user) {
            attach(user, path);
            fs::permissions(path, fs::perms::none);
        },
        [](User& user) {
            const BoundByPermissions bound;
            user.clickTool("Save");
        },
        "文件无法打开：" + path);
}

TEST_F(EditorBadFiles, aDiskThatIsFullKeepsAnAttachmentFromOpeningAndLeavesNoHalf) {
    stage.storeAttachment(4, "a.bin", std::string(200000, 'x'));
    const std::string path = services().folders.attachments() + "/a.bin";
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", 1);
        user.answer(MessageKind::critical, "文件无法写入：" + path);
        {
            const FullDisk disk(4096);
            user.clickCell("fps2", 2, 1);
        }
        EXPECT_FALSE(fs::exists(path));
        EXPECT_TRUE(script().documents().empty());
        user.clickCell("fps2", 2, 1);
        EXPECT_EQ(fs::file_size(path), 200000U) << "with room again it opens";
    });
}

TEST_F(EditorBadFiles, aDiskThatIsFullKeepsAPhotoFromLoadingAndTheWindowOpens) {
    const std::string photo = redBitmap() + std::string(200000, 'x');
    stage.openItem(101, [&](User& user) {
        choosePhoto(user, stage.makeFile("a.bmp", photo));
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    });
    const FullDisk disk(4096);
    script().answer(MessageKind::critical, "文件无法写入：" + services().folders.temporary() + "/Temp001.bmp",
                    Answer::ok);
    stage.openItem(101, [](User& user) {
        EXPECT_EQ(value(user, kNameRow), "内六角螺丝");
        EXPECT_TRUE(user.control<platform::Picture>("pict1").empty());
    });
}

TEST_F(EditorBadFiles, aDiskThatIsFullUndoesTheSave) {
    NEEDS_A_FILE();
    const std::string path = stage.makeFile("a.bin", std::string(4 << 20, 'x'));
    const auto room = fs::file_size(database().file()) + (1U << 20);
    expectRefused([&](User& user) { attach(user, path); },
                  [room](User& user) {
                      const FullDisk disk(room);
                      user.clickTool("Save");
                  },
                  "读写数据库文件“" + database().file() + "”时出错: disk I/O error。");
}

}  // namespace
}  // namespace orvenmod::test
