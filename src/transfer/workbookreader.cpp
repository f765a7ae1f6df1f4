// Workbooks of packed parts, .xlsx and .ods: the library reads the parts and hands the cells over, and one sheet of
// them is kept.
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <orcus/config.hpp>
#include <orcus/orcus_ods.hpp>
#include <orcus/orcus_xlsx.hpp>
#include <orcus/spreadsheet/import_interface.hpp>

#include "platform/date.h"
#include "platform/numberformat.h"
#include "transfer/package.h"
#include "transfer/sheetfile.h"
#include "transfer/workbookstyles.h"

namespace orvenmod {

namespace {

namespace iface = orcus::spreadsheet::iface;
using orcus::spreadsheet::col_t;
using orcus::spreadsheet::range_t;
using orcus::spreadsheet::row_t;
using std::size_t;

constexpr std::uint64_t kMostUnpacked = 2ULL << 30;
// Sheets shrink to a thirtieth; what grows far beyond that was made to.
constexpr std::uint64_t kUnsuspected = 64ULL << 20;
constexpr std::uint64_t kMostGrowth = 200;
constexpr int kCellsAStep = 20000;

/// The workbook's texts: the library names them by their place.
class Texts final : public iface::import_shared_strings {
public:
    size_t append(std::string_view text) override {
        texts_.addText(text);
        texts_.endRow();
        return texts_.rowCount() - 1;
    }
    size_t add(std::string_view text) override { return append(text); }
    void set_segment_font(size_t) override {}
    void set_segment_bold(bool) override {}
    void set_segment_italic(bool) override {}
    void set_segment_font_name(std::string_view) override {}
    void set_segment_font_size(double) override {}
    void set_segment_font_color(orcus::spreadsheet::color_elem_t, orcus::spreadsheet::color_elem_t,
                                orcus::spreadsheet::color_elem_t, orcus::spreadsheet::color_elem_t) override {}
    void append_segment(std::string_view text) override { segments_ += text; }
    size_t commit_segments() override {
        const size_t place = append(segments_);
        segments_.clear();
        return place;
    }

    std::string text(size_t place) const {
        return place < texts_.rowCount() ? std::string(texts_.cell(place, 0).value_or("")) : "";
    }

private:
    store::Recordset texts_{std::vector<store::Column>{{"text"}}};
    std::string segments_;
};

/// What the cells of all sheets are read by.
struct Book {
    Texts texts;
    WorkbookStyles styles;
    std::chrono::sys_days dayZero = std::chrono::year(1899) / std::chrono::December / 30;
};

std::string dayText(const Book& book, double number) {
    constexpr int kSeconds = 24 * 60 * 60;
    const double days = std::floor(number);
    const auto rest = static_cast<int>(std::lround((number - days) * kSeconds));
    const std::chrono::year_month_day day(book.dayZero + std::chrono::days(static_cast<int>(days)));
    std::string text = platform::toText(
        {static_cast<int>(day.year()), static_cast<int>(unsigned(day.month())), static_cast<int>(unsigned(day.day()))});
    if (rest == 0) return text;
    char time[16];
    std::snprintf(time, sizeof time, " %02d:%02d:%02d", rest / 3600 % 24, rest / 60 % 60, rest % 60);
    return text + time;
}

class KeptSheet;

/// A formula's value, which comes behind the sheet's other cells.
class Formula final : public iface::import_formula {
public:
    explicit Formula(KeptSheet& sheet) : sheet_(sheet) {}
    void set_position(row_t row, col_t column) override { row_ = row, column_ = column; }
    void set_formula(orcus::spreadsheet::formula_grammar_t, std::string_view) override {}
    void set_shared_formula_index(size_t) override {}
    void set_result_string(std::string_view text) override { value_ = {CellKind::text, std::string(text)}; }
    void set_result_value(double value) override { value_ = {CellKind::number, platform::plainNumber(value)}; }
    void set_result_bool(bool value) override { value_ = {CellKind::text, value ? "1" : "0"}; }
    void set_result_empty() override { value_ = {CellKind::uncomputed}; }
    void commit() override;

private:
    KeptSheet& sheet_;
    row_t row_ = 0;
    col_t column_ = 0;
    SheetCell value_{CellKind::uncomputed};
};

class ArrayFormula final : public iface::import_array_formula {
public:
    explicit ArrayFormula(KeptSheet& sheet) : sheet_(sheet) {}
    void set_range(const range_t&) override {}
    void set_formula(orcus::spreadsheet::formula_grammar_t, std::string_view) override {}
    void set_result_string(row_t row, col_t column, std::string_view text) override;
    void set_result_value(row_t row, col_t column, double value) override;
    void set_result_bool(row_t row, col_t column, bool value) override;
    void set_result_empty(row_t, col_t) override {}
    void commit() override {}

private:
    KeptSheet& sheet_;
};

class Properties final : public iface::import_sheet_properties {
public:
    explicit Properties(KeptSheet& sheet) : sheet_(sheet) {}
    void set_column_width(col_t, double, orcus::length_unit_t) override {}
    void set_column_hidden(col_t, bool) override {}
    void set_row_height(row_t, double, orcus::length_unit_t) override {}
    void set_row_hidden(row_t, bool) override {}
    void set_merge_cell_range(const range_t& range) override;

private:
    KeptSheet& sheet_;
};

/// The chosen sheet.
class KeptSheet final : public iface::import_sheet {
public:
    KeptSheet(Book& book, SheetRows& rows, const WhileReading& meanwhile)
        : book_(book), rows_(rows), meanwhile_(meanwhile) {}

