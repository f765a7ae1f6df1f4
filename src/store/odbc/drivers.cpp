#include "store/odbc/drivers.h"

#include <odbcinst.h>

#include <algorithm>

#include "store/odbc/odbchandle.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::odbc {

namespace {

using tsql::lowerText;

// One value, or with a null key the names of all keys, each with a zero byte behind it.
std::string profile(const char* section, const char* key, const char* file) {
    char buffer[8192] = {};
    const int length = SQLGetPrivateProfileString(section, key, "", buffer, sizeof buffer, file);
    return {buffer, static_cast<std::size_t>(std::clamp(length, 0, static_cast<int>(sizeof buffer) - 1))};
}

std::vector<std::string> names(const std::string& list) {
    std::vector<std::string> result;
    for (std::size_t at = 0; at < list.size();) {
        const std::size_t end = std::min(list.find('\0', at), list.size());
        if (end > at) result.push_back(list.substr(at, end - at));
        at = end + 1;
    }
    return result;
}

std::string fileName(const std::string& path) { return path.substr(path.rfind('/') + 1); }

}  // namespace

const std::vector<std::string>& knownDrivers() {
    static const std::vector<std::string> kNames = {"ODBC Driver 18 for SQL Server", "ODBC Driver 17 for SQL Server",
                                                    "FreeTDS"};
    return kNames;
}

bool isForeignName(const std::string& driver) {
    const std::string name = lowerText(driver);
    return name == "sql server" || name == "sql native client" || name.starts_with("sql server native client");
}

Drivers Drivers::ofThisMachine(const std::string& source) {
    Drivers drivers;
    for (const std::string& name : names(profile(nullptr, nullptr, "odbcinst.ini"))) {
        if (lowerText(name) == "odbc") continue;
        drivers.installed.push_back({name, profile(name.c_str(), "Driver", "odbcinst.ini")});
    }
    if (source.empty()) return drivers;
    for (const std::string& key : names(profile(source.c_str(), nullptr, "odbc.ini")))
        drivers.sources[lowerText(source)][lowerText(key)] = profile(source.c_str(), key.c_str(), "odbc.ini");
    return drivers;
}

const Driver* Drivers::find(const std::string& name) const {
    const auto found = std::find_if(installed.begin(), installed.end(), [&](const Driver& driver) {
        return lowerText(driver.name) == lowerText(name) || driver.file == name;
    });
    return found == installed.end() ? nullptr : &*found;
}

const Driver* Drivers::best() const {
    for (const std::string& name : knownDrivers()) {
        if (const Driver* driver = find(name)) return driver;
    }
    return nullptr;
}

DriverKind kindOf(const Driver& driver) {
    const std::string name = lowerText(driver.name);
    const std::string file = lowerText(fileName(driver.file));
    if (name == "freetds" || file.starts_with("libtdsodbc")) return DriverKind::freeTds;
    const bool named = name.starts_with("odbc driver ") && name.ends_with(" for sql server");
    if (named || file.starts_with("libmsodbcsql")) return DriverKind::vendor;
    return DriverKind::other;
}

}  // namespace orvenmod::store::odbc
