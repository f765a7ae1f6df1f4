// Connecting with the drivers of this machine to what is no server.
#include "store/odbc/odbcstore.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include "store/tsql/failurenumbers.h"

namespace orvenmod::store::odbc {
namespace {

Failure failureOf(const std::string& connectionString) {
    try {
        OdbcStore().connect(connectionString);
    } catch (const Failure& failure) {
        return failure;
    }
    return {FailureKind::other, 0, "no failure"};
}

// Takes connections and says nothing.
class SilentHost {
public:
    SilentHost() : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(::bind(socket_, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(::listen(socket_, 5), 0);
        EXPECT_EQ(::getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size), 0);
        place_ = "127.0.0.1," + std::to_string(ntohs(address.sin_port));
    }
    ~SilentHost() { ::close(socket_); }
    SilentHost(const SilentHost&) = delete;
    SilentHost& operator=(const SilentHost&) = delete;

    const std::string& place() const { return place_; }

private:
    int socket_;
    std::string place_;
};

TEST(OdbcStoreTest, FailsWithoutTheDriver) {
    const Failure failure = failureOf("Driver=NoSuchDriver;Server=127.0.0.1");
    EXPECT_EQ(failure.kind(), FailureKind::connection);
    EXPECT_EQ(failure.text(), "没有安装 ODBC 驱动程序“NoSuchDriver”。");
    EXPECT_EQ(failureOf("Driver=/nowhere/libnone.so;Server=127.0.0.1").kind(), FailureKind::connection);
}

TEST(OdbcStoreTest, FailsForADataSourceThatIsNotKnown) {
    const Failure failure = failureOf("DSN=no_such_source_of_data;Language=us_english");
    EXPECT_EQ(failure.kind(), FailureKind::connection);
    EXPECT_EQ(failure.text(), "There is no ODBC data source named 'no_such_source_of_data'.");
}

TEST(OdbcStoreTest, FailsForAServerThatDoesNotAnswer) {
    // Port 1 of this machine: refused at once.
    for (const char* string : {"Driver=FreeTDS;Server=127.0.0.1;Port=1;UID=a;PWD=b;TDS_Version=7.4",
                               "Provider=SQLOLEDB.1;Data Source=127.0.0.1,1;Initial Catalog=x;User ID=a;Password=b"}) {
        const Failure failure = failureOf(string);
        EXPECT_EQ(failure.number(), tsql::kServerUnreachable) << failure.text();
        EXPECT_NE(failure.text().find("127.0.0.1"), std::string::npos);
    }
}

TEST(OdbcStoreTest, FailsInTimeForAHostThatSaysNothing) {
    const SilentHost host;
    const Failure failure =
        failureOf("Provider=SQLOLEDB;Data Source=" + host.place() + ";User ID=a;Password=b;Connect Timeout=1");
    EXPECT_EQ(failure.number(), tsql::kServerSilent);
    EXPECT_EQ(failure.text(), "服务器“" + host.place() + "”在 1 秒内没有应答。请检查服务器地址和网络。");
}

}  // namespace
}  // namespace orvenmod::store::odbc
