// Connecting, against a driver that the test plays: what it is given, and what becomes of its answers.
#include <gtest/gtest.h>
#include <sql.h>
#include <sqlext.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "store/connectionstring.h"
#include "store/odbc/odbcsession.h"
#include "store/tsql/failurenumbers.h"
#include "support/scripteddriver/installeddrivers.h"
#include "support/scripteddriver/scriptedserver.h"

namespace orvenmod::store::odbc {
namespace {

using orvenmod::test::Answer;
using orvenmod::test::failed;
using orvenmod::test::oneRow;
using orvenmod::test::Session;

const std::string kVendor = "Provider=SQLOLEDB;Data Source=host;Initial Catalog=suite;User ID=clerk;Password=secret;";
const std::string kFreeTds = "Driver=FreeTDS;Server=host;Database=suite;UID=clerk;PWD=secret;";

class OdbcConnecting : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        static const orvenmod::test::InstalledDrivers installed(
            {"Scripted", "FreeTDS", "ODBC Driver 17 for SQL Server"});
        installed.addSource("Suite",
                            "Driver=FreeTDS\nServer=host\nPort=1500\nEncrypt=yes\nTrustServerCertificate=yes\n");
        installed.addSource("Played", "Driver=Scripted\nServer=other\n");
    }

    const Session& session() const { return server_.sessions.back(); }

    Failure failureOf(const std::string& connectionString) {
        try {
            OdbcSession session(connectionString);
        } catch (const Failure& failure) {
            return failure;
        }
        return {FailureKind::other, 0, "no failure"};
    }
    Failure failureFor(const std::vector<orvenmod::test::Diagnostic>& records, const std::string& more = "") {
        server_.onConnect = [records](Session&) { return failed(records); };
        return failureOf(kFreeTds + more);
    }

    orvenmod::test::ScriptedServer& server_ = orvenmod::test::freshServer();
};

TEST_F(OdbcConnecting, TakesTheFirstInstalledDriverForAProvider) {
    const OdbcSession connected(kVendor);
    EXPECT_EQ(ConnectionString(session().connectionString).get("Driver"), "ODBC Driver 17 for SQL Server");
    EXPECT_TRUE(connected.speaksTheDialect());
}

TEST_F(OdbcConnecting, ReadsADataSource) {
    const OdbcSession spelled("DSN=suite;UID=clerk");
    const ConnectionString parts(session().connectionString);
    EXPECT_EQ(parts.get("Server"), "host");
    EXPECT_EQ(parts.get("Port"), "1500");
    EXPECT_EQ(parts.get("Encryption"), "require");
    const OdbcSession wordForWord("DSN=Played;UID=clerk");
    EXPECT_EQ(session().connectionString, "DSN=Played;UID=clerk");
    EXPECT_EQ(failureOf("DSN=nowhere").number(), tsql::kUnknownSource);
}

TEST_F(OdbcConnecting, RefusesADriverThatIsNotInstalled) {
    EXPECT_EQ(failureOf("Driver=Nowhere;Server=host").number(), tsql::kUnknownDriver);
    EXPECT_TRUE(server_.sessions.empty());
}

TEST_F(OdbcConnecting, TellsTheDriverItsLimit) {
    const OdbcSession usual(kFreeTds);
    EXPECT_EQ(session().numbers.at(SQL_ATTR_LOGIN_TIMEOUT), 15);
    const OdbcSession named(kFreeTds + "Connect Timeout=40");
    EXPECT_EQ(session().numbers.at(SQL_ATTR_LOGIN_TIMEOUT), 40);
    const OdbcSession endless(kFreeTds + "Connection Timeout=0");
    EXPECT_EQ(session().numbers.at(SQL_ATTR_LOGIN_TIMEOUT), 0);
    EXPECT_EQ(failureOf(kFreeTds + "Connect Timeout=soon").number(), tsql::kBadConnectionString);
}

TEST_F(OdbcConnecting, EndsWhereTheDriverKeepsNoLimit) {
    server_.refusedAttribute = SQL_ATTR_LOGIN_TIMEOUT;
    server_.onConnect = [](Session& asked) {
        Answer answer;
        answer.waits = asked.connectionString.find("silent") != std::string::npos;
        return answer;
    };
    const Failure failure = failureOf("Driver=FreeTDS;Server=silent;Connect Timeout=1");
    EXPECT_EQ(failure.number(), tsql::kServerSilent);
    EXPECT_EQ(failure.text(), "服务器“silent”在 1 秒内没有应答。请检查服务器地址和网络。");
    EXPECT_EQ(failureOf("Driver=FreeTDS;Server=other").number(), 0) << "another server while the first is awaited";
    server_.release();
    server_.awaitClosed();
}

