#include "editor/roads.h"

#include <filesystem>

#include "editor/frmBasicInfo.h"
#include "editor/frmBasicInfo_design.h"
#include "editor/frmFJNew.h"
#include "editor/frmItemPhoto.h"
#include "support/keyboardwalk.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;
using platform::Picture;
using platform::Tabs;

constexpr int kAttachments = 1;
constexpr int kPhoto = 2;

TEST_P(EditorRoads, theWindowIsWorkedByKeyboard) { walkByKeyboard(stage.script(), basicInfoDesign()); }

TEST_P(EditorRoads, aClerkAddsAnItemAndTheNextOne) {
    stage.openNew([](User& user) {
        EXPECT_EQ(user.window().caption(), "货品新增");
        EXPECT_TRUE(user.control<EntryGrid>("fps1").hasFocus()) << "typing goes into the fields at once";
        EXPECT_EQ(user.control<EntryGrid>("fps1").activeRow(), kShortCodeRow);
        typeName(user, "垫圈");
        user.typeCell("fps1", kValue, kModelRow, "M6");
        user.typeCell("fps1", kValue, kMinQtyRow, "12.5");
        user.typeCell("fps1", kValue, kDayRow, "2026-3-4");
        user.pickCell("fps1", kValue, kSupplierRow, 1);
        user.pickCell("fps1", kValue, kCategoryRow, 3);
        EXPECT_EQ(values(user), (Texts{"002", "02.002", "垫圈", "M6", "12.5", "2026-03-04", "华南供应", "电器(02)"}));
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
        EXPECT_EQ(values(user), (Texts{"003", "02.003", "", "", "", "", "", "电器(02)"}));
        typeName(user, "灯泡");
        user.answer(MessageKind::information, "数据保存成功!");
        user.press("Ctrl+S");
    });
    EXPECT_EQ(database().rows("select fNumber,fName,fModel,fMinQty,fF,fH from ICItem where fItemId>202"),
              (Rows{{"02.002", "垫圈", "M6", "12.5", "2026-03-04 00:00:00", "202"},
                    {"02.003", "灯泡", "", "0", "1900-01-01 00:00:00", "0"}}));
    EXPECT_EQ(database().rows("select fNumber,fParentId,fNBNumber,fShortNumber from tblItem where fItemId>202"),
              (Rows{{"02.002", "14", ".14.203.", "002"}, {"02.003", "14", ".14.204.", "003"}}));
    EXPECT_EQ(stage.list.refreshes, Texts{" and fNBNumber like '.12.%'"});
}

TEST_P(EditorRoads, aClerkChangesAnItemAndMovesIt) {
    database().execute("update ICItem set fModel='M6',fMinQty=10,fF='2026-03-04',fH=202 where fItemId=101");
    stage.openItem(101, [](User& user) {
        EXPECT_EQ(user.window().caption(), "货品修改");
        EXPECT_EQ(values(user),
                  (Texts{"001", "01.01.001", "内六角螺丝", "M6", "10", "2026-03-04", "华南供应", "    螺丝(01.01)"}));
        user.chooseMenu("MenuNewAfterSave");
        user.typeCell("fps1", kValue, kModelRow, "M8");
        user.typeCell("fps1", kValue, kMinQtyRow, "");
        user.pickCell("fps1", kValue, kSupplierRow, 0);
        user.pickCell("fps1", kValue, kCategoryRow, 3);
        EXPECT_EQ(value(user, kCodeRow), "02.002");
        user.answer(MessageKind::information, "数据修改成功!");
        user.chooseMenu("MenuFileSave");
        EXPECT_EQ(value(user, kNameRow), "内六角螺丝") << "the item stays for the next change";
        user.chooseMenu("MenuFileClose");
    });
    EXPECT_EQ(database().rows("select fNumber,fModel,fMinQty,fH from ICItem where fItemId=101"),
              (Rows{{"02.002", "M8", "0", "201"}}));
    EXPECT_EQ(database().value("select fNBNumber from tblItem where fItemId=101"), ".14.101.");
    EXPECT_EQ(stage.list.refreshes.size(), 1U);
}

TEST_P(EditorRoads, theCodeFollowsTheTyping) {
    stage.openNew(
        [](User& user) {
            user.typeCell("fps1", kValue, kShortCodeRow, "A7");
            EXPECT_EQ(value(user, kCodeRow), "01.01.A7");
            user.pickCell("fps1", kValue, kCategoryRow, 0);
            EXPECT_EQ(value(user, kCodeRow), value(user, kShortCodeRow));
        },
        13);
}

TEST_P(EditorRoads, aRefusedSaveKeepsWhatWasTyped) {
    stage.openNew([](User& user) {
        user.answer(MessageKind::warning, "名称不能为空!");
        user.clickTool("Save");
        user.typeCell("fps1", kValue, kShortCodeRow, "03");
        typeName(user, "螺母");
        user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
        user.clickTool("Save");
        user.typeCell("fps1", kValue, kShortCodeRow, "09");
        user.answer(MessageKind::question, "螺母名称已经存在,是否继续!", Answer::no);
        user.clickTool("Save");
        EXPECT_EQ(value(user, kNameRow), "螺母");
        user.closeWindow();
    });
    EXPECT_EQ(database().value("select count(*) from tblItem where fItemId>202"), "0");
    EXPECT_EQ(stage.list.refreshes, Texts{});
}

