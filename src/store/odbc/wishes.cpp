#include "store/odbc/wishes.h"

#include <algorithm>
#include <string_view>

#include "store/tsql/stringparts.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::odbc {

namespace {

using tsql::lowerText;
using Encryption = Wishes::Encryption;

struct TextKey {
    std::string_view key;
    std::string Wishes::*wish;
};
constexpr TextKey kTextKeys[] = {{"provider", &Wishes::provider},
                                 {"driver", &Wishes::driver},
                                 {"dsn", &Wishes::source},
                                 {"data source", &Wishes::server},
                                 {"datasource", &Wishes::server},
                                 {"server", &Wishes::server},
                                 {"address", &Wishes::server},
                                 {"addr", &Wishes::server},
                                 {"network address", &Wishes::server},
                                 {"port", &Wishes::port},
                                 {"failover partner", &Wishes::partner},
                                 {"failover_partner", &Wishes::partner},
                                 {"failoverpartner", &Wishes::partner},
                                 {"initial catalog", &Wishes::database},
                                 {"database", &Wishes::database},
                                 {"user id", &Wishes::user},
                                 {"user", &Wishes::user},
                                 {"uid", &Wishes::user},
                                 {"password", &Wishes::password},
                                 {"pwd", &Wishes::password},
                                 {"application name", &Wishes::application},
                                 {"app", &Wishes::application},
                                 {"workstation id", &Wishes::workstation},
                                 {"wsid", &Wishes::workstation},
                                 {"language", &Wishes::language},
                                 {"current language", &Wishes::language},
                                 {"packet size", &Wishes::packetSize},
                                 {"packetsize", &Wishes::packetSize},
                                 {"application intent", &Wishes::intent},
                                 {"applicationintent", &Wishes::intent},
                                 {"mars connection", &Wishes::severalResults},
                                 {"mars_connection", &Wishes::severalResults},
                                 {"marsconn", &Wishes::severalResults},
                                 {"multipleactiveresultsets", &Wishes::severalResults},
                                 {"attachdbfilename", &Wishes::attachedFile},
                                 {"initial file name", &Wishes::attachedFile},
                                 {"server spn", &Wishes::serverPrincipal},
                                 {"serverspn", &Wishes::serverPrincipal},
                                 {"multisubnetfailover", &Wishes::severalSubnets},
                                 {"multi subnet failover", &Wishes::severalSubnets},
                                 {"ca file", &Wishes::authority},
                                 {"cafile", &Wishes::authority},
                                 {"server certificate", &Wishes::certificate},
                                 {"servercertificate", &Wishes::certificate},
                                 {"host name in certificate", &Wishes::certificateHost},
                                 {"hostnameincertificate", &Wishes::certificateHost}};

constexpr std::string_view kEncryptKeys[] = {"encrypt", "use encryption for data"};
constexpr std::string_view kTrustKeys[] = {"trustservercertificate", "trust server certificate"};
constexpr std::string_view kIntegratedKeys[] = {"integrated security", "trusted_connection"};
constexpr std::string_view kNetworkKeys[] = {"network library", "network", "net"};

// Read elsewhere, or of no consequence over ODBC.
constexpr std::string_view kIdleKeys[] = {"busy timeout",
                                          "connect timeout",
                                          "connection timeout",
                                          "general timeout",
                                          "extended properties",
                                          "persist security info",
                                          "persistsecurityinfo",
                                          "auto translate",
                                          "use procedure for prepare",
                                          "tag with column collation when possible",
                                          "replication server name connect option",
                                          "locale identifier",
                                          "location",
                                          "ole db services",
                                          "prompt",
                                          "window handle",
                                          "mode",
                                          "bind flags",
                                          "lock owner",
                                          "cache authentication",
                                          "encrypt password",
                                          "mask password",
                                          "impersonation level",
                                          "protection level",
                                          "transact updates",
                                          "asynchronous processing",
                                          "datatypecompatibility",
                                          "data type compatibility",
                                          "type system version",
                                          "connect retry count",
                                          "connect retry interval",
                                          "pooling",
                                          "max pool size",
                                          "min pool size",
                                          "connection lifetime",
                                          "connection reset",
                                          "enlist"};

constexpr std::string_view kFreeTdsKeys[] = {"servername", "tds_version",    "textsize",   "clientcharset",
                                             "dumpfile",   "dumpfileappend", "debugflags", "encryption",
                                             "usentlmv2",  "realm",          "timeout",    "description"};
constexpr std::string_view kVendorKeys[] = {"ansinpw",
                                            "authentication",
                                            "autotranslate",
                                            "clientcertificate",
                                            "clientkey",
                                            "columnencryption",
                                            "connectretrycount",
                                            "connectretryinterval",
                                            "description",
                                            "failoverpartnerspn",
                                            "getdataextensions",
                                            "ipaddresspreference",
                                            "keepalive",
                                            "keepaliveinterval",
                                            "longasmax",
                                            "querylog_on",
                                            "querylogfile",
                                            "querylogtime",
                                            "quotedid",
                                            "regional",
                                            "replication",
                                            "retryexec",
                                            "statslog_on",
                                            "statslogfile",
                                            "transparentnetworkipresolution",
                                            "usefmtonly"};

template <typename Keys>
bool isOneOf(const Keys& keys, std::string_view key) {
    return std::any_of(std::begin(keys), std::end(keys), [&](std::string_view k) { return k == key; });
}

bool isOfDriver(DriverKind driver, std::string_view key) {
    switch (driver) {
        case DriverKind::freeTds:
            return isOneOf(kFreeTdsKeys, key);
        case DriverKind::vendor:
            return isOneOf(kVendorKeys, key);
        case DriverKind::other:
            break;
    }
    return true;
}

const TextKey* textKey(std::string_view key) {
    const auto* found = std::find_if(std::begin(kTextKeys), std::end(kTextKeys),
                                     [&](const TextKey& candidate) { return candidate.key == key; });
    return found == std::end(kTextKeys) ? nullptr : found;
}

class Reader {
public:
    Reader(const ConnectionString& parts, DriverKind driver) : parts_(parts), driver_(driver) {}

