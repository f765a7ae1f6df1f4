// What walks through all rows of a list that is read by its keys, against the same on rows that are held.
#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <string>

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
enum { kCode = 1, kName = 2, kLeast = 5, kMost = 6, kCategoryName = 11 };

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
    std::function<void(ListGridModel&)> work;
};

const std::vector<Walk>& walks() {
    static const std::vector<Walk> all = {
        {"sorted by name", [](ListGridModel& list) { list.sort(kName, SortOrder::ascending); }},
        {"sorted by code", [](ListGridModel& list) { list.sort(kCode, SortOrder::ascending); }},
        {"sorted by a number", [](ListGridModel& list) { list.sort(kLeast, SortOrder::ascending); }},
        {"sorted by a joined name", [](ListGridModel& list) { list.sort(kCategoryName, SortOrder::ascending); }},
        {"the line over all opens", [](ListGridModel& list) { list.readyNarrowing(); }},
        {"sum of all", [](ListGridModel& list) { sumOfAll(list, kLeast); }},
    };
    return all;
}

}  // namespace

void measureWalks(Report& report, const std::string& folder, int goods) {
    const auto connection = componentStore().connect(goodsDatabase(folder, goods));
    WalkedList keyed(connection->openList(listStatement()));
    WalkedList held(std::make_unique<store::WholeRows>(connection->open(listStatement())));
    connection->close();
    for (const Walk& walk : walks()) {
        double byKeys = std::numeric_limits<double>::max();
        double whole = byKeys;
        for (int run = 0; run < 3; ++run) {
            ListGridModel& list = keyed.shown();
            byKeys = std::min(byKeys, leastOf(1, [&] { walk.work(list); }));
            keyed.letGo();
            ListGridModel& same = held.shown();
            whole = std::min(whole, leastOf(1, [&] { walk.work(same); }));
            held.letGo();
        }
        report.ratio(std::string(walk.name) + ", by keys", byKeys, "of held rows", whole, 1.1, "ms");
        ListGridModel& list = keyed.shown();
        report.note("  at most " + std::to_string(mostMemory([&] { walk.work(list); })) + " MiB");
        keyed.letGo();
    }
}

}  // namespace orvenmod::bench
