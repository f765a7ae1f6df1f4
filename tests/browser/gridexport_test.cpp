// The export of whatever stands in a grid: texts that are hard to keep, long lists, and a user who gives up.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "browser/browsertest.h"
#include "browser/listexport.h"
#include "platform/memory/memorytoolkit.h"
#include "support/spreadsheet.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;
using platform::ListGrid;
using platform::memory::MemoryToolkit;

/// A window with a grid of so many columns, and the dialog of a test that names the file itself.
platform::WindowDesign gridDesign(std::size_t columns) {
    platform::WindowDesign design{.name = "frmGrid", .caption = "", .controls = {}, .menus = {}, .toolButtons = {}};
    design.controls = {{.kind = platform::ControlKind::listGrid, .name = "vsf1"},
                       {.kind = platform::ControlKind::fileDialog, .name = "cd1"}};
    design.controls[0].columns.resize(columns, {.title = "a"});
    return design;
}

class GridExport : public ::testing::TestWithParam<std::string> {
protected:
    using Fill = std::function<void(ListGrid&)>;
    NumberColumns holdsNumbers_;

    std::string file(const std::string& name = "list") const { return folder_.file(name + "." + GetParam()); }
    /// What the export gave back.
    bool exportTo(const std::string& path, const Fill& fill, std::size_t columns = 1) {
        bool named = false;
        script_->onWindow("frmGrid", [&](User& user) {
            auto& grid = user.control<ListGrid>("vsf1");
            fill(grid);
            user.chooseFile(path);
            named = exportToExcel(toolkit(), user.control<platform::FileDialog>("cd1"), grid, holdsNumbers_);
        });
        toolkit().createWindow(gridDesign(columns))->showModal([] {});
        script_->finish();
        return named;
    }
    MemoryToolkit& toolkit() { return dynamic_cast<MemoryToolkit&>(script_->toolkit()); }
    auto files() const { return std::distance(fs::directory_iterator(folder_.path()), {}); }

    TemporaryFolder folder_;
    std::unique_ptr<Script> script_ = newMemoryScript();
};

void addThousandRows(ListGrid& grid) {
    for (int row = 1; row <= 1000; ++row)
        grid.addRow(std::to_string(row));
}

TEST_P(GridExport, ofAListWhoseColumnsAreAllHiddenMakesAnEmptySheet) {
    EXPECT_TRUE(exportTo(file(), [](ListGrid& grid) {
        grid.addRow("secret");
        grid.setColumnHidden(0, true);
    }));
    for (const auto& row : readSpreadsheet(file()))
        EXPECT_EQ(row, Texts{""}) << "hidden columns are left out: in a sheet anybody could unhide them";
}

TEST_P(GridExport, ofAListWithoutColumnsMakesAnEmptySheet) {
    EXPECT_TRUE(exportTo(
        file(), [](ListGrid& grid) { EXPECT_EQ(grid.columnCount(), 0); }, 0));
    for (const auto& row : readSpreadsheet(file()))
        EXPECT_EQ(row, Texts{""});
}

TEST_P(GridExport, cutsATextAtWhatACellHoldsAndDropsNoRow) {
    exportTo(file(), [](ListGrid& grid) {
        grid.addRow(std::string(32767, 'x'));
        grid.addRow(std::string(40000, 'y'));
        grid.addRow("end");
    });
    EXPECT_EQ(readSpreadsheet(file()), (Rows{{"a"}, {std::string(32767, 'x')}, {std::string(32767, 'y')}, {"end"}}));
}

TEST_P(GridExport, opensWithEveryControlCharacter) {
    exportTo(file(), [](ListGrid& grid) {
        grid.setRowCount(32);
        for (char c = 1; c < 0x20; ++c)
            grid.setText(c, 0, std::string("前") + c + "后");
    });
    const Rows rows = readSpreadsheet(file());
    ASSERT_EQ(rows.size(), 32U);
    for (std::size_t c = 1; c < 0x20; ++c) {
        EXPECT_TRUE(rows[c][0].starts_with("前") && rows[c][0].ends_with("后")) << c << ": " << rows[c][0];
    }
    EXPECT_EQ(rows['\t'][0], "前\t后");
    EXPECT_EQ(rows['\n'][0], "前\n后");
}

