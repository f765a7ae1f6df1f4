// The editor of a wide class: opened for a new item and for a stored one, against the statements that it sends.
#include <algorithm>
#include <filesystem>
#include <limits>
#include <stdexcept>

#include "bareloop.h"
#include "benches.h"
#include "editor/frmBasicInfo.h"
#include "entry/startup.h"
#include "firstpaint.h"
#include "frame/appstate.h"
#include "memorystage.h"
#include "platform/entrygrid.h"
#include "store/schema.h"
#include "store/sqlite/sqlitestore.h"

namespace orvenmod::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kFields = 60;
constexpr int kLookups = 10;
constexpr int kEntries = 10000;
constexpr int kCategories = 5000;
constexpr int kClass = 1001;
constexpr int kFirstLookup = 1101;
constexpr int kItem = 900000;
constexpr int kCategory = 200;  // one of the second level
constexpr int kRuns = 8;
constexpr double kMost = 40;  // milliseconds

std::string targetOf(const std::string& file) { return "Provider=SQLite;Data Source=" + file; }

bool isLookup(int field) { return field > kFields - kLookups; }

std::string fieldName(int field) {
    constexpr const char* kBase[] = {"fShortNumber", "fNumber", "fName"};
    return field <= 3 ? kBase[field - 1] : "f" + std::to_string(field);
}

enum class Row { category, item };

void addItem(store::Connection& connection, int id, int itemClass, const std::string& parent, int depth, Row row,
             const std::string& code) {
    connection.execute(
        "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,fNBNumber,"
        "fShortNumber) values(" +
        std::to_string(id) + ",'" + code + "','名称" + code + "'," + std::to_string(itemClass) + "," + parent + "," +
        (row == Row::item ? "1" : "0") + "," + std::to_string(depth) + ",0,'." + std::to_string(id) + ".','001')");
}

void addFields(store::Connection& connection) {
    for (int field = 1; field <= kFields; ++field) {
        const std::string number = std::to_string(field);
        const std::string source = isLookup(field) ? std::to_string(kFirstLookup + kFields - field) : "0";
        connection.execute(
            "insert into tblTableInfo(fItemClassId,fInterId,fName,fFieldName,fFieldType,fIsVisible,fIsNull,"
            "fValueItemId,fItemType) values(" +
            std::to_string(kClass) + "," + number + ",'字段" + number + "','" + fieldName(field) + "',1,1,0," + source +
            ",'0')");
    }
}

void addTableAndView(store::Connection& connection) {
    std::string columns = "fitemid int,fnumber varchar(100),fname varchar(100)";
    std::string names;
    std::string joins;
    for (int field = 4; field <= kFields; ++field) {
        const std::string name = fieldName(field);
        columns += "," + name + (isLookup(field) ? " int" : " varchar(50)");
        if (!isLookup(field)) continue;
        names += ",t" + name + ".fName as " + name + "Name";
        joins += " left join tblItem as t" + name + " on t" + name + ".fItemId=a." + name;
    }
    connection.execute("create table tblWide(" + columns + ",primary key (fitemid))");
    connection.execute(
        "create view vWide as select a.*,b.fShortNumber,b.fParentId,c.fName as fParentIdName,c.fDepth as fParentDepth,"
        "c.fNumber as fParentIdNumber" +
        names +
        " from tblWide as a left join tblItem as b on a.fItemId=b.fItemId left join tblItem as c on "
        "c.fItemId=b.fParentId" +
        joins);
}

