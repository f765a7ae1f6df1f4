#include "platform/desktop/plaininifiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/temporary.h"

namespace orvenmod::platform::desktop {
namespace {

namespace fs = std::filesystem;

class IniFile : public ::testing::Test {
protected:
    void put(const std::string& content) const { std::ofstream(path, std::ios::binary) << content; }
    std::string content() const {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }

    const test::TemporaryFolder folder;
    const std::string path = folder.file("setupInfo.ini");
    PlainIniFiles ini;
};

TEST_F(IniFile, readsNothingWhereFileSectionOrKeyIsMissing) {
    EXPECT_EQ(ini.read(path, "Orvenmod", "JCZLA3"), "");
    put("[Other]\nJCZLA3=1\n[Orvenmod]\nJCZLB3=\n");
    EXPECT_EQ(ini.read(path, "Orvenmod", "JCZLA3"), "");
    EXPECT_EQ(ini.read(path, "Missing", "JCZLA3"), "");
    EXPECT_EQ(ini.read(path, "Orvenmod", "JCZLB3"), "");
}

TEST_F(IniFile, readsNamesWithoutRegardToCaseAndValuesWithoutOuterBlanks) {
    put("\xef\xbb\xbf ; first\r\n [ orvenMOD ]\r\n jczla3 =  2 x \t\r\nQuoted=\" a \"\r\nSingle='b'\r\nText=a=b;c\r\n");
    EXPECT_EQ(ini.read(path, "Orvenmod", "JCZLA3"), "2 x");
    EXPECT_EQ(ini.read(path, "Orvenmod", "quoted"), " a ");
    EXPECT_EQ(ini.read(path, "Orvenmod", "single"), "b");
    EXPECT_EQ(ini.read(path, "Orvenmod", "text"), "a=b;c");
}

TEST_F(IniFile, theFirstOfSeveralKeysCounts) {
    put("[A]\nx=1\nx=2\n[B]\nx=3\n[A]\nx=4\ny=5\n");
    EXPECT_EQ(ini.read(path, "A", "x"), "1");
    EXPECT_EQ(ini.read(path, "A", "y"), "5");
    EXPECT_TRUE(ini.write(path, "A", "x", "9"));
    EXPECT_TRUE(ini.write(path, "A", "z", "6"));
    EXPECT_EQ(content(), "[A]\nx=9\nx=2\nz=6\n[B]\nx=3\n[A]\nx=4\ny=5\n");
}

TEST_F(IniFile, aChangedValueLeavesAllElseToTheByte) {
    put("; 注释\r\n\r\n[Other]\r\nkey = 1 ; kept\r\nstray line\r\n\r\n[Orvenmod]\r\n# note\r\nJCZLA3 =  "
        "1\r\nJCZLB3=\r\n\r\n; end");
    EXPECT_TRUE(ini.write(path, "orvenmod", "jczla3", "12"));
    EXPECT_EQ(content(),
              "; 注释\r\n\r\n[Other]\r\nkey = 1 ; kept\r\nstray line\r\n\r\n[Orvenmod]\r\n# note\r\nJCZLA3 =  "
              "12\r\nJCZLB3=\r\n\r\n; end");
    EXPECT_EQ(ini.read(path, "Orvenmod", "JCZLA3"), "12");
}

TEST_F(IniFile, aNewKeyStandsBehindTheLastOfItsSection) {
    put("[Orvenmod]\r\nA=1\r\n\r\n; about the next\r\n[Other]\r\nB=2\r\n");
    EXPECT_TRUE(ini.write(path, "Orvenmod", "C", "3"));
    EXPECT_EQ(content(), "[Orvenmod]\r\nA=1\r\nC=3\r\n\r\n; about the next\r\n[Other]\r\nB=2\r\n");
}

TEST_F(IniFile, aNewSectionStandsAtTheEnd) {
    put("[Other]\nB=2");
    EXPECT_TRUE(ini.write(path, "Orvenmod", "C", "3"));
    EXPECT_EQ(content(), "[Other]\nB=2\n[Orvenmod]\nC=3\n");
}

TEST_F(IniFile, aFileThatIsMissingIsMadeAndItsFolderIsNot) {
    EXPECT_TRUE(ini.write(path, "Orvenmod", "JCZLA3", ""));
    EXPECT_EQ(content(), "[Orvenmod]\nJCZLA3=\n");
    EXPECT_FALSE(ini.write(folder.file("missing/setupInfo.ini"), "Orvenmod", "JCZLA3", "1"));
    EXPECT_FALSE(fs::exists(folder.file("missing")));
}

TEST_F(IniFile, aPathWithBackslashesIsTheSameFile) {
    EXPECT_TRUE(ini.write(folder.path() + "\\setupInfo.ini", "Orvenmod", "JCZLA3", "4"));
    EXPECT_EQ(ini.read(path, "Orvenmod", "JCZLA3"), "4");
}

TEST_F(IniFile, valuesComeBackAsTheyWereWritten) {
    for (const char* value :
         {"", "0", "物料", " outer ", "\"quoted\"", "'", "a=b", "; no comment", "[x]", "\"", "a\tb"}) {
        EXPECT_TRUE(ini.write(path, "Orvenmod", "Key", value)) << value;
        EXPECT_EQ(ini.read(path, "Orvenmod", "Key"), value);
    }
}

TEST_F(IniFile, whatNoLineCanHoldIsRefusedAndTheFileStays) {
    put("[A]\nx=1\n");
    EXPECT_FALSE(ini.write(path, "A", "x", "two\nlines"));
    EXPECT_FALSE(ini.write(path, "A", "x=y", "1"));
    EXPECT_FALSE(ini.write(path, "A", "; x", "1"));
    EXPECT_FALSE(ini.write(path, "A", "", "1"));
    EXPECT_FALSE(ini.write(path, "A]", "x", "1"));
    EXPECT_EQ(content(), "[A]\nx=1\n");
}

TEST_F(IniFile, anotherEncodingStaysAsItIs) {
    const std::string gbk = "[\xb2\xce\xca\xfd]\r\n\xc3\xfb=\x81\x5b\x81\x5d\r\n[Orvenmod]\r\n";
    put(gbk);
    EXPECT_EQ(ini.read(path, "\xb2\xce\xca\xfd", "\xc3\xfb"), "\x81\x5b\x81\x5d");
    EXPECT_TRUE(ini.write(path, "Orvenmod", "JCZLA3", "1"));
    EXPECT_EQ(content(), gbk + "JCZLA3=1\r\n");
    put(std::string("\xff\xfe[\0A\0]\0", 8));
    EXPECT_FALSE(ini.write(path, "A", "x", "1"));
    EXPECT_EQ(content().size(), 8U);
}

TEST_F(IniFile, aValueThatIsThereIsNotWrittenAgain) {
    put("[Orvenmod]\nJCZLA3=1\n");
    struct stat before {
    }, after{};
    ASSERT_EQ(::stat(path.c_str(), &before), 0);
    EXPECT_TRUE(ini.write(path, "Orvenmod", "JCZLA3", "1"));
    ASSERT_EQ(::stat(path.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
}

TEST_F(IniFile, aFileThatCannotBeWrittenGivesFalse) {
    put("[Orvenmod]\nJCZLA3=1\n");
    fs::permissions(path, fs::perms::owner_read);
    EXPECT_FALSE(ini.write(path, "Orvenmod", "JCZLA3", "2"));
    EXPECT_EQ(ini.read(path, "Orvenmod", "JCZLA3"), "1");
    EXPECT_FALSE(ini.write(folder.path(), "Orvenmod", "JCZLA3", "2"));
    EXPECT_EQ(ini.read(folder.path(), "Orvenmod", "JCZLA3"), "");
    EXPECT_FALSE(ini.write(path + "/below", "Orvenmod", "JCZLA3", "2"));
    EXPECT_FALSE(ini.write("", "Orvenmod", "JCZLA3", "2"));
}

TEST_F(IniFile, permissionsAndLinksStay) {
    put("[Orvenmod]\n");
    fs::permissions(path, static_cast<fs::perms>(0664));
    fs::create_symlink(path, folder.file("link.ini"));
    EXPECT_TRUE(ini.write(folder.file("link.ini"), "Orvenmod", "JCZLA3", "2"));
    EXPECT_TRUE(fs::is_symlink(folder.file("link.ini")));
    EXPECT_EQ(ini.read(path, "Orvenmod", "JCZLA3"), "2");
    EXPECT_EQ(fs::status(path).permissions(), static_cast<fs::perms>(0664));
}

TEST_F(IniFile, nothingElseIsLeftInTheFolder) {
    EXPECT_TRUE(ini.write(path, "Orvenmod", "JCZLA3", "2"));
    EXPECT_TRUE(ini.write(path, "Orvenmod", "JCZLA3", "3"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator()), 1);
}

}  // namespace
}  // namespace orvenmod::platform::desktop
