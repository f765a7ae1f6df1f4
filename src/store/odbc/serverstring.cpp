#include "store/odbc/serverstring.h"

#include "store/connectionstring.h"

namespace orvenmod::store::odbc {

namespace {

std::string first(const ConnectionString& parts, std::initializer_list<const char*> keys) {
    for (const char* key : keys) {
        if (parts.has(key)) return parts.get(key);
    }
    return {};
}

// A value that holds a sign of the string's own stands in braces.
std::string pair(const std::string& key, const std::string& value) {
    if (value.empty()) return {};
    if (value.find_first_of(";{}=") == std::string::npos) return key + "=" + value + ";";
    std::string braced;
    for (const char c : value)
        braced += c == '}' ? std::string("}}") : std::string(1, c);
    return key + "={" + braced + "};";
}

}  // namespace

std::string serverString(const std::string& connectionString) {
    const ConnectionString parts(connectionString);
    if (!parts.has("Provider")) return connectionString;
    std::string server = first(parts, {"Data Source", "Server", "Address", "Addr", "Network Address"});
    std::string port = parts.get("Port");
    const std::size_t comma = server.find(',');
    if (comma != std::string::npos) {
        port = server.substr(comma + 1);
        server.resize(comma);
    }
    if (server.empty() || server == "." || server == "(local)") server = "localhost";
    // A named instance is found by its name, so that no port may be given with it.
    if (port.empty() && server.find('\\') == std::string::npos) port = "1433";
    return "Driver=FreeTDS;" + pair("Server", server) + pair("Port", port) +
           pair("Database", first(parts, {"Initial Catalog", "Database"})) +
           pair("UID", first(parts, {"User ID", "UID"})) + pair("PWD", first(parts, {"Password", "PWD"})) +
           pair("Language", first(parts, {"Language", "Current Language"})) + "TDS_Version=7.4;ClientCharset=UTF-8;";
}

}  // namespace orvenmod::store::odbc
