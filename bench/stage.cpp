#include "stage.h"

#include <filesystem>

#include "browser/frmBasicInfoList_design.h"
#include "entry/startup.h"
#include "frame/appstate.h"
#include "platform/memory/memorydriver.h"
#include "sampledata.h"
#include "store/schema.h"
#include "store/sqlite/sqlitestore.h"
#include "store/upgrade.h"

namespace orvenmod::bench {
namespace {

/// Nobody sits there: nothing is shown.
class Nobody : public platform::memory::MemoryDriver {
public:
    void onModal(platform::memory::MemoryWindow&) override {}
    platform::Answer onMessage(platform::MessageKind, const std::string&, const std::string&) override {
        return platform::Answer::ok;
    }
    std::string onFileDialog(bool, const std::string&) override { return ""; }
    void onPopUp(platform::memory::MemoryMenu&) override {}
    void onDocument(const std::string&) override {}
};

}  // namespace

std::string targetOf(const std::string& file) { return "Provider=SQLite;Data Source=" + file; }

std::string databaseFile(const std::string& file, const std::function<void(store::Connection&)>& fill) {
    if (std::filesystem::exists(file)) {
        // An earlier program may have made it.
        const auto connection = componentStore().connect(targetOf(file));
        store::upgradeSchema(*connection);
        connection->close();
        return file;
    }
    // Under another name until it is whole.
    const std::string growing = file + ".new";
    std::filesystem::remove(growing);
    const auto connection = componentStore().connect(targetOf(growing) + ";Mode=Create");
    store::createSchema(*connection);
    fill(*connection);
    connection->close();
    // The last handle that goes leaves one whole file.
    store::sqlite::SqliteStore::dropIdleHandles();
    std::filesystem::rename(growing, file);
    return file;
}

std::string goodsDatabase(const std::string& folder, int goods) {
    return targetOf(
        databaseFile(folder + "/goods-" + std::to_string(goods) + ".db", [goods](store::Connection& connection) {
            sample::fillSampleData(connection, goods);
            connection.execute("delete from tblUserVisible");
        }));
}

QuietServices::QuietServices(store::Store& store)
    : before_(services()), driver_(std::make_unique<Nobody>()), toolkit_(*driver_), services_{store,
                                                                                              toolkit_,
                                                                                              before_.settings,
                                                                                              before_.iniFiles,
                                                                                              before_.folders,
                                                                                              before_.clock} {
    useServices(&services_);
}

QuietServices::~QuietServices() {
    useServices(&before_);
    appState().gConn.reset();
}

ListStage::ListStage(const std::string& connectionString) : driver_(std::make_unique<Nobody>()), toolkit_(*driver_) {
    AppState& state = appState();
    state.gConnStr = connectionString;
    state.gItemClassId = 3;
    state.gViewName = "vICItem";
    state.gItemName = "货品";
    state.gIsAdmin = 1;
    window_ = toolkit_.createWindow(basicInfoListDesign());
    list_ = std::make_unique<ItemList>(grid(), window_->get<platform::Tree>("tv1"), stock_);
}

ListStage::~ListStage() {
    list_.reset();
    appState().gConn.reset();
    appState().gTreeFilter.clear();
    appState().gListFilter.clear();
}

std::string listColumns() { return "fitemid,fNumber,fName,fModel,fUnit,fMinQty,fMaxQty,fA,fD,fE,fF,fHName"; }

std::string listStatement(const std::string& condition) {
    return "select " + listColumns() + " from  vICItem where 1=1 " + condition + " order by fnumber ";
}

}  // namespace orvenmod::bench
