#include "store/postgres/serveraddress.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <set>

#include "store/postgres/native.h"

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

// What the library makes of them with the user's service file and environment. It reaches for nobody by a port that is
// none.
Parameters settingsOf(const Parameters& given) {
    std::vector<const char*> names;
    std::vector<const char*> values;
    for (const auto& [name, value] : given) {
        names.push_back(name.c_str());
        values.push_back(value.c_str());
    }
    names.insert(names.end(), {"port", nullptr});
    values.insert(values.end(), {"0", nullptr});
    const NativeConnection nobody(PQconnectStartParams(names.data(), values.data(), 0));
    const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> options(PQconninfo(nobody.get()),
                                                                               &PQconninfoFree);
    Parameters settings;
    for (const PQconninfoOption* option = options.get(); option != nullptr && option->keyword != nullptr; ++option) {
        if (option->val != nullptr) settings.emplace_back(option->keyword, option->val);
    }
    return settings;
}

std::chrono::seconds secondsOf(const std::string& text) {
    int seconds = 0;
    std::from_chars(text.data(), text.data() + text.size(), seconds);
    return std::chrono::seconds(std::max(seconds, 0));
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
    address.busyTimeout = tsql::busyTimeout(parts);
    for (const auto& [key, value] : parts.parts()) {
        const auto known =
            std::find_if(std::begin(kKeys), std::end(kKeys), [&key = key](const Key& k) { return k.ours == key; });
        const std::string name(known == std::end(kKeys) ? std::string_view(key) : known->theirs);
        if (name.empty()) continue;
        if (namesOfTheLibrary().count(name) == 0)
            throw tsql::refusedKey(parts, key, "不认识 " + key, key + " is not known");
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
    const std::string timeout = std::to_string(tsql::connectTimeout(parts).count());
    if (parts.has("Connect Timeout") || parts.has("Connection Timeout"))
        addWhereMissing(parameters, "connect_timeout", timeout);
    addWhereMissing(parameters, "fallback_application_name", "orvenmod");
    // What the user has set for himself goes before what is best for most.
    const Parameters settings = settingsOf(parameters);
    const auto addDefault = [&](const char* name, const std::string& value) {
        if (valueOf(settings, name).empty()) addWhereMissing(parameters, name, value);
    };
    addDefault("connect_timeout", timeout);
    // Of several hosts one may be a standby, which takes no writing. The library's own default can't be told from the
    // user's word.
    const bool anyServer = valueOf(settings, "target_session_attrs") == "any";
    if (anyServer && valueOf(settings, "host").find(',') != std::string::npos)
        addWhereMissing(parameters, "target_session_attrs", "read-write");
    // A host that went without a word is noticed in a minute instead of two hours.
    addDefault("keepalives_idle", "30");
    addDefault("keepalives_interval", "10");
    addDefault("keepalives_count", "3");
    addDefault("tcp_user_timeout", "60000");
    const std::string chosen = valueOf(settings, "connect_timeout");
    address.connectTimeout = secondsOf(chosen.empty() ? timeout : chosen);
    parameters.emplace_back("client_encoding", "UTF8");
    return address;
}

}  // namespace orvenmod::store::postgres
