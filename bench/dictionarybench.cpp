// A long dictionary in its real window, against the bare loop over the same statement.
#include <algorithm>
#include <limits>
#include <stdexcept>

#include "bareloop.h"
#include "benches.h"
#include "dictionary/frmJCZLList.h"
#include "frame/appstate.h"
#include "stage.h"

namespace orvenmod::bench {
namespace {

constexpr int kEntries = 100000;
constexpr int kDictionary = 501;

std::string entryDatabase(const std::string& folder) {
    const std::string file = folder + "/dictionary-" + std::to_string(kEntries) + ".db";
    return targetOf(databaseFile(file, [](store::Connection& connection) {
        connection.beginTrans();
        // Their codes come in another order than their ids.
        for (int id = 1; id <= kEntries; ++id) {
            const std::string code = std::to_string(kEntries + (id * 7919LL) % kEntries);
            connection.execute("insert into tblSubType(fItemId,fNumber,fName,fItemClassId) values(" +
                               std::to_string(id) + ",'" + code + "','资料" + code + "'," +
                               std::to_string(kDictionary) + ")");
        }
        connection.commitTrans();
    }));
}

}  // namespace

void measureDictionary(Report& report, const std::string& folder) {
    constexpr int kRuns = 10;
    const std::string target = entryDatabase(folder);
    AppState& state = appState();
    state.gConnStr = target;
    state.gItemClassId = kDictionary;
    BareLoop bareList(target,
                      {"select fitemid,fname,fnumber from tblSubType where fitemclassid=501 order by fnumber "});
    EntryWindow& window = frmJCZLList::instance().loaded();
    double ours = std::numeric_limits<double>::max();
    double bare = ours;
    for (int run = 0; run < kRuns; ++run) {
        bare = std::min(bare, leastOf(1, [&] { bareList.run(); }));
        ours = std::min(ours, leastOf(1, [&] { window.refreshEntries(kDictionary); }));
    }
    if (window.vsf1().rowCount() != kEntries + 1) throw std::runtime_error("the list isn't whole");
    window.unload();
    report.ratio("dictionary of 100 thousand entries", ours, "bare loop", bare, 1.25, "ms");
}

}  // namespace orvenmod::bench
