// What users, administrators and hosts get wrong: each gives a box that says what is wrong, and the next command works.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "browser/browsertest.h"
#include "entry/startup.h"
#include "frame/appstate.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

class BadInput : public BrowserTest {
protected:
    void expectNextEntryWorks() {
        stage.open(kManagement, [](User& user) { EXPECT_EQ(codes(user).size(), 4U); });
        EXPECT_EQ(stage.connectionsAlive(), 0);
    }
    /// The failure of an entry with that connection string, which goes up to the host.
    std::string failureOfEntry(const std::string& connectionString) {
        clsBasicInfo info;
        try {
            info.mainInterface(3, "", "", connectionString, 0);
        } catch (const store::Failure& failure) {
            EXPECT_EQ(failure.kind(), store::FailureKind::connection) << failure.text();
            EXPECT_FALSE(appState().gConn);
            return failure.text();
        }
        ADD_FAILURE() << "the entry worked";
        return "";
    }
    std::string inFolder(const std::string& name) { return database().folder().file(name); }
};

/// Searches for a value in a field, which fails with that text, and then for all items.
void searchInVain(User& user, int field, const std::string& value, const std::string& failure) {
    user.pick("PC", field, 0);
    user.type("txtSearch", value);
    user.answer(MessageKind::critical, failure);
    user.click("cmdFind");
    user.type("txtSearch", "");
    user.click("cmdFind");
    EXPECT_EQ(codes(user).size(), 4U);
}

TEST_F(BadInput, anUnknownClassInAFreshProcessFailsInTheListQuery) {
    stage.openInVain({.itemClass = 99}, "关键字 'where' 附近有语法错误。");
    EXPECT_EQ(script().messages().back().title, "测试套件");
    expectNextEntryWorks();
}

TEST_F(BadInput, anUnknownClassKeepsTheViewOfTheLastEntry) {
    stage.open(kManagement, [](User&) {});
    stage.open({.itemClass = 99}, [&](User& user) {
        EXPECT_EQ(user.window().caption(), "货品");
        EXPECT_EQ(user.control<platform::ListGrid>("vsf1").rowCount(), 5);
        EXPECT_EQ(stage.statements().end()[-2], "select fitemid from  vICItem where 1=1  order by fnumber ");
    });
    EXPECT_TRUE(script().messages().empty());
}

TEST_F(BadInput, aViewThatIsMissing) {
    database().execute("drop view vICItem");
    stage.openInVain(kManagement, "对象名 'vICItem' 无效。");
    EXPECT_FALSE(appState().gConn);
    stage.open({.itemClass = 1}, [](User& user) { EXPECT_EQ(user.window().caption(), "客户"); });
}

TEST_F(BadInput, anApostropheInTheSearchTextOfTheBar) {
    stage.open(kManagement,
               [](User& user) { searchInVain(user, 2, "O'Neil", "字符串 ' ) order by fnumber ' 后的引号不完整。"); });
}

TEST_F(BadInput, anApostropheInTheSearchTextOfTheHost) {
    stage.openInVain({.findValue = "O'Neil"}, "'Neil' 附近有语法错误。");
    expectNextEntryWorks();
}

TEST_F(BadInput, lettersInANumberCondition) {
    stage.open(kManagement, [](User& user) { searchInVain(user, 3, "abc", "列名 'abc' 无效。"); });
}

TEST_F(BadInput, aSecondStatementInASearchText) {
    stage.open(kManagement,
               [](User& user) { searchInVain(user, 2, "x') ; delete from tblItem --", "';' 附近有语法错误。"); });
    EXPECT_EQ(database().value("select count(*) from tblItem"), "7");
}

TEST_F(BadInput, aSearchTextThatClosesItsOwnQuotesIsPartOfTheCondition) {
    stage.open(kManagement, [](User& user) {
        user.pick("PC", 2, 0);
        user.type("txtSearch", "x%' or fname like '%");
        user.click("cmdFind");
        EXPECT_EQ(codes(user).size(), 4U);
    });
}

