// A store without a database: it notes what reaches it, gives two rows, and fails for a statement that says "fail".
// A list is read by its keys where the statement says "keys".
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "store/connection.h"
#include "support/windowedrows.h"

namespace orvenmod::store::test {

using Notes = std::vector<std::string>;

class ScriptedWriter : public TableWriter {
public:
    explicit ScriptedWriter(Notes& notes) : notes_(notes) {}
    void addNew() override { notes_.emplace_back("addNew"); }
    void set(std::string_view field, std::string_view text) override {
        notes_.push_back("set " + std::string(field) + "=" + std::string(text));
    }
    void setNull(std::string_view field) override { notes_.push_back("null " + std::string(field)); }
    void setBinary(std::string_view field, std::span<const std::byte> bytes) override {
        notes_.push_back("binary " + std::string(field) + " " + std::to_string(bytes.size()));
    }
    void update() override { notes_.emplace_back("update"); }

private:
    Notes& notes_;
};

class ScriptedLoader : public TableLoader {
public:
    explicit ScriptedLoader(Notes& notes) : notes_(notes) {}
    void add(const Recordset& rows) override { notes_.push_back("load " + std::to_string(rows.rowCount())); }

private:
    Notes& notes_;
};

class ScriptedConnection : public Connection {
public:
    ScriptedConnection(Notes& notes, orvenmod::test::RowWindows& windows) : notes_(notes), windows_(windows) {}
    std::int64_t execute(std::string_view sql) override {
        notes_.push_back("execute " + std::string(sql));
        if (sql.find("fail") != std::string_view::npos) throw Failure(FailureKind::syntax, 102, "坏语句");
        return 3;
    }
    Recordset open(std::string_view sql) override {
        notes_.push_back("open " + std::string(sql));
        Recordset rows({{"a", ColumnType::integer}});
        for (const char* text : {"1", "2"}) {
            rows.addText(text);
            rows.endRow();
        }
        return rows;
    }
    std::unique_ptr<ListRows> openList(std::string_view sql) override {
        if (sql.find("keys") == std::string_view::npos) return Connection::openList(sql);
        return std::make_unique<orvenmod::test::WindowedRows>(open(sql), windows_);
    }
    std::unique_ptr<ListRows> openUnseen(std::string_view sql) override { return openList(sql); }
    void read(std::string_view sql, const Part& part) override { part(open(sql)); }
    Outline outline() override {
        notes_.emplace_back("outline");
        return {};
    }
    std::unique_ptr<TableLoader> openLoader(std::string_view table, const std::vector<std::string>& fields) override {
        notes_.push_back("openLoader " + std::string(table) + " of " + std::to_string(fields.size()));
        return std::make_unique<ScriptedLoader>(notes_);
    }
    std::unique_ptr<TableWriter> openTable(std::string_view table) override {
        notes_.push_back("openTable " + std::string(table));
        return std::make_unique<ScriptedWriter>(notes_);
    }
    void beginTrans() override { notes_.emplace_back("begin"); }
    void commitTrans() override { notes_.emplace_back("commit"); }
    void rollbackTrans() override { notes_.emplace_back("rollback"); }
    bool inTransaction() const override { return false; }
    void setProgress(std::function<void()>) override {}
    void close() noexcept override { notes_.emplace_back("close"); }

private:
    Notes& notes_;
    orvenmod::test::RowWindows& windows_;
};

class ScriptedStore : public Store {
public:
    std::unique_ptr<Connection> connect(const std::string& connectionString) override {
        notes.push_back("connect " + connectionString);
        return std::make_unique<ScriptedConnection>(notes, windows);
    }
    Notes notes;
    orvenmod::test::RowWindows windows{.rows = 1};
};

}  // namespace orvenmod::store::test
