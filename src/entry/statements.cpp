#include <orvenmod/statements.h>

#include "entry/startup.h"
#include "store/connection.h"

namespace orvenmod {

namespace {

// What the store throws is its own; a host knows the type that stands in the header.
template <class Work>
auto toldToHost(Work work) {
    try {
        return work();
    } catch (const store::Failure& failure) {
        throw StatementFailure(failure.number(), failure.text());
    }
}

}  // namespace

class Rows::Held {
public:
    store::Recordset rows;
};

class Statements::Held {
public:
    std::unique_ptr<store::Connection> connection;
};

StatementFailure::StatementFailure(int number, const std::string& text) : std::runtime_error(text), number_(number) {}
StatementFailure::~StatementFailure() = default;

Rows::Rows(std::unique_ptr<Held> held) : held_(std::move(held)) {}
Rows::Rows(Rows&& other) noexcept = default;
Rows& Rows::operator=(Rows&& other) noexcept = default;
Rows::~Rows() = default;

std::size_t Rows::count() const { return held_->rows.rowCount(); }

std::vector<std::string> Rows::columns() const {
    std::vector<std::string> names;
    for (const store::Column& column : held_->rows.columns())
        names.push_back(column.name);
    return names;
}

bool Rows::eof() const { return held_->rows.eof(); }
void Rows::moveNext() { held_->rows.moveNext(); }

std::string Rows::text(const std::string& column, const std::string& fallback) const {
    return toldToHost([&] { return held_->rows.text(column, fallback); });
}

bool Rows::isNull(const std::string& column) const {
    return toldToHost([&] { return held_->rows.isNull(column); });
}

Statements::Statements(const std::string& connectionString)
    : held_(std::make_unique<Held>(toldToHost([&] { return Held{componentStore().connect(connectionString)}; }))) {}

Statements::~Statements() { held_->connection->close(); }

Rows Statements::open(const std::string& sql) {
    return toldToHost([&] { return Rows(std::make_unique<Rows::Held>(Rows::Held{held_->connection->open(sql)})); });
}

std::int64_t Statements::execute(const std::string& sql) {
    return toldToHost([&] { return held_->connection->execute(sql); });
}

void Statements::beginTrans() {
    toldToHost([&] { held_->connection->beginTrans(); });
}

void Statements::commitTrans() {
    toldToHost([&] { held_->connection->commitTrans(); });
}

void Statements::rollbackTrans() {
    toldToHost([&] { held_->connection->rollbackTrans(); });
}

bool Statements::inTransaction() const { return held_->connection->inTransaction(); }

}  // namespace orvenmod
