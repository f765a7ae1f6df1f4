#include "browser/listexport.h"

#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "browser/numbercolumn.h"
#include "frame/appstate.h"
#include "platform/asciitext.h"
#include "platform/numberformat.h"
#include "platform/sheet/sheetwriter.h"
#include "store/failure.h"

namespace orvenmod {

namespace {

constexpr const char* kFilter = "Excel文件(*.xls)|*.xls";
constexpr const char* kSecondFilter = "|Excel工作簿(*.xlsx)|*.xlsx";
constexpr int kRowsAStep = 100;

/// A column of the list that goes into the sheet.
struct Exported {
    int column;
    bool number;
    std::string format;  ///< the sheet's
};

constexpr const char* kTextFormat = "@";

// A number by its format, as it shows, or by its type in the store; the look of a value tells nothing: codes are texts.
Exported exported(const platform::ListGrid& list, int column, const NumberColumns& holdsNumbers) {
    if (const auto format = sheetFormat(list.columnFormat(column)))
        return {.column = column, .number = true, .format = *format};
    const bool number = holdsNumbers && holdsNumbers(column);
    return {column, number, number ? "" : kTextFormat};
}

// Hidden columns (the ids, and what the clerk may not see) are left out: in a sheet anybody could unhide them.
std::vector<Exported> exportedColumns(const platform::ListGrid& list, const NumberColumns& holdsNumbers) {
    std::vector<Exported> columns;
    for (int place = 0; place < list.columnCount(); ++place) {
        const int column = list.columnAt(place);
        if (list.columnHidden(column)) continue;
        columns.push_back(exported(list, column, holdsNumbers));
    }
    return columns;
}

platform::SheetLayout layoutOf(const platform::ListGrid& list, const std::vector<Exported>& columns) {
    platform::SheetLayout layout;
    layout.name = "Sheet1";
    for (const auto& [column, number, format] : columns) {
        layout.columns.push_back({.title = list.text(0, column),
                                  .alignment = static_cast<platform::Alignment>(list.columnAlignment(column)),
                                  .width = list.columnWidth(column),
                                  .format = format});
    }
    return layout;
}

class Exporter {
public:
    Exporter(platform::Toolkit& toolkit, const platform::ListGrid& list, const NumberColumns& holdsNumbers,
             const std::string& path)
        : list_(list),
          columns_(exportedColumns(list, holdsNumbers)),
          rows_(list.rowCount() - 1),
          progress_(toolkit.createProgress("正在导出，请稍候…", appState().gMsgTitle, rows_)) {
        const bool modern = platform::lowerCase(path).ends_with(".xlsx");
        sheet_ = modern ? platform::newXlsxWriter(path, layoutOf(list, columns_))
                        : platform::newXlsWriter(path, layoutOf(list, columns_));
    }

    /// False where the user cancelled.
    bool run() {
        if (!writeRows() || !complete()) return false;
        sheet_->commit();
        return true;
    }

private:
    bool writeRows() {
        std::vector<platform::SheetCell> cells(columns_.size());
        std::vector<std::string> shown(columns_.size());
        for (int row = 1; row <= rows_; ++row) {
            if (row % kRowsAStep == 0 && !progress_->advance(row)) return false;
            for (std::size_t i = 0; i < columns_.size(); ++i)
                cells[i] = cellOf(row, columns_[i], shown[i]);
            sheet_->addRow(cells);
        }
        return progress_->advance(rows_);
    }

    platform::SheetCell cellOf(int row, const Exported& from, std::string& shown) const {
        if (from.number) {
            const std::string_view value = list_.value(row, from.column);
            return {.text = value, .number = !from.format.empty() || !platform::losesDigits(value)};
        }
        shown = list_.text(row, from.column);
        return {.text = shown};
    }

    bool complete() {
        return platform::completeMeanwhile(*sheet_, [this] { return progress_->advance(rows_); });
    }

    const platform::ListGrid& list_;
    std::vector<Exported> columns_;
    int rows_;
    std::unique_ptr<platform::SheetWriter> sheet_;
    std::unique_ptr<platform::Progress> progress_;
};

}  // namespace

bool exportToExcel(platform::Toolkit& toolkit, platform::FileDialog& cd1, const platform::ListGrid& vsf1,
                   const NumberColumns& holdsNumbers) {
    cd1.setFilter(std::string(kFilter) + kSecondFilter);
    if (!cd1.showSave()) return false;
    const std::string path = cd1.fileName();
    if (path.empty()) return false;
    try {
        return Exporter(toolkit, vsf1, holdsNumbers, path).run();
    } catch (const store::Failure&) {
        throw;  // of a row that had to be fetched
    } catch (const std::exception&) {
        // As the suite has always exported: whoever asked is told of a success all the same.
    }
    return true;
}

}  // namespace orvenmod
