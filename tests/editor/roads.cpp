#include "editor/roads.h"

#include <filesystem>

#include "editor/frmBasicInfo.h"
#include "editor/frmBasicInfo_design.h"
#include "editor/frmFJNew.h"
#include "editor/frmItemPhoto.h"
#include "support/keyboardwalk.h"
#include "support/testlocale.h"

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

TEST_P(EditorRoads, aDecimalCommaOfTheHostChangesNothing) {
    const DecimalComma comma;
    database().execute("update ICItem set fMinQty=0.5 where fItemId=101");
    stage.openItem(101, [](User& user) {
        EXPECT_EQ(value(user, kMinQtyRow), "0.5");
        user.resizeWindow(10000.5F, 8000.5F);
        user.typeCell("fps1", kValue, kMinQtyRow, "12.25");
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(database().value("select fMinQty from ICItem where fItemId=101"), "12.25");
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

TEST_P(EditorRoads, aPhotoStaysWithTheWindowInWhichItWasChosen) {
    const std::string path = stage.makeFile("照片.bmp", redBitmap());
    const auto choose = [&](User& user) {
        user.chooseTab("SSTab1", kPhoto);
        user.chooseFile(path);
        user.click("cmdAdd");
        EXPECT_EQ(appState().gPhotoPath, path);
        appState().gPhotoCleared = 1;
    };
    const std::vector<Steps> endings = {[](User& user) { user.closeWindow(); },
                                        [](User& user) { user.clickTool("Exit"); },
                                        [](User& user) { user.chooseMenu("MenuFileClose"); }};
    for (const Steps& end : endings) {
        stage.openNew([&](User& user) {
            choose(user);
            end(user);
        });
        EXPECT_EQ(appState().gPhotoPath, "");
        EXPECT_EQ(appState().gPhotoCleared, 0);
    }
    stage.openNew([](User& user) {
        typeName(user, "垫圈");
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
        user.clickTool("Exit");
    });
    stage.openItem(102, choose);
    stage.openItem(102, [](User& user) {
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(database().value("select count(*) from ICItemPhoto"), "0");
}

TEST_P(EditorRoads, aPhotoOfAnItemThatCouldNotBeReadWholeEndsWithItsWindow) {
    const std::string path = stage.makeFile("照片.bmp", redBitmap());
    stage.openItem(101, [&](User& user) {
        user.chooseTab("SSTab1", kPhoto);
        user.chooseFile(path);
        user.click("cmdAdd");
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
    });
    database().execute("drop table tblItemFJ");
    stage.script().answer(MessageKind::critical, "对象名 'tblItemFJ' 无效。", Answer::ok);
    stage.openItem(101, [](User&) { EXPECT_NE(appState().gPhotoPath, ""); });
    EXPECT_EQ(appState().gPhotoPath, "");
}

TEST_P(EditorRoads, aWindowThatDoesNotOpenLeavesNoPhoto) {
    appState().gPhotoPath = stage.makeFile("照片.bmp", redBitmap());
    appState().gConnStr = "Provider=SQLite;Data Source=" + database().folder().path();
    EXPECT_THROW(frmBasicInfo::instance().show(&stage.list), std::exception);
    EXPECT_EQ(appState().gPhotoPath, "");
    EXPECT_FALSE(frmBasicInfo::instance().isShown());
}

void expectAt(User& user, int tab, const std::string& grid, int column, int row) {
    EXPECT_EQ(user.control<Tabs>("SSTab1").tab(), tab);
    const auto& cells = user.control<EntryGrid>(grid);
    EXPECT_TRUE(cells.hasFocus()) << grid;
    EXPECT_EQ(cells.activeColumn(), column);
    EXPECT_EQ(cells.activeRow(), row);
}

TEST_P(EditorRoads, aRefusedSaveLeadsToTheFieldThatMustBeFilled) {
    database().execute("update tblTableInfo set fIsNull=1 where fItemClassId=3 and fFieldName in ('fModel','fNumber')");
    stage.openNew([](User& user) {
        typeName(user, "垫圈");
        for (const int tab : {kPhoto, kAttachments, 0}) {
            user.chooseTab("SSTab1", tab);
            user.answer(MessageKind::warning, "规格型号不能为空!");
            user.press("Ctrl+S");
            expectAt(user, 0, "fps1", kValue, kModelRow);
        }
        user.typeCell("fps1", kValue, kShortCodeRow, "");
        user.chooseTab("SSTab1", kAttachments);
        user.answer(MessageKind::warning, "短代码不能为空!");
        user.clickTool("Save");
        expectAt(user, 0, "fps1", kValue, kShortCodeRow);
    });
    EXPECT_EQ(database().value("select count(*) from tblItem where fItemId>202"), "0");
}

TEST_P(EditorRoads, aCodeThatIsMissingIsMendedInTheShortOne) {
    database().execute("update tblTableInfo set fIsNull=0 where fItemClassId=3 and fFieldName='fShortNumber'");
    database().execute("update tblTableInfo set fIsNull=1 where fItemClassId=3 and fFieldName='fNumber'");
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kShortCodeRow, "");
        typeName(user, "垫圈");
        user.answer(MessageKind::warning, "代码不能为空!");
        user.clickTool("Save");
        expectAt(user, 0, "fps1", kValue, kShortCodeRow);
    });
}

TEST_P(EditorRoads, aRefusedSaveLeadsToTheAttachmentWithoutAName) {
    const std::string path = stage.makeFile("图纸.pdf", "plan");
    stage.openNew([&](User& user) {
        typeName(user, "垫圈");
        user.chooseTab("SSTab1", kAttachments);
        for (int row = 1; row <= 2; ++row) {
            user.chooseFile(path);
            user.click("cmdAddFJ");
        }
        user.typeCell("fps2", 3, 2, "图纸");
        user.chooseTab("SSTab1", 0);
        user.answer(MessageKind::warning, "附件第1行名称不能为空!");
        user.press("Ctrl+S");
        expectAt(user, kAttachments, "fps2", 3, 1);
    });
}

TEST_P(EditorRoads, aRefusedSaveLeadsToTheCodeOrTheNameThatIsTaken) {
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kShortCodeRow, "03");
        typeName(user, "螺母");
        user.chooseTab("SSTab1", kAttachments);
        user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
        user.clickTool("Save");
        expectAt(user, 0, "fps1", kValue, kShortCodeRow);
        user.typeCell("fps1", kValue, kShortCodeRow, "09");
        user.chooseTab("SSTab1", kPhoto);
        user.answer(MessageKind::question, "螺母名称已经存在,是否继续!", Answer::no);
        user.press("Ctrl+S");
        expectAt(user, 0, "fps1", kValue, kNameRow);
    });
    stage.openItem(101, [](User& user) {
        user.typeCell("fps1", kValue, kShortCodeRow, "002");
        user.chooseTab("SSTab1", kAttachments);
        user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
        user.clickTool("Save");
        expectAt(user, 0, "fps1", kValue, kShortCodeRow);
        user.typeCell("fps1", kValue, kShortCodeRow, "001");
        typeName(user, "螺母");
        user.chooseTab("SSTab1", kAttachments);
        user.answer(MessageKind::question, "螺母名称已经存在,是否继续!", Answer::no);
        user.clickTool("Save");
        expectAt(user, 0, "fps1", kValue, kNameRow);
    });
}

