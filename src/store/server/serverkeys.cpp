#include "store/server/serverkeys.h"

#include "store/tsql/stringparts.h"

namespace orvenmod::store::server {

void refuseString(tsql::Language language, const std::string& chinese, const std::string& english) {
    throw tsql::refusedString(language, chinese, english);
}

ServerKeys ServerKeys::parse(const ConnectionString& parts) {
    return {tsql::languageOf(parts), static_cast<int>(tsql::connectTimeout(parts).count()),
            static_cast<int>(tsql::busyTimeout(parts).count())};
}

}  // namespace orvenmod::store::server
