#include "support/scripteddriver/installeddrivers.h"

#include <cstdlib>
#include <fstream>

namespace orvenmod::test {

InstalledDrivers::InstalledDrivers(const std::vector<std::string>& names) {
    ::setenv("ODBCSYSINI", folder_.path().c_str(), 1);
    ::setenv("ODBCINSTINI", "odbcinst.ini", 1);
    ::setenv("ODBCINI", folder_.file("odbc.ini").c_str(), 1);
    std::ofstream file(folder_.file("odbcinst.ini"));
    file << "[ODBC]\nPooling=No\n";
    for (const std::string& name : names)
        file << "[" << name << "]\nDescription=played by a test\nDriver=" << ORVEN_SCRIPTED_DRIVER << "\n";
}

void InstalledDrivers::addSource(const std::string& name, const std::string& lines) const {
    std::ofstream(folder_.file("odbc.ini"), std::ios::app) << "[" << name << "]\n" << lines;
}

}  // namespace orvenmod::test
