// How a file that the user named takes the place of one that stands there.
#include "platform/partialfile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/temporary.h"

namespace orvenmod::platform {
namespace {

namespace fs = std::filesystem;

class PartialFileTest : public ::testing::Test {
protected:
    static void write(const std::string& path, const std::string& text) { std::ofstream(path) << text; }
    static std::string textOf(const std::string& path) {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }
    static void replace(const std::string& path) {
        PartialFile file(path);
        write(file.partialPath(), "new");
        file.commit();
    }
    /// What the file can't be replaced for.
    static std::string refusal(const std::string& path) {
        try {
            replace(path);
            return "";
        } catch (const std::runtime_error& failure) {
            return failure.what();
        }
    }
    auto files() const { return std::distance(fs::directory_iterator(folder_.path()), {}); }

    test::TemporaryFolder folder_;
    std::string path_ = folder_.file("list.xls");
};

TEST_F(PartialFileTest, takesThePlaceOfTheOldFileOnlyWhenItIsWhole) {
    write(path_, "old");
    {
        PartialFile file(path_);
        write(file.partialPath(), "half");
        EXPECT_EQ(textOf(path_), "old");
    }
    EXPECT_EQ(textOf(path_), "old");
    replace(path_);
    EXPECT_EQ(textOf(path_), "new");
    EXPECT_EQ(files(), 1);
}

TEST_F(PartialFileTest, takesANameAsLongAsNamesMayBe) {
    constexpr std::size_t kLongest = 255;  // bytes
    replace(folder_.file(std::string(kLongest - 4, 'x') + ".xls"));
    EXPECT_EQ(textOf(folder_.file(std::string(kLongest - 4, 'x') + ".xls")), "new");
    EXPECT_EQ(files(), 1);
}

TEST_F(PartialFileTest, keepsThePermissionsOfTheOldFile) {
    write(path_, "old");
    fs::permissions(path_, fs::perms::owner_read | fs::perms::owner_write);
    replace(path_);
    EXPECT_EQ(fs::status(path_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(PartialFileTest, refusesAReadOnlyFileAndLeavesIt) {
    write(path_, "old");
    fs::permissions(path_, fs::perms::owner_read);
    EXPECT_TRUE(isReadOnly(path_));
    EXPECT_EQ(refusal(path_), "“list.xls”是只读文件，不能替换。");
    EXPECT_EQ(textOf(path_), "old");
    EXPECT_EQ(files(), 1);
    EXPECT_FALSE(isReadOnly(folder_.file("none")));
    EXPECT_EQ(files(), 1) << "to ask makes no file";
}

TEST_F(PartialFileTest, writesThroughLinks) {
    fs::create_directory(folder_.file("far"));
    write(folder_.file("far/target.xls"), "old");
    fs::create_symlink("far/target.xls", folder_.file("middle"));
    fs::create_symlink(folder_.file("middle"), path_);
    replace(path_);
    EXPECT_EQ(textOf(folder_.file("far/target.xls")), "new");
    EXPECT_TRUE(fs::is_symlink(path_) && fs::is_symlink(folder_.file("middle")));
    fs::permissions(folder_.file("far/target.xls"), fs::perms::owner_read);
    EXPECT_EQ(refusal(path_), "“list.xls”是只读文件，不能替换。");
}

TEST_F(PartialFileTest, makesTheFileThatALinkLeadsTo) {
    fs::create_symlink("later.xls", path_);
    replace(path_);
    EXPECT_EQ(textOf(folder_.file("later.xls")), "new");
    EXPECT_TRUE(fs::is_symlink(path_));
}

TEST_F(PartialFileTest, refusesWhereNoFileCanStand) {
    EXPECT_EQ(refusal(folder_.path()), "不能写入文件夹：" + folder_.path());
    EXPECT_EQ(refusal(""), "不能写入文件夹：");
    EXPECT_EQ(refusal(folder_.file("gone/list.xls")), "文件无法写入：" + folder_.file("gone/list.xls"));
    EXPECT_EQ(refusal("/dev/null"), "不是文件，无法写入：/dev/null");
    fs::create_symlink(path_, path_);
    EXPECT_EQ(refusal(path_), "链接无法写入：" + path_);
    EXPECT_EQ(files(), 1);
}

}  // namespace
}  // namespace orvenmod::platform
