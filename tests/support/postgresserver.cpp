#include "support/postgresserver.h"

#include <fcntl.h>
#include <libpq-fe.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

extern char** environ;

namespace orvenmod::test {

namespace {

namespace fs = std::filesystem;

// Nobody's, as every Debian has them: the server refuses to run as root.
constexpr uid_t kNobody = 65534;
constexpr const char* kAsNobody[] = {"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups", "--"};

const std::string kPrograms = ORVEN_POSTGRES_PROGRAMS;

std::string shellQuoted(const std::string& path) { return "'" + path + "'"; }

// Starts a shell as the server's user, in the folder. Its output goes to the folder's log: whoever waits for the end of
// the test's own output must not wait for the server's.
pid_t startShell(const std::string& folder, const std::string& script) {
    std::vector<std::string> texts;
    if (::geteuid() == 0) texts.assign(std::begin(kAsNobody), std::end(kAsNobody));
    texts.insert(texts.end(), {"sh", "-c", "cd " + shellQuoted(folder) + " && " + script});
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    const std::string log = folder + "/commands.log";
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    ::posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    // A key that ends the test must not end the watcher before it has tidied up.
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    pid_t process = -1;
    const int failed = ::posix_spawnp(&process, pointers.front(), &actions, &attributes, pointers.data(), environ);
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) throw std::runtime_error("no shell can be started");
    return process;
}

void runShell(const std::string& folder, const std::string& script) {
    int status = 0;
    ::waitpid(startShell(folder, script), &status, 0);
    if (status == 0) return;
    std::ifstream log(folder + "/commands.log");
    const std::string text((std::istreambuf_iterator<char>(log)), std::istreambuf_iterator<char>());
    throw std::runtime_error(script + " failed: " + text);
}

int openLock(const std::string& path) { return ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644); }

void giveToServer(const std::string& folder) {
    if (::geteuid() == 0 && ::chown(folder.c_str(), kNobody, kNobody) != 0) throw std::runtime_error("chown " + folder);
}

std::string sharedFolder() {
    return (fs::temp_directory_path() / ("orvenmod-postgres-" + std::to_string(::geteuid()))).string();
}

// The lock under which the shared folder is made and removed. Who removed it held the lock that others waited for.
int lockSharedFolder(const std::string& folder) {
    for (;;) {
        if (::mkdir(folder.c_str(), 0755) == 0) giveToServer(folder);
        const int lock = openLock(folder + "/start");
        if (lock < 0) {
            if (errno == ENOENT) continue;
            throw std::runtime_error(folder + " is not ours");
        }
        struct stat held {};
        struct stat named {};
        const bool locked = ::flock(lock, LOCK_EX) == 0 && ::fstat(lock, &held) == 0;
        if (locked && ::stat((folder + "/start").c_str(), &named) == 0 && held.st_ino == named.st_ino) return lock;
        ::close(lock);
    }
}

// A lock let go of also where the server can't be started: the next test must fail likewise, not wait.
struct Held {
    int file;
    ~Held() { ::close(file); }
};

using Session = std::unique_ptr<PGconn, decltype(&PQfinish)>;

Session connectTo(const std::string& host, const std::string& database) {
    const std::string text = "host='" + host + "' user=" + PostgresServer::kSuperuser + " dbname='" + database +
                             "' options='-c client_min_messages=warning'";
    return {PQconnectdb(text.c_str()), &PQfinish};
}

std::string runIn(PGconn* session, const std::string& sql) {
    const std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(session, sql.c_str()), &PQclear);
    const ExecStatusType status = PQresultStatus(result.get());
    if (status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK)
        throw std::runtime_error(sql + ": " + PQerrorMessage(session));
    return PQntuples(result.get()) == 0 ? std::string() : PQgetvalue(result.get(), 0, 0);
}

const std::string kInitialize = kPrograms + "/initdb --auth=trust --username=" + PostgresServer::kSuperuser +
                                " --locale=C --no-sync --no-instructions --encoding=";
