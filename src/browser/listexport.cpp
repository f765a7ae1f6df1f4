#include "browser/listexport.h"

#include <exception>
#include <string>
#include <vector>

#include "browser/numbercolumn.h"
#include "frame/conversion.h"
#include "platform/sheet/sheetwriter.h"

namespace orvenmod {

namespace {

constexpr const char* kFilter = "Excel文件(*.xls)|*.xls";
constexpr const char* kSecondFilter = "|Excel工作簿(*.xlsx)|*.xlsx";
constexpr int kRowsBetweenBreaths = 5000;

/// A column of the list that goes into the sheet.
struct Exported {
    int column;
    bool number;
};

// Hidden columns (the ids, and what the clerk may not see) are left out: in a sheet anybody could unhide them.
std::vector<Exported> exportedColumns(const platform::ListGrid& list) {
    std::vector<Exported> columns;
    for (int column = 0; column < list.columnCount(); ++column) {
        if (list.columnHidden(column)) continue;
        columns.push_back({column, numberFormat(list.columnFormat(column)).has_value()});
    }
    return columns;
}

platform::SheetLayout layoutOf(const platform::ListGrid& list, const std::vector<Exported>& columns) {
    platform::SheetLayout layout;
    layout.name = "Sheet1";
    for (const auto& [column, number] : columns) {
        layout.columns.push_back({.title = list.text(0, column),
                                  .alignment = static_cast<platform::Alignment>(list.columnAlignment(column)),
                                  .width = list.columnWidth(column),
                                  .format = numberFormat(list.columnFormat(column)).value_or("@")});
    }
    return layout;
}

void write(const platform::ListGrid& list, platform::SheetWriter& sheet, const std::vector<Exported>& columns,
           const std::function<void()>& breathe) {
    std::vector<platform::SheetCell> cells(columns.size());
    std::vector<std::string> shown(columns.size());
    for (int row = 1; row < list.rowCount(); ++row) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const auto& [column, number] = columns[i];
            if (number) {
                cells[i] = {.text = list.value(row, column), .number = true};
            } else {
                shown[i] = list.text(row, column);
                cells[i] = {.text = shown[i]};
            }
        }
        sheet.addRow(cells);
        if (row % kRowsBetweenBreaths == 0) breathe();
    }
    sheet.finish();
}

}  // namespace

bool exportToExcel(platform::FileDialog& cd1, const platform::ListGrid& vsf1, const std::function<void()>& breathe) {
    cd1.setFilter(std::string(kFilter) + kSecondFilter);
    if (!cd1.showSave()) return false;
    const std::string path = cd1.fileName();
    if (path.empty()) return false;
    try {
        const auto columns = exportedColumns(vsf1);
        const bool modern = lowerCase(path).ends_with(".xlsx");
        const auto sheet = modern ? platform::newXlsxWriter(path, layoutOf(vsf1, columns))
                                  : platform::newXlsWriter(path, layoutOf(vsf1, columns));
        write(vsf1, *sheet, columns, breathe);
    } catch (const std::exception&) {
        // As the suite has always exported: whoever asked is told of a success all the same.
    }
    return true;
}

}  // namespace orvenmod
