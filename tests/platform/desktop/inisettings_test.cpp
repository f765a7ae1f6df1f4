#include "platform/desktop/inisettings.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <list>

#include "support/otherprocess.h"
#include "support/temporary.h"

namespace orvenmod::platform::desktop {
namespace {

namespace fs = std::filesystem;

class UserSettings : public ::testing::Test {
protected:
    const test::TemporaryFolder folder;
    const std::string store = folder.file("config/orvenmod");
    IniSettings settings{store};
};

TEST_F(UserSettings, giveTheFallbackForWhatIsMissing) {
    EXPECT_EQ(settings.get("Orvencom", "General", "StockId", "0"), "0");
    settings.save("Orvencom", "General", "PerFKC", "1");
    EXPECT_EQ(settings.get("Orvencom", "General", "StockId", "x"), "x");
    EXPECT_EQ(settings.get("Other", "General", "PerFKC", ""), "");
}

TEST_F(UserSettings, keepAnEmptyValueApartFromAMissingOne) {
    settings.save("Orvencom", "General", "msgTitle", "");
    EXPECT_EQ(settings.get("Orvencom", "General", "msgTitle", "fallback"), "");
}

TEST_F(UserSettings, giveEveryTextBackAsItWas) {
    const std::vector<std::string> texts = {"进销存管理",
                                            " leading",
                                            "trailing ",
                                            "a=b;c#d",
                                            "two\r\nlines\n",
                                            "\ttab\t",
                                            "[section]",
                                            "\"quoted\"",
                                            "100%",
                                            "%41",
                                            "<<<END",
                                            ";",
                                            std::string(1, '\0') + "x",
                                            "=",
                                            "'",
                                            "C:\\suite\\",
                                            " "};
    for (const std::string& text : texts) {
        settings.save("Orvencom", text, text, text);
        settings.save("Orvencom", "plain", "value", text);
        EXPECT_EQ(IniSettings(store).get("Orvencom", "plain", "value", "lost"), text);
    }
    for (const std::string& text : texts)
        EXPECT_EQ(IniSettings(store).get("Orvencom", text, text, "lost"), text);
}

TEST_F(UserSettings, takeAnyApplicationsName) {
    for (const char* application : {"Orvencom", "物料", "../outside", "a/b", ".hidden", ""}) {
        settings.save(application, "S", "K", application);
    }
    for (const char* application : {"Orvencom", "物料", "../outside", "a/b", ".hidden", ""}) {
        EXPECT_EQ(settings.get(application, "S", "K", "lost"), application);
    }
    EXPECT_FALSE(fs::exists(folder.file("config/outside.ini")));
}

TEST_F(UserSettings, compareNamesWithoutRegardToCase) {
    settings.save("Orvencom", "General", "StockId", "1");
    settings.save("ORVENCOM", "GENERAL", "STOCKID", "2");
    EXPECT_EQ(settings.get("orvencom", "general", "stockid", ""), "2");
}

TEST_F(UserSettings, removeAKeyASectionOrAnApplication) {
    settings.save("Orvencom", "A", "x", "1");
    settings.save("Orvencom", "A", "y", "2");
    settings.save("Orvencom", "B", "z", "3");
    settings.remove("Orvencom", "A", "x");
    EXPECT_EQ(settings.get("Orvencom", "A", "x", "gone"), "gone");
    EXPECT_EQ(settings.get("Orvencom", "A", "y", "gone"), "2");
    settings.remove("Orvencom", "A", "");
    EXPECT_EQ(settings.get("Orvencom", "A", "y", "gone"), "gone");
    EXPECT_EQ(settings.get("Orvencom", "B", "z", "gone"), "3");
    settings.remove("Orvencom", "", "");
    EXPECT_EQ(settings.get("Orvencom", "B", "z", "gone"), "gone");
    EXPECT_NO_THROW(settings.remove("Orvencom", "B", "z"));
}

TEST_F(UserSettings, arePrivateToTheUser) {
    settings.save("Orvencom", "General", "PassWord", "secret");
    EXPECT_EQ(fs::status(store).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(store + "/orvencom.ini").permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(UserSettings, failClearlyWhereTheStoreCannotBeWritten) {
    std::ofstream(folder.file("file")) << "no folder";
    IniSettings broken(folder.file("file/orvenmod"));
    try {
        broken.save("Orvencom", "General", "StockId", "1");
        FAIL() << "the value was lost";
    } catch (const std::runtime_error& failure) {
        EXPECT_NE(std::string(failure.what()).find("无法写入设置"), std::string::npos);
    }
    EXPECT_EQ(broken.get("Orvencom", "General", "StockId", "0"), "0");
}

TEST_F(UserSettings, standWhereAnotherHandLeftAPercentSign) {
    settings.save("Orvencom", "General", "StockId", "1");
    std::ofstream(store + "/orvencom.ini") << "[General]\nStockId = 5%\nRate = 5%zz%4\n";
    EXPECT_EQ(settings.get("Orvencom", "General", "StockId", ""), "5%");
    EXPECT_EQ(settings.get("Orvencom", "General", "Rate", ""), "5%zz%4");
}

TEST_F(UserSettings, loseNothingOfAnotherProcess) {
    constexpr int kProcesses = 4, kKeys = 25;
    std::list<test::OtherProcess> children;
    for (int process = 0; process < kProcesses; ++process) {
        children.emplace_back([this, process](test::OtherProcess&) {
            for (int key = 0; key < kKeys; ++key)
                settings.save("Orvencom", "P" + std::to_string(process), "K" + std::to_string(key), "v");
            return 0;
        });
    }
    for (test::OtherProcess& child : children)
        EXPECT_EQ(child.result(), 0);
    for (int process = 0; process < kProcesses; ++process) {
        for (int key = 0; key < kKeys; ++key) {
            EXPECT_EQ(settings.get("Orvencom", "P" + std::to_string(process), "K" + std::to_string(key), "lost"), "v");
        }
    }
}

TEST(UserSettingsFolder, liesInTheUsersConfiguration) {
    const test::TemporaryFolder folder;
    ASSERT_EQ(::setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1), 0);
    IniSettings().save("Orvencom", "General", "StockId", "1");
    ::unsetenv("XDG_CONFIG_HOME");
    EXPECT_TRUE(fs::exists(folder.file("orvenmod/orvencom.ini")));
}

}  // namespace
}  // namespace orvenmod::platform::desktop
