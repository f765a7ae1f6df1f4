// Saving new items into a class of many: what the clerk waits for after the button, against the statements of it. The
// item is taken out again after each run, so that all runs meet the same database.
#include <algorithm>
#include <limits>
#include <stdexcept>

#include "bareloop.h"
#include "benches.h"
#include "editor/fieldrow.h"
#include "editor/frmBasicInfo.h"
#include "entry/startup.h"
#include "frame/appstate.h"
#include "memorystage.h"
#include "platform/controls.h"
#include "stage.h"

namespace orvenmod::bench {
namespace {

constexpr int kRuns = 10;

/// The database before a save, and the way back to it.
class Before {
public:
    explicit Before(std::string target) : target_(std::move(target)) {
        const auto connection = componentStore().connect(target_);
        counter_ = connection->open("select fMaxNum from tblMaxNum where fTableName='tblItem'").text("fMaxNum");
        // The category with the most goods: the next code is sought among them.
        category_ = std::stoi(connection
                                  ->open("select top 1 fParentId from tblItem where fItemClassId=3 and fIsDetail=1 "
                                         "group by fParentId order by count(*) desc")
                                  .text("fParentId"));
        connection->close();
    }

    int category() const { return category_; }

    void restore() {
        const auto connection = componentStore().connect(target_);
        for (const char* table : {"tblItem", "ICItem"})
            connection->execute("delete from " + std::string(table) + " where fItemId>" + counter_);
        connection->execute("update tblMaxNum set fMaxNum=" + counter_ + " where fTableName='tblItem'");
        connection->close();
    }

private:
    std::string target_;
    std::string counter_;
    int category_ = 0;
};

/// The time from the press of the button until the window has proposed the next code.
double timeSave(MemoryStage& windows, const std::string& target, int category) {
    AppState& state = appState();
    state.gConnStr = target;
    state.gItemClassId = 3;
    state.gItemName = "货品";
    state.gItemTable = "ICItem";
    state.gViewName = "vICItem";
    state.gIsAdmin = 1;
    state.gEditMode = 0;
    state.gCurParentId = category;
    double took = 0;
    windows.onWindow("frmBasicInfo", [&](platform::memory::MemoryWindow& window) {
        window.get<platform::EntryGrid>("fps1").setText(kValue, kNameRow, "一件新货品");
        windows.forgetRecords();
        took = leastOf(1, [&] { window.get<platform::Toolbar>("Toolbar1").buttonClick.raise("Save"); });
    });
    frmBasicInfo::instance().show(nullptr);
    windows.check();
    return took;
}

}  // namespace

double measureSave(Report& report, const std::string& folder, int goods) {
    const std::string target = goodsDatabase(folder, goods);
    Before before(target);
    MemoryStage windows;
    std::unique_ptr<BareLoop> statements;
    double ours = std::numeric_limits<double>::max();
    double bare = ours;
    for (int run = 0; run < kRuns; ++run) {
        ours = std::min(ours, timeSave(windows, target, before.category()));
        before.restore();
        if (!statements) statements = std::make_unique<BareLoop>(target, statementsOf(windows.records()));
        bare = std::min(bare, leastOf(1, [&] { statements->run(); }));
        before.restore();
    }
    report.ratio("saving a new item", ours, "its statements alone", bare, 1.5, "ms");
    return ours;
}

}  // namespace orvenmod::bench
