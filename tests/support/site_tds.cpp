// A server of the dialect makes a database in milliseconds, but the suite's schema takes it a second. So a process's
// databases are used again: after a test their tables are emptied and get the schema's rows again; only one whose
// definitions were changed is made anew.
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <stdexcept>
#include <vector>

#include "store/odbc/sessionpool.h"
#include "store/schema.h"
#include "store/trace.h"
#include "support/rows.h"
#include "support/site.h"
#include "support/tdsserver.h"

namespace orvenmod::test {

namespace {

const std::string kPrefix = "orventest_";

std::string server() {
    const char* named = std::getenv("ORVEN_TDS_SERVER");
    if (named == nullptr) throw std::runtime_error("ORVEN_TDS_SERVER names no server");
    return named;
}

std::string joined(Rows rows) {
    std::sort(rows.begin(), rows.end());
    std::string text;
    for (const auto& row : rows) {
        for (const std::string& cell : row)
            text.append(cell).append("|");
        text += "\n";
    }
    return text;
}

// What was made by createSchema keeps its number; a column that came or went shows in its table.
std::string definitionsOf(store::Connection& connection) {
    return joined(rowsOf(connection, "select name,id,type from sysobjects")) +
           joined(rowsOf(connection,
                         "select table_name,column_name,data_type,character_maximum_length "
                         "from information_schema.columns"));
}

std::string nameOfHost() {
    char name[256] = {};
    ::gethostname(name, sizeof(name) - 1);
    std::string plain;
    for (const char c : std::string(name))
        plain += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    return plain;
}

class SuiteOnServer {
public:
    explicit SuiteOnServer(std::string name) : name_(std::move(name)) { make(); }
    ~SuiteOnServer() { drop(); }
    SuiteOnServer(const SuiteOnServer&) = delete;
    SuiteOnServer& operator=(const SuiteOnServer&) = delete;

    std::string connectionString() const { return withDatabase(server(), name_); }
    std::unique_ptr<store::Connection> connect() const { return stores().connect(connectionString()); }

    void restore() {
        if (definitionsOf(*connect()) != definitions_) {
            drop();
            make();
            return;
        }
        std::vector<std::string> statements;
        for (const store::SchemaTable& table : store::schemaTables())
            statements.push_back("truncate table " + std::string(table.name));
        statements.insert(statements.end(), rows_.begin(), rows_.end());
        const auto connection = connect();
        connection->beginTrans();
        connection->executeAll(statements);
        connection->commitTrans();
    }

private:
    void make() {
        stores().connect(server())->execute("create database " + name_);
        rows_.clear();
        store::TracingStore tracing(stores(), [this](const store::TraceRecord& record) {
            if (record.sql.starts_with("insert")) rows_.push_back(record.sql);
        });
        const auto connection = tracing.connect(connectionString());
        store::createSchema(*connection);
        definitions_ = definitionsOf(*connection);
    }

    void drop() noexcept {
        try {
            store::odbc::dropIdleSessions();
            stores().connect(server())->execute("drop database " + name_);
        } catch (const std::exception&) {
            // The next process finds that it is nobody's.
            return;
        }
    }

    std::string name_;
    std::string definitions_;
    std::vector<std::string> rows_;
};

// The databases of this process that no test uses.
class SuitesOnServer {
public:
    SuitesOnServer() { dropAbandoned(); }

    std::unique_ptr<SuiteOnServer> take() {
        if (free_.empty())
            return std::make_unique<SuiteOnServer>(prefix_ + std::to_string(::getpid()) + "_" +
                                                   std::to_string(++made_));
        std::unique_ptr<SuiteOnServer> database = std::move(free_.back());
        free_.pop_back();
        database->restore();
        return database;
    }
    void giveBack(std::unique_ptr<SuiteOnServer> database) { free_.push_back(std::move(database)); }

    static SuitesOnServer& ofThisProcess() {
        // The stores must outlive the databases.
        stores();
        static SuitesOnServer databases;
        return databases;
    }

private:
    // Of processes of this host that ended without dropping theirs.
    void dropAbandoned() const {
        const auto connection = stores().connect(server());
        for (const auto& row : rowsOf(*connection, "select name from sysdatabases")) {
            const std::string& name = row.at(0);
            if (!name.starts_with(prefix_)) continue;
            const int process = std::atoi(name.c_str() + prefix_.size());
            if (process <= 0 || ::kill(process, 0) == 0) continue;
            try {
                connection->execute("drop database " + name);
            } catch (const store::Failure&) {
                // Another process was faster.
                continue;
            }
        }
    }

    const std::string prefix_ = kPrefix + nameOfHost() + "_";
    int made_ = 0;
    std::vector<std::unique_ptr<SuiteOnServer>> free_;
};

class TdsSite : public Site {
public:
    TdsSite() : database_(SuitesOnServer::ofThisProcess().take()) {}
    ~TdsSite() override { SuitesOnServer::ofThisProcess().giveBack(std::move(database_)); }
    TdsSite(const TdsSite&) = delete;
    TdsSite& operator=(const TdsSite&) = delete;

    std::string connectionString() const override { return database_->connectionString(); }

    std::string dump() const override {
        const auto connection = database_->connect();
        std::string text =
            joined(rowsOf(*connection, "select name,type from sysobjects")) +
            joined(rowsOf(*connection,
                          "select table_name,column_name,ordinal_position,data_type,"
                          "character_maximum_length from information_schema.columns")) +
            joined(rowsOf(*connection, "select table_name,view_definition from information_schema.views"));
        for (const auto& table : rowsOf(*connection, "select name from sysobjects where type='U' order by name"))
            text += table.at(0) + ":\n" + joined(rowsOf(*connection, "select * from " + table.at(0)));
        return text;
    }

private:
    std::unique_ptr<SuiteOnServer> database_;
};

}  // namespace

std::unique_ptr<Site> newTdsSite() { return std::make_unique<TdsSite>(); }

}  // namespace orvenmod::test
