// The class designer on a database with 500 classes: each command by its window, against the statements that it sent
// sent once more, without a window. Both work on a fresh copy of the same file.
#include <filesystem>
#include <vector>

#include "benches.h"
#include "designersteps.h"
#include "entry/startup.h"
#include "frame/appstate.h"
#include "memorystage.h"
#include "stage.h"
#include "store/sqlite/sqlitestore.h"
#include "store/trace.h"

namespace orvenmod::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kClasses = 500;
constexpr int kFields = 50;
constexpr int kRuns = 5;

std::string fieldName(int field) {
    constexpr const char* kBase[] = {"fShortNumber", "fNumber", "fName"};
    return field <= 3 ? kBase[field - 1] : "f" + std::to_string(field);
}

void addClass(store::Connection& connection, int id) {
    const std::string key = std::to_string(id);
    const std::string table = "tblOwn" + key;
    connection.execute("insert into tblItemClass(fItemClassId,fItemName,fItemTable,fItemType,fViewName) values(" + key +
                       ",'" + table + "','" + table + "','0','v" + table + "')");
    std::string columns = "fitemid int,fnumber varchar(100),fname varchar(100)";
    for (int field = 1; field <= kFields; ++field) {
        const std::string name = fieldName(field);
        if (field > 3) columns += "," + name + " varchar(50)";
        connection.execute(
            "insert into tblTableInfo(fItemClassId,fInterId,fName,fFieldName,fFieldType,fIsVisible) values(" + key +
            "," + std::to_string(field) + ",'" + name + "','" + name + "',1,1)");
    }
    connection.execute("create table " + table + "(" + columns + ")");
    connection.execute("create view v" + table + " as select a.* from " + table + " as a");
}

/// A database of 500 classes of 50 fields each.
std::string classDatabase(const std::string& folder) {
    return databaseFile(folder + "/classes-" + std::to_string(kClasses) + ".db", [](store::Connection& connection) {
        connection.beginTrans();
        for (int id = 1001; id <= 1000 + kClasses; ++id)
            addClass(connection, id);
        connection.commitTrans();
    });
}

class Stage {
public:
    explicit Stage(const std::string& folder) : file_(classDatabase(folder)), copy_(folder + "/classes-copy.db") {}

    /// Milliseconds by the window; the statements stay for bare().
    double byWindow(const DesignerCommand& command) {
        freshCopy();
        appState().gConnStr = targetOf(copy_);
        const double took = runCommand(windows_, command, 1001, threadMilliseconds);
        sent_ = windows_.records();
        return took;
    }

    double bare() {
        freshCopy();
        // The schema was read before, as it was for the window.
        const auto before = componentStore().connect(targetOf(copy_));
        before->open("select * from tblTableInfo where fitemclassid=1001");
        before->close();
        return leastOf(1, [this] {
            std::unique_ptr<store::Connection> connection;
            for (const store::TraceRecord& record : sent_) {
                if (record.operation == "connect") connection = componentStore().connect(targetOf(copy_));
                if (record.operation == "begin") connection->beginTrans();
                if (record.operation == "execute") connection->execute(record.sql);
                if (record.operation == "open") connection->open(record.sql);
                if (record.operation == "commit") connection->commitTrans();
                if (record.operation == "close") connection->close();
            }
        });
    }

private:
    void freshCopy() {
        store::sqlite::SqliteStore::dropIdleHandles();
        fs::copy_file(file_, copy_, fs::copy_options::overwrite_existing);
    }

    std::string file_;
    std::string copy_;
    std::vector<store::TraceRecord> sent_;
    MemoryStage windows_;
};

}  // namespace

void measureDesigner(Report& report, const std::string& folder) {
    Stage stage(folder);
    for (const DesignerCommand& command : designerCommands(2000)) {
        double ours = std::numeric_limits<double>::max();
        double bare = ours;
        for (int run = 0; run < kRuns; ++run) {
            ours = std::min(ours, stage.byWindow(command));
            bare = std::min(bare, stage.bare());
        }
        report.ratio(command.name, ours, "its statements alone", bare, 1.5, "ms");
    }
}

}  // namespace orvenmod::bench
