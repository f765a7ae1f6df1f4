// The files that the component itself writes: each call that opens, writes, syncs, closes or renames one fails, the
// disk is full, the process ends there. Under the name that the user chose stands the old file or the new one, never
// half of one; and where it was told as written, the new one.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include "editor/binaryfile.h"
#include "platform/desktop/inisettings.h"
#include "platform/desktop/plaininifiles.h"
#include "platform/qt/qttoolkit.h"
#include "platform/sheet/sheetwriter.h"
#include "support/machinelimits.h"
#include "support/otherprocess.h"
#include "support/qt_output.h"
#include "support/temporary.h"
#include "torture/failingcalls.h"
#include "torture/share.h"
#include "torture/states.h"
#include "transfer/sheetfile.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;

constexpr int kFew = 6;
constexpr int kRows = 400;

struct Writer {
    std::string name;
    std::string file;  ///< within its folder
    std::string old;   ///< what stands there before
    /// Throws, or gives false, where it tells that it couldn't.
    std::function<bool(const std::string& folder)> write;
    std::function<bool(const std::string& path)> isNew;
    bool oldMayGo = false;
};

void PrintTo(const Writer& writer, std::ostream* out) { *out << writer.name; }

std::string nameOf(int row) { return "货品" + std::to_string(row); }

bool writeSheet(std::unique_ptr<platform::SheetWriter> sheet) {
    for (int row = 1; row <= kRows; ++row)
        sheet->addRow({{.text = nameOf(row)}, {.text = std::to_string(row), .number = true}});
    sheet->finish();
    return true;
}

platform::SheetLayout sheetLayout() { return {.name = "货品", .columns = {{.title = "名称"}, {.title = "数量"}}}; }

bool isWholeSheet(const std::string& path) {
    try {
        const SheetRows rows = readSheetFile({.path = path}, [](std::uint64_t, std::uint64_t) {}).rows;
        bool whole = rows.rowCount() == kRows + 1;
        for (int row = 1; whole && row <= kRows; ++row)
            whole = rows.cell(static_cast<std::size_t>(row), 0).text == nameOf(row) &&
                    rows.cell(static_cast<std::size_t>(row), 1).text == std::to_string(row);
        return whole;
    } catch (const UnreadableFile&) {
        return false;
    }
}

platform::qt::QtToolkit& qtToolkit() {
    static platform::qt::QtToolkit toolkit;
    return toolkit;
}

bool printReport(const std::string& folder) {
    const std::string page = folder + "/Report3.grf";
    const auto report = qtToolkit().createReport();
    report->initialize = [&] {
        report->loadFromFile(page);
        report->addField("名称", platform::ReportFieldType::text);
        report->addColumn("名称", "名称", 1, 6);
    };
    report->fetchRecord = [&] {
        for (int row = 1; row <= kRows; ++row) {
            report->appendRecord();
            report->setFieldText(1, nameOf(row));
            report->postRecord();
        }
    };
    qtToolkit().setPrintFile(folder + "/list.pdf");
    report->print();
    return true;
}

