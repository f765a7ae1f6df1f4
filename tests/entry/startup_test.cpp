// How the component starts where nobody has chosen its services.
#include "entry/startup.h"

#include <gtest/gtest.h>
#include <orvenmod/orvenmod.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>

#include "frame/appstate.h"
#include "support/database.h"
#include "support/stage.h"

namespace orvenmod::test {
namespace {

TEST(StartUp, servicesThatAHostHasChosenStay) {
    Stage stage;
    const Services* chosen = &services();
    startUp();
    EXPECT_EQ(&services(), chosen);
    EXPECT_EQ(&sharedSettings(), &stage.settings());
}

TEST(StartUp, anEscapedFailureBearsTheSuitesTitle) {
    Stage stage;
    startUp();
    appState().gMsgTitle = "测试套件";
    stage.script().answer(platform::MessageKind::critical, "坏了", platform::Answer::ok);
    stage.script().toolkit().showEscaped("坏了");
    EXPECT_EQ(stage.script().messages().back().title, "测试套件");
}

TEST(StartUp, withoutServicesThereAreNone) {
    useServices(nullptr);
    EXPECT_FALSE(hasServices());
    EXPECT_THROW(services(), std::logic_error);
}

// Starts the component as a host's process does; what is wrong, "" for nothing.
std::string startAndTrace() {
    const TemporaryFolder folder;
    setenv("ORVEN_SQL_TRACE", folder.file("trace").c_str(), 1);
    setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    const std::string database = connectionStringFor(folder.file("suite.db"));
    CreateSchema(database);
    SaveSetting("Orvencom", "SystemSetup", "msgTitle", "测试套件");
    startUp();
    if (&sharedSettings() != &services().settings) return "settings of two kinds";
    if (GetSetting("Orvencom", "SystemSetup", "msgTitle") != "测试套件") return "the setting is lost";
    if (services().folders.temporary().empty()) return "no folder";
    const std::string sql = "select fItemName from tblItemClass where fItemClassId=3";
    const auto connection = services().store.connect(database);
    connection->open(sql);
    connection->close();
    const std::string trace = Stage::contents(folder.file("trace"));
    if (trace.find(sql) == std::string::npos) return "not traced: " + trace;
    if (trace.find("Data Source") != std::string::npos) return "the trace holds a connection string";
    return "";
}

// The component starts once a process and chooses its trace there, so this start has a process of its own.
TEST(StartUpDeathTest, theStatementsGoToTheFileThatTheEnvironmentNames) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto start = [] {
        const std::string wrong = startAndTrace();
        std::fputs(wrong.c_str(), stderr);
        _exit(wrong.empty() ? 0 : 1);
    };
    EXPECT_EXIT(start(), ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace orvenmod::test
