// frmHSXMNew: the proposal, the tests of the input, and the statements that make a class.
#include "designer/designertest.h"

namespace orvenmod::test {
namespace {

constexpr const char* kCounter = "select fpreletter,fbillno from tblMaxbillno where ftypeid=100";
constexpr const char* kSeed = "insert into tblMaxbillno(ftypeid,fpreletter,fbillno) values(100,'A',0)";
constexpr const char* kDuplicate = "输入选项有重名！请核对";

class NewClassTest : public DesignerTest {
protected:
    /// Opens the dialog, types and presses the button, which refuses with these boxes; nothing may change.
    void refused(const ClassInput& made, const std::vector<std::pair<MessageKind, std::string>>& boxes) {
        SCOPED_TRACE(made.id + " / " + made.name + " / " + made.table);
        open([&](User& user) {
            stage.inNewClass(user, [&](User& dialog) {
                const std::string before = database().dump();
                typeClass(dialog, made);
                for (const auto& [kind, text] : boxes)
                    dialog.answer(kind, text);
                dialog.click("cmdOK");
                EXPECT_TRUE(dialog.window().shown());
                EXPECT_EQ(dialog.control<platform::Edit>("txt", 0).text(), made.name);
                EXPECT_EQ(database().dump(), before);
            });
        });
    }
    void refused(const ClassInput& made, const std::string& critical) {
        refused(made, {{MessageKind::critical, critical}});
    }
};

std::string proposalIn(User& dialog) { return dialog.control<platform::Edit>("txt", 1).text(); }

Texts classStatementTexts() {
    const std::string field =
        "insert into tblTableInfo(finterid,fitemclassid,fname,fFieldName,fFieldType,fisNull,fisvisible,fislock) "
        "values(";
    const std::string list =
        "insert into "
        "tblFindinfoentry(ftypeid,fentryid,fFieldName,fTitleName,fAlign,fDataFormat,fIsShow,fIsSum,fIsMerge,"
        "fIsDefault,fWidth) values(6050,";
    const std::string search =
        "insert into tblFindinfoEntry2(ftypeid,fFieldname,ftitleName,fNumType,fItemclassid,fIsDefault,fEntryid,"
        "fNumberName) values(6050,";
    const std::string description = "insert into tblViewDesc(fTypeId,fFieldName,fFieldDesc,fFieldtype) values(6050,";
    const std::string right = "insert into  tblsystemprivillenge(fnumber,fname,fisdetail,fParentNumber) values('Y50";
    return {
        "select * from tblItemClass where fitemclassid=50 or fitemname='设备' or fitemtable='tblSelfA1'",
        "insert into tblItemClass(fitemclassid,fItemName,fItemtable,fItemType,fViewName) "
        "values('50','设备','tblSelfA1','0','vtblSelfA1')",
        "create table tblSelfA1(fitemid int,fnumber varchar(100),fname varchar(100) ) ",
        field + "1,50,'短代码','fShortNumber',1,1,1,0)",
        field + "2,50,'代码','fNumber',1,1,1,1)",
        field + "3,50,'名称','fName',1,1,1,0)",
        "update tblMaxbillno set fbillno=fbillno+1 where ftypeid=100",
        "create view vtblSelfA1 as SELECT a.fItemid, a.fnumber, a.fname, b.fIslock, b.fParentid, isnull(c.fname,'') "
        "AS fParentidname, isnull(c.fDepth,1) AS fParentDepth, b.fNBNumber,isnull(c.fnumber,'') as "
        "fParentIdNumber,isnull(b.fShortNumber,'') as fShortNumber    fROM ((tblSelfA1 AS a LEFT JOIN tblItem AS b ON "
        "a.fitemid=b.fitemid) LEFT JOIN tblItem AS c  ON c.fItemid=b.fParentid)",
        list + "1,'fNumber','代码',1,'',1,0,0,1,2000)",
        list + "2,'fName','名称',1,'',1,0,0,1,4000)",
        search + "'fNumber','代码',2,0,1,1,0)",
        search + "'fShortNumber','短代码',2,0,1,1,0)",
        search + "'fName','名称',2,0,1,2,0)",
        description + "'fShortNumber','短代码',0)",
        description + "'fNumber','代码',0)",
        description + "'fName','名称',0)",
        right + "','设备',0,'')",
        right + "01','分类新增',1,'Y50')",
        right + "02','分类修改',1,'Y50')",
        right + "03','分类删除',1,'Y50')",
        right + "04','明细新增',1,'Y50')",
        right + "05','明细修改',1,'Y50')",
        right + "06','明细删除',1,'Y50')",
        right + "07','附件新增',1,'Y50')",
        right + "09','附件删除',1,'Y50')",
        right + "10','附件查看',1,'Y50')",
        right + "20','明细查看',1,'Y50')"};
}

TEST_F(NewClassTest, aClassIsMadeByTheseStatementsInThisOrderAndOneTransaction) {
    open([&](User& user) {
        stage.inNewClass(user, [&](User& dialog) {
            EXPECT_EQ(stage.statements().at(1), kCounter);
            EXPECT_EQ(stage.statements().at(2), kSeed);
            typeClass(dialog, {"50", "设备"});
            stage.forgetStatements();
            dialog.answer(MessageKind::information, kClassSaved);
            dialog.click("cmdOK");
        });
        Texts expected = classStatementTexts();
        expected.push_back("select  * from tblItemclass where fitemtype='0' order by fItemclassid");
        EXPECT_EQ(stage.statements(), expected);
        Texts operations = {"connect", "open", "begin"};
        operations.insert(operations.end(), 26, "execute");
        for (const char* last : {"commit", "close", "connect", "open", "close"})
            operations.emplace_back(last);
        EXPECT_EQ(stage.operations(), operations);
        EXPECT_EQ(treeKeys(user), (Texts{"D0", "D1", "D2", "D3", "D11", "D50"}));
    });
    EXPECT_EQ(script().messages(), (std::vector<ShownMessage>{{MessageKind::information, kClassSaved, "测试套件"}}));
    stage.finish();
}

TEST_F(NewClassTest, theFirstProposalSeedsTheCounterAndASaveAdvancesIt) {
    open([&](User& user) {
        stage.inNewClass(user, [](User& dialog) { EXPECT_EQ(proposalIn(dialog), "tblSelfA1"); });
        EXPECT_EQ(database().rows(kCounter), (Rows{{"A", "0"}}));
        stage.inNewClass(user, [](User& dialog) { EXPECT_EQ(proposalIn(dialog), "tblSelfA1"); });
        stage.makeClass(user, {"50", "设备"});
        EXPECT_EQ(database().rows(kCounter), (Rows{{"A", "1"}}));
        stage.inNewClass(user, [](User& dialog) { EXPECT_EQ(proposalIn(dialog), "tblSelfA2"); });
    });
    EXPECT_EQ(database().rows("select fItemTable,fViewName,fItemType from tblItemClass where fItemClassId=50"),
              (Rows{{"tblSelfA1", "vtblSelfA1", "0"}}));
    EXPECT_TRUE(database().rows("select * from vtblSelfA1").empty());
    stage.finish();
}

TEST_F(NewClassTest, theProposalTakesLetterAndNumberOfTheCounter) {
    database().execute("insert into tblMaxbillno(ftypeid,fpreletter,fbillno) values(100,'Q',32766)");
    open([&](User& user) {
        stage.inNewClass(user, [](User& dialog) { EXPECT_EQ(proposalIn(dialog), "tblSelfQ32767"); });
    });
}

TEST_F(NewClassTest, aCounterAtTheEndOfSixteenBitsOrWithoutAValueIsAWarningAndAnEmptyProposal) {
    database().execute("insert into tblMaxbillno(ftypeid,fpreletter,fbillno) values(100,'A',32767)");
    open([&](User& user) {
        user.answer(MessageKind::warning, "溢出");
        stage.inNewClass(user, [](User& dialog) { EXPECT_EQ(proposalIn(dialog), ""); });
        database().execute("update tblMaxbillno set fbillno=null where ftypeid=100");
        user.answer(MessageKind::warning, "无效使用 Null");
        stage.inNewClass(user, [&](User& dialog) {
            EXPECT_EQ(proposalIn(dialog), "");
            EXPECT_EQ(appState().gConn, nullptr);
        });
    });
    stage.finish();
}

TEST_F(NewClassTest, aStoreThatFailsWhileTheNameIsProposedIsAWarningAndTheUserCanTypeAName) {
    for (const int failing : {1, 2, 3}) {  // connect, read, seed
        open([&](User& user) {
            stage.faults() = {.failAt = failing};
            user.answer(MessageKind::warning, kFault);
            stage.inNewClass(user, [&](User& dialog) {
                stage.faults() = {};
                EXPECT_EQ(proposalIn(dialog), "");
            });
        });
    }
    stage.finish();
}

TEST_F(NewClassTest, emptyAndZeroInputsAreRefusedInOrderEachAtItsBox) {
    struct Case {
        ClassInput made;
        const char* text;
        const char* box;
        int index;
    };
    const std::vector<Case> cases = {{{" ", " ", " "}, "类别不能为空或为零！", "txtType", -1},
                                     {{"0", "0", "0"}, "类别不能为空或为零！", "txtType", -1},
                                     {{"x", " ", "0"}, "名称不能为空！", "txt", 0},
                                     {{"x", " 0 ", "0"}, "名称不能为空！", "txt", 0},
                                     {{"x", "设备", " 0"}, "表名不能为空！", "txt", 1},
                                     {{"x", "设备", " "}, "表名不能为空！", "txt", 1},
                                     {{"abc", "设备", "tblA"}, "类别必须为数字类型", "txtType", -1}};
    open([&](User& user) {
        stage.inNewClass(user, [&](User& dialog) {
            for (const Case& each : cases) {
                typeClass(dialog, each.made);
                stage.forgetStatements();
                dialog.answer(MessageKind::warning, each.text);
                dialog.click("cmdOK");
                EXPECT_TRUE(dialog.control<platform::Edit>(each.box, each.index).hasFocus()) << each.text;
                EXPECT_TRUE(stage.statements().empty());
            }
        });
    });
    stage.finish();
}

TEST_F(NewClassTest, enterWalksFromBoxToBox) {
    open([&](User& user) {
        stage.inNewClass(user, [](User& dialog) {
            dialog.type("txtType", "50");
            dialog.press("Enter");
            EXPECT_TRUE(dialog.control<platform::Edit>("txt", 0).hasFocus());
            dialog.press("Enter");
            EXPECT_TRUE(dialog.control<platform::Edit>("txt", 1).hasFocus());
            dialog.press("Enter");
            EXPECT_TRUE(dialog.control<platform::Button>("cmdOK").hasFocus());
        });
    });
}

TEST_F(NewClassTest, theButtonSavesOnlyWhereTheWindowBehindSaidSo) {
    open([&](User& user) {
        stage.inNewClass(user, [&](User& dialog) {
            frmItem::instance().txtIsUpdate = "1";
            stage.forgetStatements();
            dialog.click("cmdOK");
            EXPECT_TRUE(stage.statements().empty());
        });
    });
    stage.finish();
}

TEST_F(NewClassTest, anIdANameOrATableThatAClassHasIsRefused) {
    stage.withClass({"50", "设备"});
    refused({"50", "车辆", "tblCar"}, kDuplicate);
    refused({"51", "设备", "tblCar"}, kDuplicate);
    refused({"51", "车辆", "TBLSELFa1"}, kDuplicate);
    refused({"51", "车辆", "ICItem"}, kDuplicate);
    EXPECT_EQ(appState().gConn, nullptr);
    stage.finish();
}

TEST_F(NewClassTest, aTableNameOfTheUsersOwnIsTakenAndTheCounterAdvancesAllTheSame) {
    stage.withClass({"50", "设备", "my_devices"});
    EXPECT_EQ(database().rows(kCounter), (Rows{{"A", "1"}}));
    EXPECT_EQ(database().value("select fViewName from tblItemClass where fItemClassId=50"), "vmy_devices");
    EXPECT_TRUE(database().rows("select fItemId,fNumber,fName,fParentIdName from vmy_devices").empty());
}

TEST_F(NewClassTest, anIdWithLeadingZerosIsStoredAsItsNumber) {
    stage.withClass({"007", "设备"});
    EXPECT_EQ(database().value("select count(*) from tblItemClass where fItemClassId=7"), "1");
    EXPECT_EQ(database().value("select count(*) from tblTableInfo where fItemClassId=7"), "3");
    EXPECT_EQ(database().value("select count(*) from tblFindinfoEntry2 where fTypeId=6007"), "3");
    EXPECT_EQ(database().rows("select fNumber from tblSystemPrivillenge where fNumber like 'Y7%' and fNumber<='Y701'"),
              (Rows{{"Y7"}, {"Y701"}}));
}

TEST_F(NewClassTest, anIdBeyondSixteenBitsMakesAClassThatTheDetailWindowsRefuse) {
    stage.withClass({"40000", "设备"});
    EXPECT_EQ(database().value("select count(*) from tblViewDesc where fTypeId=46000"), "3");
    open([&](User& user) {
        user.clickNode("tv1", "D40000");
        user.answer(MessageKind::critical, "溢出");
        user.chooseMenu("MenuDetailNew");
    });
    stage.finish();
}

TEST_F(NewClassTest, idsThatAreNoWholeNumberOfThirtyTwoBitsAreRefusedByTheStore) {
    refused({"1.5", "设备", "tblA"}, "在将 varchar 值 '1.5' 转换成数据类型 int 时失败。");
    refused({"1e3", "设备", "tblA"}, "在将 varchar 值 '1e3' 转换成数据类型 int 时失败。");
    refused({"99999999999", "设备", "tblA"}, "varchar 值 '99999999999' 的转换溢出了 int 列。");
    stage.finish();
}

TEST_F(NewClassTest, aQuoteInANameOrATableFailsTheTestForDuplicatesOutsideTheTrap) {
    open([&](User& user) {
        stage.inNewClass(user, [&](User& dialog) {
            typeClass(dialog, {"50", "O'Neil", "tblA"});
            dialog.answer(MessageKind::critical, "字符串 '' 后的引号不完整。");
            dialog.click("cmdOK");
            EXPECT_NE(appState().gConn, nullptr);
            typeClass(dialog, {"50", "设备", "tbl'A"});
            dialog.answer(MessageKind::critical, "字符串 '' 后的引号不完整。");
            dialog.click("cmdOK");
            typeClass(dialog, {"50", "设备", "tblA"});
            dialog.answer(MessageKind::information, kClassSaved);
            dialog.click("cmdOK");
        });
    });
    stage.finish();
}

TEST_F(NewClassTest, aTableNameThatIsNoneIsRefusedByTheStoreAndLeavesNothing) {
    refused({"50", "设备", "my table"}, "关键字 'table' 附近有语法错误。");
    refused({"50", "设备", "select"}, "关键字 'select' 附近有语法错误。");
    refused({"50", "设备", "tblItem"}, "数据库中已存在名为 'tblItem' 的对象。");
    refused({"50", "设备", "1abc"}, "'1' 附近有语法错误。");
    stage.finish();
}

TEST_F(NewClassTest, aViewThatExistsUndoesTheTableToo) {
    database().execute("create view vtblCar as select fItemId from tblItem");
    refused({"50", "车辆", "tblCar"}, "数据库中已存在名为 'vtblCar' 的对象。");
    EXPECT_EQ(database().rows(kCounter), (Rows{{"A", "0"}}));
    stage.finish();
}

TEST_F(NewClassTest, aNameTooLongForItsColumnIsRefusedAndLeavesNothing) {
    std::string name;
    for (int i = 0; i < 101; ++i)
        name += "x";
    refused({"50", name, "tblA"},
            "将在表“tblItemClass”的列“fItemName”中截断字符串或二进制数据。截断值:“" + name.substr(0, 100) + "”。");
    stage.finish();
}

}  // namespace
}  // namespace orvenmod::test