TEST_F(OdbcConnecting, EndsWhereTheFirstStatementsAreNotAnswered) {
    Answer silent;
    silent.waits = true;
    server_.questions.front().second = silent;
    EXPECT_EQ(failureOf(kFreeTds + "Connect Timeout=1").number(), tsql::kServerSilent);
    server_.release();
    server_.awaitClosed();
}

TEST_F(OdbcConnecting, LetsWindowsPaint) {
    Answer waiting;
    waiting.waits = true;
    for (const bool greets : {false, true}) {
        orvenmod::test::freshServer();
        if (greets) {
            server_.questions.front().second = waiting;
        } else {
            server_.onConnect = [waiting](Session&) { return waiting; };
        }
        int calls = 0;
        const OdbcSession connected(kFreeTds, [&] {
            if (++calls == 2) server_.release();
        });
        EXPECT_EQ(calls, 2);
    }
}

TEST_F(OdbcConnecting, LetsNoStatementWaitForALockWithoutEnd) {
    const OdbcSession usual(kFreeTds);
    EXPECT_EQ(session().questions.front(), "set lock_timeout 5000");
    const OdbcSession named(kFreeTds + "Busy Timeout=250");
    EXPECT_EQ(session().questions.front(), "set lock_timeout 250");
    EXPECT_EQ(failureOf(kFreeTds + "Busy Timeout=-1").number(), tsql::kBadConnectionString);
}

TEST_F(OdbcConnecting, SetsNothingOnAServerThatIsNotKnown) {
    const OdbcSession connected("Driver=Scripted;Server=host");
    EXPECT_EQ(session().questions, std::vector<std::string>{"select '中文'"});
}

TEST_F(OdbcConnecting, OpensADatabaseOfAChineseNameAfterTheLogin) {
    const OdbcSession connected("Driver=FreeTDS;Server=host;Database=进]销存");
    EXPECT_EQ(session().statements.front(), "use [进]]销存]");
    server_.onStatement = [](Session&, const std::string&) { return failed({{"08004", 911, "does not exist"}}); };
    EXPECT_EQ(failureOf("Driver=FreeTDS;Server=host;Database=进销存").text(),
              "无法打开登录所请求的数据库 \"进销存\"。登录失败。");
}

TEST_F(OdbcConnecting, RefusesADriverThatLosesLetters) {
    server_.questions = {{"set", {}}, {"select N'中文'", oneRow({"??", "??", "suite"})}};
    EXPECT_EQ(failureOf(kFreeTds).number(), tsql::kLettersLost);
    server_.questions = {{"select '中文'", oneRow({"ÖÐÎÄ"})}};
    EXPECT_EQ(failureOf("Driver=Scripted;Server=host").number(), tsql::kLettersLost);
}

TEST_F(OdbcConnecting, RefusesADatabaseThatCannotHoldChinese) {
    server_.questions = {{"set", {}}, {"select N'中文'", oneRow({"中文", "??", "suite"})}};
    const Failure failure = failureOf(kFreeTds);
    EXPECT_EQ(failure.number(), tsql::kNoChinese);
    EXPECT_NE(failure.text().find("“suite”"), std::string::npos);
}

TEST_F(OdbcConnecting, GivesTheVendorsDriverThePacketSizeAsItTakesIt) {
    const OdbcSession connected(kVendor + "Packet Size=8192");
    EXPECT_EQ(session().numbers.at(SQL_ATTR_PACKET_SIZE), 8192);
    EXPECT_EQ(failureOf(kVendor + "Packet Size=big").number(), tsql::kBadConnectionString);
}

