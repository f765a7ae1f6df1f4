// What a connection string asks of a server, whichever driver is to carry it out.
//
//   Provider=SQLOLEDB;Data Source=tcp:host,1500;Integrated Security=SSPI;Use Encryption for Data=True
//   Driver=FreeTDS;Server=host;Port=1500;Trusted_Connection=yes;Encrypt=yes
//
// ask for the same. A key that neither this table nor the driver knows is refused: what it was to bring, above all
// security, would be missing unseen.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "store/connectionstring.h"
#include "store/odbc/drivers.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::odbc {

struct Wishes {
    enum class Encryption { unsaid, no, yes, strict };
    using Pairs = std::vector<std::pair<std::string, std::string>>;

    std::string provider;  ///< in small letters
    std::string driver;
    std::string source;
    std::string server;
    std::string port;
    std::string partner;
    std::string database;
    std::string user;
    std::string password;
    std::string application;
    std::string workstation;
    std::string language;
    std::string packetSize;
    std::string intent;
    std::string severalResults;
    std::string attachedFile;
    std::string serverPrincipal;
    std::string severalSubnets;
    std::string authority;        ///< a file of certificates that are trusted
    std::string certificate;      ///< a file with the server's own
    std::string certificateHost;  ///< the name that stands in it
    std::optional<bool> integrated;
    std::optional<bool> trusting;  ///< any certificate will do
    Encryption encryption = Encryption::unsaid;
    Pairs own;  ///< keys of the driver's own, as they stand
};

/// The pairs of the string, those of an inner string ("Extended Properties") included, which the outer ones overrule.
Wishes::Pairs flattened(const std::string& connectionString);

/// Whether the key means something to the driver.
bool isKnownKey(const std::string& key, DriverKind driver);

/// What the pairs ask for. Throws Failure kBadConnectionString for a key that means nothing to the driver, and for a
/// value that its key doesn't take.
Wishes wishesOf(const ConnectionString& parts, DriverKind driver);

}  // namespace orvenmod::store::odbc
