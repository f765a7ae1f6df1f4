#include "editor/binaryfile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/database.h"
#include "support/machinelimits.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

std::string failureOf(const std::string& path) {
    try {
        readFile(path);
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return "";
}

TEST(BinaryFile, tellsWhyAFileCannotBeRead) {
    const TemporaryFolder folder;
    EXPECT_EQ(failureOf(folder.file("none")), "文件不存在：" + folder.file("none"));
    EXPECT_EQ(failureOf(folder.path()), "不是文件：" + folder.path());
    const std::string closed = folder.file("closed");
    std::ofstream(closed) << "x";
    fs::permissions(closed, fs::perms::none);
    const BoundByPermissions bound;
    EXPECT_EQ(failureOf(closed), "文件无法打开：" + closed);
}

TEST(BinaryFile, readsEmptyFiles) {
    const TemporaryFolder folder;
    std::ofstream(folder.file("empty"));
    EXPECT_TRUE(readFile(folder.file("empty")).empty());
}

TEST(BinaryFile, replacesAFile) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a");
    writeFile(path, "long content");
    writeFile(path, "new");
    EXPECT_EQ(readFile(path).size(), 3U);
}

TEST(BinaryFile, aFullDiskLeavesNoHalfFile) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a");
    {
        const FullDisk disk(1024);
        EXPECT_THROW(writeFile(path, std::string(100000, 'x')), std::runtime_error);
    }
    EXPECT_FALSE(fs::exists(path));
}

TEST(BinaryFile, theSuffixFollowsTheLastFullStopOfTheWholePath) {
    EXPECT_EQ(suffixOf("/a/b.jpg"), ".jpg");
    EXPECT_EQ(suffixOf("/a.b/photo"), ".b/photo");
    EXPECT_EQ(suffixOf("photo"), ".photo");
}

}  // namespace
}  // namespace orvenmod::test
