// What lives as long as a window, what as long as a save, and what longer than both.
#include <filesystem>
#include <fstream>

#include "editor/editortest.h"
#include "platform/memory/memoryentrygrid.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

class EditorLifecycle : public EditorTest {
protected:
    EditorLifecycle() : file_(database().folder().file("a.jpg")) { std::ofstream(file_) << "picture"; }

    // All that a save could write, the counter included.
    Rows dump() {
        Rows all;
        for (const char* table : {"tblItem", "ICItem", "ICItemPhoto", "tblItemFJ", "tblMaxNum"}) {
            for (auto& row : database().rows(std::string("select * from ") + table + " order by 1"))
                all.push_back(std::move(row));
        }
        return all;
    }

    static std::size_t choices(User& user, int row) {
        return dynamic_cast<platform::memory::MemoryEntryGrid&>(user.control<EntryGrid>("fps1"))
            .model()
            .items(kValue, row)
            .size();
    }

    void insert(User& user) {
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    }
    void update(User& user) {
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    }
    void choosePhoto(User& user) {
        user.chooseTab("SSTab1", 2);
        user.chooseFile(file_);
        user.click("cmdAdd");
        EXPECT_EQ(appState().gPhotoPath, file_);
    }
    void storeAttachment(int entry) {
        database().execute("insert into tblItemFJ(fItemId,fEntryId,fName,fFileName,fFJ) values(101," +
                           std::to_string(entry) + ",'图纸','a.pdf',0x41)");
    }
    void deleteFirstAttachment(User& user) {
        user.chooseTab("SSTab1", 1);
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.clickCell("fps2", 1, 1);
    }

    std::string file_;
};

TEST_F(EditorLifecycle, theGridIsBuiltOnceAnOpening) {
    stage.openItem(101, [&](User& user) {
        ASSERT_EQ(choices(user, kSupplierRow), 2U);
        ASSERT_EQ(choices(user, kCategoryRow), 4U);
        database().addItem(2, 205, "05", "华北供应");
        database().addCategory(3, 15, "03x", "杂项");
        const Texts proposal = {
            "select isnull(max(len(fshortnumber)),1) as fshortnumber from tblitem where fitemclassid=3 and "
            "fparentid=13",
            "select isnull(max(cast(fshortnumber as varchar(10))),0) as fshortnumber from tblitem where "
            "fitemclassid=3 and fparentid=13 and len(fshortnumber)=3"};
        for (const std::string command : {"Copy", "New"}) {
            stage.forgetStatements();
            user.clickTool(command);
            EXPECT_EQ(appState().gEditMode, 0);
            EXPECT_EQ(stage.statements(), proposal) << command;
        }
        typeName(user, "垫圈");
        insert(user);
        EXPECT_EQ(choices(user, kSupplierRow), 2U);
        EXPECT_EQ(choices(user, kCategoryRow), 4U);
    });
    stage.openItem(101, [&](User& user) {
        EXPECT_EQ(choices(user, kSupplierRow), 3U);
        EXPECT_EQ(choices(user, kCategoryRow), 5U);
    });
}

TEST_F(EditorLifecycle, aSaveOfTheWindowBeforeRefreshesNothing) {
    stage.openItem(101, [&](User& user) { update(user); });
    EXPECT_EQ(stage.list.refreshes.size(), 1U);
    stage.openItem(101, [](User&) {});
    EXPECT_EQ(stage.list.refreshes.size(), 1U);
}

TEST_F(EditorLifecycle, aRefusedInsertWritesNothing) {
    stage.openNew(
        [&](User& user) {
            const Rows before = dump();
            user.typeCell("fps1", kValue, kShortCodeRow, "002");
            typeName(user, "垫圈");
            user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
            user.clickTool("Save");
            EXPECT_EQ(dump(), before);
            user.typeCell("fps1", kValue, kShortCodeRow, "003");
            typeName(user, "螺母");
            user.answer(MessageKind::question, "螺母名称已经存在,是否继续!", Answer::no);
            user.clickTool("Save");
            EXPECT_EQ(dump(), before);
        },
        13);
    EXPECT_EQ(stage.list.refreshes, Texts{});
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorLifecycle, aRefusedUpdateWritesNothing) {
    stage.openItem(101, [&](User& user) {
        const Rows before = dump();
        user.typeCell("fps1", kValue, kShortCodeRow, "002");
        user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
        user.clickTool("Save");
        user.typeCell("fps1", kValue, kShortCodeRow, "001");
        typeName(user, "螺母");
        user.answer(MessageKind::question, "螺母名称已经存在,是否继续!", Answer::no);
        user.clickTool("Save");
        EXPECT_EQ(dump(), before);
        database().execute("update tblItem set fIsLock=1 where fItemId=101");
        const Rows locked = dump();
        user.answer(MessageKind::warning, "该项目已经禁用!不能修改");
        user.clickTool("Save");
        EXPECT_EQ(dump(), locked);
    });
    EXPECT_EQ(stage.list.refreshes, Texts{});
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorLifecycle, anAttachmentDeletedBeforeAFailedSaveStaysDeleted) {
    storeAttachment(1);
    storeAttachment(2);
    stage.openItem(101, [&](User& user) {
        deleteFirstAttachment(user);
        user.chooseTab("SSTab1", 0);
        typeName(user, "内六角");
        stage.faults() = {.failAt = 8};  // the item's own row
        user.answer(MessageKind::critical, stage.faults().text);
        user.clickTool("Save");
        stage.faults() = {};
    });
    EXPECT_EQ(database().rows("select fEntryId from tblItemFJ"), (Rows{{"2"}}));
    EXPECT_EQ(item(101).at(0).at(1), "内六角螺丝");
    EXPECT_EQ(goods(101).at(0).at(1), "内六角螺丝");
}

