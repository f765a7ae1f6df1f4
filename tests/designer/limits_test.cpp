// How far a class may grow: many fields, many lookups, many items, many classes, and a database that another process
// holds.
#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/clsHSXMManage.h>

#include "designer/designertest.h"
#include "editor/fieldrow.h"
#include "editor/frmBasicInfo.h"
#include "frame/services.h"
#include "support/dump.h"

namespace orvenmod::test {
namespace {

class LimitsTest : public DesignerTest {
protected:
    /// Fields of class 50 as the designer would have made them; the first `lookups` look customers up.
    void addFields(int count, int lookups, const std::string& itemClass = "50",
                   const std::string& table = "tblSelfA1") {
        auto connection = services().store.connect(stage.connectionString());
        connection->beginTrans();
        for (int number = 1; number <= count; ++number) {
            const std::string field = "f" + std::to_string(number);
            const std::string kind = number <= lookups ? "1,'0'" : "0,''";
            connection->execute(
                "insert into tblTableInfo(fItemClassId,fInterId,fName,fFieldName,fFieldType,fIsVisible,fValueItemId,"
                "fItemType) values(" +
                itemClass + "," + std::to_string(number + 50) + ",'" + field + "','" + field + "',1,1," + kind + ")");
            connection->execute("alter table " + table + " add " + field +
                                (number <= lookups ? " int" : " varchar(50)"));
        }
        connection->commitTrans();
        connection->close();
    }

    /// Items 1 to `count` in class 50.
    void addItems(int count) {
        auto connection = services().store.connect(stage.connectionString());
        connection->beginTrans();
        const auto items = connection->openTable("tblItem");
        const auto rows = connection->openTable("tblSelfA1");
        for (int id = 1; id <= count; ++id) {
            const std::string key = std::to_string(id);
            items->addNew();
            for (const auto& [field, value] :
                 std::initializer_list<std::pair<const char*, std::string>>{{"fItemId", key},
                                                                            {"fNumber", key},
                                                                            {"fName", "n" + key},
                                                                            {"fItemClassId", "50"},
                                                                            {"fParentId", "0"},
                                                                            {"fIsDetail", "1"},
                                                                            {"fDepth", "1"},
                                                                            {"fNBNumber", "." + key + "."}}) {
                items->set(field, value);
            }
            items->update();
            rows->addNew();
            rows->set("fitemid", key);
            rows->set("fnumber", key);
            rows->set("fname", "n" + key);
            rows->update();
        }
        connection->commitTrans();
        connection->close();
    }

    void addField(const FieldInput& made, const Texts& failures = {}) {
        open([&](User& user) {
            user.clickNode("tv1", "D50");
            stage.inNewField(user, [&](User& dialog) {
                typeField(dialog, made);
                if (failures.empty()) dialog.answer(MessageKind::information, kFieldSaved);
                for (const std::string& failure : failures)
                    dialog.answer(MessageKind::critical, failure);
                dialog.clickTool("Save");
            });
        });
    }

    void saveSetup(const std::string& itemClass = "50") {
        open([&](User& user) {
            user.clickNode("tv1", "D" + itemClass);
            stage.inSetup(user, [](User& dialog) {
                dialog.answer(MessageKind::information, kFieldSaved);
                dialog.clickTool("Save");
            });
        });
    }

