// What is typed for a new field in the designer, and what its items take then.

#include "designer/designerroads.h"
#include "editor/frmBasicInfo.h"

namespace orvenmod::test {
namespace {

using platform::EntryGrid;

constexpr int kValueColumn = 2;
constexpr int kNameOfField = 1;
constexpr int kLookupOfField = 9;
constexpr int kNameOfItem = 3;
constexpr int kOwnField = 4;

void addItem(DesignerStage& stage, const Steps& steps) {
    AppState& state = appState();
    state.gConnStr = stage.connectionString();
    state.gItemClassId = 50;
    state.gItemName = "设备";
    state.gItemTable = "tblSelfA1";
    state.gViewName = "vtblSelfA1";
    state.gEditMode = 0;
    stage.script().onWindow("frmBasicInfo", [&](User& user) {
        user.typeCell("fps1", kValueColumn, kNameOfItem, "车床");
        steps(user);
        user.answer(MessageKind::information, kFieldSaved);
        user.press("Ctrl+S");
    });
    frmBasicInfo::instance().show(nullptr);
}

TEST_P(DesignerRoads, anAmountWithoutLimitsTakesEveryAmount) {
    stage.withClass({"50", "设备"}, {{.name = "价格", .field = "fPrice", .type = FieldType::currency}});
    addItem(stage, [](User& user) {
        user.typeCell("fps1", kValueColumn, kOwnField, "1,234,567");
        EXPECT_EQ(user.control<EntryGrid>("fps1").refusal(), "");
    });
    EXPECT_EQ(stage.database().rows("select fPrice from tblSelfA1"), (Rows{{"1234567"}}));
    stage.finish();
}

TEST_P(DesignerRoads, aPartlyTypedClassMakesALookupOrIsRefused) {
    stage.withClass({"50", "设备"});
    stage.open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.inNewField(user, [&](User& dialog) {
            auto& grid = dialog.control<EntryGrid>("fps1");
            dialog.typeCell("fps1", kValueColumn, kNameOfField, "厂家");
            dialog.clickCell("fps1", kValueColumn, kLookupOfField);
            dialog.typeKeys("不存在");
            stage.forgetStatements();
            dialog.clickTool("Save");
            EXPECT_EQ(grid.refusal(), "没有这一项");
            EXPECT_EQ(stage.statements(), Texts{});
            dialog.press("Esc");
            EXPECT_EQ(grid.text(kValueColumn, kLookupOfField), "无");
            dialog.press("Delete");
            EXPECT_EQ(grid.refusal(), "请选择一项");
            dialog.press("Esc");
            dialog.typeKeys("供");
            dialog.answer(MessageKind::information, kFieldSaved);
            dialog.clickTool("Save");
        });
    });
    EXPECT_EQ(stage.database().rows("select fValueItemId,fItemType,fFieldType from tblTableInfo where fName='厂家'"),
              (Rows{{"2", "0", "1"}}));
    stage.finish();
}

TEST_P(DesignerRoads, aNewFieldThatIsRefusedLeadsToTheCellThatIsEmpty) {
    stage.withClass({"50", "设备"});
    stage.open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.inNewField(user, [&](User& dialog) {
            const auto& grid = dialog.control<EntryGrid>("fps1");
            dialog.clickCell("fps1", kValueColumn, kLookupOfField);
            dialog.typeKeys("供");
            dialog.answer(MessageKind::critical, "名称不能为空");
            dialog.clickTool("Save");
            EXPECT_EQ(grid.activeRow(), kNameOfField);
            dialog.typeKeys("厂家");
            dialog.answer(MessageKind::information, kFieldSaved);
            dialog.clickTool("Save");
            EXPECT_EQ(grid.activeRow(), kNameOfField);
        });
    });
    EXPECT_EQ(stage.database().value("select fValueItemId from tblTableInfo where fName='厂家'"), "2");
    stage.finish();
}

TEST_P(DesignerRoads, aNumberThatItsWholeColumnCannotHoldIsToldAndNothingIsStored) {
    stage.withClass({"50", "设备"}, {{.name = "重量",
                                      .field = "fWeight",
                                      .type = FieldType::number,
                                      .decimals = "2",
                                      .maximum = "100",
                                      .minimum = "0"}});
    addItem(stage, [&stage = stage](User& user) {
        user.clickCell("fps1", kValueColumn, kOwnField);
        user.typeKeys("12.34");
        user.answer(MessageKind::critical, "在将 varchar 值 '12.34' 转换成数据类型 int 时失败。");
        user.press("Ctrl+S");
        EXPECT_EQ(user.control<EntryGrid>("fps1").text(kValueColumn, kOwnField), "12.34");
        EXPECT_EQ(stage.database().value("select count(*) from tblSelfA1"), "0");
        user.typeCell("fps1", kValueColumn, kOwnField, "12");
    });
    EXPECT_EQ(stage.database().rows("select fWeight from tblSelfA1"), (Rows{{"12"}}));
    stage.finish();
}

TEST_P(DesignerRoads, aCaptionIsTakenOverByASaveFromItsOpenCell) {
    stage.withClass({"50", "设备"}, {{.name = "甲"}});
    stage.open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.inSetup(user, [](User& dialog) {
            dialog.clickCell("fps1", 1, kOwnField);
            dialog.typeKeys("x");
            EXPECT_FALSE(dialog.control<EntryGrid>("fps1").cellOpen()) << "locked";
            dialog.chooseMenu("MenuUnLock");
            dialog.typeKeys("新名");
            dialog.answer(MessageKind::information, kFieldSaved);
            dialog.clickTool("Save");
        });
    });
    EXPECT_EQ(stage.database().value("select fName from tblTableInfo where fItemClassId=50 and fInterId=4"), "新名");
    stage.finish();
}

TEST_P(DesignerRoads, classesOfOneNameAreListedWithTheirNumbers) {
    stage.database().execute("update tblItemClass set fItemName='客户' where fItemClassId=2");
    stage.open([&](User& user) {
        user.clickNode("tv1", "D2");
        stage.inNewField(user, [](User& dialog) {
            dialog.clickCell("fps1", kValueColumn, kLookupOfField);
            dialog.press("F4");
            Texts listed = dialog.openedList();
            EXPECT_EQ(listed.front(), "无");
            // A server gives rows in any order that no one asked for.
            std::sort(listed.begin(), listed.end());
            const auto first = std::find(listed.begin(), listed.end(), "客户(1)");
            ASSERT_NE(first, listed.end());
            EXPECT_EQ(*std::next(first), "客户(2)");
            EXPECT_EQ(std::count(listed.begin(), listed.end(), "客户"), 0);
            dialog.press("Esc");
        });
    });
    stage.finish();
}

}  // namespace
}  // namespace orvenmod::test
