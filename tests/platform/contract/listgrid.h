// A list grid of two columns behind one fixed, and row sources to bind to it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/contract/contract.h"

namespace orvenmod::test {

inline platform::WindowDesign listWindow(int fixedColumns = 1) {
    platform::ControlDesign list = drawn(platform::ControlKind::listGrid, "vsf1", 0, 5000);
    list.columns = {{.title = ""}, {.title = "内码"}, {.title = "代码"}};
    list.fixedColumns = fixedColumns;
    return windowWith({list});
}

/// Rows of texts; "NULL" stands for null.
class TextRows final : public platform::RowSource {
public:
    explicit TextRows(std::vector<std::vector<std::string>> rows) : rows_(std::move(rows)) {}
    std::size_t rowCount() const override { return rows_.size(); }
    int columnCount() const override { return rows_.empty() ? 2 : static_cast<int>(rows_.front().size()); }
    std::optional<std::string_view> cell(std::size_t row, int column) const override {
        const std::string& text = rows_[row][static_cast<std::size_t>(column)];
        if (text == "NULL") return std::nullopt;
        return text;
    }

private:
    std::vector<std::vector<std::string>> rows_;
};

/// A million rows that stand nowhere, and count how often a cell is read.
class MillionRows final : public platform::RowSource {
public:
    std::size_t rowCount() const override { return 1000000; }
    int columnCount() const override { return 2; }
    std::optional<std::string_view> cell(std::size_t row, int column) const override {
        ++reads;
        text_ = column == 0 ? std::to_string(row + 1) : "0";
        return text_;
    }
    mutable std::size_t reads = 0;

private:
    mutable std::string text_;
};

}  // namespace orvenmod::test
