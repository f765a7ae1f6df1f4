#include "store/postgres/serveraddress.h"

#include <libpq-fe.h>

#include <algorithm>
#include <memory>
#include <set>

namespace orvenmod::store::postgres {

namespace {

using Parameters = std::vector<std::pair<std::string, std::string>>;

// The system's own words for what the client library calls otherwise; an empty name is none of its concern.
struct Key {
    std::string_view ours;
    std::string_view theirs;
};
constexpr Key kKeys[] = {{"provider", ""},
                         {"language", ""},
                         {"busy timeout", ""},
                         {"data source", "host"},
                         {"server", "host"},
                         {"initial catalog", "dbname"},
                         {"database", "dbname"},
                         {"user id", "user"},
                         {"uid", "user"},
                         {"pwd", "password"},
                         // A schema is made in any database that is there.
                         {"mode", ""},
                         {"connect timeout", ""},
                         {"connection timeout", ""}};

const std::set<std::string>& namesOfTheLibrary() {
    static const std::set<std::string> kNames = [] {
        const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> options(PQconndefaults(), &PQconninfoFree);
        std::set<std::string> names;
        for (const PQconninfoOption* option = options.get(); option != nullptr && option->keyword != nullptr; ++option)
            names.insert(option->keyword);
        return names;
    }();
    return kNames;
}

std::string valueOf(const Parameters& parameters, std::string_view name) {
    const auto found =
        std::find_if(parameters.rbegin(), parameters.rend(), [&](const auto& each) { return each.first == name; });
    return found == parameters.rend() ? std::string() : found->second;
}

void addWhereMissing(Parameters& parameters, const char* name, const std::string& value) {
    if (valueOf(parameters, name).empty()) parameters.emplace_back(name, value);
}

}  // namespace

ServerAddress ServerAddress::parse(const std::string& connectionString) {
    const ConnectionString parts(connectionString);
    ServerAddress address;
    address.language = tsql::languageOf(parts);
    // "sslmode" without a value would be missing unseen. It isn't told: it may be the rest of a password.
    if (parts.hasLooseText())
        throw tsql::refusedString(address.language, "其中有一段没有“=”", "a part of it has no '='");
    address.connectTimeout = tsql::connectTimeout(parts);
    address.busyTimeout = tsql::busyTimeout(parts);
    for (const auto& [key, value] : parts.parts()) {
        const auto known =
            std::find_if(std::begin(kKeys), std::end(kKeys), [&key = key](const Key& k) { return k.ours == key; });
        const std::string name(known == std::end(kKeys) ? std::string_view(key) : known->theirs);
        if (name.empty()) continue;
        if (namesOfTheLibrary().count(name) == 0)
            throw tsql::refusedString(address.language, "不认识 " + key, key + " is not known");
        address.parameters.emplace_back(name, value);
    }
    Parameters& parameters = address.parameters;
    address.server = valueOf(parameters, "host");
    if (address.server.empty()) address.server = valueOf(parameters, "hostaddr");
    if (address.server.empty()) address.server = valueOf(parameters, "service");
    if (address.server.empty())
        throw tsql::refusedString(address.language, "缺少 Data Source (服务器)", "Data Source (the server) is missing");
    address.database = valueOf(parameters, "dbname");
    address.user = valueOf(parameters, "user");
    addWhereMissing(parameters, "connect_timeout", std::to_string(address.connectTimeout.count()));
    addWhereMissing(parameters, "fallback_application_name", "orvenmod");
    // Of several hosts one may be a standby, which takes no writing.
    if (address.server.find(',') != std::string::npos)
        addWhereMissing(parameters, "target_session_attrs", "read-write");
    // A host that went without a word is noticed in a minute instead of two hours.
    addWhereMissing(parameters, "keepalives_idle", "30");
    addWhereMissing(parameters, "keepalives_interval", "10");
    addWhereMissing(parameters, "keepalives_count", "3");
    addWhereMissing(parameters, "tcp_user_timeout", "60000");
    parameters.emplace_back("client_encoding", "UTF8");
    return address;
}

}  // namespace orvenmod::store::postgres
