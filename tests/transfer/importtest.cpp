#include "transfer/importtest.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile-zip.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-stdio.h>

#include <fstream>
#include <map>

#include "platform/sheet/biffrecords.h"
#include "platform/sheet/sheetwriter.h"
#include "platform/sheet/xlsglobals.h"
#include "transfer/frmImport.h"

namespace orvenmod::test {

namespace {

/// The folder of a part, made on first use.
GsfOutfile* folderOf(GsfOutfile* zip, const std::string& path, std::map<std::string, GsfOutfile*>& folders) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return zip;
    const std::string folder = path.substr(0, slash);
    GsfOutfile*& made = folders[folder];
    if (!made) {
        GsfOutfile* above = folderOf(zip, folder, folders);
        made = GSF_OUTFILE(gsf_outfile_new_child(above, folder.substr(folder.rfind('/') + 1).c_str(), TRUE));
    }
    return made;
}

// A family of bills without a field has nothing for the guard of the delete to ask.
void fillCatalogue(Database& database) {
    database.execute("delete from tblBillInfo");
    database.execute("delete from tblbillinfoentry");
    for (const char* type : {"1", "31", "41", "51", "61", "71"}) {
        database.execute(std::string("insert into tblBillInfo(fTypeId,fFieldName,fFieldType) values(") + type +
                         ",'fCustId',1)");
    }
}

}  // namespace

void makePackage(const std::string& path, const std::vector<std::pair<std::string, std::string>>& parts) {
    GsfOutput* file = gsf_output_stdio_new(path.c_str(), nullptr);
    GsfOutfile* zip = gsf_outfile_zip_new(file, nullptr);
    std::map<std::string, GsfOutfile*> folders;
    for (const auto& [name, content] : parts) {
        GsfOutput* part =
            gsf_outfile_new_child(folderOf(zip, name, folders), name.substr(name.rfind('/') + 1).c_str(), FALSE);
        gsf_output_write(part, content.size(), reinterpret_cast<const guint8*>(content.data()));
        gsf_output_close(part);
        g_object_unref(part);
    }
    // Inner folders before those that hold them.
    for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder) {
        gsf_output_close(GSF_OUTPUT(folder->second));
        g_object_unref(folder->second);
    }
    gsf_output_close(GSF_OUTPUT(zip));
    g_object_unref(zip);
    g_object_unref(file);
}

void makeSheet(const std::string& path, const std::string& rowsXml, const std::string& behind,
               const std::string& texts) {
    const std::string relations =
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    const std::string types = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
    const auto relation = [&types](const std::string& id, const std::string& type, const std::string& target) {
        return "<Relationship Id=\"" + id + "\" Type=\"" + types + type + "\" Target=\"" + target + "\"/>";
    };
    makePackage(
        path,
        {{"_rels/.rels", relations + relation("a", "officeDocument", "xl/workbook.xml") + "</Relationships>"},
         {"xl/_rels/workbook.xml.rels", relations + relation("r1", "worksheet", "worksheets/sheet1.xml") +
                                            relation("r2", "sharedStrings", "sharedStrings.xml") +
                                            relation("r3", "styles", "styles.xml") + "</Relationships>"},
         {"xl/workbook.xml", "<workbook xmlns:r=\"" + types +
                                 "\"><sheets><sheet name=\"货品\" sheetId=\"1\" r:id=\"r1\"/></sheets></workbook>"},
         {"xl/sharedStrings.xml", "<sst>" + texts + "</sst>"},
         {"xl/styles.xml",
          "<styleSheet><numFmts><numFmt numFmtId=\"170\" formatCode=\"yyyy&quot;年&quot;m\"/></numFmts>"
          "<cellStyleXfs><xf numFmtId=\"14\"/></cellStyleXfs>"
          "<cellXfs><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/><xf numFmtId=\"170\"/></cellXfs></styleSheet>"},
         {"xl/worksheets/sheet1.xml", "<worksheet><sheetData>" + rowsXml + "</sheetData>" + behind + "</worksheet>"}});
}

void makeOpenDocument(const std::string& path, const std::string& rowsXml) {
    makePackage(path, {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
                       {"content.xml",
                        "<o:document-content xmlns:o=\"o\" xmlns:table=\"t\" xmlns:office=\"f\" xmlns:text=\"x\">"
                        "<o:body><table:table table:name=\"货品\">" +
                            rowsXml + "</table:table></o:body></o:document-content>"}});
}

