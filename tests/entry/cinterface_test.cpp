// The C interface: what it hands out, who frees it, and that nothing a caller does wrong gets further than an error.
#include <gtest/gtest.h>
#include <orvenmod/orvenmod_c.h>
#include <orvenmod/version.h>

#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "entry/windows.h"
#include "frame/appstate.h"
#include "support/stage.h"

extern "C" std::int32_t orvenmodTestedFromC();

namespace orvenmod::test {
namespace {

constexpr const char* kItems = "Orvenmod.clsBasicInfo";

orvenmod_value text(const char* value) { return {ORVENMOD_TEXT, 0, 0, value}; }
orvenmod_value int16(std::int32_t value) { return {ORVENMOD_INT16, value, 0, nullptr}; }

class CInterface : public ::testing::Test {
protected:
    CInterface() { EXPECT_EQ(orvenmod_create(kItems, &items), 0) << orvenmod_error_text(); }
    ~CInterface() override { orvenmod_release(items); }

    std::string textOf(const char* property) {
        orvenmod_value value;
        EXPECT_EQ(orvenmod_get(items, property, &value), 0) << orvenmod_error_text();
        EXPECT_EQ(value.type, ORVENMOD_TEXT);
        const std::string copy = value.text;
        EXPECT_EQ(orvenmod_free(value.text), 0);
        return copy;
    }

