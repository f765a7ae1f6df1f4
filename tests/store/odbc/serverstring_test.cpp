// What hosts write, and what the driver gets.
#include "store/odbc/serverstring.h"

#include <gtest/gtest.h>

#include "store/connectionstring.h"
#include "store/odbc/odbcfetch.h"
#include "store/tsql/failurenumbers.h"

namespace orvenmod::store::odbc {
namespace {

const Driver kEighteen{"ODBC Driver 18 for SQL Server", "/opt/libmsodbcsql-18.so"};
const Driver kSeventeen{"ODBC Driver 17 for SQL Server", "/opt/libmsodbcsql-17.so"};
const Driver kFreeTds{"FreeTDS", "libtdsodbc.so"};
const Driver kOther{"Other", "libother.so"};

std::vector<ServerString> waysOf(const std::string& string, const std::vector<Driver>& installed) {
    return serverStrings(string, {installed, {}});
}
ServerString wayOf(const std::string& string, const std::vector<Driver>& installed = {kFreeTds}) {
    return waysOf(string, installed).front();
}
ConnectionString freeTds(const std::string& string) { return ConnectionString(wayOf(string).text); }
ConnectionString vendor(const std::string& string) { return ConnectionString(wayOf(string, {kEighteen}).text); }

Failure failureOf(const std::string& string, const std::vector<Driver>& installed = {kFreeTds}) {
    try {
        waysOf(string, installed);
    } catch (const Failure& failure) {
        return failure;
    }
    return {FailureKind::other, 0, "no failure"};
}

TEST(ServerString, OfOleDbIsOneOfTheDriver) {
    const ConnectionString mapped = freeTds(
        "Provider=SQLOLEDB.1;Persist Security Info=True;User ID=sa;Password=a;Initial Catalog=suite;Data Source=host");
    EXPECT_EQ(mapped.get("Driver"), "FreeTDS");
    EXPECT_EQ(mapped.get("Server"), "host");
    EXPECT_EQ(mapped.get("Port"), "1433");
    EXPECT_EQ(mapped.get("Database"), "suite");
    EXPECT_EQ(mapped.get("UID"), "sa");
    EXPECT_EQ(mapped.get("PWD"), "a");
    EXPECT_EQ(mapped.get("ClientCharset"), "UTF-8");
    EXPECT_FALSE(mapped.has("Provider"));
    EXPECT_EQ(vendor("Provider=SQLOLEDB;Data Source=host").get("Server"), "tcp:host,1433");
}

TEST(ServerString, OfADriverThatIsNotKnownStaysAsItIs) {
    const std::string string = "Driver=Other;Server=a;x=1;Encrypt=perhaps";
    EXPECT_EQ(wayOf(string, {kFreeTds, kOther}).text, string);
}

TEST(ServerString, TakesTheFirstInstalledDriverOfItsList) {
    const std::string string = "Provider=SQLOLEDB;Data Source=host";
    EXPECT_EQ(wayOf(string, {kOther, kFreeTds, kSeventeen, kEighteen}).driver, kEighteen.name);
    EXPECT_EQ(wayOf(string, {kFreeTds, kSeventeen}).driver, kSeventeen.name);
    EXPECT_EQ(wayOf(string, {kFreeTds}).driver, kFreeTds.name);
    const Failure failure = failureOf(string, {kOther});
    EXPECT_EQ(failure.number(), tsql::kNoDriver);
    EXPECT_NE(failure.text().find("FreeTDS"), std::string::npos);
}

TEST(ServerString, TakesTheDriverThatStandsBesideTheProvider) {
    const std::vector<Driver> all = {kEighteen, kFreeTds, kOther};
    EXPECT_EQ(wayOf("Provider=SQLOLEDB;Driver=freetds;Data Source=h", all).kind, DriverKind::freeTds);
    const ConnectionString other(wayOf("Provider=SQLOLEDB;Driver=Other;Data Source=h;User ID=a", all).text);
    EXPECT_EQ(other.get("Server"), "h");
    EXPECT_EQ(other.get("UID"), "a");
    EXPECT_EQ(failureOf("Provider=SQLOLEDB;Driver=None;Data Source=h", all).number(), tsql::kUnknownDriver);
    EXPECT_EQ(wayOf("Driver=/opt/libtdsodbc.so;Server=h", {}).kind, DriverKind::freeTds);
}

TEST(ServerString, TakesTheBestDriverForTheNameThatAnotherSystemGivesIt) {
    EXPECT_EQ(freeTds("Driver={SQL Server};Server=h;UID=a;PWD=b").get("Driver"), "FreeTDS");
    EXPECT_EQ(freeTds("Driver={SQL Server Native Client 11.0};Server=h").get("Driver"), "FreeTDS");
}

TEST(ServerString, ReadsTheInnerStringOfTheBridge) {
    const ConnectionString inner = freeTds(
        "Provider=MSDASQL.1;Password=p;Extended Properties=\"Driver={SQL Server};Server=h,1500;Database=suite;UID=a\"");
    EXPECT_EQ(inner.get("Server"), "h");
    EXPECT_EQ(inner.get("Port"), "1500");
    EXPECT_EQ(inner.get("Database"), "suite");
    EXPECT_EQ(inner.get("UID"), "a");
    EXPECT_EQ(inner.get("PWD"), "p");
    EXPECT_EQ(freeTds("Provider=MSDASQL;Driver=FreeTDS;Server=h").get("Server"), "h");
}

TEST(ServerString, OfTheBridgeNamesADataSource) {
    const Drivers drivers{{kEighteen}, {{"suite", {{"driver", kEighteen.name}}}}};
    const ServerString way = serverStrings("Provider=MSDASQL;Data Source=Suite;User ID=a", drivers).front();
    const ConnectionString mapped(way.text);
    EXPECT_EQ(mapped.get("DSN"), "Suite");
    EXPECT_EQ(mapped.get("UID"), "a");
    EXPECT_FALSE(mapped.has("Server"));
}

TEST(ServerString, OfADataSourceOfFreeTdsIsSpelledOut) {
    const Drivers drivers{{kFreeTds},
                          {{"suite",
                            {{"driver", "FreeTDS"},
                             {"server", "tcp:host"},
                             {"port", "1500"},
                             {"database", "one"},
                             {"encrypt", "yes"},
                             {"trustservercertificate", "yes"},
                             {"trace", "no"}}}}};
    const ConnectionString mapped(serverStrings("DSN=suite;UID=a;Database=two", drivers).front().text);
    EXPECT_EQ(mapped.get("Server"), "host");
    EXPECT_EQ(mapped.get("Port"), "1500");
    EXPECT_EQ(mapped.get("Database"), "two");
    EXPECT_EQ(mapped.get("Encryption"), "require");
    EXPECT_EQ(mapped.get("ClientCharset"), "UTF-8");
    EXPECT_FALSE(mapped.has("DSN"));
}

TEST(ServerString, OfADataSourceThatIsNotThereIsRefused) {
    EXPECT_EQ(failureOf("DSN=none").number(), tsql::kUnknownSource);
}

TEST(ServerString, TakesPortInstanceAndNetworkOutOfTheDataSource) {
    EXPECT_EQ(freeTds("Provider=SQLOLEDB;Data Source=host,1500").get("Port"), "1500");
    const ConnectionString instance = freeTds("Provider=SQLOLEDB;Data Source=host\\suite");
    EXPECT_EQ(instance.get("Server"), "host\\suite");
    EXPECT_FALSE(instance.has("Port"));
    EXPECT_EQ(freeTds("Provider=SQLOLEDB;Data Source=host\\suite,1500").get("Server"), "host");
    EXPECT_EQ(freeTds("Provider=SQLOLEDB;Data Source=(local)").get("Server"), "localhost");
    const ConnectionString tcp = freeTds("Provider=SQLOLEDB;Data Source=tcp:host,1500");
    EXPECT_EQ(tcp.get("Server"), "host");
    EXPECT_EQ(tcp.get("Port"), "1500");
    EXPECT_EQ(freeTds("Provider=SQLOLEDB;Data Source=[::1],1500").get("Server"), "::1");
    EXPECT_EQ(vendor("Driver={ODBC Driver 18 for SQL Server};Server=host\\suite").get("Server"), "tcp:host\\suite");
}

TEST(ServerString, RefusesWhatIsNoAddressOverTcp) {
    for (const char* source : {"np:host", "\\\\host\\pipe\\sql", "lpc:host", "host,port", "host,70000", "ho\nst"}) {
        const Failure failure = failureOf(std::string("Provider=SQLOLEDB;Data Source={") + source + "}");
        EXPECT_EQ(failure.number(), tsql::kBadConnectionString) << source;
    }
    EXPECT_EQ(failureOf("Provider=SQLOLEDB;Data Source=h;Network Library=dbnmpntw").number(),
              tsql::kBadConnectionString);
    EXPECT_EQ(failureOf("Provider=SQLOLEDB;Data Source=h;Network Library=DBMSSOCN").number(), 0);
}

TEST(ServerString, KeepsAPasswordWithSigns) {
    const std::string string = "Provider=SQLOLEDB;Data Source=h;Password={a;b}}c=d {e }";
    EXPECT_NE(wayOf(string).text.find("PWD={a;b}c=d {e };"), std::string::npos) << "as FreeTDS reads braces";
    EXPECT_EQ(vendor(string).get("PWD"), "a;b}c=d {e ");
    EXPECT_EQ(vendor("Provider=SQLOLEDB;Data Source=h;Password={'a}").get("PWD"), "'a");
    const Failure refused = failureOf("Provider=SQLOLEDB;Data Source=h;Password={a}};b}");
    EXPECT_EQ(refused.number(), tsql::kBadConnectionString);
    EXPECT_EQ(refused.text().find("a}"), std::string::npos);
}

TEST(ServerString, CarriesNamesOfApplicationAndWorkstation) {
    for (const char* string : {"Provider=SQLOLEDB;Data Source=h;Application Name=Suite;Workstation ID=pc7",
                               "Driver=FreeTDS;Server=h;APP=Suite;WSID=pc7"}) {
        EXPECT_EQ(freeTds(string).get("APP"), "Suite");
        EXPECT_EQ(freeTds(string).get("WSID"), "pc7");
    }
    EXPECT_EQ(vendor("Provider=SQLOLEDB;Data Source=h;Application Name=Suite").get("APP"), "Suite");
}

TEST(ServerString, ForcesUtf8OnFreeTds) {
    EXPECT_EQ(freeTds("Driver=FreeTDS;Server=h;ClientCharset=GBK").get("ClientCharset"), "UTF-8");
}

TEST(ServerString, LeavesAChineseDatabaseForAfterTheLoginOfFreeTds) {
    const ServerString way = wayOf("Provider=SQLOLEDB;Data Source=h;Initial Catalog=进销存");
    EXPECT_FALSE(ConnectionString(way.text).has("Database"));
    EXPECT_EQ(way.laterDatabase, "进销存");
    EXPECT_EQ(failureOf("Provider=SQLOLEDB;Data Source=h;User ID=张三").number(), tsql::kBadConnectionString);
    EXPECT_EQ(vendor("Provider=SQLOLEDB;Data Source=h;Initial Catalog=进销存").get("Database"), "进销存");
}

TEST(ServerString, TriesTheFailoverPartnerNext) {
    const std::vector<ServerString> ways =
        waysOf("Provider=SQLOLEDB;Data Source=one;Failover Partner=tcp:two,1500;Initial Catalog=suite", {kFreeTds});
    ASSERT_EQ(ways.size(), 2U);
    EXPECT_EQ(ConnectionString(ways[1].text).get("Server"), "two");
    EXPECT_EQ(ConnectionString(ways[1].text).get("Port"), "1500");
    EXPECT_EQ(ConnectionString(ways[1].text).get("Database"), "suite");
    const std::string string = "Provider=SQLOLEDB;Data Source=one;Failover Partner=two";
    EXPECT_EQ(waysOf(string, {kEighteen}).size(), 1U);
    EXPECT_EQ(vendor(string).get("Failover_Partner"), "two");
}

TEST(ServerString, RefusesAKeyThatMeansNothing) {
    const Failure failure = failureOf("Provider=SQLOLEDB;Data Source=h;Encrpyt=yes");
    EXPECT_EQ(failure.number(), tsql::kBadConnectionString);
    EXPECT_NE(failure.text().find("encrpyt"), std::string::npos);
    EXPECT_EQ(failureOf("Driver=FreeTDS;Server=h;LongAsMax=yes").number(), tsql::kBadConnectionString);
    EXPECT_EQ(vendor("Driver={ODBC Driver 18 for SQL Server};Server=h;LongAsMax=yes").get("LongAsMax"), "yes");
    EXPECT_NE(failureOf("Provider=SQLOLEDB;Foo=1;Language=us_english").text().find("is not known"), std::string::npos);
}

TEST(ServerString, RefusesAKeyWithoutAValueAndTellsNoneOfIt) {
    for (const char* string : {"Provider=SQLOLEDB;Data Source=h;Encrypt", "Provider=SQLOLEDB;Encrypt ;Data Source=h",
                               "Driver=FreeTDS;Server=h;Password=a;secret",
                               "Provider=MSDASQL;Extended Properties=\"Driver=FreeTDS;Server=h;Encrypt\""}) {
        const Failure failure = failureOf(string);
        EXPECT_EQ(failure.number(), tsql::kBadConnectionString) << string;
        EXPECT_EQ(failure.text().find("secret"), std::string::npos);
    }
    EXPECT_EQ(freeTds(" ; Provider=SQLOLEDB;;Data Source=h; ").get("Server"), "h");
}

TEST(ServerString, TellsNothingOfAPasswordThatASemicolonCuts) {
    for (const char* string :
         {"Provider=SQLOLEDB;Data Source=h;Password=a;secret=c;d=e", "Driver=FreeTDS;PWD=a;secret=c",
          "Provider=MSDASQL;Extended Properties=\"Driver=FreeTDS;Server=h;PWD=a;secret=c\""}) {
        const Failure failure = failureOf(string);
        EXPECT_EQ(failure.text(), "连接字符串不正确: 密码之后的一段不可识别，含“;”的密码须加引号。") << string;
    }
}

TEST(ServerString, TakesWhatAWizardWritesIntoOne) {
    EXPECT_EQ(failureOf("Provider=SQLOLEDB.1;Persist Security Info=False;User ID=sa;Initial Catalog=suite;"
                        "Data Source=h;Use Procedure for Prepare=1;Auto Translate=True;Packet Size=4096;"
                        "Workstation ID=PC;Use Encryption for Data=False;"
                        "Tag with column collation when possible=False")
                  .number(),
              0);
}

TEST(PlainDecimal, HasNoZerosAtItsEnd) {
    const auto plain = [](std::string_view text) {
        std::string room;
        return std::string(plainDecimal(text, room));
    };
    EXPECT_EQ(plain("12.5000"), "12.5");
    EXPECT_EQ(plain("10.0000"), "10");
    EXPECT_EQ(plain(".5000"), "0.5");
    EXPECT_EQ(plain("-.5"), "-0.5");
    EXPECT_EQ(plain("-.0000"), "0");
    EXPECT_EQ(plain("-0.00"), "0");
    EXPECT_EQ(plain("0.0000"), "0");
    EXPECT_EQ(plain("100"), "100");
    EXPECT_EQ(plain("922337203685477.5807"), "922337203685477.5807");
}

}  // namespace
}  // namespace orvenmod::store::odbc
