// The drivers and data sources that the driver manager knows.
//
// Drivers differ in the names of their keys and in what they can. The two that speak to a server of the dialect are
// known here; any other gets its string word for word.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvenmod::store::odbc {

enum class DriverKind {
    freeTds,  ///< FreeTDS
    vendor,   ///< "ODBC Driver 18 for SQL Server", and 17
    other
};

struct Driver {
    std::string name;
    std::string file;
};

struct Drivers {
    std::vector<Driver> installed;
    /// Keys in small letters and values of each data source, by its name in small letters.
    std::map<std::string, std::map<std::string, std::string>> sources;

    /// As odbcinst.ini and odbc.ini tell. A source is read only where it is asked for.
    static Drivers ofThisMachine(const std::string& source);

    /// By the name without regard to case, or by the path of the library.
    const Driver* find(const std::string& name) const;
    /// The first installed of those that speak to a server of the dialect; null for none.
    const Driver* best() const;
};

DriverKind kindOf(const Driver& driver);

/// The names of the drivers that best() looks for, in its order.
const std::vector<std::string>& knownDrivers();

/// Whether the name is the dialect's driver as other systems call it, where it comes with the system.
bool isForeignName(const std::string& driver);

}  // namespace orvenmod::store::odbc