    iface::import_sheet_properties* get_sheet_properties() override { return &properties_; }
    iface::import_formula* get_formula() override { return &formula_; }
    iface::import_array_formula* get_array_formula() override { return &arrayFormula_; }

    void set_auto(row_t row, col_t column, std::string_view text) override {
        // The library tells an error's text so.
        put(row, column, {text.starts_with('#') ? CellKind::error : CellKind::text, std::string(text)});
    }
    void set_string(row_t row, col_t column, orcus::spreadsheet::string_id_t place) override {
        const std::string text = book_.texts.text(place);
        if (!text.empty()) put(row, column, {CellKind::text, text});
    }
    void set_value(row_t row, col_t column, double value) override { putNumber(row, column, value); }
    void set_bool(row_t row, col_t column, bool value) override {
        put(row, column, {CellKind::text, value ? "1" : "0"});
    }
    void set_date_time(row_t row, col_t column, int year, int month, int day, int hour, int minute,
                       double second) override {
        std::string text = platform::toText({year, month, day});
        if (hour != 0 || minute != 0 || second != 0) {
            char time[32];
            std::snprintf(time, sizeof time, " %02d:%02d:%02d", hour, minute, static_cast<int>(second));
            text += time;
        }
        put(row, column, {CellKind::date, text});
    }
    // The format of a cell comes before or behind its value.
    void set_format(row_t row, col_t column, size_t format) override {
        if (!book_.styles.isDay(format)) return;
        if (row == lastRow_ && column == lastColumn_ && lastIsNumber_)
            put(row, column, {CellKind::date, dayText(book_, lastNumber_)});
        else if (row != lastRow_ || column != lastColumn_)
            put(row, column, {CellKind::emptyDate});
    }
    void set_format(row_t, col_t, row_t, col_t, size_t) override {}
    void fill_down_cells(row_t row, col_t column, row_t count) override {
        const SheetCell above = cellAt(row, column);
        for (row_t below = row + 1; below <= row + count && !above.isEmpty(); ++below)
            put(below, column, above);
    }
    orcus::spreadsheet::range_size_t get_sheet_size() const override { return {1048576, 16384}; }

    void putNumber(row_t row, col_t column, double value) {
        const bool day = cellAt(row, column).kind == CellKind::emptyDate;
        put(row, column,
            day ? SheetCell{CellKind::date, dayText(book_, value)}
                : SheetCell{CellKind::number, platform::plainNumber(value)});
        lastIsNumber_ = !day;
        lastNumber_ = value;
    }
    void putResult(row_t row, col_t column, SheetCell cell) {
        if (cell.kind == CellKind::number) return putNumber(row, column, std::stod(cell.text));
        put(row, column, std::move(cell));
    }
    void noteMerged(const range_t& range) { merged_.push_back(range); }

