// A port of this machine that takes connections and says nothing.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

namespace orvenmod::store::postgres::test {

class LocalPort {
public:
    LocalPort() : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        ::bind(socket_, reinterpret_cast<sockaddr*>(&address), size);
        ::listen(socket_, 5);
        ::getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size);
        port_ = ntohs(address.sin_port);
    }
    ~LocalPort() { ::close(socket_); }
    LocalPort(const LocalPort&) = delete;
    LocalPort& operator=(const LocalPort&) = delete;

    int socket() const { return socket_; }
    std::string port() const { return std::to_string(port_); }
    std::string connectionString() const { return "Provider=PostgreSQL;Data Source=127.0.0.1;Port=" + port(); }

private:
    int socket_;
    int port_ = 0;
};

}  // namespace orvenmod::store::postgres::test
