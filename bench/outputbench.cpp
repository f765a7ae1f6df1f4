// The list as a workbook: its speed and its memory; and the first page of its preview.
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "benches.h"
#include "browser/listexport.h"
#include "browser/listreport.h"
#include "frame/appstate.h"
#include "peak.h"
#include "platform/memory/memorydriver.h"
#include "platform/memory/memorytoolkit.h"
#include "platform/report/gatheredreport.h"
#include "platform/report/reportpages.h"

namespace orvenmod::bench {
namespace {

using namespace platform;

constexpr int kColumns = 10;

/// Codes, names and numbers, made as they are asked for out of a few thousand.
class ManyGoods : public RowSource {
public:
    explicit ManyGoods(std::size_t rows) : rows_(rows) {
        for (int i = 0; i < kTexts; ++i) {
            codes_.push_back("01.02." + std::to_string(100000 + i));
            names_.push_back("内六角圆柱头螺丝 M" + std::to_string(i));
            numbers_.push_back(std::to_string(i * 7) + "." + std::to_string(i % 100));
        }
    }
    std::size_t rowCount() const override { return rows_; }
    int columnCount() const override { return kColumns; }
    std::optional<std::string_view> cell(std::size_t row, int column) const override {
        const std::size_t at = (row * 31 + static_cast<std::size_t>(column)) % kTexts;
        if (column == 0) return codes_[at];
        return column < 4 ? names_[at] : numbers_[at];
    }

private:
    static constexpr int kTexts = 4000;
    std::size_t rows_;
    std::vector<std::string> codes_, names_, numbers_;
};

/// Names the file that the test wants; nothing else happens in these windows.
class FileNamer : public memory::MemoryDriver {
public:
    std::string file;
    void onModal(memory::MemoryWindow&) override {}
    Answer onMessage(MessageKind, const std::string&, const std::string&) override { return Answer::ok; }
    std::string onFileDialog(bool, const std::string&) override { return file; }
    void onPopUp(memory::MemoryMenu&) override {}
    void onDocument(const std::string&) override {}
};

/// A window with the list and the dialog.
class OutputStage {
public:
    explicit OutputStage(std::size_t rows) : toolkit_(namer_) {
        WindowDesign design{.name = "frmBench", .caption = "", .controls = {}, .menus = {}, .toolButtons = {}};
        design.controls = {{.kind = ControlKind::listGrid, .name = "vsf1"},
                           {.kind = ControlKind::fileDialog, .name = "cd1"}};
        design.controls[0].columns.resize(kColumns);
        window_ = toolkit_.createWindow(design);
        grid().bind(std::make_shared<ManyGoods>(rows));
        for (int column = 4; column < kColumns; ++column)
            grid().setColumnFormat(column, "#,###.##");
    }
    ListGrid& grid() { return window_->get<ListGrid>("vsf1"); }
    void exportTo(const std::string& file) {
        namer_.file = file;
        std::filesystem::remove(file);
        exportToExcel(toolkit_, window_->get<FileDialog>("cd1"), grid());
        if (!std::filesystem::exists(file)) throw std::runtime_error("nothing was exported");
        std::filesystem::remove(file);
    }

private:
    FileNamer namer_;
    memory::MemoryToolkit toolkit_;
    std::unique_ptr<Window> window_;
};

/// The report of a preview that shows its first page.
class FirstPage : public report::GatheredReport {
public:
    void printPreview() override {
        const report::ReportData data = gather();
        const report::ReportPages pages(data, data.page.paper, "");
        if (pages.page(0).texts.empty()) throw std::runtime_error("an empty page");
    }
    void print() override {}
};

constexpr double kSecond = 1000;

std::string rowsTo(std::size_t rows, const std::string& ending) { return std::to_string(rows) + " rows to " + ending; }

/// Milliseconds of all threads: the last part of an export has its own.
double timeExport(Report& report, const std::string& folder, std::size_t rows, const std::string& ending) {
    OutputStage stage(rows);
    const auto work = [&] { stage.exportTo(folder + "/bench" + ending); };
    const double spent = leastOf(rows > 100000 ? 1 : 3, work, processMilliseconds);
    report.note(rowsTo(rows, ending) + ": " +
                std::to_string(static_cast<int>(static_cast<double>(rows) / spent * kSecond)) + " rows a second");
    return spent;
}

/// What an export takes beyond the grid: buffers, whatever the list's length, where the format lets it.
void peakOfExport(Report& report, const std::string& folder, std::size_t rows, const std::string& ending, double most) {
    OutputStage stage(rows);
    const double peak = mostMemory([&] { stage.exportTo(folder + "/bench" + ending); });
    report.ratio("memory of " + rowsTo(rows, ending), peak, "at most", most, 1, "MiB");
}

void measureMemory(Report& report, const std::string& folder) {
    constexpr double kBuffers = 8;
    for (const std::size_t rows : {10000U, 100000U, 1000000U})
        peakOfExport(report, folder, rows, ".xlsx", kBuffers);
    peakOfExport(report, folder, 65000, ".xls", 4 * kBuffers);  // held whole
}

void measurePreview(Report& report, const std::string& folder) {
    OutputStage stage(100000);
    appState().gAppPath = folder;
    std::ofstream(folder + "/Report3.grf") << "report 1\npage A4 landscape\nheader 20\ntext fTitle 0 0 200 8\n"
                                              "text fbiller 0 10 200 8\n";
    ListReport list(std::make_unique<FirstPage>(), stage.grid(), [] {});
    report.ratio("first page of 100 thousand rows", leastOf(3, [&] { list.printPreview(); }), "a second", kSecond, 1,
                 "ms");
}

}  // namespace

void measureOutput(Report& report, const std::string& folder) {
    measureMemory(report, folder);
    const double small = timeExport(report, folder, 10000, ".xlsx");
    const double large = timeExport(report, folder, 1000000, ".xlsx");
    report.ratio("export of 1 million rows", large, "100 of 10 thousand", 100 * small, 1.5, "ms");
    timeExport(report, folder, 65000, ".xls");
    measurePreview(report, folder);
}

}  // namespace orvenmod::bench