void fill(store::Connection& connection) {
    addFields(connection);
    for (int id = 1; id <= kCategories; ++id) {
        const int depth = id <= 10 ? 1 : id <= 500 ? 2 : 3;
        const int parent = depth == 1 ? 0 : depth == 2 ? id % 10 + 1 : 11 + id % 490;
        addItem(connection, id, kClass, std::to_string(parent), depth, Row::category, std::to_string(10000 + id));
    }
    for (int lookup = 0; lookup < kLookups; ++lookup) {
        for (int entry = 0; entry < kEntries; ++entry) {
            addItem(connection, 10000 + lookup * kEntries + entry, kFirstLookup + lookup, "0", 1, Row::item,
                    std::to_string(100000 + entry));
        }
    }
    addTableAndView(connection);
    addItem(connection, kItem, kClass, std::to_string(kCategory), 3, Row::item, "10200.001");
    std::string columns = "fitemid,fnumber,fname";
    std::string values = std::to_string(kItem) + ",'10200.001','名称'";
    for (int field = kFields - kLookups + 1; field <= kFields; ++field) {
        columns += "," + fieldName(field);
        values += "," + std::to_string(10000 + (kFields - field) * kEntries + kEntries / 2);
    }
    connection.execute("insert into tblWide(" + columns + ") values(" + values + ")");
}

std::string wideDatabase(const std::string& folder) {
    const std::string file = folder + "/lookups-" + std::to_string(kLookups) + ".db";
    if (fs::exists(file)) return targetOf(file);
    const std::string growing = file + ".new";
    fs::remove(growing);
    const auto connection = componentStore().connect(targetOf(growing) + ";Mode=Create");
    store::createSchema(*connection);
    connection->beginTrans();
    fill(*connection);
    connection->commitTrans();
    connection->close();
    store::sqlite::SqliteStore::dropIdleHandles();
    fs::rename(growing, file);
    return targetOf(file);
}

void chooseItem(const std::string& target, std::int16_t editMode) {
    AppState& state = appState();
    state.gConnStr = target;
    state.gItemClassId = kClass;
    state.gItemName = "宽表";
    state.gItemTable = "tblWide";
    state.gViewName = "vWide";
    state.gIsAdmin = 1;
    state.gEditMode = editMode;
    state.gCurItemId = kItem;
    state.gCurParentId = kCategory;
}

struct Opening {
    const char* name;
    std::int16_t editMode;
};

/// The statements alone, in milliseconds.
double measureOpening(Report& report, const std::string& target, const Opening& opening) {
    double ours = std::numeric_limits<double>::max();
    double bare = ours;
    MemoryStage windows;
    std::unique_ptr<BareLoop> statements;
    for (int run = 0; run < kRuns; ++run) {
        chooseItem(target, opening.editMode);
        windows.forgetRecords();
        double loaded = 0;
        windows.onWindow("frmBasicInfo", [&](platform::memory::MemoryWindow& window) {
            loaded = threadMilliseconds();
            if (window.get<platform::EntryGrid>("fps1").rowCount() != kFields + 1) throw std::logic_error("no grid");
        });
        const double begin = threadMilliseconds();
        frmBasicInfo::instance().show(nullptr);
        windows.check();
        ours = std::min(ours, loaded - begin);
        if (!statements) statements = std::make_unique<BareLoop>(target, statementsOf(windows.records()));
        bare = std::min(bare, leastOf(1, [&] { statements->run(); }));
    }
    report.ratio(opening.name, ours, "its statements alone", bare, 1.5, "ms");
    report.ratio(std::string(opening.name) + ", lists unopened", ours, "40 ms", kMost, 1.0, "ms");
    return bare;
}

void measurePainted(Report& report, const std::string& target, double bare) {
    measureFirstPaint(report, {.name = "a stored item to the first paint",
                               .boundName = "1.5 times these + 150 ms",
                               .bound = 1.5 * bare + 150,
                               .runs = kRuns,
                               .prepare = [&] { chooseItem(target, 1); },
                               .show = [] { frmBasicInfo::instance().show(nullptr); }});
}

}  // namespace

void measureEditor(Report& report, const std::string& folder) {
    const std::string target = wideDatabase(folder);
    measureOpening(report, target, {"opening for a new item", 0});
    const double bare = measureOpening(report, target, {"opening for a stored item", 1});
    measurePainted(report, target, bare);
}

}  // namespace orvenmod::bench
