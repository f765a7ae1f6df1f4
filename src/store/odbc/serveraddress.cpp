#include "store/odbc/serveraddress.h"

#include <algorithm>
#include <charconv>

#include "store/tsql/stringparts.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::odbc {

namespace {

constexpr const char* kDefaultPort = "1433";

bool isPort(const std::string& text) {
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= 1 && number <= 65535;
}

// The text behind the last `sign`, taken off; "" without one.
std::string takeBehind(std::string& text, char sign) {
    const std::size_t at = text.rfind(sign);
    if (at == std::string::npos) return {};
    const std::string behind = text.substr(at + 1);
    text.resize(at);
    return behind;
}

}  // namespace

ServerAddress ServerAddress::parse(const std::string& server, const std::string& port, tsql::Language language) {
    ServerAddress address;
    address.host = server;
    if (tsql::lowerText(server).starts_with("tcp:")) address.host.erase(0, 4);
    const std::size_t colon = address.host.find(':');
    const std::string network = tsql::lowerText(address.host.substr(0, colon == std::string::npos ? 0 : colon));
    const bool other = network == "np" || network == "lpc" || network == "via" || network == "admin";
    const bool control = std::any_of(server.begin(), server.end(), [](char c) { return c >= 0 && c < ' '; });
    if (other || control || address.host.starts_with("\\\\")) {
        throw tsql::refusedString(language, "服务器“" + server + "”不能经由 TCP 连接",
                                  "the server '" + server + "' cannot be reached over TCP");
    }
    address.port = takeBehind(address.host, ',');
    if (address.port.empty()) address.port = port;
    if (!address.port.empty() && !isPort(address.port)) {
        throw tsql::refusedString(language, address.port + " 不是端口号", address.port + " is no port");
    }
    address.instance = takeBehind(address.host, '\\');
    // The port says more than the name, by which the server's own directory would find it.
    if (!address.port.empty()) address.instance.clear();
    if (address.port.empty() && address.instance.empty()) address.port = kDefaultPort;
    if (address.host.starts_with('[') && address.host.ends_with(']'))
        address.host = address.host.substr(1, address.host.size() - 2);
    if (address.host.empty() || address.host == "." || tsql::lowerText(address.host) == "(local)")
        address.host = "localhost";
    return address;
}

}  // namespace orvenmod::store::odbc
