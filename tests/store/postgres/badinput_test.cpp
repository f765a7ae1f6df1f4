#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "store/tsql/failurenumbers.h"
#include "suiteserver.h"
#include "support/localport.h"
#include "support/temporary.h"

namespace orvenmod::store::postgres::test {
namespace {

using orvenmod::test::LocalPort;
using orvenmod::test::PostgresServer;

std::string stringFor(const LocalPort& port) { return "Provider=PostgreSQL;Data Source=127.0.0.1;Port=" + port.port(); }

// Gives each client the same answer and waits until he goes.
class PlayedServer {
public:
    explicit PlayedServer(std::string answer) : thread_([this, answer = std::move(answer)] { play(answer); }) {}
    ~PlayedServer() {
        ::shutdown(port_.socket(), SHUT_RDWR);
        thread_.join();
    }
    PlayedServer(const PlayedServer&) = delete;
    PlayedServer& operator=(const PlayedServer&) = delete;

    std::string connectionString() const {
        return stringFor(port_) + ";Initial Catalog=suite;User ID=suite;sslmode=disable;gssencmode=disable";
    }
    static std::string message(char kind, const std::string& content) {
        const auto length = static_cast<char>(content.size() + 4);
        return std::string{kind, 0, 0, 0, length} + content;
    }

private:
    void play(const std::string& answer) const {
        for (int client = 0; (client = ::accept(port_.socket(), nullptr, nullptr)) >= 0; ::close(client)) {
            char received[1024];
            EXPECT_GT(::read(client, received, sizeof received), 0);
            EXPECT_EQ(::write(client, answer.data(), answer.size()), static_cast<ssize_t>(answer.size()));
            while (::read(client, received, sizeof received) > 0) {
            }
        }
    }

