#include "store/odbc/serverstring.h"

#include <algorithm>
#include <iterator>

#include "store/odbc/stringwriter.h"
#include "store/odbc/wishes.h"
#include "store/tsql/stringparts.h"
#include "store/tsql/utf8.h"

namespace orvenmod::store::odbc {

namespace {

using tsql::Language;

std::string listed(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return text;
}

Driver bestDriver(const Drivers& drivers, Language language) {
    if (const Driver* driver = drivers.best()) return *driver;
    throw tsql::worded(language, tsql::kNoDriver, {listed(knownDrivers())});
}

Driver namedDriver(const std::string& name, const Drivers& drivers, Language language) {
    if (const Driver* driver = drivers.find(name)) return *driver;
    if (name.find('/') != std::string::npos) return {name, name};
    if (isForeignName(name)) return bestDriver(drivers, language);
    throw tsql::worded(language, tsql::kUnknownDriver, {name});
}

bool has(const Wishes::Pairs& pairs, const std::string& key) {
    return std::any_of(pairs.begin(), pairs.end(), [&](const auto& pair) { return pair.first == key; });
}

std::string joined(const Wishes::Pairs& pairs) {
    std::string text;
    for (const auto& [key, value] : pairs)
        text += pairText(key, value);
    return text;
}

// The pairs of the string. To the bridge from OLE DB to ODBC the data source is one of ODBC's.
Wishes::Pairs pairsOf(const std::string& connectionString) {
    Wishes::Pairs pairs = flattened(connectionString);
    const std::string provider = tsql::lowerText(ConnectionString(connectionString).get("Provider"));
    if (!provider.starts_with("msdasql") || has(pairs, "driver") || has(pairs, "dsn")) return pairs;
    for (auto& [key, value] : pairs) {
        if (key == "data source") key = "dsn";
    }
    return pairs;
}

class Choice {
public:
    Choice(const std::string& connectionString, const Drivers& drivers)
        : string_(connectionString),
          pairs_(pairsOf(connectionString)),
          parts_(joined(pairs_)),
          language_(tsql::languageOf(parts_)),
          drivers_(drivers) {
        driver_ = choose();
    }

    std::vector<ServerString> run() {
        const bool ofOdbc = parts_.get("Provider").empty();
        if (kindOf(driver_) == DriverKind::other && ofOdbc) return {wordForWord()};
        refuseLooseText();
        const Wishes wishes = wishesOf(parts_, kindOf(driver_));
        std::vector<ServerString> result = {written(wishes, driver_, wishes.server, language_)};
        // The vendor's driver knows of the partner.
        const bool alone = wishes.partner.empty() || kindOf(driver_) == DriverKind::vendor;
        if (!alone) result.push_back(written(wishes, driver_, wishes.partner, language_));
        return result;
    }

private:
    Driver choose() {
        const std::string driver = parts_.get("Driver");
        if (!driver.empty()) return namedDriver(driver, drivers_, language_);
        const std::string source = parts_.get("DSN");
        if (source.empty()) return bestDriver(drivers_, language_);
        const auto known = drivers_.sources.find(tsql::lowerText(source));
        if (known == drivers_.sources.end() || !known->second.contains("driver"))
            throw tsql::worded(language_, tsql::kUnknownSource, {source});
        const Driver chosen = namedDriver(known->second.at("driver"), drivers_, language_);
        if (kindOf(chosen) == DriverKind::freeTds) takeOver(known->second);
        return chosen;
    }

    // FreeTDS takes no server beside a data source, and leaves aside what the source names in other words.
    void takeOver(const std::map<std::string, std::string>& source) {
        Wishes::Pairs pairs;
        for (const auto& [key, value] : source) {
            if (isKnownKey(key, DriverKind::freeTds)) pairs.emplace_back(key, value);
        }
        std::copy_if(pairs_.begin(), pairs_.end(), std::back_inserter(pairs),
                     [](const auto& pair) { return pair.first != "dsn"; });
        parts_ = ConnectionString(joined(pairs));
    }

    // "Encrypt" without a value would be missing unseen. It isn't told: it may be the rest of a password.
    void refuseLooseText() const {
        const ConnectionString outer(string_);
        if (!outer.hasLooseText() && !ConnectionString(outer.get("Extended Properties")).hasLooseText()) return;
        throw tsql::refusedString(language_, "其中有一段没有“=”", "a part of it has no '='");
    }

    ServerString wordForWord() const {
        ServerString result;
        result.text = string_;
        result.driver = driver_.name;
        result.server = parts_.get("Server", parts_.get("DSN"));
        result.database = parts_.get("Database");
        result.user = parts_.get("UID");
        return result;
    }

    std::string string_;
    Wishes::Pairs pairs_;
    ConnectionString parts_;
    Language language_;
    const Drivers& drivers_;
    Driver driver_;
};

}  // namespace

std::vector<ServerString> serverStrings(const std::string& connectionString, const Drivers& drivers) {
    return Choice(connectionString, drivers).run();
}

std::vector<ServerString> serverStrings(const std::string& connectionString) {
    const ConnectionString parts(joined(pairsOf(connectionString)));
    return serverStrings(connectionString, Drivers::ofThisMachine(parts.get("DSN")));
}

}  // namespace orvenmod::store::odbc
