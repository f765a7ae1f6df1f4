// The component by name, its shared settings and its schema, as a host uses them.
#include <gtest/gtest.h>
#include <orvenmod/orvenmod.h>

#include <filesystem>

#include "frame/appstate.h"
#include "support/stage.h"

namespace orvenmod::test {
namespace {

class Component : public ::testing::Test {
protected:
    Stage stage;
};

TEST_F(Component, registrationNamesTheFileOfEveryClass) {
    EXPECT_EQ(DllRegisterServer(), kSuccess);
    for (const char* name : {"Orvenmod.clsBasicInfo", "Orvenmod.clsJCZL", "Orvenmod.clsHSXMManage"}) {
        EXPECT_TRUE(std::filesystem::exists(GetSetting("Orvenmod", "Classes", name))) << name;
    }
    EXPECT_EQ(DllUnregisterServer(), kSuccess);
    EXPECT_EQ(GetSetting("Orvenmod", "Classes", "Orvenmod.clsBasicInfo", "none"), "none");
}

TEST_F(Component, aRegistrationThatCannotBeWrittenFails) {
    stage.settings().refuseSaves = true;
    EXPECT_EQ(DllRegisterServer(), kRegistrationFailed);
}

TEST_F(Component, everyClassIsMadeByItsName) {
    const ClassObject* object = nullptr;
    ASSERT_EQ(DllGetClassObject("Orvenmod.clsBasicInfo", &object), kSuccess);
    const auto info = std::static_pointer_cast<clsBasicInfo>(object->createInstance());
    info->fItemId = "5";
    EXPECT_EQ(appState().gMsgTitle, "奥文软件");
    ASSERT_EQ(DllGetClassObject("Orvenmod.clsJCZL", &object), kSuccess);
    EXPECT_FALSE(std::static_pointer_cast<clsJCZL>(object->createInstance())->fItemId == "5");
    ASSERT_EQ(DllGetClassObject("Orvenmod.clsHSXMManage", &object), kSuccess);
    EXPECT_EQ(std::static_pointer_cast<clsHSXMManage>(object->createInstance())->DBConnection, "");
}

TEST_F(Component, anUnknownClassIsNotAvailable) {
    const ClassObject* object = nullptr;
    DllGetClassObject("Orvenmod.clsBasicInfo", &object);
    EXPECT_EQ(DllGetClassObject("Orvenmod.clsNone", &object), kClassNotAvailable);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(DllGetClassObject(nullptr, &object), kInvalidPointer);
    EXPECT_EQ(DllGetClassObject("Orvenmod.clsJCZL", nullptr), kInvalidPointer);
}

TEST_F(Component, mayBeUnloadedWhenNoObjectLives) {
    EXPECT_EQ(DllCanUnloadNow(), kSuccess);
    {
        const clsBasicInfo info;
        EXPECT_EQ(DllCanUnloadNow(), kNo);
        const clsJCZL dictionary;
        const clsHSXMManage designer;
        EXPECT_EQ(DllCanUnloadNow(), kNo);
    }
    EXPECT_EQ(DllCanUnloadNow(), kSuccess);
}

TEST_F(Component, anObjectThatCouldNotBeMadeDoesNotKeepItLoaded) {
    stage.set("SystemSetup", "intZeroNumber", "abc");
    EXPECT_THROW(clsBasicInfo(), std::runtime_error);
    EXPECT_EQ(DllCanUnloadNow(), kSuccess);
}

TEST_F(Component, settingsAreSharedWithTheHost) {
    SaveSetting("Orvencom", "SystemSetup", "msgTitle", "主机");
    EXPECT_EQ(GetSetting("Orvencom", "SystemSetup", "msgTitle"), "主机");
    const clsBasicInfo info;
    EXPECT_EQ(appState().gMsgTitle, "主机");
    DeleteSetting("Orvencom", "SystemSetup", "msgTitle");
    EXPECT_EQ(GetSetting("Orvencom", "SystemSetup", "msgTitle", "x"), "x");
    SaveSetting("Orvencom", "A", "k", "1");
    SaveSetting("Orvencom", "B", "k", "2");
    DeleteSetting("Orvencom", "A");
    EXPECT_EQ(GetSetting("Orvencom", "A", "k"), "");
    EXPECT_EQ(GetSetting("Orvencom", "B", "k"), "2");
    DeleteSetting("Orvencom");
    EXPECT_EQ(GetSetting("Orvencom", "B", "k"), "");
}

TEST_F(Component, theSchemaIsMadeInANewFile) {
    const std::string file = stage.database().folder().file("new.db");
    CreateSchema(connectionStringFor(file));
    stage.script().onWindow("frmBasicInfoList", [](User& user) { EXPECT_EQ(user.window().caption(), "供应商"); });
    clsBasicInfo info;
    info.mainInterface(2, "", "", connectionStringFor(file), 0);
    stage.finish();
}

TEST_F(Component, aNewSchemaIsOfTheNewestVersion) {
    EXPECT_GT(NewestSchemaVersion(), 0);
    EXPECT_EQ(SchemaVersion(stage.connectionString()), NewestSchemaVersion());
    EXPECT_EQ(stage.database().rows("select * from tblOrvenmodVersion"),
              (Rows{{std::to_string(NewestSchemaVersion())}}));
}

TEST_F(Component, aSchemaOfAnEarlierVersionIsUpgraded) {
    stage.database().execute("drop table tblOrvenmodVersion");
    EXPECT_EQ(SchemaVersion(stage.connectionString()), 0);
    UpgradeSchema(stage.connectionString());
    EXPECT_EQ(SchemaVersion(stage.connectionString()), NewestSchemaVersion());
}

TEST_F(Component, aSchemaOfALaterVersionIsRefused) {
    stage.database().execute("update tblOrvenmodVersion set fVersion=99");
    EXPECT_EQ(SchemaVersion(stage.connectionString()), 99);
    try {
        UpgradeSchema(stage.connectionString());
        FAIL() << "upgraded";
    } catch (const std::runtime_error& failure) {
        EXPECT_NE(std::string(failure.what()).find("数据库的版本是 99"), std::string::npos) << failure.what();
    }
}

TEST_F(Component, aMissingFileHasNoVersionAndIsNotMade) {
    const std::string file = stage.database().folder().file("none.db");
    EXPECT_THROW(SchemaVersion(connectionStringFor(file)), std::runtime_error);
    EXPECT_THROW(UpgradeSchema(connectionStringFor(file)), std::runtime_error);
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(Component, theSchemaIsRefusedWhereATableExists) {
    try {
        CreateSchema(stage.connectionString());
        FAIL() << "made twice";
    } catch (const std::runtime_error& failure) {
        EXPECT_NE(std::string(failure.what()).find("tblItemClass"), std::string::npos) << failure.what();
    }
    EXPECT_EQ(stage.database().value("select count(*) from tblItemClass"), "4");
}

}  // namespace
}  // namespace orvenmod::test
