// A server of the dialect makes a database in milliseconds, but the suite's schema takes it a second. So a process's
// databases are used again: after a test their tables are emptied and get the schema's rows again, and what was
// changed of its definitions is made again.
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <vector>

#include "store/odbc/sessionpool.h"
#include "store/schema.h"
#include "store/trace.h"
#include "store/tsql/utf8.h"
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

using Definitions = std::map<std::string, std::string>;

// Of each table and view: its number, which one that is made again doesn't keep, and its columns.
Definitions definitionsOf(store::Connection& connection) {
    Definitions definitions;
    for (const auto& row : rowsOf(connection, "select name,id,type from sysobjects where type in ('U','V')"))
        definitions[store::tsql::lowerText(row.at(0))] = row.at(2).substr(0, 1) + row.at(1);
    for (const auto& row : rowsOf(connection,
                                  "select table_name,column_name,data_type,character_maximum_length "
                                  "from information_schema.columns order by table_name,ordinal_position"))
        definitions[store::tsql::lowerText(row.at(0))] += "," + row.at(1) + " " + row.at(2) + " " + row.at(3);
    return definitions;
}

// What a statement of createSchema makes, or adds an index to: the first word behind its keywords.
std::string madeBy(const std::string& sql) {
    for (const std::string_view before : {" on ", "create table ", "create view "}) {
        const auto found = sql.find(before);
        const bool index = before == " on ";
        if (found == std::string::npos || index != (sql.find(" index ") < sql.find('('))) continue;
        const auto start = found + before.size();
        return store::tsql::lowerText(sql.substr(start, sql.find_first_of("( ", start) - start));
    }
    return {};
}

std::string nameOfHost() {
    char name[256] = {};
    ::gethostname(name, sizeof(name) - 1);
    std::string plain;
    for (const char c : std::string(name))
        plain += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    return plain;
}

// Of two processes that make or drop a database at once a server may refuse one.
class OneAtATime {
public:
    OneAtATime()
        : lock_(
              ::open((std::filesystem::temp_directory_path() / ("orvenmod-tds-" + std::to_string(::geteuid()))).c_str(),
                     O_RDWR | O_CREAT | O_CLOEXEC, 0644)) {
        ::flock(lock_, LOCK_EX);
    }
    ~OneAtATime() { ::close(lock_); }
    OneAtATime(const OneAtATime&) = delete;
    OneAtATime& operator=(const OneAtATime&) = delete;

private:
    int lock_;
};

class SuiteOnServer {
public:
    explicit SuiteOnServer(std::string name) : name_(std::move(name)) { make(); }
    ~SuiteOnServer() { drop(); }
    SuiteOnServer(const SuiteOnServer&) = delete;
    SuiteOnServer& operator=(const SuiteOnServer&) = delete;

    std::string connectionString() const { return withDatabase(server(), name_); }
    std::unique_ptr<store::Connection> connect() const { return stores().connect(connectionString()); }

    void restore() {
        const auto connection = connect();
        std::vector<std::string> statements = repairs(definitionsOf(*connection));
        const bool changed = !statements.empty();
        for (const store::SchemaTable& table : store::schemaTables())
            statements.push_back("truncate table " + std::string(table.name));
        statements.insert(statements.end(), rows_.begin(), rows_.end());
        connection->beginTrans();
        connection->executeAll(statements);
        connection->commitTrans();
        if (changed) definitions_ = definitionsOf(*connection);
    }

private:
    void make() {
        {
            const OneAtATime lock;
            stores().connect(server())->execute("create database " + name_);
        }
        store::TracingStore tracing(stores(), [this](const store::TraceRecord& record) {
            (record.sql.starts_with("insert") ? rows_ : makes_).push_back(record.sql);
        });
        const auto connection = tracing.connect(connectionString());
        store::createSchema(*connection);
        definitions_ = definitionsOf(*connection);
    }

    // Drops what is new or other than it was, and makes again what is missing then. A view may stand on any table, so
    // that all are dropped first and made last.
    std::vector<std::string> repairs(const Definitions& found) const {
        if (found == definitions_) return {};
        std::vector<std::string> views;
        std::vector<std::string> tables;
        std::set<std::string> kept;
        for (const auto& [name, definition] : found) {
            const auto known = definitions_.find(name);
            if (definition.front() == 'V') {
                views.push_back("drop view [" + name + "]");
            } else if (known != definitions_.end() && known->second == definition) {
                kept.insert(name);
            } else {
                tables.push_back("drop table [" + name + "]");
            }
        }
        std::vector<std::string> all = views;
        all.insert(all.end(), tables.begin(), tables.end());
        std::copy_if(makes_.begin(), makes_.end(), std::back_inserter(all), [&kept](const std::string& sql) {
            const std::string made = madeBy(sql);
            return !made.empty() && !kept.contains(made);
        });
        return all;
    }

    void drop() noexcept {
        try {
            store::odbc::dropIdleSessions();
            const OneAtATime lock;
            stores().connect(server())->execute("drop database " + name_);
        } catch (const std::exception&) {
            // The next process finds that it is nobody's.
            return;
        }
    }

    std::string name_;
    Definitions definitions_;
    std::vector<std::string> makes_;
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
        const OneAtATime lock;
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