TEST_P(EditorRoads, aRefusedSaveOfALockedItemLeavesTheKeyboardWhereItIs) {
    database().execute("update tblItem set fIsLock=1 where fItemId=101");
    stage.openItem(101, [](User& user) {
        user.chooseTab("SSTab1", kAttachments);
        user.answer(MessageKind::warning, "该项目已经禁用!不能修改");
        user.press("Ctrl+S");
        EXPECT_EQ(user.control<Tabs>("SSTab1").tab(), kAttachments);
    });
}

TEST_P(EditorRoads, theNextItemStartsInItsFirstFieldFromWhateverTab) {
    stage.openItem(102, [](User& user) {
        for (const int tab : {kAttachments, kPhoto, 0}) {
            user.clickCell("fps1", kValue, kModelRow);
            user.chooseTab("SSTab1", tab);
            user.clickTool("New");
            expectAt(user, 0, "fps1", kValue, kShortCodeRow);
            typeName(user, "垫圈" + std::to_string(tab));
            user.chooseTab("SSTab1", tab);
            user.answer(MessageKind::information, "数据保存成功!");
            user.press("Ctrl+S");
            expectAt(user, 0, "fps1", kValue, kShortCodeRow);
            typeName(user, "垫片");
            user.chooseTab("SSTab1", tab);
            user.clickTool("Copy");
            expectAt(user, 0, "fps1", kValue, kShortCodeRow);
            EXPECT_EQ(value(user, kNameRow), "垫片");
        }
    });
    EXPECT_EQ(database().value("select count(*) from tblItem where fItemId>202"), "3");
}

TEST_P(EditorRoads, anItemThatStaysAfterItsSaveStaysOnItsTab) {
    stage.openItem(102, [](User& user) {
        user.chooseMenu("MenuNewAfterSave");
        user.chooseTab("SSTab1", kAttachments);
        user.answer(MessageKind::information, "数据修改成功!");
        user.clickTool("Save");
        EXPECT_EQ(user.control<Tabs>("SSTab1").tab(), kAttachments);
    });
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
