// The export of the list, read back by LibreOffice and compared with the grid.
#include "browser/listexport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "browser/browsertest.h"
#include "platform/memory/memorytoolkit.h"
#include "support/machinelimits.h"
#include "support/spreadsheet.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;
using platform::ListGrid;

const std::string kExported = "导出成功!";
const Texts kTitles = {"代码", "名称", "规格型号", "库存数", "最低库存"};

/// The shown columns of the grid, heading included: texts as shown.
Rows shownCells(const ListGrid& grid) {
    Rows rows;
    for (int row = 0; row < grid.rowCount(); ++row) {
        rows.emplace_back();
        for (int column = 0; column < grid.columnCount(); ++column) {
            if (!grid.columnHidden(column)) rows.back().push_back(grid.text(row, column));
        }
    }
    return rows;
}

class ListExport : public BrowserTest, public ::testing::WithParamInterface<std::string> {
protected:
    std::string file(const std::string& name = "list") const {
        return folder_.file(GetParam().empty() ? name : name + "." + GetParam());
    }
    static void exportTo(User& user, const std::string& path) {
        user.chooseFile(path);
        user.answer(MessageKind::information, kExported);
        user.clickTool("Excel");
        EXPECT_EQ(user.window().pointer(), platform::Pointer::arrow);
    }
    void openAndExport(const std::string& path) {
        stage.open(kPicker, [&](User& user) { exportTo(user, path); });
    }
    void setName(const std::string& name) {
        database().execute("update ICItem set fName='" + name + "' where fItemId=101");
    }

    TemporaryFolder folder_;
};

TEST_P(ListExport, holdsTheRowsAsShownAndNumbersAsNumbers) {
    Rows shown;
    stage.open(kPicker, [&](User& user) {
        shown = shownCells(user.control<ListGrid>("vsf1"));
        stage.forgetStatements();
        exportTo(user, file());
        EXPECT_EQ(stage.statements(), Texts{});
    });
    EXPECT_EQ(script().messages().back(), (ShownMessage{MessageKind::information, kExported, "测试套件"}));
    const Rows values = readSpreadsheet(file());
    ASSERT_EQ(values.size(), shown.size());
    EXPECT_EQ(values[0], kTitles);
    shown[1][3] = "1244.5";  // the number behind 1,244.5
    EXPECT_EQ(values, shown);
    EXPECT_EQ(readSpreadsheet(file(), Reading::asShown)[1][3], "1,244.50");
    EXPECT_EQ(values[2][3], "") << "a blanked zero";
}

TEST_P(ListExport, holdsWhatTheSearchLeft) {
    stage.open(kPicker, [&](User& user) {
        user.clickNode("tv1", "D12");
        exportTo(user, file());
    });
    const Rows rows = readSpreadsheet(file());
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[2][0], "01.01.002");
}

TEST_P(ListExport, keepsCodesWithLeadingZeros) {
    database().execute("update ICItem set fNumber='007',fModel='0012' where fItemId=101");
    openAndExport(file());
    const Rows rows = readSpreadsheet(file());
    EXPECT_EQ(rows[1][0] + "|" + rows[1][2], "007|0012");
}

TEST_P(ListExport, keepsLineEndsQuotesAndEmoji) {
    setName("a\"b\n第二行,😀");
    openAndExport(file());
    EXPECT_EQ(readSpreadsheet(file())[1][1], "a\"b\n第二行,😀");
}

TEST_P(ListExport, ofAnEmptyListWritesTheHeading) {
    stage.open(kPicker, [&](User& user) {
        user.type("txtSearch", "没有这样的货品");
        user.pick("PC", 2, 0);
        user.click("cmdFind");
        exportTo(user, file());
    });
    EXPECT_EQ(readSpreadsheet(file()), Rows{kTitles});
}

TEST_P(ListExport, takesThePlaceOfAFileOfThatName) {
    std::ofstream(file()) << "old";
    openAndExport(file());
    EXPECT_EQ(readSpreadsheet(file())[0], kTitles);
}

TEST_P(ListExport, aCancelledDialogTellsNothing) {
    stage.open(kPicker, [](User& user) {
        user.chooseFile("");
        user.clickTool("Excel");
        EXPECT_EQ(user.window().pointer(), platform::Pointer::arrow);
    });
    EXPECT_TRUE(script().messages().empty());
}

TEST_P(ListExport, aFolderOrAMissingFolderIsPassedOver) {
    fs::create_directory(file("folder"));
    openAndExport(file("folder"));
    EXPECT_TRUE(fs::is_empty(file("folder")));
    openAndExport(folder_.path() + "/gone/list." + GetParam());
    EXPECT_FALSE(fs::exists(folder_.path() + "/gone"));
}

