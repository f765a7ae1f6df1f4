#include "store/odbc/stringwriter.h"

#include <algorithm>
#include <string_view>

#include "store/odbc/serveraddress.h"
#include "store/tsql/stringparts.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::odbc {

namespace {

// Whether a reader of the string would take the bare value for something else.
bool needsBraces(const std::string& value) {
    const std::string_view outer = " \t\r\n\"'";
    return value.find_first_of(";{}=") != std::string::npos || outer.find(value.front()) != std::string_view::npos ||
           outer.find(value.back()) != std::string_view::npos;
}

}  // namespace

std::string pairText(const std::string& key, const std::string& value) {
    if (value.empty()) return {};
    if (!needsBraces(value)) return key + "=" + value + ";";
    std::string braced;
    for (const char c : value)
        braced += c == '}' ? std::string("}}") : std::string(1, c);
    return key + "={" + braced + "};";
}

namespace {

using tsql::Language;
using Encryption = Wishes::Encryption;

std::string yesNo(bool value) { return value ? "yes" : "no"; }

bool isAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// A line's end would begin another setting.
bool hasControl(const std::string& text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return c >= 0 && c < ' '; });
}

class Writer {
public:
    Writer(const Wishes& wishes, const Driver& driver, Language language)
        : wishes_(wishes), driver_(driver), language_(language) {
        result_.driver = driver.name;
        result_.kind = kindOf(driver);
        result_.database = wishes.database;
        result_.user = wishes.user;
        result_.integrated = wishes.integrated.value_or(false);
        // Who names what is to be trusted wants it checked.
        named_ = !wishes.authority.empty() || !wishes.certificate.empty();
        result_.encrypted = wishes.encryption >= Encryption::yes || named_;
    }

    ServerString toward(const std::string& server) {
        result_.server = server.empty() ? wishes_.source : server;
        switch (result_.kind) {
            case DriverKind::freeTds:
                result_.text = freeTds(server);
                break;
            case DriverKind::vendor:
                result_.text = vendor(server);
                break;
            case DriverKind::other:
                result_.text = other(server);
                break;
        }
        return result_;
    }

private:
    [[noreturn]] void refuse(const std::string& what) const {
        throw tsql::refusedString(language_, "驱动程序“" + driver_.name + "”不支持 " + what,
                                  "the driver '" + driver_.name + "' does not support " + what);
    }

    // FreeTDS reads up to the next "};" and knows no doubled brace.
    std::string pair(const std::string& key, const std::string& value) const {
        if (result_.kind != DriverKind::freeTds || value.empty() || !needsBraces(value)) return pairText(key, value);
        if (value.find("};") != std::string::npos) refuse(key + "={…};…");
        return key + "={" + value + "};";
    }

    // The settings that both drivers name alike.
    std::string commonPairs(const std::string& database) const {
        const std::string login =
            result_.integrated ? "Trusted_Connection=yes;" : pair("UID", wishes_.user) + pair("PWD", wishes_.password);
        return pair("Database", database) + login + pair("APP", wishes_.application) +
               pair("WSID", wishes_.workstation) + pair("Language", wishes_.language) +
               pair("ApplicationIntent", wishes_.intent) + pair("MARS_Connection", wishes_.severalResults) +
               pair("AttachDbFilename", wishes_.attachedFile) + pair("ServerSPN", wishes_.serverPrincipal);
    }

    std::string ownPairs(std::initializer_list<const char*> but) const {
        std::string text;
        for (const auto& [key, value] : wishes_.own) {
            const auto same = [&key = key](const char* written) { return tsql::lowerText(written) == key; };
            if (std::none_of(but.begin(), but.end(), same)) text += pair(key, value);
        }
        return text;
    }
    std::string own(const std::string& wanted, const std::string& fallback) const {
        for (const auto& [key, value] : wishes_.own) {
            if (key == wanted) return value;
        }
        return fallback;
    }

