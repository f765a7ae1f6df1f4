// The suite's start on a database of another version, over the real boxes.
#include "upgradeoffer.h"

#include <gtest/gtest.h>
#include <orvenmod/schema.h>

#include <filesystem>

#include "store/sqlite/sqlitestore.h"
#include "store/upgrade.h"
#include "support/database.h"
#include "support/user.h"

namespace orvenmod::sample {
namespace {

using platform::Answer;
using platform::MessageKind;

constexpr const char* kOffer = "数据库由较早的版本建立，升级后查询更快，资料不变。\n现在升级吗？";

class UpgradeOffer : public testing::Test {
protected:
    ~UpgradeOffer() override { script_->finish(); }

    std::string file() { return database_.file(); }
    void setVersion(int version) {
        database_.execute("update tblOrvenmodVersion set fVersion=" + std::to_string(version));
    }
    int version() { return SchemaVersion(database_.connectionString()); }
    bool isReady() { return isReadyToOpen(Suite(file())); }
    void answer(MessageKind kind, const std::string& text, Answer answer) { script_->answer(kind, text, answer); }
    std::size_t boxes() const { return script_->messages().size(); }

    test::Database database_;

private:
    std::unique_ptr<test::Script> script_ = test::newQtScript();
};

TEST_F(UpgradeOffer, asksNothingWhereTheDatabaseIsOfThisVersion) {
    EXPECT_TRUE(isReady());
    EXPECT_EQ(boxes(), 0U);
}

TEST_F(UpgradeOffer, upgradesAnOlderDatabaseOnAYes) {
    setVersion(0);
    database_.execute("drop index tblItem.ix_tblItem_2");
    answer(MessageKind::question, kOffer, Answer::yes);
    EXPECT_TRUE(isReady());
    EXPECT_EQ(version(), NewestSchemaVersion());
    EXPECT_NO_THROW(database_.execute("drop index tblItem.ix_tblItem_2")) << "the index was made again";
    EXPECT_TRUE(isReady());
    EXPECT_EQ(boxes(), 1U) << "it is asked once";
}

TEST_F(UpgradeOffer, opensAnOlderDatabaseAsItIsOnANo) {
    setVersion(1);
    answer(MessageKind::question, kOffer, Answer::no);
    EXPECT_TRUE(isReady());
    EXPECT_EQ(version(), 1);
}

TEST_F(UpgradeOffer, tellsWhatStoodInTheWayAndOpensTheDatabaseAsItIs) {
    setVersion(0);
    database_.execute("drop index tblItem.ix_tblItem_4");
    database_.execute("alter table tblItem drop column fShortNumber");
    answer(MessageKind::question, kOffer, Answer::yes);
    answer(MessageKind::critical, "目标表或视图中不存在列名 'fShortNumber'。", Answer::ok);
    EXPECT_TRUE(isReady());
    EXPECT_EQ(version(), 0);
}

TEST_F(UpgradeOffer, refusesANewerDatabase) {
    setVersion(NewestSchemaVersion() + 1);
    answer(MessageKind::critical, kNewerDatabase, Answer::ok);
    EXPECT_FALSE(isReady());
    EXPECT_EQ(version(), NewestSchemaVersion() + 1);
}

TEST_F(UpgradeOffer, isNotMadeForAFileThatIsNoSuites) {
    std::filesystem::remove(file());
    EXPECT_THROW(isReady(), std::runtime_error);
    EXPECT_EQ(boxes(), 0U);
}

}  // namespace
}  // namespace orvenmod::sample
