#include "hosts/hostprogram.h"

#include <unistd.h>

#include <QApplication>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <filesystem>

#include <orvenmod/clsBasicInfo.h>
#include <orvenmod/schema.h>
#include <orvenmod/settings.h>
#include <orvenmod/statements.h>

#include "sampledata.h"

namespace host {

namespace {

constexpr int kLook = 10;
constexpr int kGoods = 20;

std::deque<Work> waiting;
int seen = 0;

// The window's loop runs once it has loaded; until then the pointer is an hourglass.
void look() {
    QTimer::singleShot(kLook, [] {
        auto* window = qobject_cast<QMainWindow*>(QApplication::activeModalWidget());
        if (window == nullptr || QApplication::overrideCursor() != nullptr || waiting.empty()) return look();
        const Work work = waiting.front();
        waiting.pop_front();
        ++seen;
        look();
        work(*window);
        if (window->isVisible()) window->close();
    });
}

}  // namespace

void expect(bool so, const std::string& text) {
    if (so) return;
    std::fprintf(stderr, "not so: %s\n", text.c_str());
    ::_exit(1);
}

Suite::Suite() {
    std::string name = (std::filesystem::temp_directory_path() / "orven-host-XXXXXX").string();
    expect(::mkdtemp(name.data()) != nullptr, "a folder of its own");
    folder_ = name;
    ::setenv("XDG_CONFIG_HOME", folder_.c_str(), 1);
    connectionString_ = "Provider=SQLite;Data Source=" + folder_ + "/suite.db";
    orvenmod::CreateSchema(connectionString_);
    orvenmod::Statements statements(connectionString_);
    orvenmod::sample::fillSampleData(statements, kGoods);
    orvenmod::SaveSetting("Orvencom", "SystemLogin", "IsAdmin", "1");
    orvenmod::SaveSetting("Orvencom", "SystemLogin", "gLoginUserId", "1");
}

Suite::~Suite() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void whenNextWindowOpens(const Work& work) { waiting.push_back(work); }

int windowsSeen() { return seen; }

void pickFirst(QMainWindow& window) {
    auto* grid = window.findChild<QTableView*>("vsf1");
    expect(grid != nullptr, "the window has a list");
    const QPoint place = grid->visualRect(grid->model()->index(0, grid->columnAt(20))).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, place);
}

std::string pickedCode(const Suite& suite) {
    orvenmod::clsBasicInfo items;
    whenNextWindowOpens(pickFirst);
    items.mainInterface(3, "", "", suite.connectionString(), 1);
    return items.fNumber;
}

std::string failureOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "";
}

Q_COREAPP_STARTUP_FUNCTION(look)

}  // namespace host