TEST_P(ListExport, onAFullDiskLeavesNoHalfFileAndTheOldOne) {
    std::ofstream(file("old")) << "old";
    stage.open(kPicker, [&](User& user) {
        const FullDisk full(512);
        exportTo(user, file("new"));
        exportTo(user, file("old"));
    });
    EXPECT_FALSE(fs::exists(file("new")));
    EXPECT_EQ(Stage::contents(file("old")), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_.path()), {}), 1);
}

INSTANTIATE_TEST_SUITE_P(Formats, ListExport, ::testing::Values("xls", "xlsx"),
                         [](const auto& format) { return format.param; });

/// The dialog of a test that names the file itself.
const platform::WindowDesign& gridDesign() {
    static const platform::WindowDesign design = [] {
        platform::WindowDesign made{.name = "frmGrid", .caption = "", .controls = {}, .menus = {}, .toolButtons = {}};
        made.controls = {{.kind = platform::ControlKind::listGrid, .name = "vsf1", .columns = {{.title = "a"}}},
                         {.kind = platform::ControlKind::fileDialog, .name = "cd1"}};
        return made;
    }();
    return design;
}

class GridExport : public ::testing::Test {
protected:
    void exportTo(const std::string& path, const std::function<void(ListGrid&)>& fill) {
        script_->onWindow("frmGrid", [&](User& user) {
            auto& grid = user.control<ListGrid>("vsf1");
            fill(grid);
            user.chooseFile(path);
            EXPECT_TRUE(exportToExcel(user.control<platform::FileDialog>("cd1"), grid, [this] { ++breaths_; }));
        });
        script_->toolkit().createWindow(gridDesign())->showModal([] {});
        script_->finish();
    }

    TemporaryFolder folder_;
    std::unique_ptr<Script> script_ = newMemoryScript();
    int breaths_ = 0;
};

TEST_F(GridExport, aNameWithoutExtensionIsTakenAsItStands) {
    exportTo(folder_.file("list"), [](ListGrid& grid) { grid.addRow("007"); });
    EXPECT_EQ(Stage::contents(folder_.file("list")).substr(0, 4), "\xD0\xCF\x11\xE0");
    EXPECT_FALSE(fs::exists(folder_.file("list.xls")));
}

TEST_F(GridExport, theEndingOfANewWorkbookMayBeInCapitals) {
    exportTo(folder_.file("list.XLSX"), [](ListGrid& grid) { grid.addRow("007"); });
    EXPECT_EQ(Stage::contents(folder_.file("list.XLSX")).substr(0, 2), "PK");
}

TEST_F(GridExport, ofAListWhoseColumnsAreAllHiddenStillMakesAFile) {
    exportTo(folder_.file("none.xls"), [](ListGrid& grid) {
        grid.addRow("secret");
        grid.setColumnHidden(0, true);
    });
    const std::string written = Stage::contents(folder_.file("none.xls"));
    EXPECT_EQ(written.substr(0, 4), "\xD0\xCF\x11\xE0");
    EXPECT_EQ(written.find("secret"), std::string::npos) << "hidden columns are left out";
}

TEST_F(GridExport, cutsATextAtWhatACellHoldsAndDropsNoRow) {
    exportTo(folder_.file("long.xls"), [](ListGrid& grid) {
        grid.addRow(std::string(32767, 'x'));
        grid.addRow(std::string(40000, 'y'));
        grid.addRow("end");
    });
    EXPECT_EQ(readSpreadsheet(folder_.file("long.xls")),
              (Rows{{"a"}, {std::string(32767, 'x')}, {std::string(32767, 'y')}, {"end"}}));
}

TEST_F(GridExport, opensWithEveryControlCharacter) {
    std::string controls = "a";
    for (char c = 1; c < 0x20; ++c)
        controls += c;
    exportTo(folder_.file("control.xlsx"), [&](ListGrid& grid) {
        grid.setRowCount(2);
        grid.setText(1, 0, controls + "z");
    });
    const Rows rows = readSpreadsheet(folder_.file("control.xlsx"));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1][0].substr(0, 1) + rows[1][0].substr(rows[1][0].size() - 1), "az");
}

TEST_F(GridExport, keepsATextInANumberColumnAndAllDecimals) {
    exportTo(folder_.file("numbers.xlsx"), [](ListGrid& grid) {
        grid.setColumnFormat(0, "#,###.##");
        for (const char* text : {"约3", "1.23456", "", "-1234567.5"})
            grid.addRow(text);
    });
    EXPECT_EQ(readSpreadsheet(folder_.file("numbers.xlsx")), (Rows{{"a"}, {"约3"}, {"1.23456"}, {""}, {"-1234567.5"}}));
}

TEST_F(GridExport, letsTheWindowPaintWhileALongListIsWritten) {
    exportTo(folder_.file("long.xls"), [](ListGrid& grid) { grid.setRowCount(12000); });
    EXPECT_EQ(breaths_, 2);
}

}  // namespace
}  // namespace orvenmod::test
