#include <filesystem>

#include "benches.h"
#include "entry/startup.h"
#include "stage.h"
#include "store/schema.h"

namespace orvenmod::bench {

// Ten at the top, ten below each, and the rest spread over those hundred.
std::string treeDatabase(const std::string& folder, int categories) {
    const std::string file = folder + "/tree-" + std::to_string(categories) + ".db";
    std::filesystem::remove(file);
    const auto connection = componentStore().connect("Provider=SQLite;Mode=Create;Data Source=" + file);
    store::createSchema(*connection);
    connection->beginTrans();
    for (int id = 1; id <= categories; ++id) {
        const int parent = id <= 10 ? 0 : id <= 110 ? (id - 11) / 10 + 1 : 11 + id % 100;
        const int depth = id <= 10 ? 1 : id <= 110 ? 2 : 3;
        const std::string text = std::to_string(id);
        connection->execute(
            "insert into tblItem(fItemId,fNumber,fName,fItemClassId,fParentId,fIsDetail,fDepth,fIsLock,"
            "fNBNumber,fShortNumber) values(" +
            text + ",'" + text + "','分类" + text + "',3," + std::to_string(parent) + ",0," + std::to_string(depth) +
            ",0,'." + text + ".','" + text + "')");
    }
    connection->commitTrans();
    connection->close();
    return "Provider=SQLite;Data Source=" + file;
}

namespace {

double timeTree(const std::string& folder, int categories) {
    ListStage stage(treeDatabase(folder, categories));
    stage.list().getListInfo(3);
    return leastOf(10, [&] { stage.list().getListInfo(1); });
}

}  // namespace

void measureTree(Report& report, const std::string& folder) {
    const double small = timeTree(folder, 1000);
    const double large = timeTree(folder, 10000);
    report.ratio("tree of 10 thousand categories", large, "10 trees of 1 thousand", 10 * small, 1.5, "ms");
}

}  // namespace orvenmod::bench
