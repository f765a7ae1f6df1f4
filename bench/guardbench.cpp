// An item that only the last probe of the last family finds: the guard of its delete, against the translations of its
// statements in SQLite's own calls.
#include <algorithm>
#include <limits>
#include <stdexcept>
#include <vector>

#include "bareloop.h"
#include "benches.h"
#include "entry/startup.h"
#include "frame/appstate.h"
#include "hierarchy/itemroutines.h"
#include "stage.h"
#include "store/sqlite/sqlitestore.h"
#include "store/trace.h"

namespace orvenmod::bench {
namespace {

constexpr int kItem = 9000001;  // in no bill but one
constexpr int kRows = 1000000;
constexpr int kFirstRows = 62500;  // doubled four times
constexpr int kRowsOfOneItem = 20;

const std::vector<std::string>& headFields() {
    static const std::vector<std::string> kFields = {"fCustId", "fSupplyId", "fStockId", "fAccountId", "fSettleId"};
    return kFields;
}

const std::vector<std::string>& entryFields() {
    static const std::vector<std::string> kFields = {"fItemId", "fStockId", "fStockPlaceId",
                                                     "fUnitId", "fColorId", "fKindId"};
    return kFields;
}

/// All columns of the bills that hold an item or an entry, for every type of each family: 200 fields.
void addCatalogue(store::Connection& connection) {
    const auto add = [&](const char* table, int type, const std::string& field) {
        connection.execute(std::string("insert into ") + table + "(fTypeId,fFieldName,fFieldType) values(" +
                           std::to_string(type) + ",'" + field + "',1)");
    };
    for (const int type : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 31, 32, 41, 42, 61, 62, 71, 72}) {
        for (const std::string& field : headFields())
            add("tblBillInfo", type, field);
        for (const std::string& field : entryFields())
            add("tblbillinfoentry", type, field);
    }
    add("tblBillInfo", 51, "fAccountId");
    add("tblBillInfo", 52, "fAccountId");
}

/// Fills a table with rows whose fields point to items in turn, a run of rows to each.
void addRows(store::Connection& connection, const std::string& table, const std::string& key,
             const std::vector<std::string>& fields) {
    std::string columns = key;
    std::string next = key + "+";
    for (const std::string& field : fields)
        columns += "," + field;
    for (int row = 1; row <= kFirstRows; ++row) {
        std::string values = std::to_string(row);
        for (std::size_t i = 0; i < fields.size(); ++i)
            values += "," + std::to_string(row / kRowsOfOneItem + 1);
        connection.execute("insert into " + table + "(" + columns + ") values(" + values + ")");
    }
    for (int rows = kFirstRows; rows < kRows; rows *= 2) {
        std::string doubled = key + "+" + std::to_string(rows);
        for (const std::string& field : fields)
            doubled += "," + field + "+" + std::to_string(rows / kRowsOfOneItem);
        connection.execute("insert into " + table + "(" + columns + ") select " + doubled + " from " + table);
    }
}

/// The stock bills and the invoices have a million rows each, heads and entries.
std::string billDatabase(const std::string& folder) {
    return targetOf(databaseFile(folder + "/bills-" + std::to_string(kRows) + ".db", [](store::Connection& connection) {
        connection.beginTrans();
        addCatalogue(connection);
        for (const char* table : {"icstockbill", "tblFP"})
            addRows(connection, table, "fInterId", headFields());
        for (const char* table : {"icstockbillEntry", "tblFPEntry"})
            addRows(connection, table, "fInterId", entryFields());
        connection.execute("insert into tblItem(fItemId,fNumber,fName,fItemClassId,fIsDetail,fIsLock) values(" +
                           std::to_string(kItem) + ",'01','件',3,1,0)");
        connection.execute("insert into tblFPEntry(fInterId,fEntryId,fKindId) values(1,1," + std::to_string(kItem) +
                           ")");
        connection.commitTrans();
    }));
}

class GuardStage {
public:
    explicit GuardStage(const std::string& target) : target_(target) {
        AppState& state = appState();
        state.gConnStr = target;
        state.gItemTable = "ICItem";
        state.gCurItemId = kItem;
    }

    double byRoutine(store::Store& store) {
        const QuietServices quiet(store);
        return leastOf(1, [] {
            if (delDetail()) throw std::logic_error("the item was in no bill");
        });
    }

    /// The queries of one guard.
    std::vector<std::string> statements() {
        std::vector<std::string> texts;
        store::TracingStore tracing(componentStore(), [&texts](const store::TraceRecord& record) {
            if (record.operation == "open") texts.push_back(record.sql);
        });
        byRoutine(tracing);
        return texts;
    }

private:
    std::string target_;
};

}  // namespace

void measureGuard(Report& report, const std::string& folder) {
    constexpr int kRuns = 30;
    const std::string target = billDatabase(folder);
    GuardStage stage(target);
    store::sqlite::SqliteStore::dropIdleHandles();
    const double first = stage.byRoutine(componentStore());
    BareLoop statements(target, stage.statements());
    double ours = std::numeric_limits<double>::max();
    double bare = ours;
    for (int run = 0; run < kRuns; ++run) {
        ours = std::min(ours, stage.byRoutine(componentStore()));
        bare = std::min(bare, leastOf(1, [&] { statements.run(); }));
    }
    report.ratio("guard over 200 fields", ours, "its statements, bare", bare, 1.2, "ms");
    report.note("  the first one of all, on a new handle: " + std::to_string(first) + " ms");
}

}  // namespace orvenmod::bench