const std::string kStart = kPrograms + "/pg_ctl start --wait --silent --pgdata=data --log=server.log";
const std::string kStop = kPrograms + "/pg_ctl stop --silent --mode=immediate --pgdata=data";

}  // namespace

PostgresServer& PostgresServer::shared() {
    static PostgresServer server{SharedByAll::yes};
    return server;
}

PostgresServer::PostgresServer(SharedByAll) : home_(sharedFolder()) {
    const Held start{lockSharedFolder(home_)};
    users_ = openLock(home_ + "/users");
    ::flock(users_, LOCK_SH);
    // Of a machine that went down, everything may be there but the server.
    if (PQstatus(connectTo(home_, "postgres").get()) != CONNECTION_OK) {
        runShell(home_, "rm -rf data empty && " + kInitialize + "UTF8 --pgdata=empty");
        runShell(home_, "cp -r empty data");
        writeSettings(Settings());
        this->start();
        addOwner();
    }
    // All but one watcher find that there is one.
    watcher_ = startShell(home_,
                          "exec 7>watcher; flock -n 7 || exit 0; while flock users true; do sleep 5; "
                          "exec 8<start 9<users; flock 8; if flock -n 9; then " +
                              kStop + "; rm -rf " + shellQuoted(home_) + "; exit; fi; exec 8<&- 9<&-; done");
}

