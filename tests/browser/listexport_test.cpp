// The export of the list, read back by LibreOffice and compared with the grid.
#include "browser/listexport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "browser/browsertest.h"
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

TEST_P(ListExport, looksAsTheListDoes) {
    std::vector<int> widths;
    stage.open(kPicker, [&](User& user) {
        const auto& grid = user.control<ListGrid>("vsf1");
        for (int column = 2; column < grid.columnCount(); ++column)
            widths.push_back(grid.columnWidth(column));
        exportTo(user, file());
    });
    const SheetLook look = readLook(file());
    ASSERT_EQ(look.widths.size(), widths.size()) << "the ids are left out";
    for (std::size_t i = 1; i < widths.size(); ++i)
        EXPECT_NEAR(1.0 * look.widths[i] / look.widths[0], 1.0 * widths[i] / widths[0], 0.06) << i;
    const std::vector<CellLook> titles(widths.size(),
                                       {.alignment = "center", .format = "", .number = "", .bold = true});
    EXPECT_EQ(look.rows.at(0), titles);
    const std::vector<CellLook>& row = look.rows.at(1);
    EXPECT_EQ(row.at(0), (CellLook{.alignment = "left", .format = "@", .number = ""}));
    EXPECT_EQ(row.at(1), row.at(0));
    EXPECT_EQ(row.at(3), (CellLook{.alignment = "right", .format = "#,##0.00", .number = "1244.5"}));
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

TEST_P(ListExport, makesNumbersOfPricesAndOfWhatHasNoFormat) {
    database().execute("update ICItem set fD=3,fE=1234.5,fModel='12',fMinQty=8 where fItemId=101");
    database().execute(
        "update tblFindinfoEntry set fDataFormat=null where fTypeId=6003 and fFieldName in ('fModel','fMinQty')");
    database().execute(
        "update tblFindinfoEntry set fFieldName='fE',fDataFormat='#,##0.00' where fTypeId=6003 and "
        "fFieldName='fTimeQty'");
    openAndExport(file());
    const std::vector<CellLook> row = readLook(file()).rows.at(1);
    EXPECT_EQ(row.at(2), (CellLook{.alignment = "center", .format = "@", .number = ""})) << "a text of digits";
    EXPECT_EQ(row.at(3), (CellLook{.alignment = "right", .format = "#,##0.00", .number = "1234.5"}));
    EXPECT_EQ(row.at(4), (CellLook{.alignment = "right", .format = "", .number = "8"}));
    EXPECT_EQ(readSpreadsheet(file(), Reading::asShown)[1][3], "1,234.50");
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

}  // namespace
}  // namespace orvenmod::test
