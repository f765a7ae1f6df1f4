// Settings that FreeTDS takes from its file alone: whose certificates to trust. The file holds no login.
#pragma once

#include <optional>
#include <string>

namespace orvenmod::store::odbc {

/// While it lives, FreeTDS reads these settings and no others. Made on the host's thread.
class FreeTdsSettings {
public:
    /// Nothing happens for an empty text. Throws Failure where the file can't be written.
    explicit FreeTdsSettings(const std::string& text);
    ~FreeTdsSettings();
    FreeTdsSettings(const FreeTdsSettings&) = delete;
    FreeTdsSettings& operator=(const FreeTdsSettings&) = delete;

private:
    std::string file_;
    std::optional<std::string> before_;
};

}  // namespace orvenmod::store::odbc
