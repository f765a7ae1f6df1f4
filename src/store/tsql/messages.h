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

/// The failure of that number with its message, filled with the arguments in the order that failurenumbers.h tells.
Failure worded(Language language, int number, const std::vector<std::string>& arguments);
inline Failure worded(Language language, const Error& error) {
    return worded(language, error.number(), error.arguments());
}

/// The kind of a failure of the server by its number; `other` for a number that is not in the catalogue.
FailureKind kindOf(int number);

}  // namespace orvenmod::store::tsql
