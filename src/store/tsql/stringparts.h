// What every store reads out of a connection string alike, and how it refuses one.
#pragma once

#include <chrono>
#include <string>

#include "store/connectionstring.h"
#include "store/tsql/messages.h"

namespace orvenmod::store::tsql {

/// Of the store's messages: `Language=us_english`, else Chinese.
Language languageOf(const ConnectionString& parts);

/// The failure for a string that no store can use; what is wrong with it, in both languages.
Failure refusedString(Language language, const std::string& chinese, const std::string& english);

/// The same for a key that isn't known. Right behind a password it isn't told: it may be the rest of one.
Failure refusedKey(const ConnectionString& parts, const std::string& key, const std::string& chinese,
                   const std::string& english);

/// `Busy Timeout`: how long a statement waits for a lock. Throws Failure where it is no number.
std::chrono::milliseconds busyTimeout(const ConnectionString& parts);
/// `Connect Timeout`; 0 for no limit. Throws likewise.
std::chrono::seconds connectTimeout(const ConnectionString& parts);

}  // namespace orvenmod::store::tsql
