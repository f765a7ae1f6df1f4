// A PostgreSQL server of the tests' own: in a temporary folder, reached by a socket in it only, never run by root, gone
// at the end, also when the test crashes.
//
// Making a server's data takes two seconds and each case of a test is a process of its own, so that there is one which
// all of them share: whoever needs it first starts it, and some seconds after its last user it goes away. A test that
// stops its server, or wants one that is set otherwise, makes one of its own.
//
//   shared folder  users     a lock that each user holds; the kernel lets go of it however the user ends
//                  start     a lock held by who starts or ends the server
//                  data      a watcher waits for the users, then ends the server and removes the folder
#pragma once

#include <sys/types.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvenmod::test {

class PostgresServer {
public:
    struct Settings {
        std::string encoding = "UTF8";
        std::string access;              ///< lines of pg_hba.conf; empty lets everybody in
        std::vector<std::string> lines;  ///< of postgresql.conf
        bool fillable = false;           ///< its disk can be full
    };

    /// The one that all tests share. It must not be stopped.
    static PostgresServer& shared();

    /// One of the test's own. Throws std::runtime_error where it can't be started.
    explicit PostgresServer(const Settings& settings);
    ~PostgresServer();
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    /// The folder of its socket, as a connection string's Data Source.
    const std::string& host() const { return home_; }

    /// An empty database of a name of its own, which belongs to the role `suite`, no superuser.
    std::string makeDatabase();
    /// A copy of one that `make` has filled once on this server; `key` names what it is filled with.
    std::string makeDatabaseLike(const std::string& key, const std::function<void(const std::string& database)>& make);
    void dropDatabase(const std::string& database) noexcept;

    /// Runs statements of the server's own language as its superuser; the first cell of the last one's rows.
    std::string run(const std::string& database, const std::string& sql) const;

    /// Ends every session of the database.
    void terminateSessions(const std::string& database) const;
    /// Ends the server at once, as a loss of power would.
    void stop();
    void start();
    /// From now on no table grows, until there is space again.
    void fillDisk() const { command("touch data/full"); }
    void clearDisk() const { command("rm data/full"); }
    std::string log() const;
    /// Runs a shell command as the server's user, in its folder. Throws std::runtime_error where it fails.
    void command(const std::string& text) const;

    /// The superuser of the tests, and the role that owns the databases.
    static constexpr const char* kSuperuser = "tests";
    static constexpr const char* kOwner = "suite";

private:
    enum class SharedByAll { yes };
    explicit PostgresServer(SharedByAll);
    void addOwner() const;
    void writeSettings(const Settings& settings) const;

    std::string home_;
    std::string environment_;  // of the server, as a shell has it
    int users_ = -1;
    pid_t watcher_ = -1;
};

/// A database of a test's own on the shared server, dropped at its end.
class ServerDatabase {
public:
    ServerDatabase() : ServerDatabase("", {}) {}
    /// A copy, see makeDatabaseLike().
    ServerDatabase(const std::string& key, const std::function<void(const std::string& database)>& make)
        : name_(PostgresServer::shared().makeDatabaseLike(key, make)) {}
    ~ServerDatabase();
    ServerDatabase(const ServerDatabase&) = delete;
    ServerDatabase& operator=(const ServerDatabase&) = delete;

    const std::string& name() const { return name_; }
    std::string run(const std::string& sql) const { return PostgresServer::shared().run(name_, sql); }
    /// "Provider=PostgreSQL;..." of the role that owns it.
    std::string connectionString() const;
    /// Drops all that tests have made in it.
    void empty() const;

private:
    std::string name_;
};

/// "Provider=PostgreSQL;..." of the role that owns the database.
std::string connectionStringFor(const PostgresServer& server, const std::string& database);

}  // namespace orvenmod::test