void PostgresServer::makeFolder() {
    std::string pattern = (fs::temp_directory_path() / "orvenmod-postgres-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    home_ = pattern;
    ::chmod(home_.c_str(), 0755);
    giveToServer(home_);
    users_ = openLock(home_ + "/users");
    ::flock(users_, LOCK_SH);
    watcher_ = startShell(home_, "flock users true; " + kStop + "; rm -rf " + shellQuoted(home_));
}

PostgresServer::PostgresServer(const Settings& settings) {
    makeFolder();
    if (settings.encoding == "UTF8") {
        runShell(home_, "cp -r " + shellQuoted(shared().home_ + "/empty") + " data");
    } else {
        runShell(home_, kInitialize + settings.encoding + " --pgdata=data");
    }
    writeSettings(settings);
    if (!settings.environment.empty()) environment_ = settings.environment + " ";
    if (settings.fillable) {
        // The server's user may not reach the folder that it was built in.
        fs::copy_file(ORVEN_FULL_DISK, home_ + "/fulldisk.so");
        environment_ += "LD_PRELOAD=" + shellQuoted(home_ + "/fulldisk.so") + " ";
    }
    start();
    addOwner();
}

PostgresServer::PostgresServer(PostgresServer& primary, Standby) {
    makeFolder();
    runShell(home_, kPrograms + "/pg_basebackup --host=" + shellQuoted(primary.home_) + " --username=" + kSuperuser +
                        " --pgdata=data --checkpoint=fast --no-sync --write-recovery-conf");
    writeSettings(Settings());
    start();
    // Only now, and only there: the standby waits for nobody when it has become the primary.
    primary.run("postgres", "ALTER SYSTEM SET synchronous_standby_names = '*'");
    primary.run("postgres", "SELECT pg_reload_conf()");
    while (primary.run("postgres", "SELECT sync_state FROM pg_stat_replication") != "sync") {
    }
}

PostgresServer::~PostgresServer() {
    ::close(users_);
    // The shared server's watcher outlives this process.
    if (home_ != sharedFolder()) ::waitpid(watcher_, nullptr, 0);
}

void PostgresServer::writeSettings(const Settings& settings) const {
    std::ofstream file(home_ + "/data/postgresql.conf", std::ios::app);
    file << "listen_addresses = ''\nunix_socket_directories = '" << home_ << "'\nmax_connections = 100\n"
         << "fsync = off\nfull_page_writes = off\nlc_messages = 'C'\n";
    for (const std::string& line : settings.lines)
        file << line << '\n';
    if (!settings.access.empty()) std::ofstream(home_ + "/data/pg_hba.conf") << settings.access;
    file.flush();
    if (!file) throw std::runtime_error("the server's settings can't be written");
}

void PostgresServer::addOwner() const {
    run("postgres", std::string("CREATE SEQUENCE databases; CREATE ROLE ") + kOwner + " LOGIN");
}

void PostgresServer::stop() { runShell(home_, kStop); }
void PostgresServer::start() { runShell(home_, environment_ + kStart); }
namespace {

/// A socket has its file before somebody listens at it.
bool answers(const std::string& socketFile) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    socketFile.copy(address.sun_path, sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool connected = ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(socket);
    return connected;
}

}  // namespace

void PostgresServer::promote() const { runShell(home_, kPrograms + "/pg_ctl promote --wait --silent --pgdata=data"); }
void PostgresServer::command(const std::string& text) const { runShell(home_, text); }

std::string PostgresServer::startPooler(const std::string& mode) const {
    constexpr const char* kPort = "6432";
    std::ofstream(home_ + "/pooler.ini") << "[databases]\n* = host=" << home_ << "\n[pgbouncer]\npool_mode = " << mode
                                         << "\nunix_socket_dir = " << home_ << "\nlisten_port = " << kPort
                                         << "\nauth_type = trust\nauth_file = " << home_ << "/pooler.users\n";
    std::ofstream(home_ + "/pooler.users") << '"' << kOwner << "\" \"\"\n";
    command("(PATH=$PATH:/usr/sbin pgbouncer --quiet pooler.ini & pooler=$!; flock users true; kill $pooler) &");
    while (!answers(home_ + "/.s.PGSQL." + kPort)) {
    }
    return kPort;
}

std::string PostgresServer::tool(const std::string& program) const {
    return "PGHOST=" + shellQuoted(home_) + " PGUSER=" + kSuperuser + " " + kPrograms + "/" + program;
}

std::string PostgresServer::run(const std::string& database, const std::string& sql) const {
    const Session session = connectTo(home_, database);
    return runIn(session.get(), sql);
}

std::string PostgresServer::makeDatabase() { return makeDatabaseLike("", {}); }

std::string PostgresServer::makeDatabaseLike(const std::string& key,
                                             const std::function<void(const std::string&)>& make) {
    const Session session = connectTo(home_, "postgres");
    const std::string name = "test_" + runIn(session.get(), "SELECT nextval('databases')");
    const std::string owner = std::string(" OWNER ") + kOwner;
    if (key.empty()) {
        runIn(session.get(), "CREATE DATABASE " + name + owner);
        return name;
    }
    const std::string model = "like_" + key;
    runIn(session.get(), "SELECT pg_advisory_lock(1)");
    if (runIn(session.get(), "SELECT 1 FROM pg_database WHERE datname = '" + model + "'").empty()) {
        runIn(session.get(), "CREATE DATABASE " + name + owner);
        make(name);
        runIn(session.get(), "ALTER DATABASE " + name + " RENAME TO " + model);
    }
    runIn(session.get(), "CREATE DATABASE " + name + " TEMPLATE " + model + owner);
    return name;
}

void PostgresServer::dropDatabase(const std::string& database) noexcept {
    try {
        run("postgres", "DROP DATABASE IF EXISTS " + database + " WITH (FORCE)");
    } catch (const std::exception&) {
        // It goes with its server.
        return;
    }
}

void PostgresServer::terminateSessions(const std::string& database) const {
    run("postgres", "SELECT pg_terminate_backend(pid, 10000) FROM pg_stat_activity WHERE datname = '" + database + "'");
}

std::string PostgresServer::log() const {
    std::ifstream file(home_ + "/server.log");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

ServerDatabase::~ServerDatabase() { PostgresServer::shared().dropDatabase(name_); }

std::string ServerDatabase::connectionString() const { return connectionStringFor(PostgresServer::shared(), name_); }

void ServerDatabase::empty() const {
    run("DROP SCHEMA public CASCADE; CREATE SCHEMA public AUTHORIZATION pg_database_owner");
}

std::string connectionStringFor(const PostgresServer& server, const std::string& database) {
    return "Provider=PostgreSQL;Data Source=" + server.host() + ";Initial Catalog=" + database +
           ";User ID=" + PostgresServer::kOwner;
}

}  // namespace orvenmod::test
