#include "benchserver.h"

#include <sys/types.h>
#include <time.h>

#include <list>
#include <sstream>
#include <stdexcept>

#include "entry/startup.h"
#include "report.h"
#include "stage.h"
#include "store/copy/copy.h"
#include "store/postgres/session.h"
#include "store/postgres/sessionpool.h"
#include "store/tsql/shape.h"

namespace orvenmod::bench {
namespace {

using store::tsql::StatementKind;

test::PostgresServer::Settings settingsFor(Durability durability) {
    test::PostgresServer::Settings settings;
    settings.lines = {"shared_buffers = 1GB", "work_mem = 64MB", "max_wal_size = 8GB", "checkpoint_timeout = 30min"};
    if (durability == Durability::on)
        settings.lines.insert(settings.lines.end(), {"fsync = on", "full_page_writes = on"});
    return settings;
}

std::string databaseOf(const std::string& target) { return store::postgres::ServerAddress::parse(target).database; }

double milliseconds(pid_t process) {
    clockid_t clock{};
    timespec now{};
    if (clock_getcpuclockid(process, &clock) != 0 || clock_gettime(clock, &now) != 0)
        throw std::runtime_error("a session of the server has ended");
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

Copied copyOver(const std::string& from, const std::string& to) {
    const auto source = componentStore().connect(from);
    const auto target = componentStore().connect(to);
    Copied copied;
    copied.milliseconds = leastOf(
        1,
        [&] {
            for (const store::CopiedTable& table : store::copySuite(*source, *target).tables)
                copied.rows += table.rows;
        },
        wallMilliseconds);
    source->close();
    target->close();
    return copied;
}

}  // namespace

BenchServer::BenchServer(Durability durability) : server_(settingsFor(durability)) {}

std::string BenchServer::goodsDatabase(const std::string& folder, int goods) {
    const std::string source = bench::goodsDatabase(folder, goods);
    const std::string name =
        server_.makeDatabaseLike("goods" + std::to_string(goods), [&](const std::string& database) {
            copied_ = copyOver(source, test::connectionStringFor(server_, database));
            // What a server does by itself some time after rows have come.
            server_.run(database, "VACUUM ANALYZE");
            store::postgres::dropIdleSessions();
        });
    return test::connectionStringFor(server_, name);
}

std::string BenchServer::run(const std::string& target, const std::string& sql) const {
    return server_.run(databaseOf(target), sql);
}

double BenchServer::computed(const std::string& target) const {
    const double before = threadMilliseconds();
    const std::string sessions =
        server_.run("postgres", "SELECT string_agg(pid::text, ' ') FROM pg_stat_activity WHERE datname = '" +
                                    databaseOf(target) + "' AND backend_type = 'client backend'");
    asking_ += threadMilliseconds() - before;
    double all = threadMilliseconds() - asking_;
    std::istringstream pids(sessions);
    for (pid_t pid = 0; pids >> pid;)
        all += milliseconds(pid);
    return all;
}

struct BareServerLoop::Handle {
    struct Statement {
        std::string name;
        store::postgres::Parameters parameters;
    };

    explicit Handle(const std::string& target) : session(store::postgres::ServerAddress::parse(target)) {}

    void add(const std::string& sql) {
        shape.scan(sql);
        store::postgres::CachedStatement& entry = session.prepare(sql, shape);
        store::postgres::Parameters parameters(entry.translation, shape);
        texts.push_back(nativeText(entry.translation));
        statements.push_back({"bare" + std::to_string(statements.size()), std::move(parameters)});
    }

    void prepare() {
        PQexitPipelineMode(session.native());
        PQsetnonblocking(session.native(), 0);
        auto text = texts.begin();
        for (const Statement& each : statements)
            check(PQprepare(session.native(), each.name.c_str(), (text++)->c_str(), 0, nullptr));
    }

    static std::string nativeText(const store::tsql::Translation& translation) {
        if (translation.kind == StatementKind::beginTransaction) return "BEGIN";
        if (translation.kind == StatementKind::commitTransaction) return "COMMIT";
        return translation.statements.at(0);
    }

    store::postgres::Result check(PGresult* result) {
        store::postgres::Result owned(result);
        if (store::postgres::isFailure(result)) throw std::runtime_error(PQresultErrorMessage(result));
        return owned;
    }

    store::postgres::Session session;
    store::tsql::Shape shape;
    std::list<std::string> texts;
    std::list<Statement> statements;
};

BareServerLoop::BareServerLoop(const std::string& connectionString, const std::vector<std::string>& statements)
    : handle_(std::make_unique<Handle>(connectionString)) {
    for (const std::string& sql : statements)
        handle_->add(sql);
    handle_->prepare();
}

BareServerLoop::~BareServerLoop() = default;

std::size_t BareServerLoop::run() {
    std::size_t bytes = 0;
    for (const Handle::Statement& each : handle_->statements) {
        const store::postgres::Result result = handle_->check(
            PQexecPrepared(handle_->session.native(), each.name.c_str(), each.parameters.count(),
                           each.parameters.values(), each.parameters.lengths(), each.parameters.formats(), 0));
        const int columns = PQnfields(result.get());
        for (int row = 0; row < PQntuples(result.get()); ++row) {
            for (int column = 0; column < columns; ++column) {
                const std::string cell(store::postgres::textOf(result.get(), row, column));
                bytes += cell.size();
            }
        }
    }
    return bytes;
}

}  // namespace orvenmod::bench
