#include "platform/model/combomodel.h"

#include <stdexcept>

namespace orvenmod::platform::model {

void ComboModel::clear() {
    rows_.clear();
    selected_ = -1;
}

std::string ComboModel::cell(int row, int column) const {
    if (row < 0 || row >= rowCount()) throw std::out_of_range("下标越界");
    const auto& cells = rows_[static_cast<std::size_t>(row)];
    if (column < 0 || column >= static_cast<int>(cells.size())) return {};
    return cells[static_cast<std::size_t>(column)];
}

void ComboModel::select(int row) {
    if (row < -1 || row >= rowCount()) throw std::out_of_range("下标越界");
    selected_ = row;
}

}  // namespace orvenmod::platform::model
