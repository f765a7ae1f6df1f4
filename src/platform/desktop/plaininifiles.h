// Ini files on disk, changed in place: see initext.h for what stays as it is.
#pragma once

#include <string>

#include "platform/settings.h"

namespace orvenmod::platform::desktop {

class PlainIniFiles final : public IniFiles {
public:
    std::string read(const std::string& path, const std::string& section, const std::string& key) override;
    /// Also false for a value that an ini file can't hold (one with a line end). A value that is there already is not
    /// written again.
    bool write(const std::string& path, const std::string& section, const std::string& key,
               const std::string& value) override;
};

}  // namespace orvenmod::platform::desktop
