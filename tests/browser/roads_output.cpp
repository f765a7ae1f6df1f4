// The list goes out of the window: export, preview, print.
#include <filesystem>
#include <fstream>

#include "browser/roads.h"
#include "support/spreadsheet.h"

namespace orvenmod::test {
namespace {

namespace fs = std::filesystem;
using platform::ListGrid;

const std::string kExported = "导出成功!";

/// The shown columns of the grid as texts, heading included.
Rows shownCells(User& user) {
    const auto& grid = user.control<ListGrid>("vsf1");
    Rows rows;
    for (int row = 0; row < grid.rowCount(); ++row) {
        rows.emplace_back();
        for (int column = 0; column < grid.columnCount(); ++column) {
            if (!grid.columnHidden(column)) rows.back().push_back(grid.text(row, column));
        }
    }
    return rows;
}

/// Numbers as the number format of a workbook shows them: with all its decimals.
void fillDecimals(Rows& rows) {
    for (auto row = rows.begin() + 1; row != rows.end(); ++row) {
        for (std::string& text : *row) {
            if (text == "1,244.5") text = "1,244.50";
            if (text == "5") text = "5.00";
        }
    }
}

void addGoods(Database& database, int count) {
    for (int i = 0; i < count; ++i)
        database.addItem(3, 1000 + i, "01.01." + std::to_string(1000 + i), "垫圈" + std::to_string(i), 13);
}

TEST_P(Roads, theListIsExportedAsItStandsToBothKindsOfWorkbook) {
    const TemporaryFolder folder;
    for (const char* name : {"list.xls", "list.xlsx"}) {
        for (const char* node : {"D0", "D12"}) {
            Rows shown;
            stage.open(kPicker, [&](User& user) {
                user.clickNode("tv1", node);
                shown = shownCells(user);
                user.chooseFile(folder.file(name));
                user.answer(MessageKind::information, kExported);
                user.clickTool("Excel");
            });
            fillDecimals(shown);
            EXPECT_EQ(readSpreadsheet(folder.file(name), Reading::asShown), shown) << name << " " << node;
        }
    }
    EXPECT_EQ(stage.script().messages().back().title, "测试套件");
}

TEST_P(Roads, anExportIsWrittenThroughALinkAndRefusesWhatIsReadOnly) {
    const TemporaryFolder folder;
    std::ofstream(folder.file("locked.xls")) << "old";
    fs::permissions(folder.file("locked.xls"), fs::perms::owner_read);
    fs::create_symlink("target.xls", folder.file("link.xls"));
    stage.open(kPicker, [&](User& user) {
        user.chooseFile(folder.file("locked.xls"));
        user.answer(MessageKind::warning, "“locked.xls”是只读文件，不能替换。");
        user.chooseFile(folder.file("link.xls"));
        user.answer(MessageKind::information, kExported);
        user.clickTool("Excel");
    });
    EXPECT_EQ(stage.contents(folder.file("locked.xls")), "old");
    EXPECT_TRUE(fs::is_symlink(folder.file("link.xls")));
    EXPECT_EQ(readSpreadsheet(folder.file("target.xls")).size(), 5U);
}

TEST_P(Roads, pricesOfTheSuitesOwnListAreNumbersInTheSheet) {
    const TemporaryFolder folder;
    stage.database().execute("update ICItem set fE=1234.5 where fItemId=101");
    stage.database().execute(
        "update tblFindinfoEntry set fFieldName='fE',fDataFormat='#,##0.00' where fTypeId=6003 and "
        "fFieldName='fTimeQty'");
    stage.open(kPicker, [&](User& user) {
        EXPECT_EQ(user.control<ListGrid>("vsf1").text(1, 5), "1,234.50");
        user.chooseFile(folder.file("list.xls"));
        user.answer(MessageKind::information, kExported);
        user.clickTool("Excel");
    });
    const CellLook price = readLook(folder.file("list.xls")).rows.at(1).at(3);
    EXPECT_EQ(price.format + " " + price.number, "#,##0.00 1234.5");
}

TEST_P(Roads, aCancelledSaveDialogTellsNothing) {
    stage.open(kPicker, [](User& user) {
        user.chooseFile("");
        user.clickTool("Excel");
        EXPECT_EQ(user.window().pointer(), platform::Pointer::arrow);
        user.clickNode("tv1", "D14");
        EXPECT_EQ(codes(user), Texts{"02.001"});
    });
    EXPECT_TRUE(stage.script().messages().empty());
}

TEST_P(Roads, aLongExportIsCancelledAndDoneLater) {
    addGoods(stage.database(), 400);
    const TemporaryFolder folder;
    for (const char* name : {"list.xls", "list.xlsx"}) {
        stage.open(kPicker, [&](User& user) {
            user.chooseFile(folder.file(name));
            user.cancelProgress(200);
            user.clickTool("Excel");
            EXPECT_TRUE(fs::is_empty(folder.path())) << "no half file";
            EXPECT_EQ(user.window().pointer(), platform::Pointer::arrow);
            user.chooseFile(folder.file(name));
            user.answer(MessageKind::information, kExported);
            user.clickTool("Excel");
        });
        EXPECT_EQ(readSpreadsheet(folder.file(name)).size(), 405U);
        fs::remove(folder.file(name));
    }
    EXPECT_EQ(stage.script().messages().size(), 2U) << "who cancels knows it";
}

TEST_P(Roads, aBrokenTemplateIsToldByPreviewAndPrintAndTheWindowLivesOn) {
    const std::string path = stage.database().folder().path() + "\\Report3.grf";
    std::ofstream(stage.database().folder().file("Report3.grf")) << "report 1\nmargins 10 10 wide 10\n";
    stage.open(kPicker, [&](User& user) {
        for (const char* key : {"Preview", "Print"}) {
            user.answer(MessageKind::critical, "报表模板第 2 行：应为右边距（0 到 1000 的数），实为“wide”\n" + path);
            user.clickTool(key);
        }
        user.clickNode("tv1", "D14");
        EXPECT_EQ(codes(user), Texts{"02.001"});
    });
}

}  // namespace
}  // namespace orvenmod::test
