// The per-user settings store: one ini file an application in a folder of the user's configuration, shared by all
// processes of the user. A value of any text comes back as it was; names compare without regard to case (ASCII).
//
// Each call reads the file; a change takes the application's lock file, reads again, and replaces the file in one step,
// so that two processes lose nothing of each other's.
//
// A name or value is written with "%XX" for each byte that an ini file would lose or misread.
#pragma once

#include <string>

#include "platform/settings.h"

namespace orvenmod::platform::desktop {

class IniSettings final : public Settings {
public:
    /// $XDG_CONFIG_HOME/orvenmod, or ~/.config/orvenmod.
    IniSettings();
    explicit IniSettings(std::string folder) : folder_(std::move(folder)) {}

    std::string get(const std::string& application, const std::string& section, const std::string& key,
                    const std::string& fallback) override;
    void save(const std::string& application, const std::string& section, const std::string& key,
              const std::string& value) override;
    /// Nothing where it isn't there. Throws as save.
    void remove(const std::string& application, const std::string& section, const std::string& key) override;

private:
    std::string fileOf(const std::string& application) const;

    std::string folder_;
};

}  // namespace orvenmod::platform::desktop
