// The PostgreSQL store: one database on a server, any number of machines.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "store/connection.h"

namespace orvenmod::store::postgres {

class PostgresStore : public Store {
public:
    /// `paint` is called about ten times a second while a connection is made.
    explicit PostgresStore(std::function<void()> paint = {}) : paint_(std::move(paint)) {}

    /// "Provider=PostgreSQL;Data Source=host[,host2];Port=5432;Initial Catalog=suite;User ID=name;Password=word
    /// [;Connect Timeout=seconds][;Busy Timeout=milliseconds][;Language=us_english]"; other keys go to the client
    /// library.
    std::unique_ptr<Connection> connect(const std::string& connectionString) override;

    /// Ends the sessions that earlier connections left for the next one.
    static void dropIdleSessions();

private:
    std::function<void()> paint_;
};

}  // namespace orvenmod::store::postgres