    void browse(const Steps& steps, std::int16_t itemClass = 50) {
        stage.set("SystemSetup", "gAppPath", database().folder().path());
        stage.set("SystemLogin", "IsAdmin", "1");
        script().onWindow("frmBasicInfoList", steps);
        clsBasicInfo info;
        info.mainInterface(itemClass, "", "", stage.connectionString(), 0);
        script().finish();
    }
};

TEST_F(LimitsTest, aClassOfTwoHundredFieldsFiftyOfThemLookupsIsSavedAndListed) {
    stage.withClass({"50", "设备"});
    addFields(199, 49);
    addItems(10);
    addField({.name = "客户", .field = "fLast", .lookup = 1});
    EXPECT_EQ(database().rows("select f1Name,f199,fLastName from vtblSelfA1").size(), 10U);
    saveSetup();
    browse([](User& user) {
        EXPECT_EQ(user.control<platform::ListGrid>("vsf1").rowCount(), 11);
        user.pick("PC", 5, 0);
        user.pick("PC", 1, 1);
        user.click("cmdFind");
        EXPECT_EQ(user.control<platform::ListGrid>("vsf1").rowCount(), 11);
    });
    stage.finish();
}

TEST_F(LimitsTest, theEditorStoresAnItemOfAClassOfTwoHundredFields) {
    stage.withClass({"50", "设备"});
    addFields(200, 50);
    database().addItem(1, 800, "C1", "甲客户");
    saveSetup();
    AppState& state = appState();
    state.gConnStr = stage.connectionString();
    state.gItemClassId = 50;
    state.gItemName = "设备";
    state.gItemTable = "tblSelfA1";
    state.gViewName = "vtblSelfA1";
    script().onWindow("frmBasicInfo", [](User& user) {
        auto& grid = user.control<platform::EntryGrid>("fps1");
        EXPECT_EQ(grid.rowCount(), 204);
        user.typeCell("fps1", kValue, 3, "车床");
        user.typeCell("fps1", kValue, 203, "最后");
        user.answer(MessageKind::information, kFieldSaved);
        user.clickTool("Save");
    });
    frmBasicInfo::instance().show(nullptr);
    EXPECT_EQ(database().rows("select fName,f200,f1Name from vtblSelfA1"), (Rows{{"车床", "最后", ""}}));
    stage.finish();
}

// Class table, the item's row and its parent's are three of the 64 tables that SQLite joins.
TEST_F(LimitsTest, theSixtySecondLookupIsRefusedAndNothingIsLeft) {
    NEEDS_A_FILE();
    stage.withClass({"50", "设备"});
    addFields(60, 60);
    addItems(3);
    addField({.name = "客户", .field = "fLast", .lookup = 1});
    browse([](User& user) { EXPECT_EQ(user.control<platform::ListGrid>("vsf1").rowCount(), 4); });
    const std::string before = database().dump();
    addField({.name = "供应商", .field = "fBeyond", .lookup = 2}, {"查询中使用的表名太多。允许的最大数目为 64。"});
    EXPECT_EQ(database().dump(), before);
    addField({.name = "备注", .field = "fNote"});
    EXPECT_EQ(database().rows("select fLastName,fNote from vtblSelfA1").size(), 3U);
    stage.finish();
}

TEST_F(LimitsTest, goodsListTheirStockBesideSixtyLookups) {
    database().addGoods();
    database().execute("delete from tblTableInfo where fItemClassId=3 and fFieldName='fH'");
    database().execute("delete from tblFindinfoEntry where fTypeId=6003 and fFieldName='fHName'");
    addFields(61, 61, "3", "ICItem");
    saveSetup("3");
    browse([](User& user) { EXPECT_EQ(user.control<platform::ListGrid>("vsf1").rowCount(), 5); }, 3);
    stage.finish();
}

TEST_F(LimitsTest, aChangeByIdInATableOfTheDesignerUsesAnIndex) {
    NEEDS_A_FILE();
    stage.withClass({"50", "设备"});
    addItems(100000);
    const std::string plan = planOf(database().file(), "update tblSelfA1 set fname='x' where fitemid=777");
    EXPECT_NE(plan.find("SEARCH tblSelfA1 USING INDEX"), std::string::npos) << plan;
    database().execute("update tblSelfA1 set fname='x' where fitemid=777");
    EXPECT_EQ(database().rows("select fName from vtblSelfA1 where fItemId=777"), (Rows{{"x"}}));
}

TEST_F(LimitsTest, hundredsOfClassesStandInTheTreeAndInTheListOfLookups) {
    auto connection = services().store.connect(stage.connectionString());
    connection->beginTrans();
    for (int id = 100; id < 600; ++id) {
        const std::string key = std::to_string(id);
        connection->execute("insert into tblItemClass(fItemClassId,fItemName,fItemTable,fItemType) values(" + key +
                            ",'类" + key + "','t" + key + "','0')");
    }
    connection->commitTrans();
    connection.reset();
    open([&](User& user) {
        EXPECT_EQ(treeKeys(user).size(), 505U);
        user.clickNode("tv1", "D2");
        stage.inNewField(user, [](User& dialog) {
            const auto& grid = dialog.control<platform::EntryGrid>("fps1");
            dialog.pickCell("fps1", 2, 9, 504);
            EXPECT_EQ(grid.text(2, 9), "类599");
            EXPECT_EQ(grid.text(3, 9), "599,0");
        });
    });
    stage.finish();
}

TEST_F(LimitsTest, aDatabaseThatAnotherProcessHoldsRefusesTheSaveAndTakesItLater) {
    const std::string hurried = stage.connectionString() + ";Busy Timeout=50";
    auto other = services().store.connect(stage.connectionString());
    script().onWindow("frmHSXM", [&](User& user) {
        stage.inNewClass(user, [&](User& dialog) {
            typeClass(dialog, {"50", "设备"});
            other->beginTrans();
            other->execute("insert into tblItemClass(fItemClassId,fItemName) values(50,'别人的')");
            dialog.answer(MessageKind::critical, database().busyText());
            // A server refuses the statement that meets the other's, a file the transaction.
            if (testStore() == TestStore::sqlite) dialog.answer(MessageKind::critical, kNoTransaction);
            dialog.click("cmdOK");
            other->rollbackTrans();
            other->close();
            dialog.answer(MessageKind::information, kClassSaved);
            dialog.click("cmdOK");
        });
    });
    clsHSXMManage manage;
    manage.DBConnection = hurried;
    manage.mainInterface();
    EXPECT_EQ(database().value("select count(*) from tblItemClass where fItemClassId=50"), "1");
    other.reset();
    stage.finish();
}

}  // namespace
}  // namespace orvenmod::test
