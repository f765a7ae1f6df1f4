// What walks through all rows of a list that is read by its keys, against the same on rows that are held and the bare
// statement over the columns that must be read for it: nobody has read them yet.
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "bareloop.h"
#include "benches.h"
#include "entry/startup.h"
#include "frame/fetchedrows.h"
#include "peak.h"
#include "platform/model/listgridmodel.h"
#include "stage.h"

namespace orvenmod::bench {
namespace {

using platform::ColumnKind;
using platform::SortOrder;
using platform::model::ListGridModel;

constexpr double kSecond = 1000;

/// Columns of listStatement().
enum { kCode = 1, kName = 2, kLeast = 5, kMost = 6, kPartnerName = 11 };

/// The list, whose rows come as `rows` tells each time that it is shown.
class WalkedList {
public:
    explicit WalkedList(std::unique_ptr<store::ListRows> rows)
        : rows_(std::make_shared<ListedRows>(std::move(rows))), list_({}, 0) {}

    /// As after the opening.
    ListGridModel& shown() {
        list_.bind(rows_);
        for (const int column : {kLeast, kMost})
            list_.column(column).kind = ColumnKind::number;
        return list_;
    }
    void letGo() { list_.bind(nullptr); }

private:
    std::shared_ptr<ListedRows> rows_;
    ListGridModel list_;
};

void sumOfAll(ListGridModel& list, int column) {
    for (int row = 1; row < list.rowCount(); ++row)
        list.setSelected(row, true);
    list.setCurrentColumn(column);
    list.status();
}

struct Walk {
    const char* name;
    const char* columns;  ///< that must be read
    std::function<void(ListGridModel&)> work;

    bool sorts() const { return std::string_view(name).starts_with("sorted"); }
};

/// What must be read for the walk, as it lies in the file.
std::string bareStatement(const Walk& walk) {
    const std::string columns = std::string_view(walk.columns) == "*" ? listColumns() : walk.columns;
    return "select " + columns + " from  vICItem";
}

const std::vector<Walk>& walks() {
    static const std::vector<Walk> all = {
        {"sorted by name", "fName", [](ListGridModel& list) { list.sort(kName, SortOrder::ascending); }},
        {"sorted by code", "fNumber", [](ListGridModel& list) { list.sort(kCode, SortOrder::ascending); }},
        {"sorted by a number", "fMinQty", [](ListGridModel& list) { list.sort(kLeast, SortOrder::ascending); }},
        {"sorted by a joined name", "fHName",
         [](ListGridModel& list) { list.sort(kPartnerName, SortOrder::ascending); }},
        {"the line over all opens", "*", [](ListGridModel& list) { list.readyNarrowing(); }},
        {"sum of all", "fMinQty", [](ListGridModel& list) { sumOfAll(list, kLeast); }},
    };
    return all;
}

}  // namespace

void measureWalks(Report& report, const std::string& folder, int goods) {
    const std::string target = goodsDatabase(folder, goods);
    const auto connection = componentStore().connect(target);
    WalkedList keyed(connection->openList(listStatement()));
    WalkedList held(std::make_unique<store::WholeRows>(connection->open(listStatement())));
    connection->close();
    for (const Walk& walk : walks()) {
        BareLoop bare(target, {bareStatement(walk)});
        double byKeys = std::numeric_limits<double>::max();
        double whole = byKeys;
        double read = byKeys;
        for (int run = 0; run < 3; ++run) {
            ListGridModel& list = keyed.shown();
            byKeys = std::min(byKeys, leastOf(1, [&] { walk.work(list); }));
            keyed.letGo();
            ListGridModel& same = held.shown();
            whole = std::min(whole, leastOf(1, [&] { walk.work(same); }));
            held.letGo();
            read = std::min(read, leastOf(1, [&] { bare.run(); }));
        }
        report.ratio(std::string(walk.name) + ", by keys", byKeys, "held rows + bare loop", whole + read, 1.1, "ms");
        if (walk.sorts()) report.ratio("the same", byKeys, "a second", kSecond, 1.0, "ms");
        ListGridModel& list = keyed.shown();
        const double most = mostMemory([&] { walk.work(list); });
        report.note("  of held rows " + std::to_string(std::lround(whole)) + " ms; at most " +
                    std::to_string(std::lround(most)) + " MiB");
        keyed.letGo();
    }
}

}  // namespace orvenmod::bench
