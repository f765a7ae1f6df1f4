// Settings, ini files, folders and the clock: what the logic needs of the user's machine beside windows.
#pragma once

#include <string>

#include "platform/date.h"

namespace orvenmod::platform {

/// Per-user values by application, section and key, shared with the host's process.
class Settings {
public:
    virtual ~Settings() = default;
    virtual std::string get(const std::string& application, const std::string& section, const std::string& key,
                            const std::string& fallback) = 0;
    /// Throws std::runtime_error where the store can't be written.
    virtual void save(const std::string& application, const std::string& section, const std::string& key,
                      const std::string& value) = 0;
    /// Removes a key, or with an empty key the section, or with both empty the application.
    virtual void remove(const std::string& application, const std::string& section, const std::string& key) = 0;
};

/// Single values of ini files. Order, comments and unknown keys of a file stay.
class IniFiles {
public:
    virtual ~IniFiles() = default;
    /// "" where file, section or key is missing.
    virtual std::string read(const std::string& path, const std::string& section, const std::string& key) = 0;
    /// False where the file can't be written; its folder is not made.
    virtual bool write(const std::string& path, const std::string& section, const std::string& key,
                       const std::string& value) = 0;
};

/// Folders that belong to the user and this process alone (mode 0700), made on first use and removed at its end.
class Folders {
public:
    virtual ~Folders() = default;
    /// For the component's own temporary files.
    virtual std::string temporary() = 0;
    /// For attachments that are opened.
    virtual std::string attachments() = 0;
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual Date today() = 0;
};

/// A path as the suite writes it (backslashes) in the platform's own form.
std::string nativePath(const std::string& path);

}  // namespace orvenmod::platform