    LocalPort port_;
    std::thread thread_;
};

// Lets every client in.
std::string welcome(const std::string& version) {
    using namespace std::string_literals;
    return PlayedServer::message('R', "\0\0\0\0"s) + PlayedServer::message('S', "server_version\0"s + version + "\0"s) +
           PlayedServer::message('S', "server_encoding\0UTF8\0"s) + PlayedServer::message('Z', "I");
}

// In a Chinese server's words.
std::string refusal(const std::string& state, const std::string& words) {
    using namespace std::string_literals;
    return PlayedServer::message('E', "S致命错误\0VFATAL\0C"s + state + "\0M"s + words + "\0\0"s);
}

Failure connecting(const std::string& connectionString) {
    return failureOf([&] { PostgresStore().connect(connectionString); });
}

TEST(BadServers, AHostThatDoesNotAnswerIsToldWithinTheConnectTimeout) {
    const LocalPort host;
    const auto start = std::chrono::steady_clock::now();
    const Failure failure = connecting(stringFor(host) + ";Connect Timeout=2");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(failure.number(), tsql::kServerSilent);
    EXPECT_EQ(failure.text(), "服务器“127.0.0.1”在 2 秒内没有应答。请检查服务器地址和网络。");
}

TEST(BadServers, WindowsPaintWhileAHostDoesNotAnswer) {
    const LocalPort host;
    int painted = 0;
    PostgresStore store([&] { ++painted; });
    EXPECT_EQ(failureOf([&] { store.connect(stringFor(host) + ";Connect Timeout=2"); }).number(), tsql::kServerSilent);
    EXPECT_GE(painted, 5);
}

TEST(BadServers, AHostThatDoesNotAnswerIsWaitedForNoLongerThanThePaintingWants) {
    const LocalPort host;
    int painted = 0;
    PostgresStore store([&] {
        if (++painted == 3) throw std::runtime_error("cancelled");
    });
    EXPECT_THROW(store.connect(stringFor(host) + ";Connect Timeout=600"), std::runtime_error);
    EXPECT_EQ(painted, 3);
}

TEST(BadServers, AHostThatDoesNotAnswerIsPassedOverWhileWindowsPaint) {
    const LocalPort host;
    PostgresServer& server = PostgresServer::shared();
    const std::string database = server.makeDatabase();
    int painted = 0;
    PostgresStore store([&] { ++painted; });
    const std::string hosts = "Provider=PostgreSQL;Data Source=127.0.0.1," + server.host() + ";Port=" + host.port() +
                              ",;Initial Catalog=" + database + ";User ID=suite;Connect Timeout=2";
    EXPECT_EQ(store.connect(hosts)->open("select 1 as a").rowCount(), 1U);
    EXPECT_GE(painted, 5);
    PostgresStore::dropIdleSessions();
    server.dropDatabase(database);
}

TEST(BadServers, AHostThatTakesNoConnectionIsTold) {
    const Failure failure = connecting("Provider=PostgreSQL;Data Source=/nowhere");
    EXPECT_EQ(failure.number(), tsql::kServerUnreachable);
    EXPECT_EQ(failure.kind(), FailureKind::connection);
    EXPECT_NE(failure.text().find("/nowhere"), std::string::npos);
}

TEST(BadServers, AWrongPasswordIsToldAndNotShown) {
    PostgresServer::Settings settings;
    settings.access = "local all tests trust\nlocal all all scram-sha-256\n";
    PostgresServer server(settings);
    const std::string text = connectionStringFor(server, server.makeDatabase());
    server.run("postgres", "ALTER ROLE suite PASSWORD 'right'");
    const Failure wrong = connecting(text + ";Password=geheim");
    EXPECT_EQ(wrong.number(), tsql::kLoginFailed);
    EXPECT_EQ(wrong.text(), "用户 'suite' 登录失败。");
    EXPECT_EQ(connecting(text).number(), tsql::kLoginFailed);
    EXPECT_EQ(connecting(text + ";Password=right").number(), 0);
    PostgresStore::dropIdleSessions();
}

TEST(Servers, AreLoggedInToByThePasswordFileAndTheServiceFile) {
    PostgresServer::Settings settings;
    settings.access = "local all tests trust\nlocal all all scram-sha-256\n";
    PostgresServer server(settings);
    const std::string database = server.makeDatabase();
    server.run("postgres", "ALTER ROLE suite PASSWORD 'right'");
    const orvenmod::test::TemporaryFolder folder;
    std::ofstream(folder.file("passwords")) << "*:*:*:suite:right\n";
    ::chmod(folder.file("passwords").c_str(), 0600);
    const std::string passwords = ";passfile=" + folder.file("passwords");
    EXPECT_EQ(connecting(connectionStringFor(server, database) + passwords).number(), 0);
    std::ofstream(folder.file("services"))
        << "[till]\nhost=" << server.host() << "\ndbname=" << database << "\nuser=suite\npassword=right\n";
    ::setenv("PGSERVICEFILE", folder.file("services").c_str(), 1);
    EXPECT_EQ(connecting("Provider=PostgreSQL;service=till").number(), 0);
    ::unsetenv("PGSERVICEFILE");
    PostgresStore::dropIdleSessions();
}

TEST(BadServers, AnUnknownUserIsTold) {
    const auto& server = PostgresServer::shared();
    EXPECT_EQ(
        connecting("Provider=PostgreSQL;Data Source=" + server.host() + ";Initial Catalog=postgres;User ID=x").number(),
        tsql::kLoginFailed);
}

TEST(BadServers, AMissingDatabaseIsTold) {
    const Failure failure = connecting(connectionStringFor(PostgresServer::shared(), "nosuch"));
    EXPECT_EQ(failure.number(), tsql::kCannotOpenDatabase);
    EXPECT_NE(failure.text().find("nosuch"), std::string::npos);
}

TEST(BadServers, ARoleThatMayNotConnectToTheDatabaseIsToldThatItCannotBeOpened) {
    orvenmod::test::ServerDatabase closed;
    closed.run("DO $$ BEGIN CREATE ROLE stranger LOGIN; EXCEPTION WHEN duplicate_object THEN NULL; END $$");
    closed.run("REVOKE CONNECT ON DATABASE " + closed.name() + " FROM PUBLIC");
    EXPECT_EQ(connecting(closed.connectionString() + ";User ID=stranger").number(), tsql::kCannotOpenDatabase);
}

TEST(BadServers, ARefusalIsToldAlikeInWhateverLanguageTheServerWordsIt) {
    struct Case {
        const char* state;
        const char* words;
        int number;
    };
    const Case cases[] = {{"28P01", "用户 \"suite\" Password 认证失败", tsql::kLoginFailed},
                          {"28000", "角色 \"suite\" 不存在", tsql::kLoginFailed},
                          {"3D000", "数据库 \"suite\" 不存在", tsql::kCannotOpenDatabase},
                          {"57P03", "数据库系统启动中", tsql::kServerUnreachable}};
    for (const Case& each : cases) {
        const PlayedServer server(refusal(each.state, each.words));
        const Failure failure = connecting(server.connectionString());
        EXPECT_EQ(failure.number(), each.number) << failure.text();
        EXPECT_EQ(failure.text().find(each.state), std::string::npos) << failure.text();
    }
}

TEST(BadServers, ADatabaseOfAnotherEncodingIsRefused) {
    auto& server = PostgresServer::shared();
    const std::string name = server.makeDatabase() + "_ascii";
    server.run("postgres", "CREATE DATABASE " + name + " OWNER suite ENCODING 'SQL_ASCII' TEMPLATE template0");
    const Failure failure = connecting(connectionStringFor(server, name));
    server.dropDatabase(name);
    EXPECT_EQ(failure.number(), tsql::kServerEncoding);
    EXPECT_EQ(failure.text(), "数据库“" + name + "”的编码是 SQL_ASCII，需要的是 UTF8。");
}

TEST(BadServers, AServerThatIsTooOldIsRefused) {
    const PlayedServer server(welcome("14.19"));
    const Failure failure = connecting(server.connectionString());
    EXPECT_EQ(failure.number(), tsql::kServerTooOld);
    EXPECT_EQ(failure.text(), "服务器“127.0.0.1”的版本是 14，至少需要 15。");
}

TEST(BadServers, AFullDiskIsToldAndStoresNothing) {
    PostgresServer::Settings settings;
    settings.fillable = true;
    PostgresServer server(settings);
    const std::string text = connectionStringFor(server, server.makeDatabase());
    {
        const auto connection = PostgresStore().connect(text);
        connection->execute("create table t(id int, c varchar(8000))");
        connection->execute("insert into t(id,c) values(1,'a')");
        server.fillDisk();
        connection->beginTrans();
        connection->execute("update t set id=2");
        const std::string sql = "insert into t(id,c) select 3,replicate('x',2000) from t a";
        Failure failure = failureOf([&] {
            for (int i = 0; i < 100; ++i)
                connection->execute(sql);
        });
        EXPECT_EQ(failure.number(), tsql::kNoSpace) << failure.text();
        EXPECT_EQ(failure.kind(), FailureKind::connection);
        connection->rollbackTrans();
        EXPECT_EQ(connection->open("select id from t").text("id"), "1");
        server.clearDisk();
        EXPECT_EQ(connection->execute(sql), 1);
    }
    PostgresStore::dropIdleSessions();
}

class BadInput : public OnTheServer {
protected:
    BadInput() : connection_(connect()) {}

