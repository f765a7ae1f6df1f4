#include "clerks.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string_view>
#include <thread>

#include "benchserver.h"
#include "editor/fieldrow.h"
#include "editor/frmBasicInfo.h"
#include "entry/startup.h"
#include "frame/appstate.h"
#include "memorystage.h"
#include "platform/controls.h"
#include "stage.h"

namespace orvenmod::bench {
namespace {

using std::chrono::system_clock;

// Two clerks may be proposed the same code, and may read the same number from the counter; who comes second is told,
// and presses again.
constexpr std::string_view kTold[] = {"代码已经存在,保存不成功!", "违反了 PRIMARY KEY 约束"};
constexpr const char* kCommands[] = {"search", "open", "change", "add"};
constexpr int kChangesForOneNew = 4;

class Clerk {
public:
    Clerk(const std::string& target, int number)
        : number_(number), random_(static_cast<unsigned>(number)), list_(target) {
        const auto connection = componentStore().connect(target);
        goods_ = connection->open(
            "select top 5000 fItemId,fParentId from tblItem where fItemClassId=3 and fIsDetail=1 and fIsLock=0 "
            "order by fNumber");
        connection->close();
        list_.list().getListInfo(2);
    }

    void work() {
        search();
        change();
        if (++items_ % kChangesForOneNew == 0) add();
        windows_.forgetRecords();
    }

private:
    std::size_t oneOf(std::size_t count) { return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_); }

    void search() {
        static const std::vector<std::string> kConditions = {
            " and (  fName like '%恒力%' )", " and (  fNumber like '01%' )", " and (  fName like '%钳%' )",
            " and (  fNumber like '02.01%' )"};
        tell("search",
             leastOf(
                 1, [this] { list_.list().findInfo2(kConditions[oneOf(kConditions.size())]); }, wallMilliseconds));
    }

    void change() {
        const std::size_t row = oneOf(goods_.rowCount());
        appState().gCurItemId = std::stoi(std::string(goods_.cell(row, 0).value()));
        save(1, "open", "change");
    }

    void add() {
        const std::size_t row = oneOf(goods_.rowCount());
        appState().gCurParentId = std::stoi(std::string(goods_.cell(row, 1).value()));
        save(0, "open", "add");
    }

    void save(std::int16_t editMode, const char* opening, const char* saving) {
        AppState& state = appState();
        state.gItemTable = "ICItem";
        state.gEditMode = editMode;
        const double begin = wallMilliseconds();
        windows_.onWindow("frmBasicInfo", [&](platform::memory::MemoryWindow& window) {
            tell(opening, wallMilliseconds() - begin);
            window.get<platform::EntryGrid>("fps1").setText(kValue, kNameRow, newName());
            const double took = leastOf(
                1, [&] { window.get<platform::Toolbar>("Toolbar1").buttonClick.raise("Save"); }, wallMilliseconds);
            tell(saving, took);
        });
        frmBasicInfo::instance().show(nullptr);
        const std::string refusal = windows_.takeFailure();
        if (!refusal.empty()) std::cout << "refused " << refusal << '\n';
    }

    std::string newName() { return "甲" + std::to_string(number_) + "-" + std::to_string(++names_); }

    static void tell(const char* command, double milliseconds) { std::cout << command << ' ' << milliseconds << '\n'; }

