// The data control: fetches a query by a connection of its own and binds its rows to a list grid.
#pragma once

#include <memory>
#include <string>

#include "frame/fetchedrows.h"
#include "platform/listgrid.h"
#include "store/connection.h"

namespace orvenmod {

class Adodc {
public:
    explicit Adodc(platform::ListGrid& grid) : grid_(grid) {}
    ~Adodc();
    Adodc(const Adodc&) = delete;
    Adodc& operator=(const Adodc&) = delete;

    void setConnectionString(const std::string& text);
    void setRecordSource(const std::string& sql) { recordSource_ = sql; }

    /// Runs the query and shows its rows. On failure the grid keeps what it showed.
    void refresh();

    /// See ListedRows::tend.
    void tend();

    /// Whether the column of the last query, from 0, is of a number type.
    bool holdsNumbers(int column) const;

private:
    void letGo() noexcept;

    platform::ListGrid& grid_;
    std::string connectionString_;
    std::string recordSource_;
    std::shared_ptr<ListedRows> rows_;
    std::unique_ptr<store::Connection> connection_;
};

}  // namespace orvenmod
