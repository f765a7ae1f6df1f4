// The trace file: one object a line,
//   {"operation":"execute","sql":"...","rows":1,"ms":0.214}
//   {"operation":"open","sql":"...","rows":1000,"ms":2.1,"read":"keys"}
//   {"operation":"open","sql":"...","rows":0,"ms":0.08,"failed":true,"number":208,"text":"..."}
#include "store/trace.h"

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <nlohmann/json.hpp>
#include <utility>

#include "store/connectionwrapper.h"

namespace orvenmod::store {

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void blame(TraceRecord& record, const Failure& failure) {
    record.failed = true;
    record.number = failure.number();
    record.text = failure.text();
}

// Times one operation and reports it, also where it fails. `work` returns what the operation gives and sets
// record.rows.
template <typename Work>
auto traced(const TraceSink& sink, const char* operation, std::string_view sql, Work work) {
    TraceRecord record;
    record.operation = operation;
    record.sql = sql;
    const auto start = Clock::now();
    const auto report = [&] {
        record.milliseconds = millisecondsSince(start);
        sink(record);
    };
    try {
        if constexpr (std::is_void_v<decltype(work(record))>) {
            work(record);
            report();
        } else {
            auto result = work(record);
            report();
            return result;
        }
    } catch (const Failure& failure) {
        blame(record, failure);
        report();
        throw;
    }
}

class TracingWriter : public TableWriter {
public:
    TracingWriter(std::unique_ptr<TableWriter> target, std::string table, const TraceSink& sink)
        : target_(std::move(target)), table_(std::move(table)), sink_(sink) {}

    void addNew() override { target_->addNew(); }
    void set(std::string_view field, std::string_view text) override { target_->set(field, text); }
    void setNull(std::string_view field) override { target_->setNull(field); }
    void setBinary(std::string_view field, std::span<const std::byte> bytes) override {
        target_->setBinary(field, bytes);
    }
    void update() override {
        traced(sink_, "addRow", table_, [this](TraceRecord& record) {
            target_->update();
            record.rows = 1;
        });
    }

private:
    std::unique_ptr<TableWriter> target_;
    std::string table_;
    TraceSink sink_;
};

class TracingLoader : public TableLoader {
public:
    TracingLoader(std::unique_ptr<TableLoader> target, std::string table, const TraceSink& sink)
        : target_(std::move(target)), table_(std::move(table)), sink_(sink) {}

    void add(const Recordset& rows) override {
        traced(sink_, "load", table_, [&](TraceRecord& record) {
            target_->add(rows);
            record.rows = static_cast<std::int64_t>(rows.rowCount());
        });
    }

private:
    std::unique_ptr<TableLoader> target_;
    std::string table_;
    TraceSink sink_;
};

const char* textOf(ListReading reading) {
    switch (reading) {
        case ListReading::keys:
            return "keys";
        case ListReading::unseen:
            return "unseen";
        case ListReading::whole:
            break;
    }
    return "whole";
}

class TracingConnection : public ConnectionWrapper {
public:
    TracingConnection(std::unique_ptr<Connection> connection, TraceSink sink)
        : ConnectionWrapper(std::move(connection)), sink_(std::move(sink)) {}

