// A workbook of the 97-2003 format: one stream named "Workbook" in an OLE2 container.
//
//   globals   BOF ... XF, STYLE, BOUNDSHEET per sheet, SST, EOF
//   a sheet   BOF, COLINFO ..., DIMENSIONS, cells, WINDOW2, PANE, EOF
#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-output-stdio.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <utility>

#include "platform/partialfile.h"
#include "platform/sheet/biffrecords.h"
#include "platform/sheet/sharedstrings.h"
#include "platform/sheet/sheetwriter.h"
#include "platform/sheet/xlsglobals.h"

namespace orvenmod::platform {

namespace {

constexpr unsigned kRowsPerSheet = 65536;
constexpr std::size_t kMostColumns = 256;

bool parseNumber(std::string_view text, double& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && std::isfinite(value);
}

// Twips to 256ths of a character: 15 twips a pixel, a character 7 pixels, 5 for the margin.
unsigned columnWidth(int twips) {
    const int units = (twips / 15 - 5) * 256 / 7;
    return static_cast<unsigned>(units < 256 ? 256 : units > 65280 ? 65280 : units);
}

class XlsWriter : public SheetWriter {
public:
    XlsWriter(const std::string& path, SheetLayout layout) : file_(path), layout_(std::move(layout)) {
        if (layout_.columns.size() > kMostColumns) throw std::runtime_error("列数超过256列，不能导出为xls文件");
        beginSheet();
    }

    void addRow(const std::vector<SheetCell>& cells) override {
        if (row_ == kRowsPerSheet) {
            endSheet();
            beginSheet();
        }
        for (std::size_t i = 0; i < cells.size(); ++i)
            addCell(i, cells[i]);
        ++row_;
    }

    void complete() override {
        endSheet();
        writeStream(globals());
    }

    void commit() override { file_.commit(); }

private:
    void beginSheet() {
        cells_.clear();
        row_ = 0;
        if (!layout_.heading) return;
        for (std::size_t i = 0; i < layout_.columns.size(); ++i)
            addText(i, layout_.columns[i].title, kHeadingXf);
        row_ = 1;
    }

    void addText(std::size_t column, std::string_view text, unsigned xf) {
        Payload cell;
        cell.u16(row_).u16(static_cast<unsigned>(column)).u16(xf).u32(texts_.place(text));
        addRecord(cells_, Biff::labelShared, cell);
    }

    void addCell(std::size_t column, const SheetCell& cell) {
        if (cell.text.empty()) return;
        const unsigned xf = kFirstColumnXf + static_cast<unsigned>(column);
        double value = 0;
        if (!cell.number || !parseNumber(cell.text, value)) return addText(column, cell.text, xf);
        addRecord(cells_, Biff::number, Payload().u16(row_).u16(static_cast<unsigned>(column)).u16(xf).f64(value));
    }

    // The cells stay where they are: a long list's are most of the memory.
    void endSheet() {
        cells_.insert(0, sheetHead());
        // The heading is a frozen pane; the first sheet is the one shown.
        const unsigned flags = (layout_.heading ? 0x01BEu : 0x00B6u) | (sheets_.empty() ? 0x0600u : 0u);
        addRecord(cells_, Biff::window2, Payload().u16(flags).u16(0).u16(0).u32(0x40).u16(0).u16(0).u32(0));
        if (layout_.heading) addRecord(cells_, Biff::pane, Payload().u16(0).u16(1).u16(1).u16(0).u8(2).u8(0));
        addRecord(cells_, Biff::eof, Payload());
        sheets_.push_back(std::exchange(cells_, {}));
    }

    std::string sheetHead() const {
        std::string head;
        addBof(head, Substream::sheet);
        for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
            const SheetColumn& column = layout_.columns[i];
            if (column.width <= 0 && !column.hidden) continue;
            const auto index = static_cast<unsigned>(i);
            Payload info;
            info.u16(index).u16(index).u16(columnWidth(column.width)).u16(kDefaultXf).u16(column.hidden ? 1 : 0).u16(0);
            addRecord(head, Biff::columnInfo, info);
        }
        Payload dimensions;
        dimensions.u32(0).u32(row_).u16(0).u16(static_cast<unsigned>(layout_.columns.size())).u16(0);
        addRecord(head, Biff::dimensions, dimensions);
        return head;
    }

    /// What stands before the sheets.
    std::string globals() const {
        const auto names = sheetNames(layout_.name, sheets_.size());
        std::string tail;
        texts_.write(tail);
        addRecord(tail, Biff::eof, Payload());
        std::string stream = globalsHead(layout_);
        std::size_t listSize = 0;
        for (const std::string& name : names)
            listSize += boundSheet(0, name).size();
        std::size_t position = stream.size() + listSize + tail.size();
        for (std::size_t i = 0; i < sheets_.size(); ++i) {
            stream += boundSheet(static_cast<std::uint32_t>(position), names[i]);
            position += sheets_[i].size();
        }
        return stream + tail;
    }

    static bool writePart(GsfOutput* output, const std::string& part) {
        return gsf_output_write(output, part.size(), reinterpret_cast<const guint8*>(part.data()));
    }

    void writeStream(const std::string& globals) const {
        // Of the container's own head no failure is told but by the stream itself.
        std::FILE* file = std::fopen(file_.partialPath().c_str(), "wb");
        if (!file) throw std::runtime_error("文件无法写入：" + file_.partialPath());
        GsfOutput* disk = gsf_output_stdio_new_FILE(file_.partialPath().c_str(), file, TRUE);
        GsfOutfile* container = gsf_outfile_msole_new(disk);
        GsfOutput* workbookStream = gsf_outfile_new_child(container, "Workbook", FALSE);
        bool written = writePart(workbookStream, globals);
        for (const std::string& sheet : sheets_)
            written = written && writePart(workbookStream, sheet);
        written = gsf_output_close(workbookStream) && written;
        written = gsf_output_close(GSF_OUTPUT(container)) && written;
        written = (gsf_output_is_closed(disk) || gsf_output_close(disk)) && written;
        g_object_unref(workbookStream);
        g_object_unref(container);
        g_object_unref(disk);
        written = std::ferror(file) == 0 && written;
        written = std::fclose(file) == 0 && written;
        if (!written) throw std::runtime_error("文件无法写入：" + file_.partialPath());
    }

    PartialFile file_;
    SheetLayout layout_;
    SharedStrings texts_;
    std::vector<std::string> sheets_;
    std::string cells_;
    unsigned row_ = 0;
};

}  // namespace

std::unique_ptr<SheetWriter> newXlsWriter(const std::string& path, const SheetLayout& layout) {
    return std::make_unique<XlsWriter>(path, layout);
}

}  // namespace orvenmod::platform
