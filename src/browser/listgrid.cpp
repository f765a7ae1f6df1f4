#include "browser/listgrid.h"

#include "browser/numbercolumn.h"
#include "frame/conversion.h"

namespace orvenmod {

namespace {

// Nearly every cell is settled by its first character, so that a million cells cost no conversion.
bool isZero(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return false;
    const char start = text[first];
    if (start != '0' && start != '-' && start != '+' && start != '.') return false;
    return isNumeric(text) && toDouble(text) == 0;
}

}  // namespace

void dressList(platform::ListGrid& grid, const ColumnSpec& spec) {
    grid.setColumnHidden(0, true);
    grid.setColumnHidden(1, true);
    const auto titles = split(spec.titles, kSeparator);
    const auto aligns = split(spec.aligns, kSeparator);
    const auto formats = split(spec.formats, kSeparator);
    const auto widths = split(spec.widths, kSeparator);
    for (std::size_t i = 0; i < titles.size(); ++i) {
        const int column = static_cast<int>(i) + 1;
        grid.setHeaderAlignment(column, static_cast<int>(platform::Alignment::centre));
        grid.setText(0, column, titles[i]);
        grid.setColumnAlignment(column, toInt32(aligns[i]));
        grid.setColumnFormat(column, formats[i]);
        grid.setColumnWidth(column, toInt32(widths[i]));
    }
}

void clearZero(platform::ListGrid& grid) {
    for (int column = 1; column < grid.columnCount(); ++column) {
        grid.setColumnBlanked(column, numberFormat(grid.columnFormat(column)) ? isZero : nullptr);
    }
}

}  // namespace orvenmod