TEST_P(GridExport, keepsATextInANumberColumnAndAllDecimals) {
    exportTo(file(), [](ListGrid& grid) {
        grid.setColumnFormat(0, "#,###.##");
        for (const char* text : {"约3", "1.23456", "", "-1234567.5"})
            grid.addRow(text);
    });
    EXPECT_EQ(readSpreadsheet(file()), (Rows{{"a"}, {"约3"}, {"1.23456"}, {""}, {"-1234567.5"}}));
}

TEST_P(GridExport, showsEveryNumberFormatOfTheList) {
    const Texts formats = {"#,###",       "#,###.#",      "#,###.##", "#,###.###", "#,###.####",
                           "#,###.#####", "#,###.######", "",         "0.00"};
    exportTo(
        file(),
        [&](ListGrid& grid) {
            grid.setRowCount(2);
            for (int column = 0; column < 9; ++column) {
                grid.setColumnFormat(column, formats[static_cast<std::size_t>(column)]);
                grid.setText(1, column, "1234567.125");
            }
        },
        formats.size());
    EXPECT_EQ(readSpreadsheet(file(), Reading::asShown)[1],
              (Texts{"1,234,567", "1,234,567.1", "1,234,567.13", "1,234,567.125", "1,234,567.1250", "1,234,567.12500",
                     "1,234,567.125000", "1234567.125", "1234567.13"}));
}

TEST_P(GridExport, makesNumbersOfEveryFormatThatTheListShows) {
    const Texts formats = {"#,##0.00", "#,##0.0", "0%", "0.00%", "0", "#.##", "0.0#", "yyyy-mm-dd"};
    const Texts shown = {"1,234.50", "1,234.5", "123450%", "123450.00%", "1235", "1234.50", "1234.5", "1234.5"};
    exportTo(
        file(),
        [&](ListGrid& grid) {
            grid.setRowCount(4);
            grid.setText(3, 0, "1");
            for (int column = 0; column < grid.columnCount(); ++column) {
                grid.setColumnFormat(column, formats[static_cast<std::size_t>(column)]);
                grid.setText(1, column, "1234.5");
            }
        },
        formats.size());
    EXPECT_EQ(readSpreadsheet(file(), Reading::asShown).at(1), shown);
    const auto cells = readLook(file()).rows.at(1);
    for (std::size_t i = 0; i + 1 < formats.size(); ++i)
        EXPECT_EQ(cells.at(i).number, "1234.5") << formats[i];
    EXPECT_EQ(cells.back(), (CellLook{.alignment = "left", .format = "@", .number = ""}));
    EXPECT_EQ(readSpreadsheet(file()).at(2), Texts(formats.size())) << "what is empty stays so";
}

TEST_P(GridExport, makesNumbersOfAColumnThatTheStoreDeclaresSo) {
    holdsNumbers_ = [](int column) { return column == 0; };
    const Texts values = {"7", "-0.125", "1e+20", "123456789012345", "1234567890123456", "", "约3"};
    exportTo(
        file(),
        [&](ListGrid& grid) {
            for (const std::string& value : values)
                grid.addRow(value + "\t" + value);
        },
        2);
    const auto rows = readLook(file()).rows;
    const auto number = [&rows](std::size_t row) { return rows.at(row).at(0).number; };
    EXPECT_EQ((Texts{number(1), number(2), number(3), number(4)}), (Texts{"7", "-0.125", "1E+020", "123456789012345"}));
    const auto read = readSpreadsheet(file());
    for (const std::size_t row : {5U, 6U, 7U}) {
        EXPECT_EQ(number(row), "") << "no digit of a long key is lost";
        EXPECT_EQ(read.at(row).at(0), values[row - 1]);
    }
    for (std::size_t row = 1; row <= values.size(); ++row)
        EXPECT_EQ(rows.at(row).at(1).number, "") << "a text is a text, whatever it looks like";
}

