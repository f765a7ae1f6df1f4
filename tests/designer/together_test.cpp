// Designer and browser on one database: what an administrator makes is what a clerk sees the next time the list opens.
#include <orvenmod/clsBasicInfo.h>

#include "designer/designertest.h"

namespace orvenmod::test {
namespace {

using platform::Combo;

class TogetherTest : public DesignerTest {
protected:
    TogetherTest() {
        stage.set("SystemSetup", "gAppPath", database().folder().path());
        stage.set("SystemLogin", "IsAdmin", "1");
    }

    void browse(std::int16_t itemClass, const Steps& steps) {
        script().onWindow("frmBasicInfoList", steps);
        clsBasicInfo info;
        info.mainInterface(itemClass, "", "", stage.connectionString(), 0);
        script().finish();
    }

    /// An item of class 50 with values in its own columns, as the editor stores one.
    void addItem(int id, const std::string& number, const std::string& name, const std::string& columns = "",
                 const std::string& values = "") {
        const std::string key = std::to_string(id);
        database().execute(
            "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,fNBNumber,"
            "fShortNumber) values(" +
            key + ",'" + number + "','" + name + "',50,0,1,1,0,'." + key + ".','" + number + "')");
        database().execute("insert into tblSelfA1(fitemid,fnumber,fname" + columns + ") values(" + key + ",'" + number +
                           "','" + name + "'" + values + ")");
    }
};

Texts listed(User& user) {
    const auto& grid = user.control<platform::ListGrid>("vsf1");
    Texts codes;
    for (int row = 1; row < grid.rowCount(); ++row)
        codes.push_back(grid.text(row, 2));
    return codes;
}

Texts searchFields(User& user, int column) {
    const auto& combo = user.control<Combo>("PC", 0);
    Texts fields;
    for (int row = 0; row < combo.rowCount(); ++row)
        fields.push_back(combo.cell(row, column));
    return fields;
}

/// The codes that a search finds: field and operator by their captions.
Texts found(User& user, const std::string& field, const std::string& comparison, const std::string& value) {
    const auto rowOf = [&user](int combo, const std::string& caption) {
        const auto& box = user.control<Combo>("PC", combo);
        for (int row = 0; row < box.rowCount(); ++row) {
            if (box.cell(row, 0) == caption) return row;
        }
        ADD_FAILURE() << "no entry " << caption;
        return 0;
    };
    user.pick("PC", rowOf(0, field), 0);
    user.pick("PC", rowOf(1, comparison), 1);
    if (user.control<platform::Edit>("txtSearch").visible()) user.type("txtSearch", value);
    user.click("cmdFind");
    return listed(user);
}

TEST_F(TogetherTest, aNewClassShowsItsItemsWithCodeAndNameAndOffersThemForSearch) {
    stage.withClass({"50", "设备"});
    addItem(900, "01", "车床");
    addItem(901, "02", "铣床");
    browse(50, [](User& user) {
        EXPECT_EQ(user.window().caption(), "设备");
        const auto& grid = user.control<platform::ListGrid>("vsf1");
        EXPECT_EQ(grid.text(0, 2) + "|" + grid.text(0, 3), "代码|名称");
        EXPECT_EQ(grid.columnWidth(2), 2000);
        EXPECT_EQ(grid.columnWidth(3), 4000);
        EXPECT_EQ(listed(user), (Texts{"01", "02"}));
        EXPECT_EQ(searchFields(user, 1).front(), "");
        EXPECT_EQ(searchFields(user, 1).back(), "fName");
        EXPECT_EQ(searchFields(user, 1).size(), 4U);
        EXPECT_EQ(found(user, "名称", "包含", "铣"), (Texts{"02"}));
        EXPECT_EQ(found(user, "短代码", "等于", "01"), (Texts{"01"}));
    });
}

TEST_F(TogetherTest, theRightsOfANewClassCanBeGranted) {
    stage.withClass({"50", "设备"});
    stage.set("SystemLogin", "IsAdmin", "0");
    stage.set("SystemLogin", "gLoginUserId", "7");
    browse(50, [](User& user) {
        user.answer(MessageKind::warning, "您无此权限，请与系统管理员联系！");
        user.chooseMenu("MenuParentEditUpdate");
    });
    database().execute(
        "insert into tblUserPrivillenge(fUserId,fNumber) select 7,fNumber from tblSystemPrivillenge where "
        "fParentNumber='Y50' and fName='分类修改'");
    browse(50, [](User& user) { user.chooseMenu("MenuParentEditUpdate"); });
}

TEST_F(TogetherTest, fieldsOfEveryKindAreFoundByTheirOperators) {
    stage.withDictionary(12, "颜色");
    database().addCategory(1, 800, "C1", "甲客户");
    database().addCategory(1, 801, "C2", "乙客户");
    stage.withClass({"50", "设备"}, {numberField("重量", "fWeight"),
                                     {.name = "品牌", .field = "fBrand"},
                                     {.name = "购置", .field = "fBought", .type = FieldType::date},
                                     {.name = "客户", .field = "fCust", .lookup = 1},
                                     {.name = "颜色", .field = "fColor", .lookup = 5}});
    const std::string columns = ",fWeight,fBrand,fBought,fCust,fColor";
    addItem(900, "01", "车床", columns, ",10,'沈阳','2026-11-20',800,1201");
    addItem(901, "02", "铣床", columns, ",25,'大连','2025-01-01',801,1202");
    addItem(902, "03", "刨床");
    browse(50, [](User& user) {
        Texts fields = searchFields(user, 0);
        // Both codes are entry 1: which comes first is the store's.
        ASSERT_GT(fields.size(), 3U);
        std::sort(fields.begin() + 1, fields.begin() + 3);
        EXPECT_EQ(fields, (Texts{"无", "代码", "短代码", "名称", "重量", "品牌", "购置", "客户代码", "客户名称",
                                 "颜色代码", "颜色名称"}));
        EXPECT_EQ(found(user, "重量", "大于", "10"), (Texts{"02"}));
        EXPECT_EQ(found(user, "重量", "小于等于", "10"), (Texts{"01", "03"}));
        EXPECT_EQ(found(user, "重量", "不等于", "25"), (Texts{"01", "03"}));
        EXPECT_EQ(found(user, "品牌", "等于", "沈阳"), (Texts{"01"}));
        EXPECT_EQ(found(user, "品牌", "不包含", "沈"), (Texts{"02", "03"}));
        EXPECT_EQ(found(user, "品牌", "等于", ""), (Texts{"03"}));
        EXPECT_EQ(found(user, "客户名称", "包含", "乙"), (Texts{"02"}));
        EXPECT_EQ(found(user, "客户代码", "等于", "C1"), (Texts{"01"}));
        EXPECT_EQ(found(user, "颜色名称", "等于", "颜色2"), (Texts{"02"}));
        EXPECT_EQ(found(user, "购置", "等于", ""), (Texts{"01"})) << "the picker stands on today";
        EXPECT_EQ(found(user, "购置", "小于", ""), (Texts{"02", "03"}));
    });
}

TEST_F(TogetherTest, aHiddenFieldLeavesTheViewStaysInTheTableAndKeepsItsSearchRow) {
    stage.withClass({"50", "设备"}, {{.name = "品牌", .field = "fBrand"}});
    addItem(900, "01", "车床", ",fBrand", ",'沈阳'");
    open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.inSetup(user, [](User& dialog) {
            dialog.clickCell("fps1", 2, 4);
            dialog.answer(MessageKind::information, kFieldSaved);
            dialog.clickTool("Save");
        });
    });
    EXPECT_THROW(database().rows("select fBrand from vtblSelfA1"), store::Failure);
    EXPECT_EQ(database().rows("select fBrand from tblSelfA1"), (Rows{{"沈阳"}}));
    browse(50, [](User& user) {
        EXPECT_EQ(listed(user), (Texts{"01"}));
        EXPECT_EQ(searchFields(user, 1).back(), "fBrand");
        user.answer(MessageKind::critical, "列名 'fBrand' 无效。");
        found(user, "品牌", "包含", "沈");
        EXPECT_EQ(listed(user), (Texts{"01"}));
    });
}

TEST_F(TogetherTest, itemsStayWhenFieldsAreAddedToTheirClass) {
    stage.withClass({"50", "设备"});
    addItem(900, "01", "车床");
    open([&](User& user) {
        user.clickNode("tv1", "D50");
        stage.makeField(user, numberField("重量", "fWeight"));
    });
    EXPECT_EQ(database().rows("select fNumber,fName,fWeight from vtblSelfA1"), (Rows{{"01", "车床", "0"}}));
    browse(50, [](User& user) { EXPECT_EQ(listed(user), (Texts{"01"})); });
}

}  // namespace
}  // namespace orvenmod::test
