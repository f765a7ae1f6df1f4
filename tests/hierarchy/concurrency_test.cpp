// What another user stores between the reading of a command and its transaction isn't noticed.
#include "frame/appstate.h"
#include "frame/services.h"
#include "hierarchy/categorysave.h"
#include "hierarchy/hierarchytest.h"
#include "hierarchy/itemroutines.h"
#include "store/connectionwrapper.h"

namespace orvenmod::test {
namespace {

using Happening = std::function<void()>;

/// A connection before whose transaction something happens elsewhere.
class OvertakenConnection : public store::ConnectionWrapper {
public:
    OvertakenConnection(std::unique_ptr<store::Connection> target, const Happening& happening)
        : ConnectionWrapper(std::move(target)), happening_(happening) {}

    void beginTrans() override {
        happening_();
        ConnectionWrapper::beginTrans();
    }

private:
    const Happening& happening_;
};

class OvertakenStore : public store::Store {
public:
    OvertakenStore(store::Store& target, Happening happening) : target_(target), happening_(std::move(happening)) {}

    std::unique_ptr<store::Connection> connect(const std::string& connectionString) override {
        return std::make_unique<OvertakenConnection>(target_.connect(connectionString), happening_);
    }

private:
    store::Store& target_;
    Happening happening_;
};

class Overtaken : public HierarchyTest {
protected:
    /// Runs a command; another user's statement comes between its reading and its transaction.
    bool run(int id, const std::string& others, const std::function<bool()>& command) {
        Services& before = services();
        OvertakenStore store(before.store, [&] { database().execute(others); });
        Services overtaken{store, before.toolkit, before.settings, before.iniFiles, before.folders, before.clock};
        useServices(&overtaken);
        appState().gCurItemId = id;
        const bool done = command();
        useServices(&before);
        return done;
    }
};

TEST_F(Overtaken, aBillThatArrivesBehindTheProbesDoesNotKeepTheItem) {
    stage.catalogueOneFieldAFamily();
    EXPECT_TRUE(run(101, "insert into icstockbillEntry(fInterId,fItemId) values(1,101)", delDetail));
    EXPECT_EQ(database().value("select count(*) from tblItem where fitemid=101"), "0");
    EXPECT_EQ(database().value("select count(*) from icstockbillEntry where fitemid=101"), "1");
}

TEST_F(Overtaken, aParentThatMovesMeanwhileLeavesThePathThatWasRead) {
    EXPECT_TRUE(run(13, "update tblItem set fNBNumber='.12.14.',fDepth=2 where fitemid=14", [] {
        return moveCategory({"螺丝", "09", "02.09", "14"});
    }));
    EXPECT_EQ(database().rows("select fnbnumber,fdepth from tblItem where fitemid in (13,101) order by fitemid"),
              (Rows{{".14.13.", "2"}, {".14.13.101.", "3"}}));
}

TEST_F(Overtaken, anItemThatArrivesMeanwhileMovesAlong) {
    EXPECT_TRUE(run(13,
                    "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fNBNumber) "
                    "values(200,'01.01.200','新件',3,13,1,3,'.12.13.200.')",
                    [] {
                        return moveCategory({"螺丝", "09", "02.09", "14"});
                    }));
    EXPECT_EQ(database().rows("select fnbnumber,fnumber from tblItem where fitemid=200"),
              (Rows{{".14.13.200.", "02.09.200"}}));
}

}  // namespace
}  // namespace orvenmod::test