    // Its keys can't name whom to trust; its file can, and a section of it takes the server's place.
    std::string freeTds(const std::string& server) {
        if (wishes_.encryption == Encryption::strict) refuse("Encrypt=strict");
        if (!wishes_.certificateHost.empty()) refuse("HostNameInCertificate");
        // It reads the string before it heeds the character set that stands in it.
        if (!isAscii(wishes_.user) || !isAscii(wishes_.password)) refuse("User ID, Password (ASCII)");
        const std::string database = isAscii(wishes_.database) ? wishes_.database : "";
        if (database.empty()) result_.laterDatabase = wishes_.database;
        std::string place;
        if (const std::string section = own("servername", ""); !section.empty()) {
            if (named_ || !wishes_.partner.empty())
                refuse("CA File, Server Certificate, Failover Partner (Servername)");
            result_.server = section;
            place = pair("Servername", section);
        } else {
            const auto address = ServerAddress::parse(server, wishes_.port, language_);
            const std::string host = address.instance.empty() ? address.host : address.host + "\\" + address.instance;
            place = pair("Server", host) + pair("Port", address.port);
            if (result_.encrypted && (named_ || !wishes_.trusting.value_or(false))) {
                place = std::string("Servername=") + kSection + ";";
                result_.settings = settings(address);
            }
        }
        // "off" would send the password in clear text as well, which the dialect's own clients never do.
        std::string encryption = own("encryption", wishes_.encryption == Encryption::no ? "request" : "");
        if (result_.encrypted) encryption = "require";
        result_.encrypted = tsql::lowerText(encryption) == "require";
        return pair("Driver", driver_.name) + "ClientCharset=UTF-8;" + place + commonPairs(database) +
               pair("PacketSize", wishes_.packetSize) + pair("TDS_Version", own("tds_version", "7.4")) +
               pair("Encryption", encryption) + ownPairs({"servername", "tds_version", "encryption", "clientcharset"});
    }

    std::string settings(const ServerAddress& address) const {
        const bool pinned = wishes_.authority.empty() && !wishes_.certificate.empty();
        std::string trusted = wishes_.authority.empty() ? wishes_.certificate : wishes_.authority;
        if (trusted.empty()) trusted = "system";
        if (hasControl(trusted)) refuse("CA File");
        const std::string place =
            address.instance.empty() ? "\tport = " + address.port : "\tinstance = " + address.instance;
        return std::string("[") + kSection + "]\n\thost = " + address.host + "\n" + place + "\n\tca file = " + trusted +
               "\n\tcheck certificate hostname = " + yesNo(!pinned) + "\n";
    }

    std::string vendor(const std::string& server) {
        if (!wishes_.authority.empty()) refuse("CA File");
        if (!wishes_.packetSize.empty()) result_.packetSize = packetSize();
        std::string place = pair("DSN", wishes_.source);
        if (!server.empty() || place.empty()) {
            const auto address = ServerAddress::parse(server, wishes_.port, language_);
            const std::string behind = address.instance.empty() ? "," + address.port : "\\" + address.instance;
            place =
                (place.empty() ? pair("Driver", driver_.name) : place) + pair("Server", "tcp:" + address.host + behind);
        }
        return place + pair("Failover_Partner", wishes_.partner) + commonPairs(wishes_.database) + vendorEncryption() +
               pair("HostnameInCertificate", wishes_.certificateHost) + pair("ServerCertificate", wishes_.certificate) +
               pair("MultiSubnetFailover", wishes_.severalSubnets) + ownPairs({});
    }

    // The vendor's driver from 18 on encrypts where nothing is said; hosts that name an older provider never asked for
    // it. The bridge to ODBC and a data source leave it to the driver: what the source says would be overruled.
    std::string vendorEncryption() const {
        std::string text;
        const std::string& provider = wishes_.provider;
        const bool ofOdbc = provider.empty() || provider.starts_with("msdasql") || !wishes_.source.empty();
        const bool older = !ofOdbc && !provider.starts_with("msoledbsql19");
        if (wishes_.encryption == Encryption::strict) {
            text = "Encrypt=strict;";
        } else if (result_.encrypted) {
            text = "Encrypt=yes;";
        } else if (wishes_.encryption == Encryption::no || older) {
            text = "Encrypt=no;";
        }
        if (wishes_.trusting) text += "TrustServerCertificate=" + yesNo(*wishes_.trusting) + ";";
        return text;
    }

    unsigned packetSize() const {
        const std::string& text = wishes_.packetSize;
        if (text.size() > 5 || text.find_first_not_of("0123456789") != std::string::npos)
            throw tsql::refusedString(language_, "Packet Size=" + text + " 不是字节数",
                                      "Packet Size=" + text + " is no count of bytes");
        return static_cast<unsigned>(std::stoul(text));
    }

    std::string other(const std::string& server) const {
        if (result_.encrypted) refuse("Encrypt");
        if (result_.integrated) refuse("Integrated Security");
        const std::string place =
            wishes_.source.empty() ? pair("Driver", driver_.name) + pair("Server", server) + pair("Port", wishes_.port)
                                   : pair("DSN", wishes_.source);
        return place + pair("Database", wishes_.database) + pair("UID", wishes_.user) + pair("PWD", wishes_.password) +
               ownPairs({});
    }

    static constexpr const char* kSection = "orvenmod";

    const Wishes& wishes_;
    const Driver& driver_;
    Language language_;
    bool named_ = false;
    ServerString result_;
};

}  // namespace

ServerString written(const Wishes& wishes, const Driver& driver, const std::string& server, Language language) {
    return Writer(wishes, driver, language).toward(server);
}

}  // namespace orvenmod::store::odbc