    void finish() {
        flushRow();
        rows_.finish();
        for (const range_t& range : merged_)
            markMerged(range);
    }

private:
    // The open row stays here until another comes, since its cells are told in pieces.
    void put(row_t row, col_t column, SheetCell cell) {
        if (++cells_ % kCellsAStep == 0) meanwhile_();
        lastRow_ = row;
        lastColumn_ = column;
        lastIsNumber_ = false;
        if (row != openRow_ && static_cast<size_t>(row) >= nextRow_) {
            flushRow();
            openRow_ = row;
        }
        if (row != openRow_) return rows_.put(static_cast<size_t>(row), column, std::move(cell));
        if (open_.size() <= static_cast<size_t>(column)) open_.resize(static_cast<size_t>(column) + 1);
        open_[static_cast<size_t>(column)] = std::move(cell);
    }
    SheetCell cellAt(row_t row, col_t column) const {
        const auto at = static_cast<size_t>(column);
        if (row == openRow_) return at < open_.size() ? open_[at] : SheetCell{};
        return static_cast<size_t>(row) < nextRow_ ? rows_.cell(static_cast<size_t>(row), column) : SheetCell{};
    }
    void flushRow() {
        if (openRow_ < 0) return;
        for (size_t column = 0; column < open_.size(); ++column) {
            if (open_[column].kind != CellKind::empty)
                rows_.put(static_cast<size_t>(openRow_), static_cast<int>(column), std::move(open_[column]));
        }
        nextRow_ = static_cast<size_t>(openRow_) + 1;
        openRow_ = -1;
        open_.clear();
        // Closes the row: what comes for it from now on changes it.
        rows_.finish();
    }
    void markMerged(const range_t& range) {
        for (row_t row = range.first.row; row <= range.last.row; ++row) {
            if (static_cast<size_t>(row) >= rows_.rowCount()) return;
            for (col_t column = range.first.column; column <= range.last.column && column < kMostColumns; ++column) {
                const bool first = row == range.first.row && column == range.first.column;
                if (!first && rows_.cell(static_cast<size_t>(row), column).isEmpty())
                    rows_.put(static_cast<size_t>(row), column, {CellKind::merged});
            }
        }
    }

    Book& book_;
    SheetRows& rows_;
    const WhileReading& meanwhile_;
    Properties properties_{*this};
    Formula formula_{*this};
    ArrayFormula arrayFormula_{*this};
    std::vector<SheetCell> open_;
    row_t openRow_ = -1;
    size_t nextRow_ = 0;
    row_t lastRow_ = -1;
    col_t lastColumn_ = -1;
    bool lastIsNumber_ = false;
    double lastNumber_ = 0;
    std::vector<range_t> merged_;
    int cells_ = 0;
};

void Formula::commit() {
    sheet_.putResult(row_, column_, value_);
    value_ = {CellKind::uncomputed};
}
void ArrayFormula::set_result_string(row_t row, col_t column, std::string_view text) {
    sheet_.putResult(row, column, {CellKind::text, std::string(text)});
}
void ArrayFormula::set_result_value(row_t row, col_t column, double value) { sheet_.putNumber(row, column, value); }
void ArrayFormula::set_result_bool(row_t row, col_t column, bool value) {
    sheet_.putResult(row, column, {CellKind::text, value ? "1" : "0"});
}
void Properties::set_merge_cell_range(const range_t& range) { sheet_.noteMerged(range); }

/// A sheet that nobody chose.
class PassedSheet final : public iface::import_sheet {
public:
    void set_auto(row_t, col_t, std::string_view) override {}
    void set_string(row_t, col_t, orcus::spreadsheet::string_id_t) override {}
    void set_value(row_t, col_t, double) override {}
    void set_bool(row_t, col_t, bool) override {}
    void set_date_time(row_t, col_t, int, int, int, int, int, double) override {}
    void set_format(row_t, col_t, size_t) override {}
    void set_format(row_t, col_t, row_t, col_t, size_t) override {}
    void fill_down_cells(row_t, col_t, row_t) override {}
    orcus::spreadsheet::range_size_t get_sheet_size() const override { return {1048576, 16384}; }
};

class GlobalSettings final : public iface::import_global_settings {
public:
    explicit GlobalSettings(Book& book) : book_(book) {}
    void set_origin_date(int year, int month, int day) override {
        const auto origin = std::chrono::year(year) / static_cast<int>(month) / static_cast<int>(day);
        if (origin.ok()) book_.dayZero = origin;
    }
    void set_default_formula_grammar(orcus::spreadsheet::formula_grammar_t grammar) override { grammar_ = grammar; }
    orcus::spreadsheet::formula_grammar_t get_default_formula_grammar() const override { return grammar_; }
    void set_character_set(orcus::character_set_t) override {}

private:
    Book& book_;
    orcus::spreadsheet::formula_grammar_t grammar_ = orcus::spreadsheet::formula_grammar_t::unknown;
};

class Reader final : public iface::import_factory {
public:
    Reader(SheetFile& file, int chosen, const WhileReading& meanwhile)
        : file_(file), chosen_(chosen), kept_(book_, file.rows, meanwhile) {}