    Stage stage;
    orvenmod_object* items = nullptr;
};

TEST_F(CInterface, picksAnItem) {
    stage.database().addGoods();
    stage.script().onWindow("frmBasicInfoList", [](User& user) { user.doubleClickRow("vsf1", 3); });
    const std::string database = stage.connectionString();
    const std::vector<orvenmod_value> arguments = {int16(3), text(""), text(""), text(database.c_str()), int16(1)};
    orvenmod_value result;
    ASSERT_EQ(orvenmod_call(items, "mainInterface", arguments.data(), arguments.size(), &result), 0);
    EXPECT_EQ(result.type, ORVENMOD_BOOLEAN);
    EXPECT_EQ(result.integer, 0);
    EXPECT_EQ(textOf("fItemId") + "|" + textOf("fNumber") + "|" + textOf("fName"), "103|02.001|墙壁开关");
    stage.finish();
}

TEST_F(CInterface, aPropertyComesBackInItsOwnKind) {
    const orvenmod_value given[] = {{},
                                    {ORVENMOD_BOOLEAN, 1, 0, nullptr},
                                    int16(-5),
                                    {ORVENMOD_INT32, 70000, 0, nullptr},
                                    {ORVENMOD_DOUBLE, 0, 2.5, nullptr},
                                    text("权限")};
    for (const orvenmod_value& value : given) {
        ASSERT_EQ(orvenmod_put(items, "UserRight", &value), 0);
        orvenmod_value back;
        ASSERT_EQ(orvenmod_get(items, "userright", &back), 0);
        EXPECT_EQ(back.type, value.type);
        EXPECT_EQ(back.integer, value.integer);
        EXPECT_EQ(back.number, value.number);
        EXPECT_EQ(std::string(back.text ? back.text : ""), value.text ? value.text : "");
        EXPECT_EQ(orvenmod_free(back.text), 0);
    }
}

TEST_F(CInterface, membersAndParametersAreListed) {
    std::int32_t count = 0;
    ASSERT_EQ(orvenmod_member_count(items, &count), 0);
    ASSERT_EQ(count, 12);
    std::vector<std::string> methods;
    for (std::int32_t at = 0; at < count; ++at) {
        orvenmod_member member;
        ASSERT_EQ(orvenmod_member_at(items, at, &member), 0);
        if (member.kind != ORVENMOD_METHOD) continue;
        methods.emplace_back(member.name);
        orvenmod_parameter first;
        orvenmod_parameter last;
        ASSERT_EQ(orvenmod_parameter_at(items, at, 0, &first), 0);
        ASSERT_EQ(orvenmod_parameter_at(items, at, member.parameter_count - 1, &last), 0);
        EXPECT_STREQ(first.name, "intFitemClassId");
        EXPECT_EQ(first.type, ORVENMOD_INT16);
        EXPECT_EQ(first.optional, 0);
        EXPECT_STREQ(last.name, "strParamSQL");
        EXPECT_EQ(last.optional, 1);
    }
    EXPECT_EQ(methods, std::vector<std::string>{"mainInterface"});
}

TEST_F(CInterface, settingsAndSchemaAreReached) {
    ASSERT_EQ(orvenmod_save_setting("Orvencom", "SystemSetup", "msgTitle", "主机"), 0);
    const char* value = nullptr;
    ASSERT_EQ(orvenmod_get_setting("Orvencom", "SystemSetup", "msgTitle", "", &value), 0);
    EXPECT_STREQ(value, "主机");
    EXPECT_EQ(orvenmod_free(value), 0);
    ASSERT_EQ(orvenmod_delete_setting("Orvencom", "SystemSetup", ""), 0);
    ASSERT_EQ(orvenmod_get_setting("Orvencom", "SystemSetup", "msgTitle", "无", &value), 0);
    EXPECT_STREQ(value, "无");
    EXPECT_EQ(orvenmod_free(value), 0);
    const std::string file = connectionStringFor(stage.database().folder().file("new.db"));
    ASSERT_EQ(orvenmod_create_schema(file.c_str()), 0) << orvenmod_error_text();
    std::int32_t version = 0;
    std::int32_t newest = 0;
    EXPECT_EQ(orvenmod_schema_version(file.c_str(), &version), 0);
    EXPECT_EQ(orvenmod_newest_schema_version(&newest), 0);
    EXPECT_EQ(version, newest);
    EXPECT_EQ(orvenmod_upgrade_schema(file.c_str()), 0);
}

TEST_F(CInterface, aFailureOfTheDatabaseBearsItsNumberAndText) {
    EXPECT_EQ(orvenmod_create_schema(stage.connectionString().c_str()), 2714);
    EXPECT_EQ(orvenmod_error_number(), 2714);
    EXPECT_NE(std::string(orvenmod_error_text()).find("tblItemClass"), std::string::npos);
    EXPECT_NE(orvenmod_schema_version("Provider=none", nullptr), 0);
    EXPECT_NE(orvenmod_create_schema("Provider=none"), 0);
    EXPECT_NE(std::string(orvenmod_error_text()), "");
}

TEST_F(CInterface, aClassWhoseSettingsAreWrongIsNotCreated) {
    stage.set("SystemLogin", "IsAdmin", "abc");
    orvenmod_object* none = items;
    EXPECT_EQ(orvenmod_create(kItems, &none), ORVENMOD_E_TYPE_MISMATCH);
    EXPECT_EQ(none, nullptr);
    EXPECT_NE(std::string(orvenmod_error_text()).find("IsAdmin"), std::string::npos);
}

TEST_F(CInterface, theErrorIsThatOfTheThreadsLastCall) {
    EXPECT_EQ(orvenmod_free("never handed out"), ORVENMOD_E_INVALID_CALL);
    EXPECT_EQ(orvenmod_free(nullptr), 0);
    EXPECT_EQ(orvenmod_error_number(), ORVENMOD_E_INVALID_CALL) << "what frees what is left keeps the error";
    std::thread([] {
        EXPECT_EQ(orvenmod_error_number(), 0);
        EXPECT_STREQ(orvenmod_error_text(), "");
    }).join();
    EXPECT_EQ(textOf("fName"), "");
    EXPECT_EQ(orvenmod_error_number(), 0);
    EXPECT_STREQ(orvenmod_error_text(), "");
}

TEST_F(CInterface, anObjectIsItsThreadsOwn) {
    std::thread([this] {
        orvenmod_value value;
        EXPECT_EQ(orvenmod_get(items, "fName", &value), ORVENMOD_E_INVALID_CALL);
        EXPECT_EQ(orvenmod_release(items), ORVENMOD_E_INVALID_CALL);
    }).join();
    EXPECT_EQ(textOf("fName"), "");
}

TEST_F(CInterface, anObjectReleasedWhileItsWindowIsOpenLivesUntilTheCallReturns) {
    const Windows own = windows();
    windows().frmBasicInfoList = [this] {
        EXPECT_EQ(orvenmod_release(items), 0);
        appState().gRetName = "螺丝";
    };
    const std::string database = stage.connectionString();
    const std::vector<orvenmod_value> arguments = {int16(3), text(""), text(""), text(database.c_str()), int16(1)};
    EXPECT_EQ(orvenmod_call(items, "mainInterface", arguments.data(), arguments.size(), nullptr), 0);
    orvenmod_value value;
    EXPECT_EQ(orvenmod_get(items, "fName", &value), ORVENMOD_E_OBJECT_REQUIRED);
    windows() = own;
}

TEST_F(CInterface, tellsTheVersionThatTheLibraryTells) { EXPECT_STREQ(orvenmod_version(), version()); }

TEST_F(CInterface, servesAProgramThatIsC99) { EXPECT_EQ(orvenmodTestedFromC(), 3); }

TEST_F(CInterface, aHandleIsNeverGivenTwice) {
    orvenmod_object* first = nullptr;
    orvenmod_object* second = nullptr;
    ASSERT_EQ(orvenmod_create(kItems, &first), 0);
    ASSERT_EQ(orvenmod_release(first), 0);
    ASSERT_EQ(orvenmod_create(kItems, &second), 0);
    EXPECT_NE(first, second);
    EXPECT_EQ(orvenmod_release(first), ORVENMOD_E_OBJECT_REQUIRED);
    EXPECT_EQ(orvenmod_release(second), 0);
}

}  // namespace
}  // namespace orvenmod::test
