// Contents of any size go into the database and come out the same, and are held in memory twice at most: once by the
// editor, once by the store. Another program counts its memory.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "editor/editortest.h"
#include "support/childprogram.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t kMebibyte = 1 << 20;
// Window, statements, and the store's cache of pages. A third copy of the largest file is twice this.
constexpr std::uint64_t kRest = 32 * kMebibyte;

void makeFile(const std::string& path, std::uint64_t size) {
    std::ofstream file(path, std::ios::binary);
    std::mt19937 random(7);
    for (std::uint64_t at = 0; at < size;) {
        char block[4096];
        for (char& byte : block)
            byte = static_cast<char>(random());
        const std::uint64_t part = std::min<std::uint64_t>(sizeof block, size - at);
        file.write(block, static_cast<std::streamsize>(part));
        at += part;
    }
}

bool sameFiles(const std::string& left, const std::string& right) {
    if (!fs::exists(right) || fs::file_size(left) != fs::file_size(right)) return false;
    std::ifstream one(left, std::ios::binary);
    std::ifstream other(right, std::ios::binary);
    char ones[4096];
    char others[4096];
    while (one.read(ones, sizeof ones), one.gcount() > 0) {
        other.read(others, sizeof others);
        if (!std::equal(ones, ones + one.gcount(), others)) return false;
    }
    return true;
}

class EditorBinaryContents : public EditorTest, public ::testing::WithParamInterface<std::uint64_t> {};

TEST_P(EditorBinaryContents, comeBackTheSameAndAreHeldTwiceAtMost) {
    const std::string file = database().folder().file("contents.jpg");
    makeFile(file, GetParam());
    const std::string folder = database().folder().file("out");
    fs::create_directory(folder);

    ChildProgram child(ORVEN_BINARY_CHILD, {stage.connectionString(), file, folder});
    for (const std::string step : {"insert", "load", "update"}) {
        const std::string line = child.line().value_or("");
        std::istringstream words(line);
        std::string name;
        std::uint64_t most = 0;
        ASSERT_TRUE(words >> name >> most) << step << ": " << line;
        EXPECT_EQ(name, step);
        EXPECT_GE(most, GetParam()) << "it is counted";
        EXPECT_LE(most, 2 * GetParam() + kRest) << step;
        RecordProperty(name, std::to_string(most));
    }
    EXPECT_EQ(child.end(), 0);

    EXPECT_TRUE(sameFiles(file, folder + "/photo"));
    EXPECT_TRUE(sameFiles(file, folder + "/attachment"));
    const std::string size = std::to_string(GetParam());
    EXPECT_EQ(database().rows("select datalength(fFJ) from tblItemFJ where fItemId=203"), (Rows{{size}, {size}}));
    EXPECT_EQ(database().rows("select datalength(fPhoto) from ICItemPhoto where fItemId=203"), (Rows{{size}}));
}

INSTANTIATE_TEST_SUITE_P(Sizes, EditorBinaryContents, ::testing::Values(0, 1, 64 * kMebibyte),
                         [](const auto& size) { return std::to_string(size.param) + "Bytes"; });

}  // namespace
}  // namespace orvenmod::test