    iface::import_global_settings* get_global_settings() override { return &settings_; }
    iface::import_shared_strings* get_shared_strings() override { return &book_.texts; }
    iface::import_styles* get_styles() override { return &book_.styles; }
    iface::import_sheet* append_sheet(orcus::spreadsheet::sheet_t index, std::string_view name) override {
        file_.sheets.emplace_back(name);
        return get_sheet(index);
    }
    iface::import_sheet* get_sheet(std::string_view name) override {
        for (size_t i = 0; i < file_.sheets.size(); ++i) {
            if (file_.sheets[i] == name) return get_sheet(static_cast<orcus::spreadsheet::sheet_t>(i));
        }
        return nullptr;
    }
    iface::import_sheet* get_sheet(orcus::spreadsheet::sheet_t index) override {
        return index == chosen_ ? static_cast<iface::import_sheet*>(&kept_) : &passed_;
    }
    void finalize() override {}

    void finish() { kept_.finish(); }

private:
    SheetFile& file_;
    int chosen_;
    Book book_;
    GlobalSettings settings_{book_};
    KeptSheet kept_;
    PassedSheet passed_;
};

void refuseOversize(const std::string& path) {
    const std::uint64_t unpacked = unpackedSize(path);
    std::error_code none;
    const std::uint64_t packed = std::filesystem::file_size(path, none);
    if (unpacked > kMostUnpacked || (unpacked > kUnsuspected && unpacked / kMostGrowth > packed))
        throw UnreadableFile("文件展开后过大（" + std::to_string(unpacked >> 20) + " MB），不能导入：" + path);
}

}  // namespace

SheetFile readWorkbook(const FileChoice& choice, const WhileReading& meanwhile) {
    if (isEncryptedPackage(choice.path)) throw UnreadableFile("文件有密码，请先去掉密码：" + choice.path);
    refuseOversize(choice.path);
    SheetFile file;
    Reader reader(file, choice.sheet, meanwhile);
    std::unique_ptr<orcus::iface::import_filter> filter;
    if (hasPart(choice.path, "content.xml")) {
        filter = std::make_unique<orcus::orcus_ods>(&reader);
    } else {
        filter = std::make_unique<orcus::orcus_xlsx>(&reader);
    }
    filter->set_config(orcus::config(orcus::format_t::unknown));
    try {
        filter->read_file(choice.path);
    } catch (const CancelledReading&) {
        throw;
    } catch (const std::exception&) {
        throw UnreadableFile("文件已损坏或不是电子表格：" + choice.path);
    }
    if (file.sheets.empty()) throw UnreadableFile("文件已损坏或不是电子表格：" + choice.path);
    reader.finish();
    return file;
}

}  // namespace orvenmod
