// The traps at the end of the database routines.
#include <gtest/gtest.h>

#include "frame/appstate.h"
#include "frame/mdlMain.h"
#include "support/stage.h"

namespace orvenmod::test {
namespace {

using platform::Answer;
using platform::MessageKind;
using Texts = std::vector<std::string>;

bool openAndFail() {
    openDB();
    throw std::runtime_error("坏了");
}

class Traps : public ::testing::Test {
protected:
    Traps() { appState().gConnStr = stage.connectionString(); }
    ~Traps() override {
        closeDB();
        stage.finish();
    }

    Stage stage;
};

TEST_F(Traps, theRoutinesResultHoldsAndTheStoreIsClosed) {
    EXPECT_TRUE(trapped(openDB));
    EXPECT_TRUE(trapped(openDB, showWarning));
    EXPECT_TRUE(trappedTransaction(openDB));
    EXPECT_FALSE(trapped([] { return !openDB(); }, showWarning));
    EXPECT_EQ(stage.operations(),
              (Texts{"connect", "close", "connect", "close", "connect", "close", "connect", "close"}));
}

TEST_F(Traps, aFailureIsShownInTheBoxOfTheCallersChoice) {
    stage.script().answer(MessageKind::critical, "坏了", Answer::ok);
    EXPECT_FALSE(trapped(openAndFail));
    stage.script().answer(MessageKind::warning, "坏了", Answer::ok);
    EXPECT_FALSE(trapped(openAndFail, showWarning));
    EXPECT_FALSE(appState().gConn);
}

TEST_F(Traps, aFailureWithinATransactionIsShownAndThenRolledBack) {
    stage.script().answer(MessageKind::critical, "坏了", Answer::ok);
    EXPECT_FALSE(trappedTransaction([] {
        openDB();
        appState().gConn->beginTrans();
        return openAndFail();
    }));
    EXPECT_EQ(stage.operations(), (Texts{"connect", "begin", "rollback", "close"}));
}

TEST_F(Traps, aFailureBeforeTheTransactionFailsTheRollbackAndLeavesTheStoreOpen) {
    stage.script().answer(MessageKind::critical, "坏了", Answer::ok);
    EXPECT_THROW(trappedTransaction(openAndFail), store::Failure);
    EXPECT_TRUE(appState().gConn);
}

TEST_F(Traps, withoutAConnectionThereIsNothingToRollBack) {
    stage.script().answer(MessageKind::critical, "坏了", Answer::ok);
    EXPECT_FALSE(trappedTransaction([]() -> bool { throw std::runtime_error("坏了"); }));
}

}  // namespace
}  // namespace orvenmod::test