    std::int64_t execute(std::string_view sql) override {
        return traced(sink_, "execute", sql, [&](TraceRecord& record) { return record.rows = target().execute(sql); });
    }
    // A record for each statement, as if they had gone out one by one; its time is what passed since the one before.
    void executeAll(std::span<const std::string> statements, const Done& done) override {
        auto next = statements.begin();
        auto start = Clock::now();
        const auto report = [&](std::int64_t rows, const Failure* failure) {
            TraceRecord record;
            record.operation = "execute";
            record.sql = *next++;
            record.rows = rows;
            record.milliseconds = millisecondsSince(start);
            if (failure != nullptr) blame(record, *failure);
            sink_(record);
            start = Clock::now();
        };
        try {
            target().executeAll(statements, [&](std::int64_t rows) {
                report(rows, nullptr);
                if (done) done(rows);
            });
        } catch (const Failure& failure) {
            if (next != statements.end()) report(0, &failure);
            throw;
        }
    }
    Recordset open(std::string_view sql) override {
        return traced(sink_, "open", sql, [&](TraceRecord& record) {
            Recordset rows = target().open(sql);
            record.rows = static_cast<std::int64_t>(rows.rowCount());
            return rows;
        });
    }
    std::unique_ptr<ListRows> openList(std::string_view sql) override {
        return traced(sink_, "open", sql, [&](TraceRecord& record) { return noted(record, target().openList(sql)); });
    }
    std::unique_ptr<ListRows> openUnseen(std::string_view sql) override {
        return traced(sink_, "open", sql, [&](TraceRecord& record) { return noted(record, target().openUnseen(sql)); });
    }
    void read(std::string_view sql, const Part& part) override {
        traced(sink_, "read", sql, [&](TraceRecord& record) {
            target().read(sql, [&](const Recordset& rows) {
                record.rows += static_cast<std::int64_t>(rows.rowCount());
                part(rows);
            });
        });
    }
    Outline outline() override {
        return traced(sink_, "outline", "", [&](TraceRecord&) { return target().outline(); });
    }
    std::unique_ptr<TableLoader> openLoader(std::string_view table, const std::vector<std::string>& fields) override {
        return traced(sink_, "openLoader", table, [&](TraceRecord&) -> std::unique_ptr<TableLoader> {
            return std::make_unique<TracingLoader>(target().openLoader(table, fields), std::string(table), sink_);
        });
    }
    std::unique_ptr<TableWriter> openTable(std::string_view table) override {
        return traced(sink_, "openTable", table, [&](TraceRecord&) -> std::unique_ptr<TableWriter> {
            return std::make_unique<TracingWriter>(target().openTable(table), std::string(table), sink_);
        });
    }
    void beginTrans() override {
        traced(sink_, "begin", "", [this](TraceRecord&) { target().beginTrans(); });
    }
    void commitTrans() override {
        traced(sink_, "commit", "", [this](TraceRecord&) { target().commitTrans(); });
    }
    void rollbackTrans() override {
        traced(sink_, "rollback", "", [this](TraceRecord&) { target().rollbackTrans(); });
    }
    void close() noexcept override {
        if (std::exchange(closed_, true)) return target().close();
        try {
            traced(sink_, "close", "", [this](TraceRecord&) { target().close(); });
        } catch (...) {
            // The connection is closed; only the record of it could not be kept, and close() never throws.
            return;
        }
    }

private:
    static std::unique_ptr<ListRows> noted(TraceRecord& record, std::unique_ptr<ListRows> rows) {
        record.rows = static_cast<std::int64_t>(rows->rowCount());
        record.read = textOf(rows->reading());
        return rows;
    }

    TraceSink sink_;
    bool closed_ = false;
};

}  // namespace

TracingStore::TracingStore(Store& target, TraceSink sink) : target_(target), sink_(std::move(sink)) {}

std::unique_ptr<Connection> TracingStore::connect(const std::string& connectionString) {
    // The string can hold a password, so it is not written down.
    return traced(sink_, "connect", "", [&](TraceRecord&) -> std::unique_ptr<Connection> {
        return std::make_unique<TracingConnection>(target_.connect(connectionString), sink_);
    });
}

TraceSink traceToFile(const std::string& path) {
    // It holds what was typed. A file that is there already keeps the rights that somebody gave it.
    const int made = ::open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (made >= 0) ::close(made);
    auto file = std::make_shared<std::ofstream>(path, std::ios::app | std::ios::binary);
    return [file](const TraceRecord& record) {
        nlohmann::ordered_json line = {
            {"operation", record.operation}, {"sql", record.sql}, {"rows", record.rows}, {"ms", record.milliseconds}};
        if (!record.read.empty()) line["read"] = record.read;
        if (record.failed) {
            line["failed"] = true;
            line["number"] = record.number;
            line["text"] = record.text;
        }
        constexpr int kOneLine = -1;
        constexpr bool kEscapeBeyondAscii = false;
        *file << line.dump(kOneLine, ' ', kEscapeBeyondAscii, nlohmann::json::error_handler_t::replace) << '\n'
              << std::flush;
    };
}

}  // namespace orvenmod::store
