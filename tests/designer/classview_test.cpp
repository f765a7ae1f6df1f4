// The whole texts of the class views, in both modes.
#include "designer/designertest.h"

namespace orvenmod::test {
namespace {

const std::string kTree =
    " SELECT a.fItemid,b.fIslock,b.fParentid, isnull(c.fname,'') AS fParentidname, isnull(c.fDepth,1) AS fParentDepth, "
    "b.fNBNumber ,isnull(c.fnumber,'') as fParentIdNumber ,isnull(b.fShortNumber,'') as fShortNumber ";

class ClassViewTest : public DesignerTest {
protected:
    /// The statement that made a view last.
    std::string lastView(const std::string& name) const {
        std::string found;
        for (const std::string& sql : stage.statements()) {
            if (sql.starts_with("create view " + name + " ")) found = sql;
        }
        return found;
    }
    std::string viewAfterNewField(const std::string& itemClass, const std::string& view, const FieldInput& made) {
        open([&](User& user) {
            user.clickNode("tv1", "D" + itemClass);
            stage.makeField(user, made);
        });
        return lastView(view);
    }
    std::string viewAfterSetup(const std::string& itemClass, const std::string& view,
                               const std::function<void(User&)>& change = {}) {
        open([&](User& user) {
            user.clickNode("tv1", "D" + itemClass);
            stage.inSetup(user, [&](User& dialog) {
                if (change) change(dialog);
                dialog.answer(MessageKind::information, kFieldSaved);
                dialog.clickTool("Save");
            });
        });
        return lastView(view);
    }
    Texts statementsWith(const std::string& start) const {
        Texts found;
        for (const std::string& sql : stage.statements()) {
            if (sql.starts_with(start)) found.push_back(sql);
        }
        return found;
    }
    Rows descriptions(const std::string& type) {
        return database().rows("select fFieldName,fFieldDesc,fFieldType from tblViewDesc where fTypeId=" + type);
    }
};

TEST_F(ClassViewTest, aClassWithoutLookups) {
    stage.withClass({"50", "设备"}, {{.name = "品牌"}, {.name = "购置", .type = FieldType::date}});
    EXPECT_EQ(
        viewAfterNewField("50", "vtblSelfA1", numberField("重量")),
        "create view vtblSelfA1  as " + kTree +
            ",isnull(a.fNumber,'')  as fNumber,isnull(a.fName,'')  as fName,isnull(a.FSelfA1,'')  as FSelfA1,"
            "isnull(a.FSelfA2,'1900-01-01')  as FSelfA2,isnull(a.FSelfA3,0)  as FSelfA3 from ((tblSelfA1 AS a LEFT "
            "JOIN tblItem AS b ON a.fitemid=b.fitemid)  LEFT JOIN tblItem AS c ON c.fItemid=b.fParentid) ");
    EXPECT_EQ(viewAfterSetup("50", "vtblSelfA1"),
              "create view vtblSelfA1  as " + kTree +
                  ",isnull(a.fNumber,'')  as fNumber,isnull(a.fName,'')  as fName,isnull(a.FSelfA1,'')  as FSelfA1,"
                  "isnull(a.FSelfA2,'1900-01-01')  as FSelfA2,isnull(a.FSelfA3,0)  as FSelfA3 from tblSelfA1 AS a LEFT "
                  "JOIN tblItem AS b ON a.fitemid=b.fitemid  LEFT JOIN tblItem AS c ON c.fItemid=b.fParentid ");
    stage.finish();
}

TEST_F(ClassViewTest, aClassWithOneLookup) {
    stage.withClass({"50", "设备"});
    EXPECT_EQ(viewAfterNewField("50", "vtblSelfA1", {.name = "客户", .lookup = 1}),
              "create view vtblSelfA1  as " + kTree +
                  ",isnull(a.fNumber,'')  as fNumber,isnull(a.fName,'')  as fName,isnull(a.FSelfA1,0)  as "
                  "FSelfA1,isnull(A1.fNumber,'')  as FSelfA1Number ,isnull(A1.fName,'')  as FSelfA1Name  from "
                  "(((tblSelfA1 AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid)  LEFT JOIN tblItem AS c ON "
                  "c.fItemid=b.fParentid)  left outer join tblItem  as A1 on A1.fitemid=a.FSelfA1 )");
    EXPECT_EQ(
        viewAfterSetup("50", "vtblSelfA1"),
        "create view vtblSelfA1  as " + kTree +
            ",isnull(a.fNumber,'')  as fNumber,isnull(a.fName,'')  as fName,isnull(a.FSelfA1,0)  as "
            "FSelfA1,isnull(A1.fNumber,'')  as FSelfA1Number ,isnull(A1.fName,'')  as FSelfA1Name  from  tblSelfA1 "
            "AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid  LEFT JOIN tblItem AS c ON c.fItemid=b.fParentid  "
            "left outer join tblItem  as A1 on A1.fitemid=a.FSelfA1 ");
    stage.finish();
}

TEST_F(ClassViewTest, aClassWithThreeLookupsAndOneOfThemHidden) {
    stage.withDictionary(12, "颜色");
    stage.withClass({"50", "设备"}, {{.name = "客户", .field = "fA1", .lookup = 1},
                                     {.name = "品牌", .field = "fA2"},
                                     {.name = "颜色", .field = "fA3", .lookup = 5}});
    const std::string base = ",isnull(a.fNumber,'')  as fNumber,isnull(a.fName,'')  as fName";
    const std::string brand = ",isnull(a.fA2,'')  as fA2";
    const auto lookup = [](const std::string& field, const std::string& alias) {
        return ",isnull(a." + field + ",0)  as " + field + ",isnull(" + alias + ".fNumber,'')  as " + field +
               "Number ,isnull(" + alias + ".fName,'')  as " + field + "Name ";
    };
    EXPECT_EQ(viewAfterNewField("50", "vtblSelfA1", {.name = "产地", .field = "fA4", .lookup = 6}),
              "create view vtblSelfA1  as " + kTree + base + lookup("fA1", "A1") + brand + lookup("fA3", "A2") +
                  lookup("fA4", "A3") +
                  " from (((((tblSelfA1 AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid)  LEFT JOIN tblItem AS c ON "
                  "c.fItemid=b.fParentid)  left outer join tblItem  as A1 on A1.fitemid=a.fA1 ) left outer join "
                  "tblSubType  as A2 on A2.fitemid=a.fA3 ) left outer join tblItem  as A3 on A3.fitemid=a.fA4 )");
    EXPECT_EQ(
        viewAfterSetup("50", "vtblSelfA1"),
        "create view vtblSelfA1  as " + kTree + base + lookup("fA1", "A1") + brand + lookup("fA3", "A2") +
            lookup("fA4", "A3") +
            " from    tblSelfA1 AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid  LEFT JOIN tblItem AS c ON "
            "c.fItemid=b.fParentid  left outer join tblItem  as A1 on A1.fitemid=a.fA1  left outer join tblSubType "
            " as A2 on A2.fitemid=a.fA3  left outer join tblItem  as A3 on A3.fitemid=a.fA4 ");
    EXPECT_EQ(
        viewAfterSetup("50", "vtblSelfA1", [](User& dialog) { dialog.clickCell("fps1", 2, 4); }),
        "create view vtblSelfA1  as " + kTree + base + brand + lookup("fA3", "A1") + lookup("fA4", "A2") +
            " from   tblSelfA1 AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid  LEFT JOIN tblItem AS c ON "
            "c.fItemid=b.fParentid  left outer join tblSubType  as A1 on A1.fitemid=a.fA3  left outer join tblItem "
            " as A2 on A2.fitemid=a.fA4 ");
    EXPECT_TRUE(database().rows("select fA1 from tblSelfA1").empty()) << "the column stays in the table";
    stage.finish();
}

TEST_F(ClassViewTest, aClassOfWhichOnlyTheCodeIsVisible) {
    stage.withClass({"50", "设备"}, {{.name = "品牌"}});
    EXPECT_EQ(
        viewAfterSetup("50", "vtblSelfA1",
                       [](User& dialog) {
                           dialog.clickCell("fps1", 2, 3);
                           dialog.clickCell("fps1", 2, 4);
                       }),
        "create view vtblSelfA1  as " + kTree +
            ",isnull(a.fNumber,'')  as fNumber from tblSelfA1 AS a LEFT JOIN tblItem AS b ON a.fitemid=b.fitemid  "
            "LEFT JOIN tblItem AS c ON c.fItemid=b.fParentid ");
    EXPECT_EQ(descriptions("6050"), (Rows{{"fNumber", "代码", "0"}}));
    stage.finish();
}

TEST_F(ClassViewTest, theFixedClassesHaveOneColumnMore) {
    struct Case {
        const char* itemClass;
        const char* view;
        const char* inNewField;
        const char* inSetup;
        std::vector<std::string> description;
    };
    const std::vector<Case> cases = {
        {"1",
         "vtblCustomer",
         ",isnull(a.fAmount,0) as fAmount ,",
         ",isnull(a.fAmount,0) as fAmount ,",
         {"famount", "应收款", "1"}},
        {"2",
         "vtblSupplier",
         ",isnull(a.fAmount,0) as fAmount ,",
         ",isnull(a.fAmount,0) as fAmount ,",
         {"famount", "应付款", "1"}},
        {"3", "vICItem", ",0 as ftimeqty ,", " ,0 as fTimeQty  ,", {"fTimeQty", "库存数", "1"}},
        {"11",
         "vtblAccount",
         ",isnull(a.fAmount,0) as fAmount ,",
         ",isnull(a.fAmount,0) as fAmount ,",
         {"famount", "账号余额", "1"}}};
    for (const Case& each : cases) {
        const std::string type = std::to_string(6000 + std::stoi(each.itemClass));
        database().execute("delete from tblViewDesc where fTypeId=" + type);
        const std::string start = std::string("create view ") + each.view + "  as " + kTree;
        const std::string made = viewAfterNewField(each.itemClass, each.view, {.name = "附注"});
        EXPECT_EQ(made.substr(0, start.size() + std::string(each.inNewField).size()), start + each.inNewField);
        EXPECT_EQ(descriptions(type).size(), 1U) << "a new field writes its own row alone";
        const std::string setUp = viewAfterSetup(each.itemClass, each.view);
        EXPECT_EQ(setUp.substr(0, start.size() + std::string(each.inSetup).size()), start + each.inSetup);
        EXPECT_EQ(descriptions(type).at(0), each.description);
        EXPECT_FALSE(database().rows(std::string("select count(*) from ") + each.view).empty());
    }
    stage.finish();
}

TEST_F(ClassViewTest, theWholeViewOfTheCustomers) {
    database().execute("delete from tblTableInfo where fItemClassId=1 and fInterId>4");
    EXPECT_EQ(viewAfterSetup("1", "vtblCustomer"),
              "create view vtblCustomer  as " + kTree +
                  ",isnull(a.fAmount,0) as fAmount ,isnull(a.fNumber,'')  as fNumber,isnull(a.fName,'')  as fName,"
                  "isnull(a.fLinkMan,'')  as fLinkMan from tblCustomer AS a LEFT JOIN tblItem AS b ON "
                  "a.fitemid=b.fitemid  LEFT JOIN tblItem AS c ON c.fItemid=b.fParentid ");
}

TEST_F(ClassViewTest, aTypeThatIsNeitherDateNumberNorTextHasNoColumn) {
    stage.withClass({"50", "设备"}, {{.name = "品牌", .field = "fOdd"}});
    database().execute("update tblTableInfo set fFieldType=12 where fFieldName='fOdd'");
    EXPECT_EQ(viewAfterSetup("50", "vtblSelfA1").find("fOdd"), std::string::npos);
    EXPECT_EQ(descriptions("6050").back(), (Texts{"fOdd", "品牌", "0"}));
}

TEST_F(ClassViewTest, aRowWithoutAKindIsPlainEvenWhereItHasASource) {
    stage.withClass({"50", "设备"}, {{.name = "品牌", .field = "fBrand"}});
    database().execute("update tblTableInfo set fItemType=null,fValueItemId=1 where fFieldName='fBrand'");
    EXPECT_NE(viewAfterSetup("50", "vtblSelfA1").find(",isnull(a.fBrand,'')  as fBrand from "), std::string::npos);
}

TEST_F(ClassViewTest, aNewLookupGetsItsSearchRowsAheadOfItsDescriptions) {
    stage.withClass({"50", "设备"});
    viewAfterNewField("50", "vtblSelfA1", {.name = "客户", .field = "fCust", .lookup = 1});
    const std::string search =
        "insert into tblFindinfoEntry2(fTypeid,fFieldName,fTitleName,fNumType,fItemclassid,fIsDefault,fEntryId,"
        "fNumberName) values(6050,";
    const std::string description = "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values(6050,";
    Texts rows;
    for (const std::string& sql : stage.statements()) {
        if (sql.starts_with(search) || sql.starts_with(description)) rows.push_back(sql);
    }
    EXPECT_EQ(rows,
              (Texts{search + "'fCustNumber','客户代码',2,6050,1,3,0)", search + "'fCustName','客户名称',2,6050,1,4,1)",
                     description + "'fCustNumber','客户代码',0)", description + "'fCustName','客户名称',0)"}));
}

TEST_F(ClassViewTest, searchRowsTellTheKindOfAPlainFieldAndNumberOnFromTheLast) {
    stage.withClass({"50", "设备"}, {{.name = "购置", .field = "f1", .type = FieldType::date},
                                     numberField("重量", "f2"),
                                     {.name = "品牌", .field = "f3"}});
    EXPECT_EQ(database().rows("select fFieldName,fTitleName,fNumType,fItemClassId,fEntryId,fNumberName from "
                              "tblFindinfoEntry2 where fTypeId=6050 and fEntryId>2 order by fEntryId"),
              (Rows{{"f1", "购置", "3", "6050", "3", "0"},
                    {"f2", "重量", "1", "6050", "4", "0"},
                    {"f3", "品牌", "2", "6050", "5", "0"}}));
    EXPECT_EQ(descriptions("6050").back(), (Texts{"f3", "品牌", "0"}));
    EXPECT_EQ(descriptions("6050").at(4), (Texts{"f2", "重量", "1"}));
}

TEST_F(ClassViewTest, theFirstSearchRowOfAClassWithoutAnyIsTheSecondEntry) {
    stage.withClass({"50", "设备"});
    database().execute("delete from tblFindinfoEntry2 where fTypeId=6050");
    viewAfterNewField("50", "vtblSelfA1", {.name = "品牌"});
    EXPECT_EQ(database().rows("select fEntryId from tblFindinfoEntry2 where fTypeId=6050"), (Rows{{"2"}}));
}

TEST_F(ClassViewTest, setupRewritesTheDescriptionsAndLeavesTheSearchRowsAlone) {
    stage.withClass({"50", "设备"}, {{.name = "客户", .field = "fCust", .lookup = 1}, numberField("重量", "fWeight")});
    const Rows searches = database().rows("select * from tblFindinfoEntry2 where fTypeId=6050");
    viewAfterSetup("50", "vtblSelfA1", [](User& dialog) {
        dialog.clickCell("fps1", 1, 5);
        dialog.chooseMenu("MenuUnLock");
        dialog.typeCell("fps1", 1, 5, "净重");
        dialog.clickCell("fps1", 2, 4);
    });
    EXPECT_EQ(descriptions("6050"), (Rows{{"fNumber", "代码", "0"}, {"fName", "名称", "0"}, {"fWeight", "净重", "1"}}));
    EXPECT_EQ(database().rows("select * from tblFindinfoEntry2 where fTypeId=6050"), searches);
    EXPECT_EQ(statementsWith("drop view  ").back(), "drop view  vtblSelfA1");
    stage.finish();
}

}  // namespace
}  // namespace orvenmod::test