TEST_F(EditorLifecycle, anAttachmentDeletedBeforeTheWindowIsLeftStaysDeleted) {
    storeAttachment(1);
    stage.openItem(101, [&](User& user) { deleteFirstAttachment(user); });
    EXPECT_EQ(database().rows("select fEntryId from tblItemFJ"), Rows{});
}

TEST_F(EditorLifecycle, aRowJustStoredCountsAsNewUntilTheWindowOpensAgain) {
    stage.openItem(101, [&](User& user) {
        user.chooseMenu("MenuNewAfterSave");
        user.chooseTab("SSTab1", 1);
        user.chooseFile(file_);
        user.click("cmdAddFJ");
        user.typeCell("fps2", 3, 1, "图纸");
        update(user);
        EXPECT_EQ(user.control<EntryGrid>("fps2").cellTag(1, 1), "");
        update(user);
    });
    EXPECT_EQ(database().rows("select fEntryId from tblItemFJ"), (Rows{{"1"}, {"1"}}));
    stage.openItem(101, [](User& user) {
        EXPECT_EQ(user.control<EntryGrid>("fps2").rowCount(), 2);
        EXPECT_EQ(user.control<EntryGrid>("fps2").cellTag(1, 1), "1");
    });
}

TEST_F(EditorLifecycle, thePhotosFileOutlivesTheWindowAndTheNextPhotoReplacesIt) {
    database().execute("insert into ICItemPhoto(fItemId,fPhoto,fHZ) values(101,0x4142,'.bmp')");
    database().execute("insert into ICItemPhoto(fItemId,fPhoto,fHZ) values(102,0x43,'.bmp')");
    database().execute("insert into ICItemPhoto(fItemId,fPhoto,fHZ) values(103,0x44,'.gif')");
    std::string first;
    stage.openItem(101, [&](User&) { first = appState().gPhotoPath; });
    EXPECT_EQ(Stage::contents(first), "AB");
    stage.openItem(102, [&](User&) { EXPECT_EQ(appState().gPhotoPath, first); });
    EXPECT_EQ(Stage::contents(first), "C");
    stage.openItem(103, [&](User&) { EXPECT_EQ(appState().gPhotoPath, fs::path(first).replace_extension(".gif")); });
    EXPECT_EQ(Stage::contents(first), "C");
}

TEST_F(EditorLifecycle, thePathOfThePhotoIsEmptiedByClearASaveAndNew) {
    stage.openNew([&](User& user) {
        choosePhoto(user);
        user.click("cmdClear");
        EXPECT_EQ(appState().gPhotoPath, "");
        choosePhoto(user);
        user.clickTool("New");
        EXPECT_EQ(appState().gPhotoPath, "");
        user.chooseTab("SSTab1", 0);
        typeName(user, "垫圈");
        choosePhoto(user);
        insert(user);
        EXPECT_EQ(appState().gPhotoPath, "");
    });
    stage.openItem(101, [&](User& user) {
        choosePhoto(user);
        update(user);
        EXPECT_EQ(appState().gPhotoPath, "");
    });
    EXPECT_EQ(database().rows("select fItemId from ICItemPhoto order by fItemId"), (Rows{{"101"}, {"203"}}));
}

TEST_F(EditorLifecycle, aPhotoStaysChosenAfterARefusedSave) {
    stage.openNew([&](User& user) {
        choosePhoto(user);
        user.chooseTab("SSTab1", 0);
        user.typeCell("fps1", kValue, kShortCodeRow, "01");
        typeName(user, "垫圈");
        user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
        user.clickTool("Save");
        EXPECT_EQ(appState().gPhotoPath, file_);
    });
}

}  // namespace
}  // namespace orvenmod::test
