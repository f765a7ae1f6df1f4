// A server that the variable ORVEN_TDS_SERVER names, against a loop of ODBC's own calls. Clock time, since the server's
// part belongs to it; the least of several runs.
#include <sql.h>
#include <sqlext.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <limits>
#include <stdexcept>

#include "benches.h"
#include "store/connectionstring.h"
#include "store/odbc/odbcsession.h"
#include "store/odbc/odbcstore.h"
#include "store/odbc/sessionpool.h"

namespace orvenmod::bench {
namespace {

using store::odbc::OdbcHandle;
using store::odbc::OdbcSession;

constexpr int kRows = 100'000;
constexpr int kColumns = 10;
constexpr int kCommands = 500;
constexpr int kRuns = 9;
constexpr double kMostList = 1.1;
constexpr double kMostCommand = 1.5;

const std::string kList = "select * from benchList";

double clockMilliseconds() {
    using namespace std::chrono;
    return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

std::string rowOf(int id) { return "select id,c1,d3 from benchList where id=" + std::to_string(id % kRows + 1); }

// A list's usual columns: keys, codes, names, an amount and a date.
void makeList(store::Connection& connection) {
    connection.execute(
        "create table benchList(id int primary key,c1 varchar(30),c2 varchar(100),d3 decimal(18,4),n4 int,"
        "c5 varchar(50),c6 varchar(50),d7 datetime,d8 decimal(18,4),c9 varchar(80))");
    connection.beginTrans();
    constexpr int kAtOnce = 500;
    for (int first = 1; first <= kRows; first += kAtOnce) {
        std::string sql = "insert into benchList values";
        for (int id = first; id < first + kAtOnce; ++id) {
            const std::string number = std::to_string(id);
            sql += (id == first ? "(" : ",(") + number + ",'01." + number + "','内六角螺丝" + number + "'," + number +
                   ".25," + number + ",'盒','五金仓库','2026-01-02'," + number + ".5,'备注')";
        }
        connection.execute(sql);
    }
    connection.commitTrans();
}

/// Every cell of the query's rows, copied to a text; their count.
std::size_t bareLoop(const OdbcSession& session, const std::string& sql) {
    const OdbcHandle statement(SQL_HANDLE_STMT, session.connection().get());
    statement.check(SQLExecDirect(statement.get(), store::odbc::sqlText(sql.c_str()), SQL_NTS));
    SQLSMALLINT columns = 0;
    statement.check(SQLNumResultCols(statement.get(), &columns));
    std::size_t cells = 0;
    std::string text;
    char buffer[512];
    while (SQLFetch(statement.get()) != SQL_NO_DATA) {
        for (SQLSMALLINT i = 1; i <= columns; ++i) {
            SQLLEN length = 0;
            statement.check(
                SQLGetData(statement.get(), static_cast<SQLUSMALLINT>(i), SQL_C_CHAR, buffer, sizeof buffer, &length));
            if (length >= 0) text.assign(buffer, static_cast<std::size_t>(length));
            ++cells;
        }
    }
    return cells;
}

struct Times {
    double ours = std::numeric_limits<double>::max();
    double bare = std::numeric_limits<double>::max();
};

// In turns, so that what else the machine does meets both.
Times measure(const std::function<void()>& ours, const std::function<void()>& bare) {
    Times least;
    for (int run = 0; run < kRuns; ++run) {
        least.bare = std::min(least.bare, leastOf(1, bare, clockMilliseconds));
        least.ours = std::min(least.ours, leastOf(1, ours, clockMilliseconds));
    }
    return least;
}

void compareList(Report& report, const std::string& target, const OdbcSession& bare) {
    // With a progress, as the windows have one.
    const auto connection = store::odbc::OdbcStore().connect(target);
    connection->setProgress([] {});
    const Times list = measure([&] { connection->open(kList); },
                               [&] {
                                   if (bareLoop(bare, kList) != static_cast<std::size_t>(kRows) * kColumns)
                                       throw std::runtime_error("rows");
                               });
    report.ratio("100000 rows of 10 columns", list.ours, "SQLFetch and SQLGetData", list.bare, kMostList, "ms");
}

// Two, as a command would send that asked first whether its session lives; ours asks by the statement itself.
void compareCommand(Report& report, const std::string& target, const OdbcSession& bare) {
    const Times command = measure(
        [&] {
            for (int i = 0; i < kCommands; ++i) {
                const auto connection = store::odbc::OdbcStore().connect(target);
                connection->setProgress([] {});
                connection->open(rowOf(i));
            }
        },
        [&] {
            for (int i = 0; i < kCommands; ++i) {
                bareLoop(bare, "select 1");
                bareLoop(bare, rowOf(i));
            }
        });
    report.ratio("open, a row by its key, close", command.ours * 1000 / kCommands, "two bare statements",
                 command.bare * 1000 / kCommands, kMostCommand, "us");
}

}  // namespace

void measureOdbc(Report& report) {
    const char* server = std::getenv("ORVEN_TDS_SERVER");
    if (server == nullptr || *server == '\0') {
        report.note("not measured: ORVEN_TDS_SERVER names no server");
        return;
    }
    const std::string string = server;
    const std::string name = "orven_bench_" + std::to_string(::getpid());
    const char* key = store::ConnectionString(string).has("Provider") ? "Initial Catalog" : "Database";
    store::odbc::OdbcStore().connect(string)->execute("create database " + name);
    const std::string target = string + ";" + key + "=" + name;
    makeList(*store::odbc::OdbcStore().connect(target));
    {
        const OdbcSession bare(target);
        compareList(report, target, bare);
        compareCommand(report, target, bare);
    }
    store::odbc::dropIdleSessions();
    store::odbc::OdbcStore().connect(string)->execute("drop database " + name);
}

}  // namespace orvenmod::bench
