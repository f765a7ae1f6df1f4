// A day of a clerk who never ends his program: at its end the process holds what it held after its first hour.
#include <gtest/gtest.h>

#include <malloc.h>
#include <orvenmod/clsBasicInfo.h>
#include <sqlite3.h>

#include <QPixmapCache>
#include <cstdio>
#include <filesystem>

#include "editor/editortest.h"
#include "frame/services.h"
#include "torture/share.h"

namespace orvenmod::test {
namespace {

constexpr int kShortDay = 250;
constexpr int kLongDay = 100'000;
constexpr int kLongHour = 1000;
// What the scripted user notes of a box, and an item's growing number; a record or a handle would be more.
constexpr double kGrownEach = 600;
// What the style draws again and again; where each window had names of its own for that, Qt's limit of 10 MB was
// reached.
constexpr std::size_t kPictures = 2U << 20;
constexpr int kTellEach = 10'000;

struct Held {
    std::size_t bytes = 0;
    std::size_t pictures = 0;  ///< bytes that Qt keeps of what it has drawn
    std::ptrdiff_t files = 0;
    std::ptrdiff_t inFolders = 0;
    sqlite3_int64 blocks = 0;  ///< of the engine: handles, statements
};

std::ptrdiff_t countIn(const std::filesystem::path& place) {
    return std::distance(std::filesystem::directory_iterator(place), std::filesystem::directory_iterator());
}

Held heldNow(const std::string& folder) {
    Held held;
    held.pictures = ::mallinfo2().uordblks;
    QPixmapCache::clear();
    held.bytes = ::mallinfo2().uordblks;
    held.pictures -= held.bytes;
    held.files = countIn("/proc/self/fd");
    platform::Folders& folders = services().folders;
    held.inFolders = countIn(folder) + countIn(folders.temporary()) + countIn(folders.attachments());
    sqlite3_int64 most = 0;
    sqlite3_status64(SQLITE_STATUS_MALLOC_COUNT, &held.blocks, &most, 0);
    return held;
}

void tell(int commands, const Held& held) {
    std::printf("%d commands: %zu bytes, %zu of pictures, %td files open, %td in folders, %lld blocks of the engine\n",
                commands, held.bytes, held.pictures, held.files, held.inFolders, static_cast<long long>(held.blocks));
    std::fflush(stdout);
}

/// The list, from the host's call to its end.
void look(EditorStage& stage) {
    stage.script().onWindow("frmBasicInfoList", [](User& user) {
        user.clickNode("tv1", "D12");
        user.pick("PC", 3, 0);
        user.type("txtSearch", "螺", -1);
        user.click("cmdFind");
        EXPECT_EQ(user.control<platform::ListGrid>("vsf1").rowCount(), 2);  // with the heading
    });
    {
        clsBasicInfo info;
        info.mainInterface(3, "", "", stage.connectionString(), 0);
    }
    chooseGoods(stage.connectionString());
}

/// What one goes through again and again: a new item, one that is refused, a change, a look with a photo, the list.
void work(EditorStage& stage, int command) {
    const std::string number = std::to_string(command);
    switch (command % 5) {
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
        case 3:
            stage.openItem(102, [](User& user) {
                EXPECT_EQ(value(user, kNameRow), "螺母");
                user.chooseTab("SSTab1", 2);
            });
            break;
        default:
            look(stage);
    }
    stage.forgetStatements();
    stage.script().forgetMessages();
}

void storePhoto(EditorStage& stage) {
    const auto connection = services().store.connect(stage.connectionString());
    const auto rows = connection->openTable("ICItemPhoto");
    rows->addNew();
    rows->set("fItemId", "102");
    rows->set("fHZ", ".bmp");
    rows->setBinary("fPhoto", std::as_bytes(std::span(redBitmap())));
    rows->update();
    connection->close();
}

void expectADayToAddNothing(MakeScript makeScript) {
    EditorStage stage(makeScript);
    storePhoto(stage);
    const std::string& folder = stage.database().folder().path();
    const int commands = fullLength() ? kLongDay : kShortDay;
    const int firstHour = fullLength() ? kLongHour : kShortDay / 5;
    for (int command = 0; command < firstHour; ++command)
        work(stage, command);
    const Held before = heldNow(folder);
    tell(firstHour, before);
    for (int command = firstHour; command < commands && !testing::Test::HasFailure(); ++command) {
        work(stage, command);
        if (command % kTellEach == 0) tell(command, heldNow(folder));
    }
    const Held after = heldNow(folder);
    tell(commands, after);
    const double grown = static_cast<double>(after.bytes) - static_cast<double>(before.bytes);
    EXPECT_LT(grown / (commands - firstHour), kGrownEach);
    EXPECT_LE(after.files, before.files);
    EXPECT_LE(after.inFolders, before.inFolders);
    EXPECT_LE(after.blocks, before.blocks * 11 / 10);
    EXPECT_EQ(stage.connectionsAlive(), 0);
    EXPECT_LT(after.pictures, kPictures);
}

TEST(Day, inMemoryHoldsAtItsEndWhatItHeldAfterItsFirstHour) { expectADayToAddNothing(newMemoryScript); }

TEST(Day, onQtHoldsAtItsEndWhatItHeldAfterItsFirstHour) { expectADayToAddNothing(newQtScript); }

}  // namespace
}  // namespace orvenmod::test