TEST_P(GridExport, takesTextsThatLookLikeNumbersDatesOrFormulasAsTexts) {
    const Texts texts = {"007", "1E5", "2026-11-20", "=1+1", "+8", "1,234", "-", "'", " 7", "1/2", "50%", "TRUE"};
    exportTo(file(), [&](ListGrid& grid) {
        for (const std::string& text : texts)
            grid.addRow(text);
    });
    const Rows rows = readSpreadsheet(file());
    ASSERT_EQ(rows.size(), texts.size() + 1);
    for (std::size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(rows[i + 1][0], texts[i]);
}

TEST_P(GridExport, tellsHowFarALongListIs) {
    std::vector<int> steps;
    toolkit().setProgressObserver([&](const std::string& text, int done, int whole) {
        EXPECT_EQ(text, "正在导出，请稍候…");
        EXPECT_EQ(whole, 1000);
        steps.push_back(done);
        return true;
    });
    EXPECT_TRUE(exportTo(file(), addThousandRows));
    ASSERT_GE(steps.size(), 11U);
    for (std::size_t i = 0; i < 10; ++i)
        EXPECT_EQ(steps[i], 100 * (static_cast<int>(i) + 1));
    EXPECT_EQ(steps.back(), 1000) << "and goes on to tell so while the file is put together";
}

TEST_P(GridExport, thatIsCancelledLeavesNoFileAndTheOldOne) {
    for (const int done : {100, 600, 1000}) {
        std::ofstream(file("old")) << "old";
        toolkit().setProgressObserver([&](const std::string&, int now, int) { return now < done; });
        EXPECT_FALSE(exportTo(file("new"), addThousandRows));
        EXPECT_FALSE(exportTo(file("old"), addThousandRows));
        EXPECT_EQ(Stage::contents(file("old")), "old");
        EXPECT_EQ(files(), 1) << done;
    }
}

TEST_P(GridExport, thatIsCancelledWhileTheFileIsPutTogetherLeavesNoFile) {
    int asked = 0;
    toolkit().setProgressObserver([&](const std::string&, int, int) { return ++asked <= 11; });
    EXPECT_FALSE(exportTo(file(), addThousandRows));
    EXPECT_EQ(files(), 0);
}

TEST_P(GridExport, goesOnAfterOneThatWasCancelled) {
    toolkit().setProgressObserver([](const std::string&, int, int) { return false; });
    EXPECT_FALSE(exportTo(file(), addThousandRows));
    toolkit().setProgressObserver({});
    EXPECT_TRUE(exportTo(file(), addThousandRows));
    EXPECT_EQ(readSpreadsheet(file()).size(), 1001U);
}

INSTANTIATE_TEST_SUITE_P(Formats, GridExport, ::testing::Values("xls", "xlsx"),
                         [](const auto& format) { return format.param; });

class ExportedName : public GridExport {};

TEST_P(ExportedName, withoutAnExtensionIsTakenAsItStands) {
    exportTo(folder_.file("list"), [](ListGrid& grid) { grid.addRow("007"); });
    EXPECT_EQ(Stage::contents(folder_.file("list")).substr(0, 4), "\xD0\xCF\x11\xE0");
    EXPECT_EQ(files(), 1);
}

TEST_P(ExportedName, ofANewWorkbookMayEndInCapitals) {
    exportTo(folder_.file("list.XLSX"), [](ListGrid& grid) { grid.addRow("007"); });
    EXPECT_EQ(Stage::contents(folder_.file("list.XLSX")).substr(0, 2), "PK");
}

TEST_P(ExportedName, mayHoldBlanksAndChinese) {
    exportTo(folder_.file("货品 清单.xls"), [](ListGrid& grid) { grid.addRow("007"); });
    EXPECT_EQ(readSpreadsheet(folder_.file("货品 清单.xls")), (Rows{{"a"}, {"007"}}));
}

INSTANTIATE_TEST_SUITE_P(Any, ExportedName, ::testing::Values("xls"));

}  // namespace
}  // namespace orvenmod::test