TEST_P(EditorRoads, aFailureAndItsRefusedRollbackAreShownAndTheEditorLivesOn) {
    stage.openNew([](User& user) {
        typeName(user, "5' 管");
        user.answer(MessageKind::critical, "字符串 ' and fitemclassid=3 and fisdetail=1 ' 后的引号不完整。");
        user.answer(MessageKind::critical, "ROLLBACK TRANSACTION 请求没有对应的 BEGIN TRANSACTION。");
        user.clickTool("Save");
        EXPECT_EQ(value(user, kNameRow), "5' 管");
        typeName(user, "管");
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(database().value("select fName from tblItem where fItemId=203"), "管");
}

TEST_P(EditorRoads, attachmentsAreAddedOpenedAndDeleted) {
    const std::string path = stage.makeFile("图 纸.pdf", "plan");
    stage.storeAttachment(4, "说明.txt", "text");
    std::string opened;
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", kAttachments);
        auto& rows = user.control<EntryGrid>("fps2");
        user.clickCell("fps2", 2, 1);
        opened = stage.script().documents().at(0);
        EXPECT_EQ(Stage::contents(opened), "text");
        user.chooseFile(path);
        user.click("cmdAddFJ");
        EXPECT_EQ(rows.text(4, 2), "图 纸.pdf");
        EXPECT_EQ(rows.activeRow(), 2);
        EXPECT_TRUE(rows.hasFocus()) << "the name can be typed at once";
        user.answer(MessageKind::warning, "附件第2行名称不能为空!");
        user.clickTool("Save");
        user.typeCell("fps2", 3, 2, "总图");
        user.answer(MessageKind::question, "确定要删除吗？", Answer::yes);
        user.clickCell("fps2", 1, 1);
        EXPECT_EQ(rows.rowCount(), 1);
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    });
    EXPECT_FALSE(fs::exists(opened)) << "it goes with the window";
    EXPECT_EQ(database().rows("select fEntryId,fName,fFileName from tblItemFJ where fItemId=101"),
              (Rows{{"1", "总图", "图 纸.pdf"}}));
}

TEST_P(EditorRoads, aPhotoIsChosenStoredShownAndCleared) {
    const std::string path = stage.makeFile("照片.bmp", redBitmap());
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", kPhoto);
        user.chooseFile(path);
        user.click("cmdAdd");
        EXPECT_FALSE(user.control<Picture>("pict1").empty());
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
        EXPECT_TRUE(user.control<Picture>("pict1").empty());
    });
    EXPECT_EQ(database().value("select fHZ from ICItemPhoto where fItemId=101"), ".bmp");
    stage.openItem(101, [](User& user) {
        EXPECT_FALSE(user.control<Picture>("pict1").empty());
        user.chooseTab("SSTab1", kPhoto);
        user.click("cmdClear");
        EXPECT_TRUE(user.control<Picture>("pict1").empty());
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(database().value("select count(*) from ICItemPhoto"), "0");
}

TEST_P(EditorRoads, anotherClassHasNoPhotoTab) {
    database().execute("update tblItem set fShortNumber='01' where fItemId=201");
    appState().gItemClassId = 2;
    appState().gItemTable = "tblSupplier";
    appState().gViewName = "vtblSupplier";
    stage.openItem(201, [](User& user) {
        EXPECT_FALSE(user.control<Tabs>("SSTab1").tabEnabled(kPhoto));
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    });
}

TEST_P(EditorRoads, copyAndNewStartTheNextItem) {
    stage.openItem(102, [](User& user) {
        user.clickTool("Copy");
        EXPECT_EQ(user.window().caption(), "货品新增");
        EXPECT_EQ(value(user, kCodeRow), "01.01.003");
        user.answer(MessageKind::question, "螺母名称已经存在,是否继续!", Answer::yes);
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
        user.clickTool("New");
        EXPECT_EQ(values(user), (Texts{"004", "01.01.004", "", "", "", "", "", "    螺丝(01.01)"}));
        user.clickTool("Exit");
    });
    EXPECT_EQ(database().value("select fName from tblItem where fItemId=203"), "螺母");
}

TEST_P(EditorRoads, theTwoFurtherWindowsWork) {
    const std::string path = stage.makeFile("a.txt", "a");
    const std::string picture = stage.makeFile("b.jpg", redBitmap());
    stage.script().onWindow("frmFJNew", [&](User& user) {
        user.answer(MessageKind::warning, "附件名称不能为空！");
        user.click("PowerButton1");
        user.type("txt", "图纸");
        user.press("Tab");
        EXPECT_TRUE(user.control<platform::Button>("PowerButton1").hasFocus());
        user.chooseFile(path);
        user.press("Alt+O");
    });
    stage.script().onWindow("frmItemPhoto", [&](User& user) {
        user.chooseFile(picture);
        user.press("Alt+L");
        EXPECT_FALSE(user.control<Picture>("pict1").empty());
        user.press("Alt+Q");
        EXPECT_TRUE(user.control<Picture>("pict1").empty());
        user.press("Alt+C");
    });
    stage.openNew([](User& user) {
        frmFJNew::instance().show();
        EXPECT_EQ(user.control<EntryGrid>("fps2").text(3, 1), "图纸");
        frmItemPhoto::instance().show();
        EXPECT_EQ(appState().gPhotoPath, "");
    });
}

}  // namespace
}  // namespace orvenmod::test
