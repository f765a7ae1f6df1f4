// The parts of a connection string: "Key=Value;Key={va;lue};...". Keys without regard to case and outer blanks.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvenmod::store {

class ConnectionString {
public:
    explicit ConnectionString(std::string_view text);

    /// The value of the key, or `fallback`; of two, the later.
    std::string get(std::string_view key, std::string_view fallback = "") const;
    bool has(std::string_view key) const;

    /// Whether something stands between the pairs that is none, for want of a '='.
    bool hasLooseText() const { return looseText_; }

    /// All of them in their order, the keys in small letters.
    const std::vector<std::pair<std::string, std::string>>& parts() const { return parts_; }

private:
    std::vector<std::pair<std::string, std::string>> parts_;
    bool looseText_ = false;
};

}  // namespace orvenmod::store
