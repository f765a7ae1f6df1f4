// A list grid of two columns behind one fixed, and row sources to bind to it.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <stdexcept>
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

/// One whose user arranges it: code, name, quantity and a hidden id.
inline platform::WindowDesign arrangedWindow() {
    platform::WindowDesign design = listWindow(0);
    design.controls[0].arranges = true;
    design.controls[0].columns = {{.title = "代码", .width = 1500},
                                  {.title = "名称", .width = 2400},
                                  {.title = "数量", .width = 1500},
                                  {.title = "内码", .width = 900, .hidden = true}};
    design.controls[0].width = 8000;
    design.controls.push_back(drawn(platform::ControlKind::edit, "txt", 5200));
    design.menus = {{.name = "MenuHeading", .caption = "列", .visible = false},
                    {.name = "MenuReset", .caption = "恢复默认列", .parent = "MenuHeading"}};
    return design;
}

/// Rows of texts; "NULL" stands for null. Each row is fetched when it is read, and its texts are spoilt when another
/// one is, so that whoever keeps them shows it.
class TextRows final : public platform::RowSource {
public:
    explicit TextRows(std::vector<std::vector<std::string>> rows) : rows_(std::move(rows)) {}
    std::size_t rowCount() const override { return rows_.size(); }
    int columnCount() const override { return rows_.empty() ? 2 : static_cast<int>(rows_.front().size()); }
    std::optional<std::string_view> cell(std::size_t row, int column) const override {
        if (!holds(row)) fetch(row);
        const std::string& text = texts_[static_cast<std::size_t>(column)];
        if (text == "NULL") return std::nullopt;
        return text;
    }
    bool holds(std::size_t row) const override { return row == fetched_; }

    mutable int fetches = 0;
    int failAt = 0;  ///< the fetch that fails, 1 for the first; 0 for none
    bool failAll = false;

private:
    void fetch(std::size_t row) const {
        if (++fetches == failAt || failAll) throw std::runtime_error("读不到行");
        spoilt_ = std::move(texts_);
        for (std::string& text : spoilt_)
            std::fill(text.begin(), text.end(), '#');
        texts_ = rows_[row];
        fetched_ = row;
    }

    std::vector<std::vector<std::string>> rows_;
    mutable std::optional<std::size_t> fetched_;
    mutable std::vector<std::string> texts_;
    mutable std::vector<std::string> spoilt_;
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