TEST_F(BadInput, aFailedSearchKeepsTheListAndTheWindowGoesOn) {
    stage.open(kManagement, [&](User& user) {
        user.clickNode("tv1", "D14");
        user.pick("PC", 3, 0);
        user.type("txtSearch", "abc");
        user.answer(MessageKind::critical, "列名 'abc' 无效。");
        user.click("cmdFind");
        EXPECT_EQ(codes(user), Texts{"02.001"});
        EXPECT_TRUE(appState().gConn) << "the connection stays for the next command";
        user.clickNode("tv1", "D12");
        EXPECT_EQ(codes(user), (Texts{"01.01.001", "01.01.002"}));
        EXPECT_FALSE(appState().gConn);
    });
    EXPECT_EQ(script().messages()[0].title, "测试套件");
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(BadInput, aBrokenStandingCondition) {
    database().setStandingCondition(7, 3, " and fNoSuch=1");
    stage.openInVain(kManagement, "列名 'fNoSuch' 无效。");
    database().execute("delete from tblFindSeek");
    expectNextEntryWorks();
}

TEST_F(BadInput, aSettingOfTheWindowThatIsNoNumber) {
    stage.set("ShowStock", "StockId", "abc");
    stage.openInVain(kManagement, "类型不匹配：设置 StockId 的值为“abc”");
    stage.set("ShowStock", "StockId", "0");
    stage.set("ShowStock", "PerFKC", "40000");
    stage.openInVain(kManagement, "溢出：设置 PerFKC 的值为“40000”");
    stage.set("ShowStock", "PerFKC", "0");
    expectNextEntryWorks();
}

TEST_F(BadInput, aBillFlagThatIsNoNumber) {
    stage.openInVain({.isReturn = 1, .itemCalled = "abc"}, "类型不匹配");
    expectNextEntryWorks();
}

TEST_F(BadInput, aConnectionStringToNoFile) {
    const std::string file = inFolder("none.db");
    EXPECT_EQ(failureOfEntry(connectionStringFor(file)),
              "找不到数据库文件“" + file + "”。若要新建数据库，请在连接字符串中加上 Mode=Create。");
    EXPECT_FALSE(fs::exists(file));
    expectNextEntryWorks();
}

TEST_F(BadInput, aConnectionStringToAFolder) {
    fs::create_directory(inFolder("sub"));
    EXPECT_EQ(failureOfEntry(connectionStringFor(inFolder("sub"))),
              "“" + inFolder("sub") + "”是文件夹，不是数据库文件。");
    expectNextEntryWorks();
}

TEST_F(BadInput, aConnectionStringToAFileThatIsNoDatabase) {
    std::ofstream(inFolder("notes.db")) << std::string(4096, 'x');
    EXPECT_EQ(failureOfEntry(connectionStringFor(inFolder("notes.db"))),
              "文件“" + inFolder("notes.db") + "”不是数据库，或者已损坏。");
    expectNextEntryWorks();
}

TEST_F(BadInput, aConnectionStringThatNamesNoFile) {
    EXPECT_EQ(failureOfEntry("Provider=SQLite"), "连接字符串不正确: 缺少 Data Source (数据库文件)。");
    expectNextEntryWorks();
}

TEST_F(BadInput, aReadOnlyFileCanBeReadButTakesNoHandOver) {
    NEEDS_A_FILE();
    const std::string file = database().file();
    const auto writable = fs::status(file).permissions();
    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read);
    stage.open(kBillPicker, [&](User& user) {
        EXPECT_EQ(codes(user).size(), 4U);
        user.doubleClickRow("vsf1", 1);
        user.answer(MessageKind::critical, "数据库文件“" + file + "”是只读的，无法写入。");
        user.click("cmdAddItem");
    });
    EXPECT_EQ(stage.fItemId, "-1");
    fs::permissions(file, writable);
    expectNextEntryWorks();
}

TEST_F(BadInput, aDatabaseHeldByAnotherWriterIsReadAndRefusesTheHandOver) {
    database().execute("insert into tblItemInput(fItemId,fQty,fUserId) values(104,1,7)");
    const auto other = componentStore().connect(stage.connectionString());
    other->beginTrans();
    other->execute("update tblItemInput set fQty=2 where fUserId=7");
    stage.connectionSuffix = ";Busy Timeout=50";
    stage.open(kBillPicker, [&](User& user) {
        EXPECT_EQ(codes(user).size(), 4U);
        user.doubleClickRow("vsf1", 3);
        user.answer(MessageKind::critical, database().busyText());
        user.click("cmdAddItem");
    });
    other->rollbackTrans();
    stage.open(kBillPicker, [&](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.click("cmdAddItem");
    });
    EXPECT_EQ(database().value("select count(*) from tblItemInput"), "1");
}

