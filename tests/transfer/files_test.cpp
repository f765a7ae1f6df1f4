// What a file holds, as it is read into rows.
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>

#include "platform/sheet/biffrecords.h"
#include "platform/sheet/sheetwriter.h"
#include "support/machinelimits.h"
#include "transfer/importtest.h"
#include "transfer/sheetfile.h"

namespace orvenmod::test {
namespace {

/// The cells of a row, each with its kind.
Texts cells(const SheetFile& file, std::size_t row) {
    Texts all;
    for (int column = 0; column < file.rows.columnCount(); ++column) {
        const SheetCell cell = file.rows.cell(row, column);
        all.push_back(static_cast<char>(cell.kind) + cell.text);
    }
    return all;
}

/// Where temporary files are made while it lives.
class FolderForTemporaryFiles {
public:
    explicit FolderForTemporaryFiles(const std::string& path) {
        if (const char* before = ::getenv(kVariable)) before_ = before;
        ::setenv(kVariable, path.c_str(), 1);
    }
    ~FolderForTemporaryFiles() { before_ ? ::setenv(kVariable, before_->c_str(), 1) : ::unsetenv(kVariable); }
    FolderForTemporaryFiles(const FolderForTemporaryFiles&) = delete;
    FolderForTemporaryFiles& operator=(const FolderForTemporaryFiles&) = delete;

private:
    static constexpr const char* kVariable = "TMPDIR";
    std::optional<std::string> before_;
};

class Files : public ::testing::Test {
protected:
    std::string path(const std::string& name) const { return folder_.file(name); }
    SheetFile readText(const std::string& content, char separator = 0, TextEncoding encoding = TextEncoding::detected) {
        std::ofstream(path("a.csv"), std::ios::binary) << content;
        return read("a.csv", separator, encoding);
    }
    SheetFile read(const std::string& name, char separator = 0, TextEncoding encoding = TextEncoding::detected) {
        return readSheetFile({.path = path(name), .encoding = encoding, .separator = separator},
                             [](std::uint64_t, std::uint64_t) {});
    }
    SheetFile readSheet(const std::string& rows, const std::string& behind = "", const std::string& texts = "") {
        makeSheet(path("a.xlsx"), rows, behind, texts);
        return read("a.xlsx");
    }

private:
    TemporaryFolder folder_;
};

TEST_F(Files, aTextIsSplitByTheSeparatorThatItsFirstLineHas) {
    for (const char* separator : {",", ";", "\t"}) {
        SCOPED_TRACE(separator);
        const std::string by = separator;
        const SheetFile file =
            readText("代码" + by + "名称\r\n001" + by + "\"a" + by + "\"\"b\"\"\n2\"\r\n" + by + "x");
        ASSERT_EQ(file.rows.rowCount(), 3U);
        EXPECT_EQ(cells(file, 0), (Texts{"t代码", "t名称"}));
        EXPECT_EQ(cells(file, 1), (Texts{"t001", "ta" + by + "\"b\"\n2"}));
        EXPECT_EQ(cells(file, 2), (Texts{" ", "tx"}));
    }
    EXPECT_EQ(cells(readText("a;b,c", ';'), 0), (Texts{"ta", "tb,c"}));
}

TEST_F(Files, aTextIsOfUtf8OrGb18030WithOrWithoutAMark) {
    const std::string gb = "\xB4\xFA\xC2\xEB,\xC3\xFB\xB3\xC6";  // 代码,名称
    const Texts expected = {"t代码", "t名称"};
    EXPECT_EQ(cells(readText("代码,名称"), 0), expected);
    EXPECT_EQ(cells(readText("\xEF\xBB\xBF代码,名称"), 0), expected);
    EXPECT_EQ(cells(readText(gb), 0), expected);
    EXPECT_EQ(cells(readText("\x84\x31\x95\x33" + gb), 0), expected);
    EXPECT_EQ(cells(readText(gb, 0, TextEncoding::gb18030), 0), expected);
    EXPECT_THROW(readText(gb, 0, TextEncoding::utf8), UnreadableFile);
    EXPECT_THROW(readText("\xFF\xFF\xFF"), UnreadableFile);
}

TEST_F(Files, aWorkbookTellsTextsNumbersDaysAndErrorsApart) {
    const SheetFile file = readSheet(
        "<row r=\"2\"><c r=\"A2\" t=\"s\"><v>1</v></c><c r=\"B2\"><v>1.5</v></c><c r=\"C2\" s=\"1\"><v>45355</v></c>"
        "<c r=\"D2\" s=\"2\"><v>45355.5</v></c><c r=\"E2\" t=\"inlineStr\"><is><t>in</t></is></c>"
        "<c r=\"F2\" t=\"e\"><v>#N/A</v></c><c r=\"G2\" t=\"b\"><v>1</v></c><c r=\"I2\" t=\"str\"><f>A1</f><v>x</v></c>"
        "</row>",
        "", "<si><t>no</t></si><si><r><t>螺</t></r><r><t>丝</t></r><rPh><t>luosi</t></rPh></si>");
    EXPECT_EQ(file.sheets, Texts{"货品"});
    ASSERT_EQ(file.rows.rowCount(), 2U);
    EXPECT_TRUE(file.rows.isBlank(0));
    EXPECT_EQ(cells(file, 1),
              (Texts{"t螺丝", "n1.5", "d2024-03-04", "d2024-03-04 12:00:00", "tin", "e#N/A", "t1", " ", "tx"}));
}

TEST_F(Files, aPlaceThatNoSheetHasIsNone) {
    const SheetFile file = readSheet(
        "<row r=\"1\"><c r=\"A1\"><v>1</v></c></row><row r=\"-2147483648\"><c r=\"A-2147483648\"><v>2</v></c></row>"
        "<row r=\"2\"><c r=\"ZZZZZZZZ2\"><v>3</v></c><c r=\"A2\" t=\"s\"><v>-2147483648</v></c></row>",
        "<mergeCells><mergeCell ref=\"A-2147483648:B-2147483648\"/></mergeCells>");
    ASSERT_EQ(file.rows.rowCount(), 1U);
    EXPECT_EQ(cells(file, 0), Texts{"n1"});
}

TEST_F(Files, cellsThatShareATextEachHaveItWhereverTheyStand) {
    const std::string text = "<c t=\"s\"><v>0</v></c>";
    const SheetFile file = readSheet("<row r=\"1\">" + text + "<c t=\"s\"><v>1</v></c>" + text +
                                         "<c t=\"s\"><v>2</v></c><c t=\"s\"><v>-1</v></c></row>"
                                         "<row r=\"2\"><c t=\"s\"><v>1</v></c></row><row r=\"3\">" +
                                         text + "</row><row r=\"1\"><c r=\"B1\" t=\"s\"><v>0</v></c></row>",
                                     "", "<si><t>螺丝</t></si><si><t></t></si>");
    EXPECT_EQ(cells(file, 0), (Texts{"t螺丝", "t螺丝", "t螺丝"})) << "no other place has a text";
    EXPECT_TRUE(file.rows.isBlank(1));
    EXPECT_EQ(cells(file, 2), (Texts{"t螺丝", " ", " "}));
}

TEST_F(Files, aFormulaGivesItsStoredValueAndTellsWhereItHasNone) {
    const SheetFile file = readSheet("<row r=\"1\"><c r=\"A1\"><f>1+1</f><v>2</v></c><c r=\"B1\"><f>1+1</f></c></row>");
    EXPECT_EQ(cells(file, 0), (Texts{"n2", "f"}));
    makeOpenDocument(path("a.ods"),
                     "<table:table-row><table:table-cell table:formula=\"of:=1+1\" office:value-type=\"float\" "
                     "office:value=\"2\"/><table:table-cell table:formula=\"of:=1+1\"/></table:table-row>");
    EXPECT_EQ(cells(read("a.ods"), 0), (Texts{"n2", "f"}));
}

TEST_F(Files, theRestOfAMergedCellSaysSo) {
    const SheetFile file = readSheet(
        "<row r=\"1\"><c r=\"A1\"><v>1</v></c><c r=\"C1\"><v>3</v></c></row>"
        "<row r=\"2\"><c r=\"C2\"><v>4</v></c></row>",
        "<mergeCells><mergeCell ref=\"A1:B2\"/></mergeCells>");
    EXPECT_EQ(cells(file, 0), (Texts{"n1", "m", "n3"}));
    EXPECT_EQ(cells(file, 1), (Texts{"m", "m", "n4"}));
    makeOpenDocument(path("a.ods"),
                     "<table:table-row><table:table-cell office:value-type=\"string\"><text:p>a</text:p>"
                     "</table:table-cell><table:covered-table-cell/><table:table-cell office:value-type=\"string\">"
                     "<text:p>c</text:p></table:table-cell></table:table-row>");
    EXPECT_EQ(cells(read("a.ods"), 0), (Texts{"ta", "m", "tc"}));
}

TEST_F(Files, anOpenDocumentRepeatsItsCellsAndRows) {
    makeOpenDocument(
        path("a.ods"),
        "<table:table-row table:number-rows-repeated=\"2\"><table:table-cell table:number-columns-repeated=\"2\" "
        "office:value-type=\"string\"><text:p>a<text:s text:c=\"2\"/>b</text:p><text:p>c</text:p></table:table-cell>"
        "<table:table-cell office:value-type=\"date\" office:date-value=\"2024-03-04T00:00:00\"/></table:table-row>"
        "<table:table-row table:number-rows-repeated=\"1048574\"><table:table-cell "
        "table:number-columns-repeated=\"16384\"/></table:table-row>");
    const SheetFile file = read("a.ods");
    EXPECT_EQ(file.sheets, Texts{"货品"});
    ASSERT_EQ(file.rows.rowCount(), 2U);
    EXPECT_EQ(cells(file, 1), (Texts{"ta  b\nc", "ta  b\nc", "d2024-03-04"}));
}

TEST_F(Files, anOldWorkbookIsReadByItsTextsAndNumbers) {
    platform::SheetLayout layout;
    layout.name = "老表";
    layout.columns.resize(2);
    layout.columns[0].title = "代码";
    layout.columns[1].title = "数量";
    const auto sheet = platform::newXlsWriter(path("a.xls"), layout);
    sheet->addRow({{.text = "007"}, {.text = "1.25", .number = true}});
    sheet->finish();
    const SheetFile file = read("a.xls");
    EXPECT_EQ(file.sheets, Texts{"老表"});
    EXPECT_EQ(cells(file, 0), (Texts{"t代码", "t数量"}));
    EXPECT_EQ(cells(file, 1), (Texts{"t007", "n1.25"}));
}

// The table of its blocks begins in the container's head and goes on elsewhere from 7 MB on.
TEST_F(Files, anOldWorkbookOfManyBlocksIsReadToItsEnd) {
    platform::SheetLayout layout;
    layout.name = "货品";
    layout.columns.resize(1);
    layout.columns[0].title = "备注";
    const auto sheet = platform::newXlsWriter(path("a.xls"), layout);
    constexpr std::size_t kRows = 12000;
    std::string text;
    for (int i = 0; i < 400; ++i)
        text += "螺";
    for (std::size_t row = 0; row < kRows; ++row)
        sheet->addRow({{.text = std::to_string(row) + text}});
    sheet->finish();
    ASSERT_GT(std::filesystem::file_size(path("a.xls")), 8U << 20);
    const SheetFile file = read("a.xls");
    ASSERT_EQ(file.rows.rowCount(), kRows + 1);
    EXPECT_EQ(cells(file, 1), (Texts{"t0" + text}));
    EXPECT_EQ(cells(file, kRows), (Texts{"t11999" + text}));
}

TEST_F(Files, formulasAndMergedCellsOfAnOldWorkbookAreTold) {
    makeOldWorkbook(path("a.xls"));
    const SheetFile file = read("a.xls");
    ASSERT_EQ(file.rows.rowCount(), 2U);
    EXPECT_EQ(cells(file, 0), (Texts{"n1.5", "n2.25", "t螺丝", "e"}));
    EXPECT_EQ(cells(file, 1), (Texts{"m", " ", " ", "n7"}));
}

// Their records are of version 5, and their texts of a code page, without a mark.
TEST_F(Files, anOldWorkbookOfTheVersionBeforeIsReadWithItsFormulas) {
    using platform::Biff;
    using platform::Payload;
    constexpr unsigned kVersion = 0x0500;
    const std::string screw = "\xC2\xDD\xCB\xBF";  // 螺丝
    const auto bytes = [](Payload payload, const std::string& text) {
        for (const char each : text)
            payload.u8(static_cast<unsigned char>(each));
        return payload;
    };
    const auto at = [](unsigned column) { return Payload().u16(0).u16(column).u16(0); };
    const auto begin = [](std::string& stream, unsigned kind) {
        addRecord(stream, static_cast<Biff>(0x0809), Payload().u16(kVersion).u16(kind).u16(0).u16(0));
    };
    const auto head = [&](std::uint32_t sheet) {
        std::string stream;
        begin(stream, 5);
        addRecord(stream, static_cast<Biff>(0x0042), Payload().u16(936));
        addRecord(stream, static_cast<Biff>(0x0085),
                  bytes(Payload().u32(sheet).u16(0).u8(static_cast<unsigned>(screw.size())), screw));
        addRecord(stream, Biff::eof, Payload());
        return stream;
    };
    std::string stream = head(static_cast<std::uint32_t>(head(0).size()));
    begin(stream, 0x0010);
    addRecord(stream, Biff::dimensions, Payload().u16(0).u16(1).u16(0).u16(4).u16(0));
    addRecord(stream, Biff::number, at(0).f64(1.5));
    addRecord(stream, static_cast<Biff>(0x0204), bytes(at(1).u16(static_cast<unsigned>(screw.size())), screw));
    for (const auto& [column, text] : {std::pair<unsigned, std::string>{2, screw}, {3, "A1"}}) {
        addRecord(stream, static_cast<Biff>(0x0006), at(column).u16(0).u16(0).u16(0).u16(0xFFFF).u16(0).u32(0).u16(0));
        addRecord(stream, static_cast<Biff>(0x0207), bytes(Payload().u16(static_cast<unsigned>(text.size())), text));
    }
    addRecord(stream, Biff::eof, Payload());
    for (const char* name : {"Book", "BOOK", "WORKBOOK"}) {
        makeCompound(path("a.xls"), name, stream);
        const SheetFile file = read("a.xls");
        EXPECT_EQ(file.sheets, Texts{"螺丝"}) << name;
        ASSERT_EQ(file.rows.rowCount(), 1U) << name;
        EXPECT_EQ(cells(file, 0), (Texts{"n1.5", "t螺丝", "t螺丝", "tA1"})) << name;
    }
}

TEST_F(Files, anOldWorkbookLeavesNothingInTheFolderForTemporaryFiles) {
    makeOldWorkbook(path("a.xls"));
    const TemporaryFolder temporary;
    const TemporaryFolder host;
    const FolderForTemporaryFiles folder(temporary.path());
    EXPECT_EQ(read("a.xls").rows.rowCount(), 2U);
    EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
    {
        const FullDisk disk(2048);
        EXPECT_THROW(read("a.xls"), UnreadableFile);
    }
    EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
    const auto cancel = [](std::uint64_t, std::uint64_t) { throw CancelledReading(); };
    EXPECT_THROW(readSheetFile({.path = path("a.xls")}, cancel), CancelledReading);
    EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
    std::filesystem::remove(temporary.path());
    const std::filesystem::path here = std::filesystem::current_path();
    std::filesystem::current_path(host.path());
    std::filesystem::permissions(host.path(), std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    {
        const BoundByPermissions bound;
        EXPECT_EQ(read("a.xls").rows.rowCount(), 2U) << "the host's own folder is no place for it";
    }
    std::filesystem::current_path(here);
}

TEST_F(Files, aTextOfManyBlocksIsReadAsOneOfOne) {
    // Letters of two and three bytes, marks and line ends fall on the blocks' ends in turn.
    const std::string gb = "\xB4\xFA\xC2\xEB";  // 代码
    for (const std::string& letters : {std::string("代码"), gb}) {
        for (std::size_t shift = 0; shift < 12; ++shift) {
            SCOPED_TRACE(letters + std::to_string(shift));
            std::string text(shift + 1, 'x');
            constexpr std::size_t kLines = 20000;
            for (std::size_t line = 0; line < kLines; ++line)
                text += "\r\n" + letters + ",\"\"\"" + letters + "\"";
            const SheetFile file = readText(text);
            ASSERT_EQ(file.rows.rowCount(), kLines + 1);
            for (std::size_t line = 1; line <= kLines; ++line)
                ASSERT_EQ(cells(file, line), (Texts{"t代码", "t\"代码"})) << line;
        }
    }
}

TEST_F(Files, aReadingTellsHowMuchOfTheFileItHasRead) {
    platform::SheetLayout layout;
    layout.name = "Sheet1";
    layout.columns.resize(1);
    layout.columns[0].title = "代码";
    std::string csv = "代码\n";
    std::string ods;
    const auto xlsx = platform::newXlsxWriter(path("a.xlsx"), layout);
    const auto xls = platform::newXlsWriter(path("a.xls"), layout);
    for (int i = 0; i < 30000; ++i) {
        const std::string code = "第" + std::to_string(i);
        csv += code + "\n";
        ods += "<table:table-row><table:table-cell office:value-type=\"string\"><text:p>" + code +
               "</text:p></table:table-cell></table:table-row>";
        xlsx->addRow({{.text = code}});
        xls->addRow({{.text = code}});
    }
    xlsx->finish();
    xls->finish();
    makeOpenDocument(path("a.ods"), ods);
    std::ofstream(path("a.csv")) << csv;
    for (const char* name : {"a.csv", "a.xlsx", "a.ods", "a.xls"}) {
        SCOPED_TRACE(name);
        std::vector<double> told;
        const SheetFile file = readSheetFile({.path = path(name)}, [&](std::uint64_t done, std::uint64_t whole) {
            told.push_back(static_cast<double>(done) / static_cast<double>(whole));
        });
        EXPECT_GE(file.rows.rowCount(), 30000U);
        EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
        ASSERT_GT(told.size(), 5U);
        EXPECT_LT(told.front(), 0.5);
        EXPECT_GT(told.back(), 0.8);
        EXPECT_LE(told.back(), 1.0);
        EXPECT_TRUE(std::any_of(told.begin(), told.end(), [](double part) { return part > 0.3 && part < 0.7; }));
    }
}

TEST_F(Files, aCancelledReadingEnds) {
    std::string text = "代码\n";
    for (int i = 0; i < 3000; ++i)
        text += std::to_string(i) + "\n";
    std::ofstream(path("long.csv")) << text;
    EXPECT_THROW(
        readSheetFile({.path = path("long.csv")}, [](std::uint64_t, std::uint64_t) { throw CancelledReading(); }),
        CancelledReading);
}

}  // namespace
}  // namespace orvenmod::test
