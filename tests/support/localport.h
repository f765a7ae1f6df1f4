// A port of this machine that takes connections and says nothing.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

namespace orvenmod::test {

class LocalPort {
public:
    LocalPort() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* place = reinterpret_cast<sockaddr*>(&address);
        socklen_t size = sizeof address;
        if (::bind(socket_, place, size) != 0 || ::listen(socket_, 5) != 0 ||
            ::getsockname(socket_, place, &size) != 0) {
            ::close(socket_);
            throw std::runtime_error("no port of this machine");
        }
        port_ = std::to_string(ntohs(address.sin_port));
    }
    ~LocalPort() { ::close(socket_); }
    LocalPort(const LocalPort&) = delete;
    LocalPort& operator=(const LocalPort&) = delete;

    int socket() const { return socket_; }
    const std::string& port() const { return port_; }

private:
    int socket_;
    std::string port_;
};

}  // namespace orvenmod::test
