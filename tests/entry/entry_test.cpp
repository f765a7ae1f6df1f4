// The three classes that a host creates.
#include <gtest/gtest.h>
#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/clsHSXMManage.h>
#include <orvenmod/clsJCZL.h>

#include "entry/windows.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "support/stage.h"

namespace orvenmod::test {
namespace {

using platform::Answer;
using platform::MessageKind;
using Texts = std::vector<std::string>;

class Entry : public ::testing::Test {
protected:
    Entry() {
        stage.set("SystemSetup", "msgTitle", "测试套件");
        stage.set("SystemLogin", "gLoginUserId", "7");
        // Windows that note when they were shown.
        windows().frmBasicInfoList = [this] { show("frmBasicInfoList"); };
        windows().frmHSXM = [this] { show("frmHSXM"); };
        windows().frmJCBasicInfo = [this] { show("frmJCBasicInfo"); };
        windows().frmJCZLList = [this] { show("frmJCZLList"); };
    }
    ~Entry() override {
        windows() = own;
        stage.finish();
    }
    void show(const std::string& name) {
        shown.push_back(name);
        if (inWindow) inWindow();
    }
    bool enter(clsBasicInfo& info, std::int16_t itemClass = 3, std::int16_t isReturn = 0, const Variant& called = {},
               const Variant& paramSql = {}) {
        return info.mainInterface(itemClass, "field", "螺丝", stage.connectionString(), isReturn, called, paramSql);
    }
    /// What creating an object fails with, "" where it doesn't.
    static std::string refusal() {
        try {
            const clsBasicInfo info;
            return "";
        } catch (const ConversionFailure& failure) {
            return failure.what();
        }
    }
    void setEveryResult(const std::string& text) { state.gRetItemId = state.gRetNumber = state.gRetName = text; }