    Wishes run() {
        for (const auto& [key, value] : parts_.parts())
            take(key, value);
        return wishes_;
    }

private:
    void take(const std::string& key, const std::string& value) {
        if (!isKnownKey(key, driver_)) {
            throw tsql::refusedKey(parts_, key, "其中的“" + key + "”不是可识别的关键字",
                                   "the key '" + key + "' is not known");
        }
        if (const TextKey* text = textKey(key)) {
            wishes_.*(text->wish) = text->wish == &Wishes::provider ? lowerText(value) : value;
        } else if (isOneOf(kEncryptKeys, key)) {
            // Of two keys that differ the one that protects holds.
            wishes_.encryption = std::max(wishes_.encryption, encryption(key, value));
        } else if (isOneOf(kTrustKeys, key)) {
            wishes_.trusting = truth(key, value);
        } else if (isOneOf(kIntegratedKeys, key)) {
            wishes_.integrated = lowerText(value) == "sspi" || truth(key, value);
        } else if (isOneOf(kNetworkKeys, key)) {
            if (!value.empty() && lowerText(value) != "dbmssocn") refuseValue(key, value);
        } else if (isOfDriver(driver_, key)) {
            wishes_.own.emplace_back(key, value);
        }
    }

    bool truth(const std::string& key, const std::string& value) const {
        const std::string text = lowerText(value);
        if (text == "yes" || text == "true" || text == "1" || text == "mandatory") return true;
        if (!(text.empty() || text == "no" || text == "false" || text == "0" || text == "optional"))
            refuseValue(key, value);
        return false;
    }

    Encryption encryption(const std::string& key, const std::string& value) const {
        if (lowerText(value) == "strict") return Encryption::strict;
        return truth(key, value) ? Encryption::yes : Encryption::no;
    }

    [[noreturn]] void refuseValue(const std::string& key, const std::string& value) const {
        const std::string pair = key + "=" + value;
        throw tsql::refusedString(tsql::languageOf(parts_), pair + " 不是可用的值",
                                  pair + " is no value that it takes");
    }

    const ConnectionString& parts_;
    DriverKind driver_;
    Wishes wishes_;
};

}  // namespace

Wishes::Pairs flattened(const std::string& connectionString) {
    const ConnectionString outer(connectionString);
    Wishes::Pairs pairs = ConnectionString(outer.get("Extended Properties")).parts();
    pairs.insert(pairs.end(), outer.parts().begin(), outer.parts().end());
    return pairs;
}

bool isKnownKey(const std::string& key, DriverKind driver) {
    return textKey(key) != nullptr || isOneOf(kEncryptKeys, key) || isOneOf(kTrustKeys, key) ||
           isOneOf(kIntegratedKeys, key) || isOneOf(kNetworkKeys, key) || isOfDriver(driver, key) ||
           isOneOf(kIdleKeys, key);
}

Wishes wishesOf(const ConnectionString& parts, DriverKind driver) { return Reader(parts, driver).run(); }

}  // namespace orvenmod::store::odbc
