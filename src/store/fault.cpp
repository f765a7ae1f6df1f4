#include "store/fault.h"

#include <algorithm>
#include <utility>

#include "store/connectionwrapper.h"

namespace orvenmod::store {

namespace {

void count(FaultPlan& plan) {
    const int behind = ++plan.count - plan.failAt;
    if (plan.failAt > 0 && behind >= 0 && behind < plan.times)
        throw Failure(FailureKind::other, plan.number, plan.text);
}

class FaultyWriter : public TableWriter {
public:
    FaultyWriter(std::unique_ptr<TableWriter> target, FaultPlan& plan) : target_(std::move(target)), plan_(plan) {}

    void addNew() override { target_->addNew(); }
    void set(std::string_view field, std::string_view text) override { target_->set(field, text); }
    void setNull(std::string_view field) override { target_->setNull(field); }
    void setBinary(std::string_view field, std::span<const std::byte> bytes) override {
        target_->setBinary(field, bytes);
    }
    void update() override {
        try {
            count(plan_);
        } catch (const Failure&) {
            target_->addNew();  // drops what was set, as a failed update does
            throw;
        }
        target_->update();
    }

private:
    std::unique_ptr<TableWriter> target_;
    FaultPlan& plan_;
};

class FaultyLoader : public TableLoader {
public:
    FaultyLoader(std::unique_ptr<TableLoader> target, FaultPlan& plan) : target_(std::move(target)), plan_(plan) {}

    void add(const Recordset& rows) override {
        count(plan_);
        target_->add(rows);
    }

private:
    std::unique_ptr<TableLoader> target_;
    FaultPlan& plan_;
};

class FaultyRows : public ListRows {
public:
    FaultyRows(std::unique_ptr<ListRows> target, FaultPlan& plan) : target_(std::move(target)), plan_(plan) {}

    const std::vector<Column>& columns() const override { return target_->columns(); }
    std::size_t rowCount() const override { return target_->rowCount(); }
    Value cell(std::size_t row, int column) const override {
        if (!target_->holds(row)) count(plan_);
        return target_->cell(row, column);
    }
    bool holds(std::size_t row) const override { return target_->holds(row); }
    void expect(std::span<const std::uint32_t> rows) const override {
        if (!rows.empty() && !target_->holds(rows.front())) count(plan_);
        target_->expect(rows);
    }
    void forEachRow(std::span<const int> columns, const std::function<void(std::size_t)>& take) const override {
        if (reading() == ListReading::keys) count(plan_);
        target_->forEachRow(columns, take);
    }
    void tend() override {
        count(plan_);
        target_->tend();
    }
    ListReading reading() const override { return target_->reading(); }
    std::size_t memory() const override { return target_->memory(); }

private:
    std::unique_ptr<ListRows> target_;
    FaultPlan& plan_;
};

class FaultyConnection : public ConnectionWrapper {
public:
    FaultyConnection(std::unique_ptr<Connection> connection, FaultPlan& plan)
        : ConnectionWrapper(std::move(connection)), plan_(plan) {}

    std::int64_t execute(std::string_view sql) override {
        count(plan_);
        return target().execute(sql);
    }
    // What stands before the operation that is to fail reaches the target.
    void executeAll(std::span<const std::string> statements, const Done& done) override {
        const auto rest = static_cast<std::size_t>(std::max(0, plan_.failAt - plan_.count - 1));
        const bool fails = plan_.failAt > plan_.count && rest < statements.size();
        try {
            target().executeAll(fails ? statements.first(rest) : statements, [&](std::int64_t rows) {
                ++plan_.count;
                if (done) done(rows);
            });
        } catch (const Failure&) {
            ++plan_.count;
            throw;
        }
        if (fails) count(plan_);
    }
    Recordset open(std::string_view sql) override {
        count(plan_);
        return target().open(sql);
    }
    std::unique_ptr<ListRows> openList(std::string_view sql) override {
        count(plan_);
        return faulty(target().openList(sql));
    }
    std::unique_ptr<ListRows> openUnseen(std::string_view sql) override {
        count(plan_);
        return faulty(target().openUnseen(sql));
    }
    void read(std::string_view sql, const Part& part) override {
        target().read(sql, [&](const Recordset& rows) {
            count(plan_);
            part(rows);
        });
    }
    Outline outline() override {
        count(plan_);
        return target().outline();
    }
    std::unique_ptr<TableLoader> openLoader(std::string_view table, const std::vector<std::string>& fields) override {
        count(plan_);
        return std::make_unique<FaultyLoader>(target().openLoader(table, fields), plan_);
    }
    std::unique_ptr<TableWriter> openTable(std::string_view table) override {
        count(plan_);
        return std::make_unique<FaultyWriter>(target().openTable(table), plan_);
    }
    void beginTrans() override {
        count(plan_);
        target().beginTrans();
    }
    void commitTrans() override {
        count(plan_);
        target().commitTrans();
    }
    void rollbackTrans() override {
        count(plan_);
        target().rollbackTrans();
    }

private:
    std::unique_ptr<ListRows> faulty(std::unique_ptr<ListRows> rows) {
        if (rows->reading() == ListReading::whole) return rows;
        return std::make_unique<FaultyRows>(std::move(rows), plan_);
    }

    FaultPlan& plan_;
};

}  // namespace

FaultyStore::FaultyStore(Store& target, FaultPlan& plan) : target_(target), plan_(plan) {}

std::unique_ptr<Connection> FaultyStore::connect(const std::string& connectionString) {
    count(plan_);
    return std::make_unique<FaultyConnection>(target_.connect(connectionString), plan_);
}

}  // namespace orvenmod::store
