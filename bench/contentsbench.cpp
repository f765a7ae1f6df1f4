// A large attachment going in and coming back: how much memory the process takes at most meanwhile.
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "benches.h"
#include "editor/fieldrow.h"
#include "editor/frmBasicInfo.h"
#include "entry/startup.h"
#include "frame/appstate.h"
#include "memorystage.h"
#include "peak.h"
#include "platform/controls.h"
#include "store/schema.h"
#include "store/sqlite/sqlitestore.h"

namespace orvenmod::bench {
namespace {

namespace fs = std::filesystem;
using platform::EntryGrid;
using platform::memory::MemoryWindow;

constexpr std::size_t kSize = std::size_t{64} << 20;
constexpr double kMebibyte = 1024.0 * 1024.0;
// Twice the contents, and the store's cache of pages.
constexpr double kBound = 2 * static_cast<double>(kSize) / kMebibyte + 16;

std::string emptyDatabase(const std::string& folder) {
    const std::string file = folder + "/contents.db";
    store::sqlite::SqliteStore::dropIdleHandles();
    for (const char* part : {"", "-wal", "-shm"})
        fs::remove(file + part);
    const auto connection = componentStore().connect("Provider=SQLite;Mode=Create;Data Source=" + file);
    store::createSchema(*connection);
    connection->close();
    return "Provider=SQLite;Data Source=" + file;
}

void addAttachment(MemoryWindow& window) {
    window.get<platform::Tabs>("SSTab1").setTab(1);
    window.get<platform::Button>("cmdAddFJ").click.raise();
    auto& attachments = window.get<EntryGrid>("fps2");
    attachments.setText(3, attachments.rowCount(), "附件");
}

void save(MemoryWindow& window) { window.get<platform::Toolbar>("Toolbar1").buttonClick.raise("Save"); }

}  // namespace

void measureContents(Report& report, const std::string& folder) {
    const std::string file = folder + "/contents.bin";
    std::ofstream(file, std::ios::binary) << std::string(kSize, 'x');
    MemoryStage windows;
    windows.chooseFile(file);
    AppState& state = appState();
    state = AppState();
    state.gConnStr = emptyDatabase(folder);
    state.gItemClassId = 3;
    state.gItemName = "货品";
    state.gItemTable = "ICItem";
    state.gViewName = "vICItem";
    state.gIsAdmin = 1;

    double in = 0;
    windows.onWindow("frmBasicInfo", [&](MemoryWindow& window) {
        window.get<EntryGrid>("fps1").setText(kValue, kNameRow, "大附件");
        addAttachment(window);
        in = mostMemory([&] { save(window); });
    });
    frmBasicInfo::instance().show(nullptr);
    windows.check();

    double out = 0;
    state.gEditMode = 1;
    windows.onWindow("frmBasicInfo", [&](MemoryWindow& window) {
        out = mostMemory([&] { window.get<EntryGrid>("fps2").buttonClick.raise(2, 1); });
    });
    frmBasicInfo::instance().show(nullptr);
    windows.check();
    report.ratio("memory of 64 MiB going in", in, "twice that + 16 MiB", kBound, 1.05, "MiB");
    report.ratio("memory of 64 MiB coming out", out, "twice that + 16 MiB", kBound, 1.05, "MiB");
    fs::remove(file);
}

}  // namespace orvenmod::bench