void makeCompound(const std::string& path, const std::string& stream, const std::string& content) {
    GsfOutput* file = gsf_output_stdio_new(path.c_str(), nullptr);
    GsfOutfile* compound = gsf_outfile_msole_new(file);
    GsfOutput* part = gsf_outfile_new_child(compound, stream.c_str(), FALSE);
    gsf_output_write(part, content.size(), reinterpret_cast<const guint8*>(content.data()));
    gsf_output_close(part);
    g_object_unref(part);
    gsf_output_close(GSF_OUTPUT(compound));
    g_object_unref(compound);
    g_object_unref(file);
}

void makeOldWorkbook(const std::string& path) {
    using platform::Biff;
    using platform::Payload;
    constexpr auto kFormula = static_cast<Biff>(0x0006);
    constexpr auto kText = static_cast<Biff>(0x0207);
    constexpr auto kMerged = static_cast<Biff>(0x00E5);
    const auto cell = [](unsigned column) { return Payload().u16(0).u16(column).u16(platform::kDefaultXf); };
    // No value, of that kind; then the flags, and a formula of no tokens.
    const auto none = [&cell](unsigned column, unsigned kind) {
        return cell(column).u16(kind).u16(0).u16(0).u16(0xFFFF).u16(0).u32(0).u16(0);
    };
    platform::SheetLayout layout;
    layout.name = "货品";
    const std::string head = platform::globalsHead(layout);
    const auto size = static_cast<std::uint32_t>(head.size() + platform::boundSheet(0, layout.name).size() + 4);
    std::string stream = head + platform::boundSheet(size, layout.name);
    addRecord(stream, Biff::eof, Payload());
    platform::addBof(stream, platform::Substream::sheet);
    addRecord(stream, Biff::dimensions, Payload().u32(0).u32(2).u16(0).u16(4).u16(0));
    addRecord(stream, Biff::number, cell(0).f64(1.5));
    addRecord(stream, kFormula, cell(1).f64(2.25).u16(0).u32(0).u16(0));
    addRecord(stream, kFormula, none(2, 0));
    addRecord(stream, kText, Payload().longText(u"螺丝"));
    addRecord(stream, kFormula, none(3, 2));
    addRecord(stream, Biff::number, Payload().u16(1).u16(3).u16(platform::kDefaultXf).f64(7));
    addRecord(stream, kMerged, Payload().u16(1).u16(0).u16(1).u16(0).u16(0));
    addRecord(stream, Biff::eof, Payload());
    makeCompound(path, "Workbook", stream);
}

void makeWorkbook(const std::string& path, const Lines& lines) {
    platform::SheetLayout layout;
    layout.name = "Sheet1";
    for (const std::string& heading : lines.at(0)) {
        layout.columns.emplace_back();
        layout.columns.back().title = heading;
        layout.columns.back().format = "@";
    }
    const auto sheet = platform::newXlsxWriter(path, layout);
    for (std::size_t row = 1; row < lines.size(); ++row) {
        std::vector<platform::SheetCell> cells(lines[0].size());
        for (std::size_t i = 0; i < lines[row].size(); ++i)
            cells[i] = {.text = lines[row][i]};
        sheet->addRow(cells);
    }
    sheet->finish();
}

ImportStage::ImportStage(MakeScript makeScript) : EditorStage(makeScript) { fillCatalogue(database()); }
ImportStage::ImportStage(MakeScript makeScript, std::unique_ptr<Site> site) : EditorStage(makeScript, std::move(site)) {
    fillCatalogue(database());
}

std::string ImportStage::workbook(const Lines& lines, const std::string& name) {
    std::string path = database().folder().file(name);
    makeWorkbook(path, lines);
    return path;
}

std::string ImportStage::text(const std::string& content, const std::string& name) { return makeFile(name, content); }

void ImportStage::import(const Steps& steps) {
    script().onWindow("frmImport", steps);
    forgetStatements();
    frmImport::instance().show(behind);
    script().finish();
}

Texts ImportStage::added() {
    Texts all;
    for (const auto& row : database().rows(
             "select fNumber,fName,fParentId,fDepth,fNBNumber from tblItem where fItemId>202 order by fItemId"))
        all.push_back(row[0] + "|" + row[1] + "|" + row[2] + "|" + row[3] + "|" + row[4]);
    return all;
}

Rows shownRows(User& user, const std::string& grid, int columns) {
    const auto& list = user.control<platform::ListGrid>(grid);
    Rows rows;
    for (int row = 1; row < list.rowCount(); ++row) {
        rows.emplace_back();
        for (int column = 0; column < columns; ++column)
            rows.back().push_back(list.text(row, column));
    }
    return rows;
}

void toCheck(User& user, const std::string& file) {
    user.type("txtFile", file, -1);
    user.click("cmdNext");
    user.click("cmdNext");
}

std::string caption(User& user, const std::string& label) { return user.control<platform::Label>(label).caption(); }

}  // namespace orvenmod::test
