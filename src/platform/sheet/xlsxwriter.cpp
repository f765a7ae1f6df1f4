// A workbook of Office Open XML, in constant memory.
#include <xlsxwriter.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "platform/partialfile.h"
#include "platform/sheet/plainnumerals.h"
#include "platform/sheet/sheetwriter.h"
#include "platform/sheet/utf16.h"
#include "platform/sheet/xlsglobals.h"
#include "platform/sheet/zipcheck.h"

namespace orvenmod::platform {

namespace {

constexpr std::uint32_t kRowsPerSheet = 1048576;

void check(lxw_error error) {
    if (error != LXW_NO_ERROR) throw std::runtime_error(std::string("文件无法写入：") + lxw_strerror(error));
}

std::uint8_t horizontal(Alignment alignment) {
    switch (alignment) {
        case Alignment::left:
            return LXW_ALIGN_LEFT;
        case Alignment::centre:
            return LXW_ALIGN_CENTER;
        case Alignment::right:
            return LXW_ALIGN_RIGHT;
        case Alignment::general:
            break;
    }
    return LXW_ALIGN_NONE;
}

// To close a long workbook that nobody wants would take seconds, and to free it leaves its rows' file open.
struct FreeWorkbook {
    void operator()(lxw_workbook* book) const {
        lxw_worksheet* sheet = nullptr;
        STAILQ_FOREACH(sheet, book->worksheets, list_pointers) {
            if (sheet->optimize_tmpfile) std::fclose(sheet->optimize_tmpfile);
        }
        lxw_workbook_free(book);
    }
};

class XlsxWriter : public SheetWriter {
public:
    XlsxWriter(const std::string& path, SheetLayout layout) : file_(path), layout_(std::move(layout)) {
        makeReadable();
        const PlainNumerals plain;
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE;
        book_.reset(workbook_new_opt(file_.partialPath().c_str(), &options));
        if (!book_) throw std::runtime_error("文件无法写入：" + path);
        heading_ = workbook_add_format(book_.get());
        format_set_bold(heading_);
        format_set_align(heading_, LXW_ALIGN_CENTER);
        for (const SheetColumn& column : layout_.columns) {
            lxw_format* format = workbook_add_format(book_.get());
            format_set_align(format, horizontal(column.alignment));
            if (!column.format.empty()) format_set_num_format(format, column.format.c_str());
            formats_.push_back(format);
        }
        beginSheet();
    }

    void addRow(const std::vector<SheetCell>& cells) override {
        const PlainNumerals plain;
        if (row_ == kRowsPerSheet) beginSheet();
        for (std::size_t i = 0; i < cells.size(); ++i)
            addCell(static_cast<lxw_col_t>(i), cells[i]);
        ++row_;
    }

    void complete() override {
        const PlainNumerals plain;
        check(workbook_close(book_.release()));
        checkWorkbookWhole(file_.partialPath(), cellCounts_);
    }

    void commit() override { file_.commit(); }

private:
    void makeReadable() {
        layout_.name = readableText(layout_.name);
        for (SheetColumn& column : layout_.columns) {
            column.title = readableText(column.title);
            column.format = readableText(column.format);
            for (std::string& choice : column.choices)
                choice = readableText(choice);
        }
    }

    void beginSheet() {
        sheet_ = workbook_add_worksheet(book_.get(), sheetNames(layout_.name, cellCounts_.size() + 1).back().c_str());
        if (!sheet_) throw std::runtime_error("工作表无法建立：" + layout_.name);
        row_ = 0;
        cellCounts_.push_back(layout_.heading ? layout_.columns.size() : 0);
        for (std::size_t i = 0; i < layout_.columns.size(); ++i)
            setColumn(static_cast<lxw_col_t>(i));
        if (!layout_.heading) return;
        for (std::size_t i = 0; i < layout_.columns.size(); ++i) {
            check(worksheet_write_string(sheet_, 0, static_cast<lxw_col_t>(i), layout_.columns[i].title.c_str(),
                                         heading_));
        }
        worksheet_freeze_panes(sheet_, 1, 0);
        row_ = 1;
    }

    void setColumn(lxw_col_t index) {
        const SheetColumn& column = layout_.columns[index];
        const double width = column.width > 0 ? (column.width / 15.0 - 5) / 7 : LXW_DEF_COL_WIDTH;
        lxw_row_col_options options{};
        options.hidden = column.hidden ? LXW_TRUE : LXW_FALSE;
        lxw_format* format = column.wholeColumn ? formats_[index] : nullptr;
        check(worksheet_set_column_opt(sheet_, index, index, width < 1 ? 1 : width, format, &options));
        listChoices(index, column.choices);
    }

    // The format keeps a list in one text of so many characters, with commas between.
    void listChoices(lxw_col_t index, const std::vector<std::string>& choices) {
        constexpr std::size_t kLongestList = 255;
        std::vector<char*> texts;
        std::size_t length = 0;
        for (const std::string& choice : choices) {
            length += toUtf16(choice).size() + 1;
            if (length > kLongestList || choice.find(',') != std::string::npos) return;
            texts.push_back(const_cast<char*>(choice.c_str()));  // the library only reads them
        }
        if (texts.empty()) return;
        texts.push_back(nullptr);
        lxw_data_validation rule{};
        rule.validate = LXW_VALIDATION_TYPE_LIST;
        rule.value_list = texts.data();
        rule.ignore_blank = LXW_VALIDATION_ON;
        check(worksheet_data_validation_range(sheet_, 1, index, kRowsPerSheet - 1, index, &rule));
    }

    void addCell(lxw_col_t column, const SheetCell& cell) {
        if (cell.text.empty()) return;
        ++cellCounts_.back();
        double value = 0;
        const char* end = cell.text.data() + cell.text.size();
        const auto parsed = cell.number ? std::from_chars(cell.text.data(), end, value) : std::from_chars_result{};
        if (cell.number && parsed.ec == std::errc() && parsed.ptr == end && std::isfinite(value)) {
            check(worksheet_write_number(sheet_, row_, column, value, formats_[column]));
        } else {
            text_ = readableText(cutToUnits(cell.text));
            check(worksheet_write_string(sheet_, row_, column, text_.c_str(), formats_[column]));
        }
    }

    PartialFile file_;
    SheetLayout layout_;
    std::unique_ptr<lxw_workbook, FreeWorkbook> book_;
    lxw_worksheet* sheet_ = nullptr;
    lxw_format* heading_ = nullptr;
    std::vector<lxw_format*> formats_;
    std::vector<std::size_t> cellCounts_;  // of each sheet, the heading's too
    std::uint32_t row_ = 0;
    std::string text_;
};

}  // namespace

std::unique_ptr<SheetWriter> newXlsxWriter(const std::string& path, const SheetLayout& layout) {
    return std::make_unique<XlsxWriter>(path, layout);
}

}  // namespace orvenmod::platform
