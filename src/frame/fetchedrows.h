// The rows of a statement as a grid's or a cell's: fetched, or read when somebody looks.
#pragma once

#include <memory>
#include <utility>

#include "platform/rowsource.h"
#include "store/listrows.h"
#include "store/recordset.h"

namespace orvenmod {

class FetchedRows : public platform::RowSource {
public:
    explicit FetchedRows(store::Recordset rows) : rows_(std::move(rows)) {}

    std::size_t rowCount() const override { return rows_.rowCount(); }
    int columnCount() const override { return rows_.columnCount(); }
    std::optional<std::string_view> cell(std::size_t row, int column) const override { return rows_.cell(row, column); }

    /// The position of the named column; throws Failure where there is none.
    int column(std::string_view name) const { return rows_.column(name); }

private:
    store::Recordset rows_;
};

class ListedRows : public platform::RowSource {
public:
    explicit ListedRows(std::unique_ptr<store::ListRows> rows) : rows_(std::move(rows)) {}

    std::size_t rowCount() const override { return rows_->rowCount(); }
    int columnCount() const override { return static_cast<int>(rows_->columns().size()); }
    std::optional<std::string_view> cell(std::size_t row, int column) const override {
        return rows_->cell(row, column);
    }
    bool holds(std::size_t row) const override { return rows_->holds(row); }
    void expect(std::span<const std::uint32_t> rows) const override { rows_->expect(rows); }

    const std::vector<store::Column>& columns() const { return rows_->columns(); }
    /// See store::ListRows.
    void tend() { rows_->tend(); }

private:
    std::unique_ptr<store::ListRows> rows_;
};

}  // namespace orvenmod
