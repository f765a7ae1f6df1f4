// The gateway: connection, right check, settings and the ini file.
#include "frame/mdlMain.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "frame/appstate.h"
#include "platform/memory/memorytoolkit.h"
#include "support/stage.h"

namespace orvenmod::test {
namespace {

using platform::Answer;
using platform::MessageKind;
using Texts = std::vector<std::string>;

const std::string kRefusal = "您无此权限，请与系统管理员联系！";

class Gateway : public ::testing::Test {
protected:
    Gateway() {
        state.gConnStr = stage.connectionString();
        state.gMsgTitle = "测试套件";
        state.gLoginUserId = 7;
        state.gIniPath = stage.database().folder().path() + "\\setupInfo.ini";
    }
    ~Gateway() override {
        closeDB();
        stage.finish();
    }

    Stage stage;
    AppState& state = appState();
};

TEST_F(Gateway, openingConnectsOnceAndReusesTheConnection) {
    EXPECT_TRUE(openDB());
    const auto* first = state.gConn.get();
    EXPECT_TRUE(openDB());
    EXPECT_EQ(state.gConn.get(), first);
    EXPECT_EQ(stage.operations(), Texts{"connect"});
}

TEST_F(Gateway, aConnectionIsReusedAsItStandsWhateverItsState) {
    openDB();
    state.gConn->close();
    state.gConnStr = "Provider=SQLite;Data Source=/none";
    EXPECT_TRUE(openDB());
    EXPECT_THROW(state.gConn->open("select 1 as one"), store::Failure);
}

TEST_F(Gateway, closingDropsTheConnection) {
    openDB();
    closeDB();
    EXPECT_FALSE(state.gConn);
    EXPECT_EQ(stage.operations(), (Texts{"connect", "close"}));
    EXPECT_EQ(stage.connectionsAlive(), 0);
}

TEST_F(Gateway, closingWithoutAConnectionDoesNothing) {
    closeDB();
    EXPECT_EQ(stage.operations(), Texts{});
}

TEST_F(Gateway, aFailedOpenRaisesAndLeavesNoConnection) {
    state.gConnStr = "Provider=SQLite;Data Source=/none/none.db";
    EXPECT_THROW(openDB(), store::Failure);
    EXPECT_FALSE(state.gConn);
    state.gConnStr = stage.connectionString();
    EXPECT_TRUE(openDB());
}

TEST_F(Gateway, aNestedOperationThatClosesLeavesItsCallerWithoutAConnection) {
    openDB();
    stage.script().answer(MessageKind::warning, kRefusal, Answer::ok);
    isHaveRight("Y304");
    EXPECT_FALSE(state.gConn);
}

TEST_F(Gateway, anAdministratorPassesWithoutAQuery) {
    state.gIsAdmin = 1;
    EXPECT_TRUE(isHaveRight("Y304"));
    EXPECT_EQ(stage.operations(), Texts{});
}

TEST_F(Gateway, aRightIsLookedUpForTheUser) {
    stage.database().grant(7, "Y304");
    EXPECT_TRUE(isHaveRight("Y304"));
    EXPECT_EQ(stage.statements(), Texts{"select fuserid from tblUserPrivillenge  where fuserid=7  and fNumber='Y304'"});
    EXPECT_EQ(stage.operations(), (Texts{"connect", "open", "close"}));
    EXPECT_TRUE(stage.script().messages().empty());
}

TEST_F(Gateway, aMissingRightIsRefused) {
    stage.database().grant(8, "Y304");
    stage.database().grant(7, "Y305");
    stage.script().answer(MessageKind::warning, kRefusal, Answer::ok);
    EXPECT_FALSE(isHaveRight("Y304"));
    EXPECT_EQ(stage.script().messages().back(), (ShownMessage{MessageKind::warning, kRefusal, "测试套件"}));
    EXPECT_FALSE(state.gConn);
}

TEST_F(Gateway, anotherAdminFlagThanOneIsAPlainUser) {
    state.gIsAdmin = 2;
    stage.script().answer(MessageKind::warning, kRefusal, Answer::ok);
    EXPECT_FALSE(isHaveRight("Y304"));
    EXPECT_EQ(stage.statements().size(), 1U);
}

TEST_F(Gateway, aFailedRightCheckIsToldAndKeepsTheConnectionOpen) {
    stage.database().execute("drop table tblUserPrivillenge");
    stage.script().answer(MessageKind::critical, "对象名 'tblUserPrivillenge' 无效。", Answer::ok);
    EXPECT_FALSE(isHaveRight("Y304"));
    EXPECT_EQ(stage.script().messages().back().title, "测试套件");
    ASSERT_TRUE(state.gConn);
    EXPECT_EQ(stage.operations(), (Texts{"connect", "open"}));
    EXPECT_TRUE(openDB());
    EXPECT_EQ(stage.operations().size(), 2U) << "the next openDB reuses it";
}

TEST_F(Gateway, aRightCheckThatCannotConnectIsTold) {
    state.gConnStr = "Provider=SQLite;Data Source=" + stage.database().folder().path();
    stage.script().answer(MessageKind::critical, "“" + stage.database().folder().path() + "”是文件夹，不是数据库文件。",
                          Answer::ok);
    EXPECT_FALSE(isHaveRight("Y304"));
    EXPECT_FALSE(state.gConn);
}

TEST_F(Gateway, anApostropheInARightFailsTheStatement) {
    stage.script().answer(MessageKind::critical, "字符串 'Y''' 后的引号不完整。", Answer::ok);
    EXPECT_FALSE(isHaveRight("Y'"));
}

TEST_F(Gateway, theIniFileIsTheOneOfTheBrowser) { EXPECT_EQ(AppProfileName(), state.gIniPath); }

TEST_F(Gateway, readingAnAbsentKeyCreatesItWithTheDefault) {
    EXPECT_EQ(GetIniS("Orvenmod", "JCZLA3", "5"), "5");
    EXPECT_EQ(GetIniS("Orvenmod", "JCZLA3", "6"), "5");
    EXPECT_NE(Stage::contents(stage.iniFile()).find("JCZLA3"), std::string::npos);
}

TEST_F(Gateway, anEmptyValueCountsAsAbsent) {
    std::ofstream(stage.iniFile()) << "[Orvenmod]\nJCZLA3=\n";
    EXPECT_EQ(GetIniS("Orvenmod", "JCZLA3", "5"), "5");
    EXPECT_EQ(GetIniS("Orvenmod", "JCZLA3", ""), "5") << "it was rewritten";
}

TEST_F(Gateway, aValueIsReadUpTo144Characters) {
    std::string word;
    for (int i = 0; i < 150; ++i)
        word += "货";
    SetIniS("Orvenmod", "long", word);
    EXPECT_EQ(GetIniS("Orvenmod", "long", ""), word.substr(0, 144 * std::string("货").size()));
    SetIniS("Orvenmod", "fits", std::string(144, 'x'));
    EXPECT_EQ(GetIniS("Orvenmod", "fits", ""), std::string(144, 'x'));
}

TEST_F(Gateway, aValueThatWasWrittenIsRead) {
    SetIniS("Orvenmod", "JCZLA3", "2");
    SetIniS("Orvenmod", "JCZLA3", "4");
    EXPECT_EQ(GetIniS("Orvenmod", "JCZLA3", "0"), "4");
}

TEST_F(Gateway, anIniFileThatCannotBeWrittenGivesTheDefault) {
    state.gIniPath = stage.database().folder().path() + "\\gone\\setupInfo.ini";
    EXPECT_EQ(GetIniS("Orvenmod", "JCZLA3", "5"), "5");
    SetIniS("Orvenmod", "JCZLA3", "2");
    EXPECT_FALSE(std::filesystem::exists(stage.database().folder().file("gone")));
}

TEST_F(Gateway, boxesBearTheSuitesTitle) {
    stage.script().answer(MessageKind::warning, "w", Answer::ok);
    stage.script().answer(MessageKind::information, "i", Answer::ok);
    stage.script().answer(MessageKind::critical, "c", Answer::ok);
    stage.script().answer(MessageKind::question, "q", Answer::yes);
    stage.script().answer(MessageKind::question, "q", Answer::no);
    showWarning("w");
    showInformation("i");
    showCritical("c");
    EXPECT_TRUE(askQuestion("q"));
    EXPECT_FALSE(askQuestion("q"));
    for (const ShownMessage& box : stage.script().messages())
        EXPECT_EQ(box.title, "测试套件");
}

TEST_F(Gateway, anAbsentSettingYieldsTheDefaultAndIsNotWritten) {
    EXPECT_EQ(setting("SystemSetup", "msgTitle", "奥文软件"), "奥文软件");
    EXPECT_EQ(setting("SystemSetup", "msgTitle", "x"), "x");
    saveSetting("SystemSetup", "msgTitle", "");
    EXPECT_EQ(setting("SystemSetup", "msgTitle", "x"), "") << "an empty one is there";
}

TEST_F(Gateway, windowsPaintWhileAStatementTakesLong) {
    const auto& toolkit = dynamic_cast<platform::memory::MemoryToolkit&>(stage.script().toolkit());
    openDB();
    const int before = toolkit.paints();
    ASSERT_TRUE(stage.progress());
    stage.progress()();
    EXPECT_EQ(toolkit.paints(), before + 1);
}

}  // namespace
}  // namespace orvenmod::test
