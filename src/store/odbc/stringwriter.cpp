#include "store/odbc/stringwriter.h"

#include <algorithm>

#include "store/odbc/serveraddress.h"
#include "store/tsql/stringparts.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::odbc {

std::string pairText(const std::string& key, const std::string& value) {
    if (value.empty()) return {};
    if (value.find_first_of(";{}=") == std::string::npos && value.front() != ' ' && value.back() != ' ')
        return key + "=" + value + ";";
    std::string braced;
    for (const char c : value)
        braced += c == '}' ? std::string("}}") : std::string(1, c);
    return key + "={" + braced + "};";
}

namespace {

using tsql::Language;
using Encryption = Wishes::Encryption;

std::string yesNo(bool value) { return value ? "yes" : "no"; }

// The settings that both drivers name alike.
std::string commonPairs(const Wishes& wishes, const std::string& database) {
    const bool integrated = wishes.integrated.value_or(false);
    const std::string login =
        integrated ? "Trusted_Connection=yes;" : pairText("UID", wishes.user) + pairText("PWD", wishes.password);
    return pairText("Database", database) + login + pairText("APP", wishes.application) +
           pairText("WSID", wishes.workstation) + pairText("Language", wishes.language) +
           pairText("ApplicationIntent", wishes.intent) + pairText("MARS_Connection", wishes.severalResults) +
           pairText("AttachDbFilename", wishes.attachedFile) + pairText("ServerSPN", wishes.serverPrincipal);
}

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
        result_.encrypted = wishes.encryption >= Encryption::yes || !wishes.authority.empty();
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

    std::string ownPairs(std::initializer_list<const char*> but) const {
        std::string text;
        for (const auto& [key, value] : wishes_.own) {
            const auto same = [&key = key](const char* written) { return tsql::lowerText(written) == key; };
            if (std::none_of(but.begin(), but.end(), same)) text += pairText(key, value);
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
            if (!wishes_.authority.empty()) refuse("CA File (Servername)");
            result_.server = section;
            place = pairText("Servername", section);
        } else {
            const auto address = ServerAddress::parse(server, wishes_.port, language_);
            const std::string host = address.instance.empty() ? address.host : address.host + "\\" + address.instance;
            place = pairText("Server", host) + pairText("Port", address.port);
            if (result_.encrypted && !wishes_.trusting.value_or(false)) {
                place = std::string("Servername=") + kSection + ";";
                result_.settings = settings(address);
            }
        }
        // "off" would send the password in clear text as well, which the dialect's own clients never do.
        std::string encryption = own("encryption", wishes_.encryption == Encryption::no ? "request" : "");
        if (result_.encrypted) encryption = "require";
        return pairText("Driver", driver_.name) + "ClientCharset=UTF-8;" + place + commonPairs(wishes_, database) +
               pairText("PacketSize", wishes_.packetSize) + pairText("TDS_Version", own("tds_version", "7.4")) +
               pairText("Encryption", encryption) +
               ownPairs({"servername", "tds_version", "encryption", "clientcharset"});
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
        std::string place = pairText("DSN", wishes_.source);
        if (!server.empty() || place.empty()) {
            const auto address = ServerAddress::parse(server, wishes_.port, language_);
            const std::string behind = address.instance.empty() ? "," + address.port : "\\" + address.instance;
            place = (place.empty() ? pairText("Driver", driver_.name) : place) +
                    pairText("Server", "tcp:" + address.host + behind);
        }
        return place + pairText("Failover_Partner", wishes_.partner) + commonPairs(wishes_, wishes_.database) +
               vendorEncryption() + pairText("HostnameInCertificate", wishes_.certificateHost) +
               pairText("ServerCertificate", wishes_.certificate) +
               pairText("MultiSubnetFailover", wishes_.severalSubnets) + ownPairs({});
    }

    // The vendor's driver from 18 on encrypts where nothing is said; hosts that name an older provider never asked for
    // it.
    std::string vendorEncryption() const {
        std::string text;
        if (wishes_.encryption == Encryption::strict) text = "Encrypt=strict;";
        if (wishes_.encryption == Encryption::yes) text = "Encrypt=yes;";
        const bool older = !wishes_.provider.empty() && !wishes_.provider.starts_with("msoledbsql19");
        if (wishes_.encryption == Encryption::no || (wishes_.encryption == Encryption::unsaid && older))
            text = "Encrypt=no;";
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
            wishes_.source.empty()
                ? pairText("Driver", driver_.name) + pairText("Server", server) + pairText("Port", wishes_.port)
                : pairText("DSN", wishes_.source);
        return place + pairText("Database", wishes_.database) + pairText("UID", wishes_.user) +
               pairText("PWD", wishes_.password) + ownPairs({});
    }

    static constexpr const char* kSection = "orvenmod";

    const Wishes& wishes_;
    const Driver& driver_;
    Language language_;
    ServerString result_;
};

}  // namespace

ServerString written(const Wishes& wishes, const Driver& driver, const std::string& server, Language language) {
    return Writer(wishes, driver, language).toward(server);
}

}  // namespace orvenmod::store::odbc
