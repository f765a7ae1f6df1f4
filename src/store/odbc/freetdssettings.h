// Settings that FreeTDS takes from its file alone: whose certificates to trust. The file holds no login.
#pragma once

#include <mutex>
#include <optional>
#include <shared_mutex>
#include <string>

namespace orvenmod::store::odbc {

/// While it lives, FreeTDS reads these settings and no others; without any it reads its own. Threads that want others
/// wait, since the process has one place for them.
class FreeTdsSettings {
public:
    /// Throws Failure where the file can't be written.
    explicit FreeTdsSettings(const std::string& text);
    ~FreeTdsSettings();
    FreeTdsSettings(const FreeTdsSettings&) = delete;
    FreeTdsSettings& operator=(const FreeTdsSettings&) = delete;

private:
    std::shared_lock<std::shared_mutex> reading_;
    std::unique_lock<std::shared_mutex> writing_;
    std::string file_;
    std::optional<std::string> before_;
};

}  // namespace orvenmod::store::odbc
