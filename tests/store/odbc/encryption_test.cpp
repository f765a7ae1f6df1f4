// What a connection string says of encryption, trust and the login, and what the driver gets of it.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <thread>
#include <vector>

#include "store/connectionstring.h"
#include "store/failure.h"
#include "store/odbc/freetdssettings.h"
#include "store/odbc/serverstring.h"
#include "store/tsql/failurenumbers.h"

namespace orvenmod::store::odbc {
namespace {

const std::string kOleDb = "Provider=SQLOLEDB;Data Source=host,1500;User ID=a;Password=b;";
const std::string kNewOleDb = "Provider=MSOLEDBSQL19;Data Source=host,1500;User ID=a;Password=b;";
const Drivers kFreeTds{{{"FreeTDS", "libtdsodbc.so"}}, {}};
const Drivers kVendor{{{"ODBC Driver 18 for SQL Server", "libmsodbcsql-18.so"}}, {}};
const Drivers kOther{{{"Other", "libother.so"}}, {}};

ServerString freeTds(const std::string& string) { return serverStrings(string, kFreeTds).front(); }
ConnectionString vendor(const std::string& string) {
    return ConnectionString(serverStrings(string, kVendor).front().text);
}

int numberOf(const std::string& string, const Drivers& drivers) {
    try {
        serverStrings(string, drivers);
        return 0;
    } catch (const Failure& failure) {
        return failure.number();
    }
}

TEST(Encryption, ThatIsAskedForIsRequired) {
    for (const char* key : {"Encrypt=yes", "Encrypt=True", "Encrypt=Mandatory", "Use Encryption for Data=True",
                            "Encrypt=no;Use Encryption for Data=True"}) {
        const ServerString way = freeTds(kOleDb + key);
        EXPECT_EQ(ConnectionString(way.text).get("Encryption"), "require") << key;
        EXPECT_TRUE(way.encrypted) << key;
        EXPECT_EQ(vendor(kOleDb + key).get("Encrypt"), "yes") << key;
    }
    EXPECT_EQ(ConnectionString(freeTds("Driver=FreeTDS;Server=h;Encrypt=yes;Encryption=off").text).get("Encryption"),
              "require");
    EXPECT_EQ(vendor(kOleDb + "Encrypt=strict").get("Encrypt"), "strict");
}

TEST(Encryption, OfTheLoginStaysWhereNoneIsAskedFor) {
    EXPECT_EQ(ConnectionString(freeTds(kOleDb + "Encrypt=no").text).get("Encryption"), "request");
    EXPECT_FALSE(ConnectionString(freeTds(kOleDb).text).has("Encryption"));
}

TEST(Encryption, IsWhatTheProviderDoesByItself) {
    EXPECT_EQ(vendor(kOleDb).get("Encrypt"), "no");
    EXPECT_FALSE(vendor(kNewOleDb).has("Encrypt"));
    EXPECT_FALSE(vendor("Driver={ODBC Driver 18 for SQL Server};Server=h").has("Encrypt"));
}

TEST(Encryption, OfADataSourceIsNotOverruledByTheBridge) {
    const Drivers source{kVendor.installed,
                         {{"suite", {{"driver", kVendor.installed.front().name}, {"encrypt", "yes"}}}}};
    for (const char* string : {"Provider=MSDASQL;Data Source=suite", "Provider=SQLOLEDB;DSN=suite"})
        EXPECT_FALSE(ConnectionString(serverStrings(string, source).front().text).has("Encrypt")) << string;
    EXPECT_EQ(ConnectionString(serverStrings("DSN=suite;Encrypt=no", source).front().text).get("Encrypt"), "no");
    EXPECT_FALSE(vendor("Provider=MSDASQL;Extended Properties=\"Driver={ODBC Driver 18 for SQL Server};Server=h\"")
                     .has("Encrypt"));
}

TEST(Encryption, ChecksTheServersCertificateUnlessAnyWillDo) {
    const ServerString checked = freeTds(kOleDb + "Encrypt=yes");
    EXPECT_EQ(ConnectionString(checked.text).get("Servername"), "orvenmod");
    EXPECT_FALSE(ConnectionString(checked.text).has("Server"));
    EXPECT_EQ(checked.settings,
              "[orvenmod]\n\thost = host\n\tport = 1500\n\tca file = system\n\tcheck certificate hostname = yes\n");
    const ServerString trusting = freeTds(kOleDb + "Encrypt=yes;TrustServerCertificate=yes");
    EXPECT_EQ(trusting.settings, "");
    EXPECT_EQ(ConnectionString(trusting.text).get("Server"), "host");
    EXPECT_EQ(vendor(kOleDb + "Encrypt=yes;Trust Server Certificate=no").get("TrustServerCertificate"), "no");
    EXPECT_EQ(vendor(kOleDb + "Encrypt=yes;TrustServerCertificate=true").get("TrustServerCertificate"), "yes");
}

TEST(Encryption, TrustsTheCertificatesOfAFile) {
    const ServerString way = freeTds(kOleDb + "CA File=/etc/suite.crt");
    EXPECT_NE(way.settings.find("ca file = /etc/suite.crt\n\tcheck certificate hostname = yes"), std::string::npos);
    EXPECT_EQ(ConnectionString(way.text).get("Encryption"), "require");
    EXPECT_NE(freeTds(kOleDb + "Encrypt=yes;Server Certificate=/etc/own.crt")
                  .settings.find("ca file = /etc/own.crt\n\tcheck certificate hostname = no"),
              std::string::npos);
    EXPECT_EQ(vendor(kOleDb + "Encrypt=yes;Server Certificate=/etc/own.crt").get("ServerCertificate"), "/etc/own.crt");
    EXPECT_EQ(vendor(kOleDb + "Encrypt=yes;HostNameInCertificate=h2").get("HostnameInCertificate"), "h2");
}

TEST(Encryption, IsCheckedByWhatIsNamedForIt) {
    const std::string both = kOleDb + "Encrypt=no;TrustServerCertificate=yes;CA File=/etc/suite.crt";
    EXPECT_NE(freeTds(both).settings.find("ca file = /etc/suite.crt"), std::string::npos);
    EXPECT_EQ(ConnectionString(freeTds(both).text).get("Encryption"), "require");
    EXPECT_TRUE(freeTds(kOleDb + "Server Certificate=/etc/own.crt").encrypted);
    EXPECT_EQ(vendor(kOleDb + "Server Certificate=/etc/own.crt").get("Encrypt"), "yes");
}

TEST(Encryption, IsLeftToTheSectionOfFreeTdsThatTheStringNames) {
    const ServerString way = freeTds("Driver=FreeTDS;Servername=suite;Encrypt=yes");
    EXPECT_EQ(ConnectionString(way.text).get("Servername"), "suite");
    EXPECT_EQ(ConnectionString(way.text).get("Encryption"), "require");
    EXPECT_EQ(way.settings, "");
    EXPECT_EQ(way.server, "suite");
    EXPECT_EQ(numberOf("Driver=FreeTDS;Servername=suite;CA File=/etc/a.crt", kFreeTds), tsql::kBadConnectionString);
    EXPECT_EQ(numberOf("Driver=FreeTDS;Servername=suite;Failover Partner=b", kFreeTds), tsql::kBadConnectionString);
}

TEST(Encryption, ThatTheDriverCantDoIsRefused) {
    EXPECT_EQ(numberOf(kOleDb + "Encrypt=strict", kFreeTds), tsql::kBadConnectionString);
    EXPECT_EQ(numberOf(kOleDb + "Encrypt=yes;HostNameInCertificate=h2", kFreeTds), tsql::kBadConnectionString);
    EXPECT_EQ(numberOf(kOleDb + "CA File=/etc/suite.crt", kVendor), tsql::kBadConnectionString);
    EXPECT_EQ(numberOf(kOleDb + "Driver=Other;Encrypt=yes", kOther), tsql::kBadConnectionString);
    EXPECT_EQ(numberOf(kOleDb + "Encrypt=perhaps", kFreeTds), tsql::kBadConnectionString);
    EXPECT_EQ(numberOf(kOleDb + "CA File={/etc/a\n\tcheck certificate hostname = no}", kFreeTds),
              tsql::kBadConnectionString);
}

TEST(Encryption, OfOneThreadIsNotThatOfAnother) {
    constexpr int kThreads = 4;
    constexpr int kRounds = 200;
    ::setenv("FREETDSCONF", "/of/the/host", 1);
    std::atomic<int> foreign = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&foreign, own = std::to_string(i)] {
            for (int round = 0; round < kRounds; ++round) {
                const FreeTdsSettings settings(own);
                std::this_thread::yield();
                std::string text;
                std::ifstream(std::getenv("FREETDSCONF")) >> text;
                if (text != own) ++foreign;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(foreign, 0);
    EXPECT_STREQ(std::getenv("FREETDSCONF"), "/of/the/host");
    ::unsetenv("FREETDSCONF");
}

TEST(IntegratedSecurity, GoesToADriverThatHasIt) {
    for (const char* key : {"Integrated Security=SSPI", "Trusted_Connection=yes", "Integrated Security=true"}) {
        const ConnectionString mapped(freeTds(kOleDb + key).text);
        EXPECT_EQ(mapped.get("Trusted_Connection"), "yes") << key;
        EXPECT_FALSE(mapped.has("UID")) << key;
        EXPECT_EQ(vendor(kOleDb + key).get("Trusted_Connection"), "yes") << key;
        EXPECT_EQ(numberOf(kOleDb + "Driver=Other;" + key, kOther), tsql::kBadConnectionString) << key;
    }
    EXPECT_EQ(ConnectionString(freeTds(kOleDb + "Integrated Security=false").text).get("UID"), "a");
}

}  // namespace
}  // namespace orvenmod::store::odbc
