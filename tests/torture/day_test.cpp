// A day of a clerk who never ends his program: at its end the process holds what it held after its first hour.
#include <gtest/gtest.h>

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>

#include "editor/editortest.h"
#include "store/sqlite/sqlitestore.h"
#include "torture/share.h"

namespace orvenmod::test {
namespace {

constexpr int kShortDay = 250;
// What the scripted user notes of a box, and an item's growing number; a record or a handle would be more.
constexpr double kGrownInMemory = 600;
// The style keeps up to ten megabytes of what it has drawn.
constexpr double kGrownOnQt = 24.0 * (1 << 20);

constexpr int kLongDay = 100'000;

struct Held {
    std::size_t bytes = 0;
    std::ptrdiff_t files = 0;
    std::ptrdiff_t inFolder = 0;
};

Held heldNow(const std::string& folder) {
    namespace fs = std::filesystem;
    const auto count = [](const fs::path& place) {
        return std::distance(fs::directory_iterator(place), fs::directory_iterator());
    };
    return {::mallinfo2().uordblks, count("/proc/self/fd"), count(folder)};
}

/// What one goes through again and again: a new item, one that is refused, a change, a look.
void work(EditorStage& stage, int command) {
    const std::string number = std::to_string(command);
    switch (command % 4) {
        case 0:
            stage.openNew(
                [&](User& user) {
                    typeName(user, "件" + number);
                    user.answer(MessageKind::information, "数据保存成功!");
                    user.clickTool("Save");
                },
                13);
            // The list stays as long as it is.
            stage.database().execute("delete from ICItem where fItemId>202");
            stage.database().execute("delete from tblItem where fItemId>202");
            break;
        case 1:
            stage.openNew(
                [&](User& user) {
                    user.typeCell("fps1", kValue, kShortCodeRow, "001");
                    typeName(user, "件" + number);
                    user.answer(MessageKind::warning, "代码已经存在,保存不成功!");
                    user.clickTool("Save");
                },
                13);
            break;
        case 2:
            stage.openItem(101, [&](User& user) {
                typeName(user, "改" + number);
                user.answer(MessageKind::information, "数据修改成功!");
                user.clickTool("Save");
            });
            break;
        default:
            stage.openItem(102, [](User& user) { EXPECT_EQ(value(user, kNameRow), "螺母"); });
    }
    // Boxes and statements are noted by the stage itself.
    stage.forgetStatements();
}

/// The bytes that the process has grown by.
double grownInADay(EditorStage& stage) {
    const int commands = fullLength() ? kLongDay : kShortDay;
    const int firstHour = commands / 5;
    for (int command = 0; command < firstHour; ++command)
        work(stage, command);
    const Held before = heldNow(stage.database().folder().path());
    for (int command = firstHour; command < commands && !testing::Test::HasFailure(); ++command)
        work(stage, command);
    const Held after = heldNow(stage.database().folder().path());
    const double grown = static_cast<double>(after.bytes) - static_cast<double>(before.bytes);
    std::printf("%d commands, %.0f bytes more each, %td files open\n", commands, grown / (commands - firstHour),
                after.files);
    EXPECT_LE(after.files, before.files);
    EXPECT_LE(after.inFolder, before.inFolder);
    EXPECT_EQ(stage.connectionsAlive(), 0);
    return grown;
}

TEST(Day, inMemoryHoldsAtItsEndWhatItHeldAfterItsFirstHour) {
    EditorStage stage(newMemoryScript);
    EXPECT_LT(grownInADay(stage), kGrownInMemory * (fullLength() ? kLongDay : kShortDay));
}

TEST(Day, onQtHoldsAtItsEndNoMoreThanWhatTheStyleKeeps) {
    EditorStage stage(newQtScript);
    EXPECT_LT(grownInADay(stage), kGrownOnQt);
}

}  // namespace
}  // namespace orvenmod::test
