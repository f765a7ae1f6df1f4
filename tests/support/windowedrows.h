// A list's rows that are at hand a small window at a time. A row's texts are spoilt when another row is asked for, so
// that whoever keeps them shows it.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "store/listrows.h"

namespace orvenmod::test {

/// What became of the windows, and what is to become of them.
struct RowWindows {
    std::size_t rows = 3;  ///< of a window
    int fetches = 0;
    int failAt = 0;  ///< the fetch that fails, 1 for the first; 0 for none
    bool failAll = false;
    int tended = 0;
};

class WindowedRows final : public store::ListRows {
public:
    WindowedRows(store::Recordset rows, RowWindows& windows) : all_(std::move(rows)), windows_(windows) {}

    const std::vector<store::Column>& columns() const override { return all_.columns(); }
    std::size_t rowCount() const override { return all_.rowCount(); }
    store::Value cell(std::size_t row, int column) const override {
        if (!holds(row)) fetch(row);
        if (row != row_) take(row);
        const std::optional<std::string>& text = texts_[static_cast<std::size_t>(column)];
        if (!text) return std::nullopt;
        return *text;
    }
    bool holds(std::size_t row) const override { return window_ == row / windows_.rows; }
    void tend() override { ++windows_.tended; }
    store::ListReading reading() const override { return store::ListReading::keys; }
    std::size_t memory() const override { return 0; }

private:
    void fetch(std::size_t row) const {
        if (++windows_.fetches == windows_.failAt || windows_.failAll)
            throw store::Failure(store::FailureKind::other, 50000, "注入的故障");
        window_ = row / windows_.rows;
    }
    void take(std::size_t row) const {
        spoilt_ = std::move(texts_);
        for (std::optional<std::string>& text : spoilt_) {
            if (text) std::fill(text->begin(), text->end(), '#');
        }
        texts_.clear();
        for (int column = 0; column < all_.columnCount(); ++column) {
            const store::Value value = all_.cell(row, column);
            texts_.push_back(value ? std::optional<std::string>(*value) : std::nullopt);
        }
        row_ = row;
    }

    store::Recordset all_;
    RowWindows& windows_;
    mutable std::optional<std::size_t> window_;
    mutable std::optional<std::size_t> row_;
    mutable std::vector<std::optional<std::string>> texts_;
    mutable std::vector<std::optional<std::string>> spoilt_;
};

}  // namespace orvenmod::test
