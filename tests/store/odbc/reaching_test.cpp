// Connecting to a real server, in the ways that a connection string can ask for.
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>

#include "store/connectionstring.h"
#include "store/odbc/odbcstore.h"
#include "store/odbc/sessionpool.h"
#include "store/tsql/failurenumbers.h"
#include "support/tdsserver.h"

namespace orvenmod::store::odbc {
namespace {

class ReachingAServer : public ::testing::Test {
protected:
    void SetUp() override {
        std::string reason;
        const auto* database = orvenmod::test::TdsDatabase::get(reason);
        if (database == nullptr) GTEST_SKIP() << reason;
        string_ = database->connectionString() + ";";
    }
    // A session of the last test would answer for a string that is the same.
    void TearDown() override { dropIdleSessions(); }

    static std::unique_ptr<Connection> connect(const std::string& string) { return OdbcStore().connect(string); }
    static std::string value(Connection& connection, const std::string& sql) {
        return std::string(connection.open(sql).cell(0, 0).value_or("NULL"));
    }
    static bool isEncrypted(Connection& connection) {
        return value(connection, "select encrypt_option from sys.dm_exec_connections where session_id=@@spid") ==
               "TRUE";
    }
    static Failure failureOf(const std::string& string) {
        try {
            connect(string);
        } catch (const Failure& failure) {
            return failure;
        }
        return {FailureKind::other, 0, "no failure"};
    }
    // A server goes on counting a session for a while after it has gone.
    static void drop(Connection& connection, const std::string& database) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        for (;;) {
            try {
                connection.execute("drop database [" + database + "]");
                return;
            } catch (const Failure&) {
                if (std::chrono::steady_clock::now() > end) throw;
            }
        }
    }
    std::string place() const {
        const ConnectionString parts(string_);
        return parts.get("Data Source", parts.get("Server"));
    }

    std::string string_;
};

TEST_F(ReachingAServer, ThatRefusesTheLoginSaysSo) {
    const Failure failure = failureOf(string_ + "Password=wrong");
    EXPECT_EQ(failure.number(), tsql::kLoginFailed);
    EXPECT_NE(failure.text().find("登录失败"), std::string::npos);
}

TEST_F(ReachingAServer, ByTheLoginOfTheSystemAsksForATicket) {
    ::setenv("KRB5CCNAME", "FILE:/nowhere", 1);
    const Failure failure = failureOf(string_ + "Integrated Security=SSPI");
    ::unsetenv("KRB5CCNAME");
    EXPECT_EQ(failure.kind(), FailureKind::connection);
    EXPECT_NE(failure.text().find("Kerberos"), std::string::npos) << failure.text();
}

TEST_F(ReachingAServer, WithoutTheDatabaseSaysSo) {
    const Failure failure = failureOf(string_ + "Initial Catalog=no_such_database");
    EXPECT_EQ(failure.number(), tsql::kCannotOpenDatabase);
    EXPECT_EQ(failure.kind(), FailureKind::connection);
    EXPECT_NE(failure.text().find("no_such_database"), std::string::npos);
}

TEST_F(ReachingAServer, WithEncryptionIsEncryptedOrIsNot) {
    for (const char* more : {"Encrypt=yes;TrustServerCertificate=yes", "Encrypt=yes",
                             "Use Encryption for Data=True;CA File=/nowhere.crt"}) {
        const Failure failure = failureOf(string_ + more);
        if (failure.number() != 0) {
            EXPECT_EQ(failure.number(), tsql::kNotEncrypted) << failure.text();
            continue;
        }
        const auto connection = connect(string_ + more);
        EXPECT_TRUE(isEncrypted(*connection));
    }
    EXPECT_EQ(failureOf(string_ + "CA File=/nowhere.crt").number(), tsql::kNotEncrypted);
}

TEST_F(ReachingAServer, TrustsTheCertificatesOfAFile) {
    const char* authority = std::getenv("ORVEN_TDS_CA");
    if (authority == nullptr) GTEST_SKIP() << "no certificates: ORVEN_TDS_CA names no file";
    EXPECT_TRUE(isEncrypted(*connect(string_ + "Encrypt=yes;CA File=" + authority)));
    EXPECT_TRUE(isEncrypted(*connect(string_ + "Encrypt=yes;Server Certificate=" + authority)));
    EXPECT_TRUE(isEncrypted(*connect(string_ + "Encrypt=yes;TrustServerCertificate=yes")));
}

TEST_F(ReachingAServer, TellsItWhoAsks) {
    const auto connection = connect(string_ + "Application Name=suite;Workstation ID=till 7;Packet Size=4096");
    EXPECT_EQ(value(*connection, "select app_name()"), "suite");
    EXPECT_EQ(value(*connection, "select host_name()"), "till 7");
}

TEST_F(ReachingAServer, OverTcpByItsName) {
    EXPECT_EQ(value(*connect(string_ + "Data Source=tcp:" + place()), "select 1"), "1");
}

TEST_F(ReachingAServer, ByAStringOfOdbcKeepsLetters) {
    const ConnectionString parts(string_);
    const std::string inner =
        "Driver={SQL Server};Server=" + place() + ";Database=" + parts.get("Initial Catalog", parts.get("Database"));
    const std::string login =
        ";UID=" + parts.get("User ID", parts.get("UID")) + ";PWD=" + parts.get("Password", parts.get("PWD"));
    EXPECT_EQ(value(*connect(inner + login), "select '中文'"), "中文");
    EXPECT_EQ(value(*connect("Provider=MSDASQL;Extended Properties=\"" + inner + "\"" + login), "select '中文'"),
              "中文");
}

TEST_F(ReachingAServer, GoesToThePartnerOfOneThatIsAway) {
    const auto connection = connect(string_ + "Data Source=127.0.0.1,1;Failover Partner=" + place());
    EXPECT_EQ(value(*connection, "select 1"), "1");
}

TEST_F(ReachingAServer, OpensADatabaseOfAChineseName) {
    const std::string name = "进销存" + std::to_string(::getpid());
    const auto maker = connect(string_);
    maker->execute("create database [" + name + "]");
    EXPECT_EQ(value(*connect(string_ + "Initial Catalog=" + name), "select db_name()"), name);
    dropIdleSessions();
    drop(*maker, name);
}

TEST_F(ReachingAServer, WaitsForALockNoLongerThanIsSaid) {
    const auto holder = connect(string_);
    holder->execute("create table tblWait(fid int)");
    holder->execute("insert into tblWait(fid) values(1)");
    holder->beginTrans();
    holder->execute("update tblWait set fid=2");
    const auto other = connect(string_ + "Busy Timeout=200");
    try {
        other->execute("update tblWait set fid=3");
        ADD_FAILURE() << "the row was not locked";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), tsql::kLockTimeout) << failure.text();
        EXPECT_EQ(failure.kind(), FailureKind::busy);
        EXPECT_NE(failure.text().find("等待 0.2 秒后仍未完成"), std::string::npos) << failure.text();
    }
    holder->rollbackTrans();
    EXPECT_EQ(other->execute("update tblWait set fid=4"), 1);
    holder->execute("drop table tblWait");
}

}  // namespace
}  // namespace orvenmod::store::odbc
