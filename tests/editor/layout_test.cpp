// How the editor lays itself out from the class's metadata.
#include "editor/editortest.h"
#include "editor/frmBasicInfo.h"
#include "editor/frmBasicInfo_design.h"

namespace orvenmod::test {
namespace {

using platform::CellType;

class EditorLayout : public EditorTest {};

Texts column(User& user, int column) {
    Texts all;
    const auto& grid = user.control<EntryGrid>("fps1");
    for (int row = 1; row <= grid.rowCount(); ++row)
        all.push_back(grid.text(column, row));
    return all;
}

TEST_F(EditorLayout, hasARowForEveryVisibleFieldAndOneForTheCategory) {
    stage.openNew([](User& user) {
        EXPECT_EQ(column(user, kCaption),
                  (Texts{"短代码", "代码", "名称", "规格型号", "最低库存", "建档日期", "主供应商", "所属分类"}));
        EXPECT_EQ(column(user, kFieldName),
                  (Texts{"fShortNumber", "fNumber", "fName", "fModel", "fMinQty", "fF", "fH", ""}));
        EXPECT_EQ(column(user, kFieldType), (Texts{"1", "1", "1", "1", "13", "0", "1", ""}));
        EXPECT_EQ(column(user, kSourceClass).at(kSupplierRow - 1), "2");
        EXPECT_EQ(column(user, kIsNull), (Texts{"1", "1", "1", "0", "0", "0", "0", ""}));
    });
}

TEST_F(EditorLayout, readsFieldsListsAndCategoriesInOrder) {
    stage.openNew([this](User&) {
        const Texts sent = stage.statements();
        ASSERT_EQ(sent.size(), 5U);
        EXPECT_EQ(sent[0], "select * from tblTableInfo where fitemclassid=3 and fisvisible=1  order by finterid");
        EXPECT_EQ(sent[1], "select * from  tblItem where fisdetail=1  and   fitemclassid=2 order by fnumber ");
        EXPECT_EQ(sent[2],
                  "select fName,fItemid,fdepth,isnull(fnumber,'') as fnumber from tblItem where fisdetail=0  and "
                  "fitemclassid=3 order by fnumber,fnbnumber,fdepth");
        EXPECT_EQ(sent[3],
                  "select isnull(max(len(fshortnumber)),1) as fshortnumber from tblitem where fitemclassid=3 and "
                  "fparentid=0");
        EXPECT_EQ(sent[4],
                  "select isnull(max(cast(fshortnumber as varchar(10))),0) as fshortnumber from tblitem where "
                  "fitemclassid=3 and fparentid=0 and len(fshortnumber)=2");
    });
}

TEST_F(EditorLayout, givesEachCellTheTypeOfItsField) {
    stage.openNew([](User& user) {
        const auto& grid = user.control<EntryGrid>("fps1");
        EXPECT_EQ(grid.cellType(kValue, kNameRow), CellType::text);
        EXPECT_EQ(grid.cellType(kValue, kMinQtyRow), CellType::number);
        EXPECT_EQ(grid.cellType(kValue, kDayRow), CellType::date);
        EXPECT_EQ(grid.cellType(kValue, kSupplierRow), CellType::combo);
        EXPECT_EQ(grid.cellType(kChosenId, kSupplierRow), CellType::combo);
        EXPECT_EQ(grid.cellType(kValue, kCategoryRow), CellType::combo);
    });
}

TEST_F(EditorLayout, locksTheCodeAndHidesTheRecord) {
    stage.openNew([](User& user) {
        const auto& grid = user.control<EntryGrid>("fps1");
        EXPECT_TRUE(grid.locked(kValue, kCodeRow));
        EXPECT_FALSE(grid.locked(kValue, kShortCodeRow));
        EXPECT_FALSE(grid.columnHidden(kCaption));
        EXPECT_FALSE(grid.columnHidden(kValue));
        for (int c = kFieldName; c <= kLastColumn; ++c)
            EXPECT_TRUE(grid.columnHidden(c)) << c;
        EXPECT_EQ(grid.activeColumn(), kValue);
        EXPECT_EQ(grid.activeRow(), kShortCodeRow);
    });
}

TEST_F(EditorLayout, aNumberWithoutDecimalsKeepsTheCellsOwnRule) {
    database().execute(
        "update tblTableInfo set fNumberDec=null,FMaxNumber=null,FMinNumber=null where fItemClassId=3 and "
        "fFieldName='fMinQty'");
    stage.openNew([](User& user) {
        user.typeCell("fps1", kValue, kMinQtyRow, "12.5");
        EXPECT_EQ(value(user, kMinQtyRow), "12.5");
    });
}

TEST_F(EditorLayout, aNewItemTakesTheCategoryOfTheTree) {
    stage.openNew(
        [this](User& user) {
            EXPECT_EQ(value(user, kCategoryRow), "    螺丝(01.01)");
            EXPECT_EQ(chosenId(user, kCategoryRow), "13");
            EXPECT_EQ(value(user, kShortCodeRow), "003");
            EXPECT_EQ(value(user, kCodeRow), "01.01.003");
            EXPECT_EQ(user.window().caption(), "货品新增");
            EXPECT_EQ(
                stage.statements().at(3),
                "select fName,fdepth,isnull(fnumber,'') as fNumber from tblItem where fisdetail=0 and fitemclassid=3 "
                "And fItemId = 13");
        },
        13);
}

TEST_F(EditorLayout, withoutACategoryTheCodeIsTheShortCode) {
    for (const int parent : {0, -1}) {
        stage.openNew(
            [parent](User& user) {
                EXPECT_EQ(chosenId(user, kCategoryRow), "");
                EXPECT_EQ(value(user, kShortCodeRow), parent == 0 ? "04" : "001");
                EXPECT_EQ(value(user, kCodeRow), value(user, kShortCodeRow));
            },
            parent);
    }
}

TEST_F(EditorLayout, aClassWithoutCategoriesOffersNoneAlone) {
    appState().gItemClassId = 11;
    appState().gItemTable = "tblAccount";
    stage.openNew([](User& user) {
        auto& grid = user.control<EntryGrid>("fps1");
        const int last = grid.rowCount();
        EXPECT_EQ(grid.selectedItem(kValue, last), -1);
        EXPECT_EQ(grid.text(kChosenId, last), "");
        user.pickCell("fps1", kValue, last, 0);
        EXPECT_EQ(grid.text(kValue, last), "无");
        EXPECT_EQ(grid.text(kChosenId, last), "0");
    });
}

TEST_F(EditorLayout, aReferenceToAClassWithoutItemsIsSavedAsNone) {
    database().execute("delete from tblItem where fItemClassId=2");
    stage.openNew([](User& user) {
        EXPECT_EQ(user.control<EntryGrid>("fps1").selectedItem(kValue, kSupplierRow), -1);
        typeName(user, "垫圈");
        user.answer(MessageKind::information, "数据保存成功!");
        user.clickTool("Save");
    });
    EXPECT_EQ(database().value("select fH from ICItem where fItemId=203"), "0");
}

TEST_F(EditorLayout, defaultsOfTheMetadataAreNotRead) {
    database().execute("update tblTableInfo set fDefaultValue='M6' where fItemClassId=3 and fFieldName='fModel'");
    stage.openNew([](User& user) { EXPECT_EQ(value(user, kModelRow), ""); });
}

TEST_F(EditorLayout, aDictionaryFieldStopsTheLayoutAtItsRow) {
    database().execute("update tblTableInfo set fItemType='1' where fItemClassId=3 and fFieldName='fH'");
    script().answer(MessageKind::critical, "关键字 'and' 附近有语法错误。", Answer::ok);
    stage.openNew([this](User& user) {
        EXPECT_EQ(stage.statements().at(1), "select * from  tblSubType where  and   fitemclassid=2 order by fnumber ");
        EXPECT_EQ(user.control<EntryGrid>("fps1").rowCount(), kSupplierRow) << "no category row";
    });
}

TEST_F(EditorLayout, onlyGoodsHaveThePhotoTab) {
    stage.openNew([](User& user) { EXPECT_TRUE(user.control<platform::Tabs>("SSTab1").tabEnabled(2)); });
    appState().gItemClassId = 2;
    appState().gItemTable = "tblSupplier";
    stage.openNew([](User& user) { EXPECT_FALSE(user.control<platform::Tabs>("SSTab1").tabEnabled(2)); });
}

TEST_F(EditorLayout, startsWithTheNextItemChecked) {
    stage.openNew([](User& user) { EXPECT_TRUE(user.control<platform::Menu>("MenuNewAfterSave").checked()); });
}

TEST_F(EditorLayout, theControlsFollowTheWindow) {
    stage.openNew([](User& user) {
        const auto& tabs = user.control<platform::Tabs>("SSTab1");
        const float width = tabs.width();
        user.resizeWindow(basicInfoDesign().width * 2, basicInfoDesign().height);
        EXPECT_NEAR(tabs.width(), width * 2, 2);
    });
}

TEST_F(EditorLayout, closingWithoutASaveLeavesTheListAlone) {
    stage.openNew([](User& user) { user.clickTool("Exit"); });
    stage.openNew([](User& user) { user.chooseMenu("MenuFileClose"); });
    EXPECT_EQ(stage.list.refreshes, Texts{});
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(EditorLayout, aCategoryThatIsGoneIsKeptByItsIdAlone) {
    stage.openNew(
        [](User& user) {
            EXPECT_EQ(chosenId(user, kCategoryRow), "999");
            EXPECT_EQ(value(user, kCategoryRow), "");
            EXPECT_EQ(value(user, kCodeRow), "001");
        },
        999);
}

TEST_F(EditorLayout, requiredFieldsAreMarkedBesideTheirNames) {
    stage.openNew([](User& user) {
        const auto& grid = user.control<EntryGrid>("fps1");
        for (int row = 1; row <= grid.rowCount(); ++row)
            EXPECT_EQ(grid.required(kCaption, row), row <= kNameRow) << row;
    });
}

TEST_F(EditorLayout, aNumberTakesTheDecimalsAndLimitsOfItsField) {
    database().execute(
        "update tblTableInfo set fNumberDec=1,FMaxNumber=100,FMinNumber=0 where fItemClassId=3 and "
        "fFieldName='fMinQty'");
    stage.openNew([](User& user) {
        const auto& grid = user.control<EntryGrid>("fps1");
        user.typeCell("fps1", kValue, kMinQtyRow, "99.95");
        EXPECT_EQ(grid.refusal(), "请输入 0 到 100 之间的数，最多 1 位小数");
        user.typeCell("fps1", kValue, kMinQtyRow, "101");
        EXPECT_EQ(grid.refusal(), "请输入 0 到 100 之间的数");
        user.typeCell("fps1", kValue, kMinQtyRow, "-1");
        EXPECT_EQ(grid.refusal(), "请输入 0 到 100 之间的数");
        user.typeCell("fps1", kValue, kMinQtyRow, "99.9");
        EXPECT_EQ(grid.refusal(), "");
        EXPECT_EQ(value(user, kMinQtyRow), "99.9");
    });
}

TEST_F(EditorLayout, anyFieldCanBeLocked) {
    database().execute("update tblTableInfo set fIsLock=1 where fItemClassId=3 and fFieldName='fModel'");
    stage.openNew([](User& user) {
        EXPECT_TRUE(user.control<EntryGrid>("fps1").locked(kValue, kModelRow));
        EXPECT_FALSE(user.control<EntryGrid>("fps1").locked(kValue, kNameRow));
    });
}

}  // namespace
}  // namespace orvenmod::test
