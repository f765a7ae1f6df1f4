// Server databases over unixODBC. The statements go out untouched: the server speaks the dialect itself.
#pragma once

#include <functional>
#include <utility>

#include "store/connection.h"

namespace orvenmod::store::odbc {

class OdbcStore : public Store {
public:
    /// `paint` is called about ten times a second while a connection is made.
    explicit OdbcStore(std::function<void()> paint = {}) : paint_(std::move(paint)) {}

    /// "Driver=..." or "DSN=..." as unixODBC takes it, or an OLE DB string.
    std::unique_ptr<Connection> connect(const std::string& connectionString) override;

private:
    std::function<void()> paint_;
};

}  // namespace orvenmod::store::odbc
