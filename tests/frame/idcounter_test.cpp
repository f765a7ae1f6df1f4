// Ids from a counter of tblMaxNum.
#include "frame/idcounter.h"

#include <gtest/gtest.h>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "support/stage.h"

namespace orvenmod::test {
namespace {

using Texts = std::vector<std::string>;

constexpr IdCounter kCounter = {"select fMaxNum from tblMaxNum where fTableName='tblTest'",
                                "insert into tblMaxNum(fMaxNum,fTableName) values(1,'tblTest')",
                                "update tblMaxNum set fMaxNum=fMaxNum+1 where fTableName='tblTest'"};

class Counter : public ::testing::Test {
protected:
    Counter() {
        appState().gConnStr = stage.connectionString();
        openDB();
        stage.forgetStatements();
    }
    ~Counter() override {
        closeDB();
        stage.finish();
    }
    void setLast(const std::string& value) {
        stage.database().execute("insert into tblMaxNum(fMaxNum,fTableName) values(" + value + ",'tblTest')");
    }

    Stage stage;
};

TEST_F(Counter, startsWithOneWhereItHasNoRow) {
    EXPECT_EQ(takeId(kCounter), 1);
    EXPECT_EQ(stage.statements(), (Texts{kCounter.read, kCounter.start}));
    EXPECT_EQ(takeId(kCounter), 2);
}

TEST_F(Counter, givesOutTheNumberBehindItsLast) {
    setLast("41");
    EXPECT_EQ(takeId(kCounter), 42);
    EXPECT_EQ(stage.statements(), (Texts{kCounter.read, kCounter.advance}));
    EXPECT_EQ(stage.database().value("select fMaxNum from tblMaxNum where fTableName='tblTest'"), "42");
}

TEST_F(Counter, isNotAdvancedWhereItsLastIsNull) {
    setLast("null");
    EXPECT_THROW(takeId(kCounter), ConversionFailure);
    EXPECT_EQ(stage.statements(), Texts{kCounter.read});
}

TEST_F(Counter, endsWithTheLargestNumberOfThirtyTwoBits) {
    setLast("2147483646");
    EXPECT_EQ(takeId(kCounter), 2147483647);
    EXPECT_THROW(takeId(kCounter), store::Failure);
}

TEST_F(Counter, ofAWiderColumnEndsThereToo) {
    stage.database().execute("create table tblWide(fMaxNum decimal(18,0))");
    stage.database().execute("insert into tblWide(fMaxNum) values(2147483647)");
    EXPECT_THROW(takeId({"select fMaxNum from tblWide", "", "update tblWide set fMaxNum=fMaxNum+1"}),
                 ConversionFailure);
}

TEST(NextId, isTheOneBehindTheLast) { EXPECT_EQ(idAfter(2147483646), 2147483647); }

TEST(NextId, failsBehindTheLargestNumberOfThirtyTwoBits) { EXPECT_THROW(idAfter(2147483647), ConversionFailure); }

}  // namespace
}  // namespace orvenmod::test