const std::string& attachment() {
    static const std::string bytes(300'000, 'x');
    return bytes;
}

std::vector<Writer> allWriters() {
    const std::string settings = "[S]\nK = old\nOther = 1\n";
    const std::string ini = "; kept\n[A]\nx=old\n";
    return {{"settings", "orvencom.ini", settings,
             [](const std::string& folder) {
                 platform::desktop::IniSettings(folder).save("Orvencom", "S", "K", "new");
                 return true;
             },
             [](const std::string& path) {
                 platform::desktop::IniSettings kept(fs::path(path).parent_path().string());
                 return kept.get("Orvencom", "S", "K", "") == "new" && kept.get("Orvencom", "S", "Other", "1") == "1";
             }},
            {"ini", "setupInfo.ini", ini,
             [](const std::string& folder) {
                 return platform::desktop::PlainIniFiles().write(folder + "/setupInfo.ini", "A", "x", "new");
             },
             [](const std::string& path) { return contentsOf(path).ends_with("[A]\nx=new\n"); }},
            {"xls", "list.xls", "old",
             [](const std::string& folder) {
                 return writeSheet(platform::newXlsWriter(folder + "/list.xls", sheetLayout()));
             },
             isWholeSheet},
            {"xlsx", "list.xlsx", "old",
             [](const std::string& folder) {
                 return writeSheet(platform::newXlsxWriter(folder + "/list.xlsx", sheetLayout()));
             },
             isWholeSheet},
            {"pdf", "list.pdf", "old", printReport,
             [](const std::string& path) {
                 const std::string text = pdfText(path);
                 for (int row = 1; row <= kRows; ++row)
                     if (text.find(nameOf(row)) == std::string::npos) return false;
                 return true;
             }},
            {.name = "attachment",
             .file = "a.pdf",
             .old = "old",
             .write =
                 [](const std::string& folder) {
                     writeFile(folder + "/a.pdf", attachment());
                     return true;
                 },
             .isNew = [](const std::string& path) { return contentsOf(path) == attachment(); },
             .oldMayGo = true}};
}

class Writers : public testing::TestWithParam<Writer> {
protected:
    void SetUp() override {
        if (GetParam().name == "pdf") qtToolkit();
        layOut(true);
        // The first makes what the process keeps: fonts, locales.
        ASSERT_TRUE(writes());
        layOut(true);
        {
            const FailingCalls counting({});
            ASSERT_TRUE(writes());
        }
        ASSERT_TRUE(isNew());
        for (const FileCall call : kFileCalls)
            counts_[static_cast<std::size_t>(call)] = FailingCalls::count(call);
        size_ = fs::file_size(path());
    }

    std::string folder() const { return folder_.file("files"); }
    std::string path() const { return folder() + "/" + GetParam().file; }

    void layOut(bool withOld) const {
        fs::remove_all(folder());
        fs::create_directories(folder());
        std::ofstream(folder() + "/Report3.grf") << "report 1\npage A5 landscape\nmargins 10 10 10 10\nheader 14\n";
        if (withOld) std::ofstream(path(), std::ios::binary) << GetParam().old;
    }
    bool writes() const {
        try {
            return GetParam().write(folder());
        } catch (const std::exception&) {
            return false;
        }
    }
    bool isNew() const { return fs::exists(path()) && GetParam().isNew(path()); }
    /// Behind the trouble. `left` is what a process that was ended may leave of its own beside it.
    void expectOldOrNew(bool withOld, bool told) const {
        const bool gone = !fs::exists(path());
        const bool isOld = withOld ? !gone && contentsOf(path()) == GetParam().old : gone;
        EXPECT_TRUE(isOld || isNew() || (GetParam().oldMayGo && gone));
        if (told) {
            EXPECT_TRUE(isNew()) << "it was told as written";
        }
    }
    void expectNothingElse() const {
        for (const auto& entry : fs::directory_iterator(folder())) {
            const std::string name = entry.path().filename().string();
            EXPECT_TRUE(name == GetParam().file || name == "Report3.grf" || name == GetParam().file + ".lock") << name;
        }
    }

    /// Each place with an old file and without one.
    void atEachPlace(const std::vector<CallTrouble::Kind>& kinds, const std::function<void(const CallTrouble&)>& act) {
        std::mt19937 random = randomFor(GetParam().name.c_str());
        for (const FileCall call : kFileCalls) {
            const int count = counts_[static_cast<std::size_t>(call)];
            for (const int at : placesOf(count, kFew, random)) {
                for (const auto kind : kinds) {
                    SCOPED_TRACE(std::string(wordFor(call)) + " " + std::to_string(at) + " of " +
                                 std::to_string(count) + (kind == CallTrouble::Kind::lasting ? " and all behind" : ""));
                    act({kind, call, at});
                    ++tried_;
                }
            }
        }
        tellTried(tried_);
    }

    TemporaryFolder folder_;
    std::array<int, kFileCalls.size()> counts_{};
    std::uintmax_t size_ = 0;
    int tried_ = 0;
};

TEST_P(Writers, aCallThatFailsLeavesTheOldFileOrTheNewOne) {
    EXPECT_GT(counts_[static_cast<std::size_t>(FileCall::open)], 0);
    EXPECT_GT(counts_[static_cast<std::size_t>(FileCall::write)], 0);
    EXPECT_GT(counts_[static_cast<std::size_t>(FileCall::rename)], 0);
    atEachPlace({CallTrouble::Kind::once, CallTrouble::Kind::lasting}, [this](const CallTrouble& trouble) {
        for (const bool withOld : {true, false}) {
            layOut(withOld);
            bool told = false;
            {
                const FailingCalls failing(trouble);
                told = writes();
            }
            // Where no file stands, none is opened to see whether it may be written.
            EXPECT_TRUE(FailingCalls::struck() || !withOld);
            expectOldOrNew(withOld, told);
            expectNothingElse();
        }
    });
}

TEST_P(Writers, aFullDiskLeavesTheOldFileOrTheNewOne) {
    std::mt19937 random = randomFor("full");
    for (const int part : placesOf(64, kFew, random)) {
        for (const bool withOld : {true, false}) {
            SCOPED_TRACE(part);
            layOut(withOld);
            bool told = false;
            {
                const FullDisk full(size_ * static_cast<std::uintmax_t>(part - 1) / 64);
                told = writes();
            }
            // Without an old one the new one may be smaller.
            EXPECT_FALSE(told && withOld);
            expectOldOrNew(withOld, told);
            expectNothingElse();
        }
    }
}

TEST_P(Writers, aProcessThatIsEndedLeavesTheOldFileOrTheNewOne) {
    atEachPlace({CallTrouble::Kind::kill}, [this](const CallTrouble& trouble) {
        for (const bool withOld : {true, false}) {
            layOut(withOld);
            OtherProcess ended([&](OtherProcess&) {
                const FailingCalls failing(trouble);
                writes();
                return 0;
            });
            EXPECT_TRUE(ended.result() == -1 || !withOld);
            expectOldOrNew(withOld, false);
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Torture, Writers, testing::ValuesIn(allWriters()),
                         [](const testing::TestParamInfo<Writer>& each) { return each.param.name; });

}  // namespace
}  // namespace orvenmod::test
