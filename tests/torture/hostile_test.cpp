// Databases that somebody or something has damaged, or filled with what the suite never writes: each command comes to
// its end, tells what it could not do, and writes nothing outside its folder.
#include <gtest/gtest.h>

#include <sqlite3.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <set>

#include "store/sqlite/sqlitestore.h"
#include "support/temporary.h"
#include "torture/commands.h"
#include "torture/share.h"
#include "torture/states.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

constexpr int kFewDamages = 25;
constexpr int kFullDamages = 2000;
constexpr std::size_t kPage = 4096;
constexpr std::size_t kMegabytes = std::size_t{1} << 20;

class Hostile : public testing::Test {
protected:
    std::string database() const { return databaseIn(inside_.path()); }

    void layOutAgain() {
        removeDatabase(database());
        layOut(windowCommands().front(), inside_.path());
    }

    /// Runs native statements on the database, as another program would.
    void alter(const std::vector<std::string>& statements) {
        sqlite3* made = nullptr;
        ASSERT_EQ(sqlite3_open(database().c_str(), &made), SQLITE_OK);
        const std::unique_ptr<sqlite3, int (*)(sqlite3*)> handle(made, sqlite3_close);
        sqlite3_db_config(made, SQLITE_DBCONFIG_WRITABLE_SCHEMA, 1, nullptr);
        for (const std::string& statement : statements)
            ASSERT_EQ(sqlite3_exec(made, statement.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
                << statement << ": " << sqlite3_errmsg(made);
    }

    /// Every command on a copy of what was made of the database. One that isn't told as done has told why.
    void playAll() {
        const std::string made = contentsOf(database());
        for (const Command& command : windowCommands()) {
            SCOPED_TRACE(command.name);
            removeDatabase(database());
            std::ofstream(database(), std::ios::binary) << made;
            play(command);
        }
        removeDatabase(database());
    }

    void play(const Command& command) {
        Desk desk(connectionStringFor(database()) + ";Busy Timeout=50", inside_.path());
        desk.play(command);
        told_ += desk.told() ? 1 : 0;
        EXPECT_EQ(desk.connectionsAlive(), 0);
        EXPECT_EQ(desk.account().find("内存不足"), std::string::npos) << desk.account();
        // A tree without its nodes and a list without its rows are an answer too, where rows were damaged away.
        heard_ += desk.boxes().empty() && desk.escaped().empty() ? 0 : 1;
        store::sqlite::SqliteStore::dropIdleHandles();
        for (const auto& entry : fs::directory_iterator(inside_.path()))
            seen_.insert(entry.path().filename().string());
    }

    TemporaryFolder inside_;
    int told_ = 0;
    int heard_ = 0;
    std::set<std::string> seen_;
};

/// What time and bad disks do.
std::string damaged(std::string bytes, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return random() % limit; };
    switch (below(5)) {
        case 0:
            for (std::size_t count = 1 + below(64); count > 0; --count)
                bytes[below(bytes.size())] = static_cast<char>(below(256));
            break;
        case 1:
            bytes.resize(below(bytes.size()));
            break;
        case 2:
            bytes.replace(below(bytes.size() / kPage) * kPage, kPage, kPage, '\0');
            break;
        case 3: {
            const std::size_t from = below(bytes.size() / kPage) * kPage;
            bytes.replace(below(bytes.size() / kPage) * kPage, kPage, bytes.substr(from, kPage));
            break;
        }
        default:
            for (std::size_t count = 1 + below(8); count > 0; --count)
                bytes[below(kPage * 4)] = static_cast<char>(below(256));
    }
    return bytes;
}

TEST_F(Hostile, aDamagedDatabaseEndsNoProcess) {
    layOutAgain();
    const std::string whole = contentsOf(database());
    std::mt19937 random = randomFor("damage");
    const int damages = roundsOf(kFewDamages, kFullDamages);
    for (int damage = 0; damage < damages; ++damage) {
        SCOPED_TRACE("damage " + std::to_string(damage));
        const std::string bytes = damaged(whole, random);
        const Command& command = windowCommands()[static_cast<std::size_t>(damage) % windowCommands().size()];
        removeDatabase(database());
        std::ofstream(database(), std::ios::binary) << bytes;
        play(command);
    }
    EXPECT_GT(heard_, damages / 4);
    EXPECT_LE(seen_.size(), 8U) << "only the database, what the engine keeps beside it, and the clerk's own files";
}

TEST_F(Hostile, aFileThatIsNoDatabaseOrAnotherProgramsIsToldByEveryCommand) {
    for (const std::string& contents : {std::string(), std::string(100, '\0'),
                                        std::string("SQLite format 3\0garbage", 23), std::string(kPage, 'x')}) {
        removeDatabase(database());
        std::ofstream(database(), std::ios::binary) << contents;
        playAll();
    }
    EXPECT_EQ(told_, 0);
    EXPECT_EQ(heard_, 4 * static_cast<int>(windowCommands().size()));
}

TEST_F(Hostile, aSchemaThatSomebodyBentEndsNoCommandUntold) {
    const std::vector<std::vector<std::string>> bents = {
        {"drop view vICItem", "create view vICItem as select * from vICItem"},
        {"drop view vICItem", "create table vICItem(fItemId int)"},
        {"drop table ICItem", "create view ICItem as select 1 as fItemId"},
        {"drop table tblItem", "create table tblItem(fItemId text)"},
        {"drop table tblFindinfoEntry", "drop table tblTableInfo"},
        {"create trigger t before insert on tblItem begin select raise(abort,'no'); end"},
        {"update tblItemClass set fItemTable='\"; drop table tblItem; --',fViewName='v''x'"},
        {"update sqlite_master set sql='create view vICItem as garbage' where name='vICItem'"}};
    for (const auto& bent : bents) {
        SCOPED_TRACE(bent.back());
        layOutAgain();
        alter(bent);
        playAll();
    }
    EXPECT_GT(heard_, static_cast<int>(bents.size()));
}

TEST_F(Hostile, textsThatNobodyTypedAreShownOrToldAndEndNothing) {
    const std::vector<std::string> bents = {
        "update tblItem set fName=cast(x'ff41fe80c3' as text),fNumber=cast(x'e4b8' as text)",
        "update tblItem set fName='a'||char(0)||'b',fNumber=char(0),fShortNumber=x'00ff'",
        "update tblItem set fParentId='x',fDepth='deep',fNBNumber=null,fIsDetail='maybe',fIsLock=x'01'",
        "update tblItem set fParentId=13 where fItemId=12",
        "update tblTableInfo set fFieldType='text',fNumberDec=-99999,fFieldName=fFieldName||' y'",
        "update tblFindinfoEntry set fWidth='wide',fAlign=99999999999,fDataFormat=cast(x'23c02c' as text)",
        "update tblMaxNum set fMaxNum=2147483647",
        "update tblMaxNum set fMaxNum='many'",
        "update tblItemFJ set fFileName='../../../../tmp/outside',fName='-rf /'"};
    for (const std::string& bent : bents) {
        SCOPED_TRACE(bent);
        layOutAgain();
        alter({bent});
        playAll();
    }
}

TEST_F(Hostile, tenMegabytesInACodeAreShownOrTold) {
    layOutAgain();
    alter({"update tblItem set fNumber=replace(hex(zeroblob(" + std::to_string(5 * kMegabytes) +
           ")),'0','9') where fItemId=101"});
    for (const char* name : {"list", "search", "delete"}) {
        SCOPED_TRACE(name);
        for (const Command& command : windowCommands())
            if (command.name == name) play(command);
    }
    EXPECT_GT(told_ + heard_, 1);
}

}  // namespace
}  // namespace orvenmod::test