    std::unique_ptr<Connection> connection_;
};

TEST_F(BadInput, ARoleThatMayNotMakeWhatTheStoreNeedsIsTold) {
    orvenmod::test::ServerDatabase bare;
    bare.run("DO $$ BEGIN CREATE ROLE stranger LOGIN; EXCEPTION WHEN duplicate_object THEN NULL; END $$");
    const Failure failure = connecting(bare.connectionString() + ";User ID=stranger");
    EXPECT_EQ(failure.number(), tsql::kNoRight);
    EXPECT_NE(failure.text().find(bare.name()), std::string::npos) << failure.text();
}

TEST_F(BadInput, ARoleWithoutRightsOnATableIsTold) {
    database_.run("DO $$ BEGIN CREATE ROLE stranger LOGIN; EXCEPTION WHEN duplicate_object THEN NULL; END $$");
    const auto stranger = connect(";User ID=stranger");
    EXPECT_EQ(failureOf([&] { stranger->open("select * from t"); }).number(), tsql::kNoRight);
    EXPECT_EQ(failureOf([&] { stranger->execute("create table u(a int)"); }).number(), tsql::kNoRight);
}

TEST_F(BadInput, ADatabaseWithoutTheSuitesTablesAnswersThatTheyAreUnknown) {
    EXPECT_EQ(failureOf([&] { connection_->open("select * from tblItem"); }).number(), 208);
}

TEST_F(BadInput, ADayThatIsNoneIsToldAsADayWithItsPlaceAmongLoadedRows) {
    connection_->execute("create table days(id int, made datetime)");
    connection_->beginTrans();
    const auto loader = connection_->openLoader("days", {"id", "made"});
    Recordset rows({{"id", ColumnType::integer}, {"made", ColumnType::date}});
    for (const char* day : {"2026-02-28 00:00:00", "2026-02-30 00:00:00"}) {
        rows.addText("1");
        rows.addText(day);
        rows.endRow();
    }
    try {
        loader->add(rows);
        ADD_FAILURE() << "it was stored";
    } catch (const RowFailure& failure) {
        EXPECT_EQ(failure.number(), tsql::kDateOutOfRange) << failure.text();
        EXPECT_EQ(failure.row(), 1U);
        EXPECT_EQ(failure.column(), 1);
    }
    connection_->rollbackTrans();
}

TEST_F(BadInput, RowsGoIntoATableThatWasMadeByHandWhateverItsCase) {
    foreignly("CREATE TABLE \"Mixed\"(\"Id\" integer)");
    const auto writer = connection_->openTable("mixed");
    writer->addNew();
    writer->set("id", "1");
    writer->update();
    connection_->beginTrans();
    Recordset rows({{"id", ColumnType::integer}});
    rows.addText("2");
    rows.endRow();
    connection_->openLoader("mixed", {"id"})->add(rows);
    connection_->commitTrans();
    EXPECT_EQ(value(*connection_, "select sum(Id) from Mixed"), "3");
}

TEST_F(BadInput, AZeroInAStatementIsRefusedAndStoresNothing) {
    using namespace std::string_literals;
    const std::string sql = "insert into t(c) values('a\0b')"s;
    EXPECT_EQ(failureOf([&] { connection_->execute(sql); }).number(), tsql::kNoText);
    EXPECT_EQ(failureOf([&] { connection_->open("select * from t where c='a\0b'"s); }).number(), tsql::kNoText);
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "0");
}

TEST_F(BadInput, BytesThatAreNoTextAreRefusedAndStoreNothing) {
    for (const char* bytes : {"\xFF", "\xC3", "\xED\xA0\x80", "\xC0\xAF", "\xF4\x90\x80\x80"}) {
        const std::string sql = "insert into t(c) values('" + std::string(bytes) + "')";
        EXPECT_EQ(failureOf([&] { connection_->execute(sql); }).number(), tsql::kNoText);
    }
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "0");
}

TEST_F(BadInput, TheTableWriterRefusesThemToo) {
    using namespace std::string_literals;
    const auto writer = connection_->openTable("t");
    for (const std::string& text : {"a\0b"s, "\xFF"s}) {
        writer->addNew();
        writer->set("c", text);
        EXPECT_EQ(failureOf([&] { writer->update(); }).number(), tsql::kNoText);
    }
    EXPECT_EQ(value(*connection_, "select count(*) from t"), "0");
}

}  // namespace
}  // namespace orvenmod::store::postgres::test
