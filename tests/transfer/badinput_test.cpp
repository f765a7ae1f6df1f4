// Files that nobody should have to bring in: each gets a clear word, and nothing is lost.
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "platform/sheet/sheetwriter.h"
#include "support/machinelimits.h"
#include "transfer/importtest.h"

namespace orvenmod::test {
namespace {

class ImportBadInput : public ImportTest {
protected:
    /// The file is refused with that beginning, and the window stays where it is.
    void refuses(const std::string& file, const std::string& text) {
        const std::string before = database().dump();
        stage.import([&](User& user) {
            user.type("txtFile", file, -1);
            user.answer(MessageKind::warning, text);
            user.click("cmdNext");
            EXPECT_TRUE(user.control<platform::Frame>("FrameFile").visible());
        });
        EXPECT_EQ(database().dump(), before);
    }
    std::string path(const std::string& name) { return database().folder().file(name); }
    /// The third column of the check's first row: why it is refused.
    std::string reason(const std::string& file) {
        std::string text;
        stage.import([&](User& user) {
            toCheck(user, file);
            text = shownRows(user, "vsfCheck", 3).at(0)[2];
        });
        return text;
    }
};

TEST_F(ImportBadInput, noFileAndAFileThatIsntThereAreTold) {
    refuses("", "请选择文件！");
    refuses(path("none.xlsx"), "文件打不开，可能不存在或正被别的程序占用：" + path("none.xlsx"));
    refuses(database().folder().path(), "这是文件夹，不是文件：" + database().folder().path());
}

TEST_F(ImportBadInput, anEmptyFileAndOneWithoutRowsAreTold) {
    refuses(stage.text("", "empty.csv"), "文件是空的：" + path("empty.csv"));
    refuses(stage.workbook({{"短代码", "名称"}}), "文件里没有数据！");
    refuses(stage.text("短代码,名称\n,\n", "blank.csv"), "文件里没有数据！");
}

TEST_F(ImportBadInput, aFileThatIsNoSpreadsheetIsTold) {
    refuses(stage.text("%PDF-1.4", "a.pdf"), "不是电子表格文件（.xlsx、.ods、.xls、.csv）：" + path("a.pdf"));
    makePackage(path("a.zip"), {{"readme.txt", "no sheet"}});
    refuses(path("a.zip"), "文件已损坏或不是电子表格：" + path("a.zip"));
    refuses(stage.text("PK\x03\x04 broken", "broken.xlsx"), "文件已损坏或不是电子表格：" + path("broken.xlsx"));
    refuses(stage.text("\xD0\xCF\x11\xE0 broken", "broken.xls"), "文件已损坏或不是电子表格：" + path("broken.xls"));
    refuses(stage.text(std::string("a\0b", 3), "binary.csv"), "不是文本文件：" + path("binary.csv"));
    refuses(stage.text("短代码,名称\n1,\"a", "open.csv"), "第2行的引号不成对：" + path("open.csv"));
}

TEST_F(ImportBadInput, anOldWorkbookWhoseSheetsCantBeFoundIsTold) {
    platform::SheetLayout layout;
    layout.name = "Sheet1";
    layout.columns.resize(1);
    platform::newXlsWriter(path("a.xls"), layout)->finish();
    refuses(path("a.xls"), "旧格式的文件读不出，请另存为 .xlsx 再导入：" + path("a.xls"));
}

TEST_F(ImportBadInput, anOldWorkbookWhoseTextsLeaveTheirRecordsIsNotRead) {
    constexpr std::size_t kNameLength = 4 + 6;  // behind the head, where the sheet begins and what it is
    makeOldWorkbook(path("a.xls"));
    const std::string whole = Stage::contents(path("a.xls"));
    const std::size_t sheet = whole.find(std::string("\x85\0", 2), 512);
    ASSERT_NE(sheet, std::string::npos);
    std::string bytes = whole;
    bytes[sheet + kNameLength] = '\xFF';
    refuses(stage.text(bytes, "name.xls"), "文件已损坏或不是电子表格：" + path("name.xls"));
    bytes = whole;
    bytes[sheet + 3] = '\x7F';
    refuses(stage.text(bytes, "record.xls"), "文件已损坏或不是电子表格：" + path("record.xls"));
}

TEST_F(ImportBadInput, aFileUnderAPasswordIsTold) {
    makePackage(path("a.ods"), {{"content.xml", "xx"},
                                {"META-INF/manifest.xml", "<m><file-entry><encryption-data/></file-entry></m>"}});
    refuses(path("a.ods"), "文件有密码，请先去掉密码：" + path("a.ods"));
    makeCompound(path("a.xlsx"), "EncryptedPackage", "locked");
    refuses(path("a.xlsx"), "文件有密码，请先去掉密码：" + path("a.xlsx"));
}

TEST_F(ImportBadInput, aFileThatMayNotBeReadIsTold) {
    const std::string file = stage.workbook({{"短代码"}, {"1"}});
    ::chmod(file.c_str(), 0);
    const BoundByPermissions bound;
    refuses(file, "文件打不开，可能不存在或正被别的程序占用：" + file);
}

TEST_F(ImportBadInput, aPackageThatGrowsBeyondMeasureIsNotUnpacked) {
    makePackage(path("bomb.xlsx"), {{"xl/workbook.xml", std::string(300UL << 20, ' ')}});
    ASSERT_LT(std::filesystem::file_size(path("bomb.xlsx")), 1U << 20);
    refuses(path("bomb.xlsx"), "文件展开后过大（300 MB），不能导入：" + path("bomb.xlsx"));
}

TEST_F(ImportBadInput, aSmallFileThatClaimsToHoldAHugeSheetIsNotRead) {
    const std::string text = "文件展开后过大，不能导入：";
    makeSheet(path("rows.xlsx"), "<row r=\"2000000000\"><c><v>1</v></c></row>");
    refuses(path("rows.xlsx"), text + path("rows.xlsx"));
    makeSheet(path("merged.xlsx"),
              "<row r=\"1\"><c r=\"A1\"><v>1</v></c><c r=\"ALL1\"><v>1</v></c></row>"
              "<row r=\"1048576\"><c r=\"A1048576\"><v>1</v></c></row>",
              "<mergeCells><mergeCell ref=\"A1:ALL1048576\"/></mergeCells>");
    refuses(path("merged.xlsx"), text + path("merged.xlsx"));
    const std::string cell =
        "<table:table-cell table:number-columns-repeated=\"1000\" office:value-type=\"string\"><text:p>";
    makeOpenDocument(path("rows.ods"), "<table:table-row table:number-rows-repeated=\"1048576\">" + cell +
                                           "a</text:p></table:table-cell></table:table-row>");
    refuses(path("rows.ods"), text + path("rows.ods"));
    makeOpenDocument(path("cells.ods"), "<table:table-row>" + cell + std::string(1UL << 20, 'a') +
                                            "</text:p></table:table-cell></table:table-row>");
    refuses(path("cells.ods"), text + path("cells.ods"));
    makeSheet(path("letters.xlsx"), "<row r=\"1\"><c r=\"ZZZZZZZZ1\"><v>1</v></c></row>");
    refuses(path("letters.xlsx"), "文件里没有数据！");
}

TEST_F(ImportBadInput, aPartThatDeclaresEntitiesIsNotRead) {
    makePackage(path("a.ods"), {{"content.xml", "<!DOCTYPE x [<!ENTITY e \"e\">]><x>&e;</x>"}});
    refuses(path("a.ods"), "文件已损坏或不是电子表格：" + path("a.ods"));
}

TEST_F(ImportBadInput, sixteenThousandColumnsAreTold) {
    makeSheet(path("wide.xlsx"), "<row r=\"1\"><c r=\"A1\"><v>1</v></c><c r=\"XFD1\"><v>2</v></c></row>");
    refuses(path("wide.xlsx"), "列太多（16384列），最多1000列：" + path("wide.xlsx"));
}

TEST_F(ImportBadInput, aRowOfTenMegabytesIsRefusedAsTooLong) {
    makeSheet(path("long.xlsx"),
              "<row r=\"1\"><c t=\"inlineStr\"><is><t>短代码</t></is></c><c t=\"inlineStr\"><is>"
              "<t>名称</t></is></c></row><row r=\"2\"><c t=\"inlineStr\"><is><t>1</t></is></c>"
              "<c t=\"inlineStr\"><is><t>" +
                  std::string(10UL << 20, 'x') + "</t></is></c></row>");
    EXPECT_EQ(reason(path("long.xlsx")), "名称：太长，最多 50 个汉字或 100 个字母");
}

TEST_F(ImportBadInput, headingsThatAreDoubledOrMissingAreLeftToTheUser) {
    stage.import([&](User& user) {
        user.type("txtFile", stage.workbook({{"短代码", "名称", "名称", "", "颜色"}, {"9", "a", "b", "c", "d"}}), -1);
        user.click("cmdNext");
        const auto& columns = user.control<EntryGrid>("fpsColumns");
        EXPECT_EQ(columns.text(3, 2), "名称*");
        EXPECT_EQ(columns.text(3, 3), "不导入");
        EXPECT_EQ(columns.text(1, 4), "（第4栏）");
        EXPECT_EQ(columns.text(3, 5), "不导入");
        user.pickCell("fpsColumns", 3, 3, 3);
        user.answer(MessageKind::warning, "“名称”有两栏存入，请只留一栏！");
        user.click("cmdNext");
        user.pickCell("fpsColumns", 3, 2, 0);
        user.pickCell("fpsColumns", 3, 1, 0);
        user.answer(MessageKind::warning, "没有存入“短代码”或“代码”的栏！");
        user.click("cmdNext");
    });
}

TEST_F(ImportBadInput, aCodeThatASpreadsheetChangedIsToldAtItsCell) {
    const std::string heading =
        "<row r=\"1\"><c t=\"inlineStr\"><is><t>短代码</t></is></c><c t=\"inlineStr\"><is><t>名称</t></is></c></row>";
    const std::string name = "<c t=\"inlineStr\"><is><t>垫圈</t></is></c></row>";
    makeSheet(path("number.xlsx"), heading + "<row r=\"2\"><c><v>12</v></c>" + name);
    EXPECT_EQ(reason(path("number.xlsx")), "短代码：电子表格把代码变成了数字，前面的零可能丢了，请改成文本");
    makeSheet(path("day.xlsx"), heading + "<row r=\"2\"><c s=\"1\"><v>45355</v></c>" + name);
    EXPECT_EQ(reason(path("day.xlsx")), "短代码：电子表格把代码变成了日期 2024-03-04，请改成文本");
    makeSheet(path("formula.xlsx"), heading + "<row r=\"2\"><c><f>A9</f></c>" + name);
    EXPECT_EQ(reason(path("formula.xlsx")), "短代码：公式没有存下结果，请在电子表格里打开并保存一次");
    makeSheet(path("error.xlsx"), heading + "<row r=\"2\"><c t=\"e\"><v>#REF!</v></c>" + name);
    EXPECT_EQ(reason(path("error.xlsx")), "短代码：单元格是错误值");
    makeSheet(path("merged.xlsx"), heading + "<row r=\"2\"><c r=\"B2\"><v>1</v></c></row>",
              "<mergeCells><mergeCell ref=\"A1:A2\"/></mergeCells>");
    EXPECT_EQ(reason(path("merged.xlsx")), "短代码：合并的单元格，请先拆分");
}

TEST_F(ImportBadInput, whatCantBeReadStaysRefusedWhenItIsSavedAndBroughtInAgain) {
    const auto text = [](const std::string& value) { return "<c t=\"str\"><v>" + value + "</v></c>"; };
    const auto row = [](int number, const std::string& cells) {
        return "<row r=\"" + std::to_string(number) + "\">" + cells + "</row>";
    };
    makeSheet(path("a.xlsx"),
              row(1, text("短代码") + text("名称") + text("规格型号")) + row(2, "<c><v>12</v></c>" + text("a")) +
                  row(3, "<c s=\"1\"><v>45355</v></c>" + text("b")) +
                  row(4, text("4") + text("c") + "<c t=\"e\"><v>#REF!</v></c>") +
                  row(5, text("5") + text("d") + "<c><f>A9</f></c>") + row(6, text("6") + text("e") + text("M")) +
                  row(7, text("7") + text("f")),
              "<mergeCells><mergeCell ref=\"C6:C7\"/></mergeCells>");
    const auto refused = [](User& user) {
        EXPECT_EQ(caption(user, "lblCounts").substr(caption(user, "lblCounts").find("拒绝")), "拒绝 5");
    };
    stage.import([&](User& user) {
        toCheck(user, path("a.xlsx"));
        refused(user);
        user.chooseFile(path("refused.xlsx"));
        user.answer(MessageKind::information, "拒绝的行已保存！");
        user.click("cmdSaveRefused");
    });
    stage.import([&](User& user) {
        toCheck(user, path("refused.xlsx"));
        refused(user);
    });
}

TEST_F(ImportBadInput, aLookupThatASpreadsheetChangedIsToldAtItsCell) {
    const std::string heading =
        "<row r=\"1\"><c t=\"str\"><v>短代码</v></c><c t=\"str\"><v>名称</v></c>"
        "<c t=\"str\"><v>主供应商</v></c></row><row r=\"2\"><c t=\"str\"><v>9</v></c><c t=\"str\"><v>a</v></c>";
    makeSheet(path("number.xlsx"), heading + "<c><v>1</v></c></row>");
    EXPECT_EQ(reason(path("number.xlsx")), "主供应商：没有这一项，电子表格可能把代码变成了数字");
    makeSheet(path("day.xlsx"), heading + "<c s=\"1\"><v>45355</v></c></row>");
    EXPECT_EQ(reason(path("day.xlsx")), "主供应商：没有这一项，电子表格可能把代码变成了日期");
}

TEST_F(ImportBadInput, aNumberThatMayBeAnotherEntrysCodeFindsNone) {
    const auto lookup = [this](const std::string& number) {
        makeSheet(
            path("number.xlsx"),
            "<row r=\"1\"><c t=\"str\"><v>短代码</v></c><c t=\"str\"><v>名称</v></c>"
            "<c t=\"str\"><v>主供应商</v></c></row><row r=\"2\"><c t=\"str\"><v>9</v></c><c t=\"str\"><v>a</v></c>"
            "<c><v>" +
                number + "</v></c></row>");
        return reason(path("number.xlsx"));
    };
    const std::string doubted = "主供应商：电子表格把代码变成了数字，前面的零可能丢了，请改成文本";
    database().addItem(2, 209, "12", "甲");
    EXPECT_EQ(lookup("12"), "") << "no other entry's code is that number";
    database().addItem(2, 210, "0012", "乙");
    database().addItem(2, 211, "3.1", "丙");
    database().addItem(2, 212, "3.10", "丁");
    EXPECT_EQ(lookup("12"), doubted);
    EXPECT_EQ(lookup("3.1"), doubted);
    stage.import([&](User& user) {
        user.type("txtFile", path("number.xlsx"), -1);
        user.click("cmdNext");
        user.pick("cmbNumber", 1, -1);
        user.click("cmdNext");
        EXPECT_EQ(shownRows(user, "vsfCheck", 3)[0][1], "新增") << "the user takes numbers as they are";
    });
}

TEST_F(ImportBadInput, aFileThatChangesBehindTheCheckIsStoredAsChecked) {
    const std::string file = stage.workbook({{"短代码", "名称"}, {"9", "垫圈"}});
    stage.import([&](User& user) {
        toCheck(user, file);
        stage.workbook({{"短代码", "名称"}, {"8", "另一个"}, {"7", "再一个"}});
        user.click("cmdNext");
        EXPECT_EQ(caption(user, "lblResult"),
                  "新增 1 行，修改 0 行，拒绝 0 行。文件在核对后改动过，存入的是核对时的内容。");
    });
    EXPECT_EQ(stage.added(), Texts{"9|垫圈|0|1|.203."});
}

TEST_F(ImportBadInput, aFullDiskKeepsTheWorkbookThatStoodThere) {
    const std::string refused = stage.text("before", "refused.xlsx");
    Lines lines = {{"短代码", "名称"}};
    for (int i = 0; i < 2000; ++i)
        lines.push_back({"", "没有代码的" + std::to_string(i)});
    const std::string file = stage.workbook(lines);
    stage.import([&](User& user) {
        toCheck(user, file);
        user.chooseFile(refused);
        {
            const FullDisk full(4096);
            user.answer(MessageKind::critical,
                        "文件无法写入：Zip generic error ZIP_ERRNO while creating the xlsx file.");
            user.click("cmdSaveRefused");
        }
        EXPECT_EQ(Stage::contents(refused), "before");
        EXPECT_EQ(caption(user, "lblCounts"), "共 2000 行：新增 0，修改 0，相同 0，拒绝 2000");
    });
}

TEST_F(ImportBadInput, aQuotationMarkIsRefusedBeforeAStatementBreaks) {
    EXPECT_EQ(reason(stage.workbook({{"短代码", "名称"}, {"9", "3' 管"}})), "名称：不能有单引号");
}

}  // namespace
}  // namespace orvenmod::test
