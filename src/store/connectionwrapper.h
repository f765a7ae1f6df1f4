// Forwards every call of a connection: the base of decorators and test doubles, which override what they need. Those
// that override execute() see the statements of executeAll() too, one by one.
#pragma once

#include <utility>

#include "store/connection.h"

namespace orvenmod::store {

class ConnectionWrapper : public Connection {
public:
    explicit ConnectionWrapper(std::unique_ptr<Connection> target) : target_(std::move(target)) {}

    std::int64_t execute(std::string_view sql) override { return target_->execute(sql); }
    Recordset open(std::string_view sql) override { return target_->open(sql); }
    std::unique_ptr<ListRows> openList(std::string_view sql) override { return target_->openList(sql); }
    std::unique_ptr<ListRows> openUnseen(std::string_view sql) override { return target_->openUnseen(sql); }
    void read(std::string_view sql, const Part& part) override { target_->read(sql, part); }
    Outline outline() override { return target_->outline(); }
    std::unique_ptr<TableLoader> openLoader(std::string_view table, const std::vector<std::string>& fields) override {
        return target_->openLoader(table, fields);
    }
    std::unique_ptr<TableWriter> openTable(std::string_view table) override { return target_->openTable(table); }
    void beginTrans() override { target_->beginTrans(); }
    void commitTrans() override { target_->commitTrans(); }
    void rollbackTrans() override { target_->rollbackTrans(); }
    bool inTransaction() const override { return target_->inTransaction(); }
    void setProgress(std::function<void()> progress) override { target_->setProgress(std::move(progress)); }
    void close() noexcept override { target_->close(); }

protected:
    Connection& target() { return *target_; }

private:
    std::unique_ptr<Connection> target_;
};

}  // namespace orvenmod::store
