// The rows of a combo box, for every toolkit. Rows and columns from 0.
#pragma once

#include <string>
#include <vector>

namespace orvenmod::platform::model {

class ComboModel {
public:
    /// Leaves no rows and no selection; the number of list rows stays.
    void clear();
    void addRow(const std::vector<std::string>& cells) { rows_.push_back(cells); }
    int rowCount() const { return static_cast<int>(rows_.size()); }
    /// "" for a column that the row hasn't. Throws std::out_of_range for a row that isn't.
    std::string cell(int row, int column) const;
    int selected() const { return selected_; }
    /// -1 for none. Throws std::out_of_range for a row that isn't and leaves the selection.
    void select(int row);
    int listRows() const { return listRows_; }
    void setListRows(int rows) { listRows_ = rows; }

private:
    std::vector<std::vector<std::string>> rows_;
    int selected_ = -1;
    int listRows_ = 8;
};

}  // namespace orvenmod::platform::model
