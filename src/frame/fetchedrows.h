// The rows of a statement as a grid's or a cell's.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/rowsource.h"
#include "store/failure.h"
#include "store/listrows.h"

namespace orvenmod {

class ListedRows : public platform::RowSource {
public:
    explicit ListedRows(std::unique_ptr<store::ListRows> rows) : rows_(std::move(rows)) {}

    std::size_t rowCount() const override { return rows_->rowCount(); }
    int columnCount() const override { return static_cast<int>(rows_->columns().size()); }
    std::optional<std::string_view> cell(std::size_t row, int column) const override {
        return rows_->cell(row, column);
    }
    bool holds(std::size_t row) const override { return rows_->holds(row); }
    void forEachRow(std::span<const int> columns, const std::function<void(std::size_t)>& take) const override {
        rows_->forEachRow(columns, take);
    }
    void expect(std::span<const std::uint32_t> rows) const override { rows_->expect(rows); }

    const std::vector<store::Column>& columns() const { return rows_->columns(); }
    /// The position of the named column, without regard to case; throws Failure where there is none.
    int column(std::string_view name) const { return store::columnOf(rows_->columns(), name); }
    /// See store::ListRows. Of failures that follow each other the first goes to the caller.
    void tend() {
        try {
            rows_->tend();
            tendFailed_ = false;
        } catch (const store::Failure&) {
            if (!std::exchange(tendFailed_, true)) throw;
        }
    }

private:
    std::unique_ptr<store::ListRows> rows_;
    bool tendFailed_ = false;
};

}  // namespace orvenmod
