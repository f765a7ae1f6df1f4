// The rows of a list, of which a clerk sees thirty: a store may read them when somebody looks at them. Whichever way,
// they are the rows that the database held when the list was opened.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <utility>
#include <vector>

#include "store/recordset.h"

namespace orvenmod::store {

/// How the rows of a list are read: its keys at once and a window of rows where one is looked at, all where one is
/// looked at, or all at once.
enum class ListReading { keys, unseen, whole };

/// The rows of a list, looked at here and there. They outlive their connection. One thread.
class ListRows {
public:
    ListRows() = default;
    ListRows(const ListRows&) = delete;
    ListRows& operator=(const ListRows&) = delete;
    virtual ~ListRows() = default;

    virtual const std::vector<Column>& columns() const = 0;
    virtual std::size_t rowCount() const = 0;

    /// Row and column from 0. The view lives until a cell of another row is asked for. Throws Failure where the row
    /// must be fetched and can't be; asked again, it is fetched again.
    virtual Value cell(std::size_t row, int column) const = 0;

    /// Whether the row's cells are at hand, so that cell() fetches nothing.
    virtual bool holds(std::size_t row) const = 0;

    /// Calls `take` once for each row, in whatever order costs least; the row's cells of these columns, each of which
    /// is named once, are at hand within the call, which asks for no others. Throws Failure where rows can't be
    /// fetched.
    virtual void forEachRow(std::span<const int> /*columns*/, const std::function<void(std::size_t)>& take) const {
        for (std::size_t row = 0; row < rowCount(); ++row)
            take(row);
    }
    /// Tells rows that are looked at next, in that order, so that some of them can be fetched together. Throws as
    /// cell().
    virtual void expect(std::span<const std::uint32_t> /*rows*/) const {}

    /// To be called now and then (a few times a minute) while the rows are shown: lets go of what holds up the database
    /// when that has become costly. Throws Failure; the rows are then as before.
    virtual void tend() {}

    virtual ListReading reading() const = 0;

    /// Bytes held.
    virtual std::size_t memory() const = 0;
};

/// A recordset as a list's rows.
class WholeRows final : public ListRows {
public:
    explicit WholeRows(Recordset rows) : rows_(std::move(rows)) {}

    const std::vector<Column>& columns() const override { return rows_.columns(); }
    std::size_t rowCount() const override { return rows_.rowCount(); }
    Value cell(std::size_t row, int column) const override { return rows_.cell(row, column); }
    bool holds(std::size_t) const override { return true; }
    ListReading reading() const override { return ListReading::whole; }
    std::size_t memory() const override { return rows_.memory(); }

private:
    Recordset rows_;
};

}  // namespace orvenmod::store