    int number_;
    std::mt19937 random_;
    MemoryStage windows_;  // goes behind the list, whose statements it notes
    ListStage list_;
    store::Recordset goods_;
    int items_ = 0;
    int names_ = 0;
};

struct Work {
    std::map<std::string, std::vector<double>> took;
    std::map<std::string, int> refusals;
};

struct ClosePipe {
    void operator()(std::FILE* pipe) const { pclose(pipe); }
};
using Process = std::unique_ptr<std::FILE, ClosePipe>;

std::string quoted(const std::string& text) { return "'" + text + "'"; }

Process startClerk(const std::string& target, int number, const std::string& times) {
    const std::string self = std::filesystem::read_symlink("/proc/self/exe").string();
    const std::string call = quoted(self) + " --clerk " + quoted(target) + " " + std::to_string(number) + " " + times;
    return Process(popen(call.c_str(), "r"));
}

void readLines(std::FILE* pipe, Work& work) {
    std::string line;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
        if (c != '\n') {
            line += static_cast<char>(c);
            continue;
        }
        const std::size_t blank = line.find(' ');
        if (line.starts_with("refused ")) {
            ++work.refusals[line.substr(blank + 1)];
        } else {
            work.took[line.substr(0, blank)].push_back(std::stod(line.substr(blank)));
        }
        line.clear();
    }
}

double percentile(const std::vector<double>& sorted, int percent) {
    return sorted[(sorted.size() - 1) * static_cast<std::size_t>(percent) / 100];
}

std::string_view told(std::string_view text) {
    for (const std::string_view start : kTold) {
        if (text.starts_with(start)) return start;
    }
    return "";
}

std::string oneDecimal(double value) {
    std::ostringstream text;
    text.precision(1);
    text << std::fixed << value;
    return text.str();
}

}  // namespace

void measureClerks(Report& report, const std::string& folder, int goods, int seconds) {
    BenchServer server(Durability::on);
    const std::string target = server.goodsDatabase(folder, goods);
    constexpr std::chrono::seconds kUntilAllAreReady{8};
    const auto start =
        std::chrono::duration_cast<std::chrono::seconds>((system_clock::now() + kUntilAllAreReady).time_since_epoch());
    std::vector<Process> clerks;
    for (int clerk = 1; clerk <= kClerks; ++clerk)
        clerks.push_back(startClerk(target, clerk, std::to_string(start.count()) + " " + std::to_string(seconds)));
    Work work;
    int broken = 0;
    for (Process& clerk : clerks) {
        readLines(clerk.get(), work);
        if (pclose(clerk.release()) != 0) ++broken;
    }

    report.heading(std::to_string(kClerks) + " clerks on PostgreSQL, " + std::to_string(goods) + " goods, " +
                   std::to_string(seconds) + " s");
    std::size_t all = 0;
    for (const char* command : kCommands) {
        std::vector<double>& took = work.took[command];
        if (took.empty()) continue;
        all += took.size();
        std::sort(took.begin(), took.end());
        report.note(std::string(command) + ": " + std::to_string(took.size()) + " times, " +
                    oneDecimal(percentile(took, 50)) + " ms half of them at most, " + oneDecimal(percentile(took, 95)) +
                    " ms 95 of 100, " + oneDecimal(percentile(took, 99)) + " ms 99 of 100");
    }
    report.note(oneDecimal(static_cast<double>(all) / seconds) + " commands a second");
    std::map<std::string, int> expected;
    int untold = all == 0 ? 1 : 0;
    for (const auto& [text, count] : work.refusals) {
        const std::string kind(told(text));
        if (kind.empty()) {
            untold += count;
            report.note("NOT EXPECTED, " + std::to_string(count) + " times: " + text);
        } else {
            expected[kind] += count;
        }
    }
    for (const auto& [text, count] : expected)
        report.note("refused " + std::to_string(count) + " times: " + text);
    report.ratio("clerks that ended badly", broken, "none", 1, 0, "");
    report.ratio("failures that nobody expects", untold, "none", 1, 0, "");
}

int workAsClerk(const std::vector<std::string>& arguments) {
    startUp();
    Clerk clerk(arguments.at(0), std::stoi(arguments.at(1)));
    const system_clock::time_point start{std::chrono::seconds(std::stoll(arguments.at(2)))};
    const auto end = start + std::chrono::seconds(std::stoi(arguments.at(3)));
    std::this_thread::sleep_until(start);
    while (system_clock::now() < end)
        clerk.work();
    std::cout.flush();
    return 0;
}

}  // namespace orvenmod::bench