TEST_F(BadInput, aNodeWhoseParentIsMissing) {
    database().execute("update tblItem set fParentId=77 where fItemId=14");
    script().answer(MessageKind::critical, "找不到元素：D77", Answer::ok);
    clsBasicInfo info;
    info.mainInterface(3, "", "", stage.connectionString(), 0);
    script().finish();
    database().execute("update tblItem set fParentId=0 where fItemId=14");
    expectNextEntryWorks();
}

TEST_F(BadInput, anAlignmentOrAWidthThatIsNoNumber) {
    for (const std::string column : {"fAlign", "fWidth"}) {
        database().execute("alter table tblFindinfoEntry drop column " + column);
        database().execute("alter table tblFindinfoEntry add " + column + " varchar(10)");
        database().execute("update tblFindinfoEntry set " + column + "='left'");
        stage.openInVain(kManagement, "类型不匹配");
        database().execute("update tblFindinfoEntry set " + column + "='1'");
        expectNextEntryWorks();
    }
}

TEST_F(BadInput, anAlignmentAndAWidthOfNull) {
    database().execute("update tblFindinfoEntry set fWidth=null where fTypeId=6003");
    stage.open(kManagement,
               [](User& user) { EXPECT_EQ(user.control<platform::ListGrid>("vsf1").columnWidth(2), 2000); });
    database().execute("update tblFindinfoEntry set fAlign=null where fTypeId=6003");
    stage.openInVain(kManagement, "类型不匹配");
}

TEST_F(BadInput, aQuantityThatIsNoNumber) {
    stage.open(kBillPicker, [](User& user) {
        user.doubleClickRow("vsf1", 3);
        user.control<platform::EntryGrid>("fps1").setText(6, 1, "三个");
        user.answer(MessageKind::critical, "列名 '三个' 无效。");
        user.click("cmdAddItem");
        EXPECT_FALSE(user.window().shown());
    });
    EXPECT_EQ(stage.fItemId, "-1");
    EXPECT_EQ(database().value("select count(*) from tblItemInput"), "0");
    expectNextEntryWorks();
}

TEST_F(BadInput, aDiskThatIsFull) {
    stage.open(kBillPicker, [&](User& user) {
        user.doubleClickRow("vsf1", 3);
        stage.faults() = {.failAt = 3, .text = "磁盘已满，无法写入数据库文件“suite.db”。", .number = 50017};
        user.answer(MessageKind::critical, "磁盘已满，无法写入数据库文件“suite.db”。");
        user.click("cmdAddItem");
    });
    EXPECT_FALSE(appState().gConn);
    expectNextEntryWorks();
}

TEST_F(BadInput, settingsThatCannotBeWrittenAreToldWhenTheWindowCloses) {
    script().answer(MessageKind::critical, "设置无法写入", Answer::ok);
    stage.open(kManagement, [&](User&) { stage.settings().refuseSaves = true; });
    EXPECT_EQ(stage.connectionsAlive(), 0);
    stage.settings().refuseSaves = false;
    expectNextEntryWorks();
}

TEST_F(BadInput, aFolderOfTheSuiteThatIsGoneLosesOnlyTheSavedField) {
    stage.set("SystemSetup", "gAppPath", inFolder("gone"));
    stage.open(kManagement, [](User& user) {
        user.pick("PC", 2, 0);
        user.click("cmdFind");
        EXPECT_EQ(codes(user).size(), 4U);
    });
    EXPECT_FALSE(fs::exists(inFolder("gone")));
}

TEST_F(BadInput, anIniFileOfGarbageIsReadAsEmpty) {
    std::ofstream(stage.iniFile()) << "\x01\x02[[[\n===\n\xff\xfe";
    stage.open(kManagement, [](User& user) { EXPECT_EQ(user.control<platform::Combo>("PC", 0).selected(), 0); });
}

TEST_F(BadInput, anItemIdThatDoesNotFitIsTold) {
    stage.open(kManagement, [this](User& user) {
        user.control<platform::ListGrid>("vsf1").setText(1, 1, "99999999999");
        user.selectRow("vsf1", 1);
        user.answer(MessageKind::critical, "溢出");
        user.click("cmdUpdateDetail");
        user.selectRow("vsf1", 2);
        expectEditor(1, 102);
        user.click("cmdUpdateDetail");
    });
}

}  // namespace
}  // namespace orvenmod::test