    Stage stage;
    AppState& state = appState();
    Windows own = windows();
    std::vector<std::string> shown;
    std::function<void()> inWindow;
};

TEST_F(Entry, theRecordStartsEmpty) {
    EXPECT_FALSE(state.gConn);
    EXPECT_EQ(state.gConnStr + state.gMsgTitle + state.gRightPrefix + state.gItemName + state.gRetItemId, "");
    EXPECT_EQ(state.gIsAdmin + state.gLoginUserId + state.gZeroNumber + state.gItemClassId + state.gEditMode, 0);
}

TEST_F(Entry, creatingAnObjectReadsTitleAdminFlagUserAndDecimals) {
    stage.set("SystemLogin", "IsAdmin", "1");
    stage.set("SystemSetup", "intZeroNumber", "4");
    const clsBasicInfo info;
    EXPECT_EQ(state.gMsgTitle, "测试套件");
    EXPECT_EQ(state.gIsAdmin, 1);
    EXPECT_EQ(state.gLoginUserId, 7);
    EXPECT_EQ(state.gZeroNumber, 4);
}

TEST_F(Entry, absentSettingsHaveDefaults) {
    stage.settings().remove("Orvencom", "", "");
    clsBasicInfo info;
    EXPECT_EQ(state.gMsgTitle, "奥文软件");
    EXPECT_EQ(state.gIsAdmin, 0);
    EXPECT_EQ(state.gLoginUserId, 0);
    EXPECT_EQ(state.gZeroNumber, 2);
    enter(info);
    EXPECT_EQ(state.gItemAllName, "货品");
    EXPECT_EQ(state.gAppPath, "");
    EXPECT_EQ(state.gLoginUserName, "");
}

TEST_F(Entry, theOtherClassesReadOnlyTitleAndAdminFlag) {
    stage.set("SystemLogin", "IsAdmin", "1");
    stage.set("SystemLogin", "gLoginUserName", "张三");
    stage.set("SystemSetup", "gAppPath", "/srv/suite");
    clsJCZL dictionary;
    dictionary.mainInterface(stage.connectionString());
    clsHSXMManage designer;
    designer.mainInterface();
    EXPECT_EQ(state.gMsgTitle, "测试套件");
    EXPECT_EQ(state.gIsAdmin, 1);
    EXPECT_EQ(state.gLoginUserId, 0);
    EXPECT_EQ(state.gZeroNumber, 0);
    EXPECT_EQ(state.gLoginUserName, "");
    EXPECT_EQ(state.gAppPath, "");
}

TEST_F(Entry, theOtherClassesRunWithWhatAnEarlierBasicInfoLeft) {
    {
        clsBasicInfo info;
        stage.set("SystemLogin", "gLoginUserName", "张三");
        enter(info);
    }
    clsJCZL dictionary;
    dictionary.mainInterface(stage.connectionString());
    EXPECT_EQ(state.gLoginUserId, 7);
    EXPECT_EQ(state.gLoginUserName, "张三");
}

TEST_F(Entry, withoutABasicInfoAPlainUserIsRefusedEverything) {
    stage.database().grant(7, "Z04");
    stage.database().grant(7, "Y304");
    inWindow = [this] {
        stage.script().answer(MessageKind::warning, "您无此权限，请与系统管理员联系！", Answer::ok);
        EXPECT_FALSE(isHaveRight(state.gRightPrefix + "04"));
        EXPECT_EQ(stage.lastStatement(), "select fuserid from tblUserPrivillenge  where fuserid=0  and fNumber='" +
                                             state.gRightPrefix + "04'");
    };
    clsJCZL dictionary;
    dictionary.mainInterface(stage.connectionString());
    clsHSXMManage designer;
    designer.DBConnection = stage.connectionString();
    designer.mainInterface();
    EXPECT_EQ(shown, (Texts{"frmJCBasicInfo", "frmHSXM"}));
}

TEST_F(Entry, theEntryFillsTheRecordAndShowsTheBrowser) {
    stage.set("SystemSetup", "gItemAllName", "物料");
    stage.set("SystemSetup", "gAppPath", "/srv/suite");
    stage.set("SystemLogin", "gLoginUserName", "张三");
    clsBasicInfo info;
    state.gNoNewAfterSave = 1;
    inWindow = [this] {
        EXPECT_EQ(state.gItemAllName, "物料");
        EXPECT_EQ(state.gAppPath, "/srv/suite");
        EXPECT_EQ(state.gRightPrefix, "Y");
        EXPECT_EQ(state.gNoNewAfterSave, 0);
        EXPECT_EQ(state.gConnStr, stage.connectionString());
        EXPECT_EQ(state.gParamSQL, " and 1=1");
        EXPECT_EQ(state.gFindValue, "螺丝");
        EXPECT_EQ(state.gItemClassId, 3);
        EXPECT_EQ(state.gIsReturn, 1);
        EXPECT_EQ(state.gItemCalled, 1);
        EXPECT_EQ(state.gLoginUserName, "张三");
        EXPECT_EQ(state.gItemName, "货品");
        EXPECT_EQ(state.gItemTable, "ICItem");
        EXPECT_EQ(state.gViewName, "vICItem");
        EXPECT_EQ(state.gRetItemId + state.gRetNumber + state.gRetName, "");
        EXPECT_FALSE(state.gConn) << "the look-up has closed";
        setEveryResult("1");
    };
    setEveryResult("old");
    EXPECT_FALSE(enter(info, 3, 1, 1, " and 1=1")) << "the result tells nothing";
    EXPECT_EQ(shown, Texts{"frmBasicInfoList"});
    EXPECT_EQ(stage.statements(), Texts{"select * from tblItemClass where fitemclassid=3"});
    EXPECT_EQ(info.fItemClassId, 3);
    EXPECT_EQ(info.fItemId + info.fNumber + info.fName, "111");
    EXPECT_EQ(state.gParamSQL, "");
    EXPECT_EQ(state.gFindValue, "螺丝") << "only the host's filter is taken away";
}

TEST_F(Entry, theUserIsReadAgainAtEveryEntry) {
    clsBasicInfo info;
    stage.set("SystemLogin", "gLoginUserId", "8");
    enter(info);
    EXPECT_EQ(state.gLoginUserId, 8);
}

TEST_F(Entry, optionalArgumentsLeftOutAreZeroAndEmpty) {
    clsBasicInfo info;
    state.gItemCalled = 5;
    state.gParamSQL = "old";
    inWindow = [this] {
        EXPECT_EQ(state.gItemCalled, 0);
        EXPECT_EQ(state.gParamSQL, "");
    };
    enter(info);
    EXPECT_EQ(shown.size(), 1U);
}

TEST_F(Entry, theCallModeMayComeInAnyKindOfVariant) {
    clsBasicInfo info;
    const std::pair<Variant, std::int16_t> cases[] = {{1, 1},   {"1", 1},   {"", 0},    {std::int16_t{1}, 1},
                                                      {2.5, 2}, {true, -1}, {" 2 ", 2}, {false, 0}};
    for (const auto& [given, expected] : cases) {
        state.gItemCalled = 9;
        enter(info, 3, 1, given);
        EXPECT_EQ(state.gItemCalled, expected);
    }
}

TEST_F(Entry, aCallModeThatIsNoNumberIsToldAndShowsNoWindow) {
    clsBasicInfo info;
    stage.script().answer(MessageKind::critical, "类型不匹配", Answer::ok);
    enter(info, 3, 1, "abc");
    stage.script().answer(MessageKind::critical, "溢出", Answer::ok);
    enter(info, 3, 1, 40000);
    EXPECT_EQ(shown, Texts{});
    EXPECT_FALSE(state.gConn);
}

TEST_F(Entry, aSecondEntryClearsTheResults) {
    clsBasicInfo info;
    inWindow = [this] { setEveryResult("5"); };
    enter(info, 3, 1);
    EXPECT_EQ(info.fItemId, "5");
    inWindow = [] {};
    enter(info, 3, 1);
    EXPECT_EQ(info.fItemId + info.fNumber + info.fName, "");
}

TEST_F(Entry, anUnknownClassKeepsWhatTheLastEntryHeld) {
    clsBasicInfo info;
    enter(info, 99);
    EXPECT_EQ(state.gItemName + state.gItemTable + state.gViewName, "");
    enter(info, 1);
    EXPECT_EQ(state.gViewName, "vtblCustomer");
    enter(info, 99);
    EXPECT_EQ(state.gItemName, "客户");
    EXPECT_EQ(state.gItemTable, "tblCustomer");
    EXPECT_EQ(state.gViewName, "vtblCustomer");
    EXPECT_EQ(state.gItemClassId, 99);
    EXPECT_EQ(shown.size(), 3U);
}

TEST_F(Entry, aClassWithoutAViewHasAnEmptyOne) {
    stage.database().execute(
        "insert into tblItemClass(fItemClassId,fItemName,fItemTable,fItemType) values(60,'单位','','1')");
    clsBasicInfo info;
    enter(info, 3);
    enter(info, 60);
    EXPECT_EQ(state.gItemName, "单位");
    EXPECT_EQ(state.gViewName, "");
}

TEST_F(Entry, aDatabaseThatCannotBeOpenedGoesUpToTheHost) {
    clsBasicInfo info;
    info.fItemId = "old";
    EXPECT_THROW(info.mainInterface(3, "", "", "Provider=SQLite;Data Source=/none.db", 0), store::Failure);
    EXPECT_EQ(shown, Texts{});
    EXPECT_EQ(info.fItemId, "old");
    EXPECT_EQ(state.gRetItemId, "");
    EXPECT_FALSE(state.gConn);
}

TEST_F(Entry, aFailedLookUpIsToldAndShowsNoWindow) {
    stage.database().execute("drop table tblItemClass");
    clsBasicInfo info;
    info.fItemId = "old";
    stage.script().answer(MessageKind::critical, "对象名 'tblItemClass' 无效。", Answer::ok);
    EXPECT_FALSE(enter(info));
    EXPECT_EQ(stage.script().messages().back().title, "测试套件");
    EXPECT_EQ(shown, Texts{});
    EXPECT_EQ(info.fItemId, "old");
    EXPECT_FALSE(state.gConn);
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(Entry, aWindowThatFailsIsToldAndLeavesTheResults) {
    clsBasicInfo info;
    inWindow = [] {
        openDB();
        throw std::runtime_error("坏了");
    };
    stage.script().answer(MessageKind::critical, "坏了", Answer::ok);
    enter(info, 3, 1, {}, " and 1=1");
    EXPECT_EQ(info.fItemId, "");
    EXPECT_FALSE(state.gConn);
    EXPECT_EQ(state.gParamSQL, " and 1=1");
}

TEST_F(Entry, aSettingThatIsNoNumberFailsTheCreationAndIsNamed) {
    for (const auto& [section, key] :
         {std::pair{"SystemLogin", "IsAdmin"}, {"SystemLogin", "gLoginUserId"}, {"SystemSetup", "intZeroNumber"}}) {
        const std::string before = stage.get(section, key);
        stage.set(section, key, "abc");
        EXPECT_EQ(refusal(), std::string("类型不匹配：设置 ") + key + " 的值为“abc”");
        stage.set(section, key, before.empty() ? "0" : before);
    }
    EXPECT_EQ(refusal(), "");
}

TEST_F(Entry, decimalPlacesThatNoCellTakesFailTheCreationAndAreNamed) {
    for (const char* value : {"-1", "11", "40"}) {
        stage.set("SystemSetup", "intZeroNumber", value);
        EXPECT_EQ(refusal(), std::string("小数位数应为 0 到 10：设置 intZeroNumber 的值为“") + value + "”");
    }
    for (const char* value : {"0", "10", "2.4"}) {
        stage.set("SystemSetup", "intZeroNumber", value);
        EXPECT_EQ(refusal(), "");
    }
}

TEST_F(Entry, anAdminFlagThatIsNoNumberFailsTheOtherClassesToo) {
    stage.set("SystemLogin", "IsAdmin", "40000");
    EXPECT_THROW(clsJCZL(), ConversionFailure);
    EXPECT_THROW(clsHSXMManage(), ConversionFailure);
}

TEST_F(Entry, aUserThatIsNoNumberAtTheEntryGoesUpToTheHost) {
    clsBasicInfo info;
    stage.set("SystemLogin", "gLoginUserId", "张三");
    try {
        enter(info);
        ADD_FAILURE() << "the entry took a user that is no number";
    } catch (const ConversionFailure& failure) {
        EXPECT_STREQ(failure.what(), "类型不匹配：设置 gLoginUserId 的值为“张三”");
    }
    EXPECT_EQ(shown, Texts{});
}

TEST_F(Entry, theConnectionIsDroppedAtTheEndOfAnEntryWithoutClosingIt) {
    clsBasicInfo info;
    inWindow = [] { openDB(); };
    enter(info);
    EXPECT_FALSE(state.gConn);
    EXPECT_EQ(stage.operations(), (Texts{"connect", "open", "close", "connect"}));
    EXPECT_EQ(stage.connectionsAlive(), 0);
    clsJCZL dictionary;
    dictionary.mainInterface(stage.connectionString());
    EXPECT_FALSE(state.gConn);
    dictionary.mainSingleInterface(0, 60, stage.connectionString());
    EXPECT_FALSE(state.gConn);
    clsHSXMManage designer;
    designer.DBConnection = stage.connectionString();
    designer.mainInterface();
    EXPECT_FALSE(state.gConn);
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(Entry, theEndOfAnObjectDropsTheConnection) {
    state.gConnStr = stage.connectionString();
    {
        clsBasicInfo info;
        openDB();
    }
    EXPECT_FALSE(state.gConn);
    {
        clsJCZL dictionary;
        openDB();
    }
    EXPECT_FALSE(state.gConn);
    {
        clsHSXMManage designer;
        openDB();
    }
    EXPECT_FALSE(state.gConn);
}

TEST_F(Entry, twoObjectsShareTheRecordAndTheConnection) {
    clsBasicInfo first;
    const auto second = std::make_unique<clsJCZL>();
    enter(first, 3);
    second->mainInterface(stage.connectionString());
    EXPECT_EQ(state.gRightPrefix, "Z");
    EXPECT_EQ(state.gItemClassId, 3);
    EXPECT_EQ(state.gItemCalled, 1);
}

TEST_F(Entry, theDesignerTakesItsConnectionFromTheProperty) {
    clsHSXMManage designer;
    designer.DBConnection = "some string";
    inWindow = [this] {
        EXPECT_EQ(state.gRightPrefix, "Y");
        EXPECT_EQ(state.gConnStr, "some string");
    };
    EXPECT_FALSE(designer.mainInterface());
    EXPECT_EQ(shown, Texts{"frmHSXM"});
}

TEST_F(Entry, theDictionaryManagerIsToldItsMode) {
    clsJCZL dictionary;
    inWindow = [this] {
        EXPECT_EQ(state.gRightPrefix, "Z");
        EXPECT_EQ(state.gItemCalled, 1);
        EXPECT_EQ(state.gConnStr, "some string");
    };
    setEveryResult("old");
    EXPECT_FALSE(dictionary.mainInterface("some string"));
    EXPECT_EQ(shown, Texts{"frmJCBasicInfo"});
    EXPECT_EQ(state.gRetItemId, "old") << "only the single list clears the results";
}

TEST_F(Entry, theDictionaryPickerHandsItsPickOver) {
    clsJCZL dictionary;
    setEveryResult("old");
    inWindow = [this] {
        EXPECT_EQ(state.gRetItemId + state.gRetNumber + state.gRetName, "");
        EXPECT_EQ(state.gRightPrefix, "Z");
        EXPECT_EQ(state.gIsReturn, 1);
        EXPECT_EQ(state.gItemCalled, 1);
        EXPECT_EQ(state.gItemClassId, 60);
        EXPECT_EQ(state.gConnStr, "some string");
        state.gRetItemId = "9";
        state.gRetNumber = "01";
        state.gRetName = "箱";
    };
    EXPECT_FALSE(dictionary.mainSingleInterface(1, 60, "some string"));
    EXPECT_EQ(shown, Texts{"frmJCZLList"});
    EXPECT_EQ(dictionary.fItemId + dictionary.fNumber + dictionary.fName, "901箱");
}

TEST_F(Entry, anEntryWhoseWindowIsNotThereShowsNothingAndDoesTheRest) {
    windows().frmJCZLList = {};
    windows().frmJCBasicInfo = {};
    windows().frmHSXM = {};
    clsJCZL dictionary;
    dictionary.fItemId = "old";
    setEveryResult("old");
    dictionary.mainSingleInterface(1, 60, "some string");
    EXPECT_EQ(dictionary.fItemId, "");
    EXPECT_EQ(state.gItemClassId, 60);
    dictionary.mainInterface("another string");
    EXPECT_EQ(state.gConnStr, "another string");
    clsHSXMManage designer;
    designer.DBConnection = "a third";
    designer.mainInterface();
    EXPECT_EQ(state.gConnStr, "a third");
    EXPECT_TRUE(shown.empty());
    EXPECT_TRUE(stage.script().messages().empty());
}

TEST_F(Entry, propertiesAreStoredAndHandedBack) {
    clsBasicInfo info;
    info.UserRight = "all";
    info.strFindValue = "v";
    info.DBConnection = "c";
    info.strFindSql = "s";
    info.fItemName = "n";
    info.fTableName = "t";
    info.Status = -3;
    enter(info);
    EXPECT_EQ(std::get<std::string>(info.UserRight), "all");
    EXPECT_EQ(info.strFindValue + info.DBConnection + info.strFindSql + info.fItemName + info.fTableName, "vcsnt");
    EXPECT_EQ(info.Status, -3);
    EXPECT_EQ(state.gFindValue, "螺丝") << "the argument counts, not the property";
    const auto object = std::make_shared<int>(5);
    info.UserRight = std::shared_ptr<void>(object);
    EXPECT_EQ(std::get<std::shared_ptr<void>>(info.UserRight).get(), object.get());
    clsJCZL dictionary;
    dictionary.UserRight = 3;
    EXPECT_EQ(std::get<std::int32_t>(dictionary.UserRight), 3);
    clsHSXMManage designer;
    designer.UserRight = true;
    EXPECT_TRUE(std::get<bool>(designer.UserRight));
}

TEST_F(Entry, aPropertyOfTheObjectMayBeAnArgument) {
    clsBasicInfo info;
    info.fItemClassId = 1;
    info.DBConnection = stage.connectionString();
    info.mainInterface(info.fItemClassId, "", info.strFindValue, info.DBConnection, info.Status);
    EXPECT_EQ(state.gItemName, "客户");
}

}  // namespace
}  // namespace orvenmod::test
