// The server's messages by number, as its Chinese edition words them, or in English.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "store/failure.h"
#include "store/tsql/error.h"

namespace orvenmod::store::tsql {

enum class Language { chinese, english };

/// Numbers of the embedded store's own, beside the server's.
enum OwnNumber : int {
    kNoFile = 50011,               ///< {path}
    kIsFolder = 50012,             ///< {path}
    kNoDatabase = 50013,           ///< {path}
    kUnreadable = 50014,           ///< {path, reason}
    kReadOnly = 50015,             ///< {path}
    kBusy = 50016,                 ///< {path}
    kDiskFull = 50017,             ///< {path}
    kInputOutput = 50018,          ///< {path, reason}
    kBadConnectionString = 50019,  ///< {what is wrong with it}
    kClosed = 50020,               ///< {}
    kNoRowBegun = 50021,           ///< {}
    kStoreReports = 50022,         ///< {path, the store's own words}
    kNoRows = 50023,               ///< {}
    kTransactionOpen = 50024,      ///< {}
};

/// The failure of that number with its message, filled with the arguments in the order that error.h tells.
Failure worded(Language language, int number, const std::vector<std::string>& arguments);
inline Failure worded(Language language, const Error& error) {
    return worded(language, error.number(), error.arguments());
}

/// The kind of a failure of the server by its number; `other` for a number that is not in the catalogue.
FailureKind kindOf(int number);

}  // namespace orvenmod::store::tsql
