// The characters that a session has seen come back from the server as they went out.
//
// A text of a server stands in the code page of the database's collation. A character that isn't there becomes a
// question mark on the way, without a word. Which ones these are differs with collation, server and driver, so that the
// server itself is asked, once for each character: what comes back changed is refused.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvenmod::store::odbc {

class KnownCharacters {
public:
    /// The characters beyond ASCII that are not known yet, each once.
    std::string unknown(std::string_view text) const;
    /// Learns what came back as it went out. The first character that did not; empty for none.
    std::string learn(std::string_view asked, std::string_view answer);

private:
    bool knows(char32_t character) const { return character < known_.size() && known_[character]; }
    void add(char32_t character);

    std::vector<bool> known_;  // by code
};

}  // namespace orvenmod::store::odbc