TEST_F(OdbcConnecting, GivesFreeTdsTheCertificatesWhileItConnectsAndNoLonger) {
    ::setenv("FREETDSCONF", "/of/the/host", 1);
    std::string settings;
    server_.onConnect = [&](Session&) {
        std::ifstream file(std::getenv("FREETDSCONF"));
        settings.assign(std::istreambuf_iterator<char>(file), {});
        return Answer{};
    };
    const OdbcSession connected(kFreeTds + "CA File=/etc/suite.crt");
    EXPECT_NE(settings.find("ca file = /etc/suite.crt"), std::string::npos);
    EXPECT_EQ(settings.find("secret"), std::string::npos);
    EXPECT_STREQ(std::getenv("FREETDSCONF"), "/of/the/host");
    ::unsetenv("FREETDSCONF");
}

TEST_F(OdbcConnecting, GoesToTheFailoverPartnerWhereTheServerIsAway) {
    server_.onConnect = [](Session& asked) {
        const bool first = asked.connectionString.find("Server=host;") != std::string::npos;
        return first ? failed({{"08S01", 20009, "[FreeTDS]unavailable"}}) : Answer{};
    };
    const OdbcSession connected(kFreeTds + "Failover Partner=mirror");
    EXPECT_EQ(connected.server(), "mirror");
}

TEST_F(OdbcConnecting, AsksNoPartnerWhereTheLoginIsWrong) {
    const Failure failure = failureFor({{"42000", 18456, "Login failed"}}, "Failover Partner=mirror");
    EXPECT_EQ(failure.number(), tsql::kLoginFailed);
    EXPECT_EQ(server_.sessions.size(), 1U);
}

TEST_F(OdbcConnecting, SaysInItsOwnWordsWhatIsWrong) {
    const orvenmod::test::Diagnostic unable{"08001", 0, "[FreeTDS]Unable to connect to data source"};
    EXPECT_EQ(failureFor({unable, {"42000", 18456, "[FreeTDS]Login failed"}}).text(), "用户 'clerk' 登录失败。");
    EXPECT_EQ(failureFor({{"08004", 911, "does not exist"}, unable}).text(),
              "无法打开登录所请求的数据库 \"suite\"。登录失败。");
    EXPECT_EQ(failureFor({unable, {"01000", 20013, "Unknown host"}}).text(), "无法连接服务器“host”: 找不到这台主机。");
    EXPECT_EQ(failureFor({{"08S01", 20009, "unavailable"}, unable}).text(),
              "无法连接服务器“host”: 该地址上没有服务器在监听，或者被防火墙阻挡。");
    EXPECT_EQ(failureFor({unable, {"01000", 20017, "EOF"}}).text(), "无法连接服务器“host”: 服务器中断了连接。");
    EXPECT_EQ(failureFor({{"HYT00", 0, "Timeout expired"}, unable}).text(),
              "服务器“host”在 15 秒内没有应答。请检查服务器地址和网络。");
    EXPECT_EQ(failureFor({unable, {"01000", 4242, "[FreeTDS][SQL Server]the moon is full"}}).text(),
              "无法连接服务器“host”: the moon is full");
}

TEST_F(OdbcConnecting, SaysItInEnglishOnDemand) {
    EXPECT_EQ(failureFor({{"08S01", 20009, "unavailable"}}, "Language=us_english").text(),
              "Cannot connect to the server 'host': no server listens at that address, or a firewall is in between.");
}

TEST_F(OdbcConnecting, NamesEncryptionWhereItIsAskedForAndFails) {
    const Failure failure = failureFor({{"01000", 20002, "[FreeTDS]Adaptive Server connection failed"}}, "Encrypt=yes");
    EXPECT_EQ(failure.number(), tsql::kNotEncrypted);
    EXPECT_NE(failure.text().find("“host”"), std::string::npos);
}

TEST_F(OdbcConnecting, AsksForATicketWhereTheLoginOfTheSystemFails) {
    const Failure failure =
        failureFor({{"01000", 20002, "[FreeTDS]Adaptive Server connection failed"}}, "Integrated Security=SSPI");
    EXPECT_EQ(failure.text(), "无法连接服务器“host”: 操作系统的集成登录失败，请检查 Kerberos 票据 (kinit)。");
}

TEST_F(OdbcConnecting, TellsNoPassword) {
    for (const char* more : {"", "Encrypt=yes", "Nonsense=1", "Busy Timeout=x"})
        EXPECT_EQ(failureFor({{"08001", 0, "no"}}, more).text().find("secret"), std::string::npos) << more;
}

}  // namespace
}  // namespace orvenmod::store::odbc
