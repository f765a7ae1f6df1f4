#include "platform/desktop/inisettings.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>

// Names and values are bytes to us; no conversion is wanted.
#define SI_NO_CONVERSION
#include <SimpleIni.h>

#include "platform/asciitext.h"
#include "platform/desktop/files.h"

namespace orvenmod::platform::desktop {

namespace {

namespace fs = std::filesystem;

constexpr unsigned kPrivate = 0600;

[[noreturn]] void fail(const std::string& file, int why) {
    throw std::runtime_error("无法写入设置：" + file + "（" + std::strerror(why) + "）");
}

/// `special` are the bytes to write as "%XX", beside control characters and outer blanks.
std::string encoded(const std::string& text, const std::string& special) {
    if (text.empty()) return {};
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        const bool outerBlank = byte == ' ' && (at == 0 || at + 1 == text.size());
        if (byte < 0x20 || byte == 0x7f || outerBlank || special.find(text[at]) != std::string::npos) {
            constexpr const char* kDigits = "0123456789ABCDEF";
            result += {'%', kDigits[byte / 16], kDigits[byte % 16]};
        } else {
            result += text[at];
        }
    }
    return result;
}

/// A name that is "" is written as a lone "%", which no other name gives.
std::string encodedName(const std::string& name) { return name.empty() ? "%" : encoded(name, "%[]=;#"); }

std::string encodedValue(const std::string& value) { return encoded(value, "%"); }

std::string decoded(const std::string& text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        unsigned byte = 0;
        const char* const digits = text.data() + at + 1;
        // Anything else behind a '%' was written by another hand and stands for itself.
        if (text[at] == '%' && at + 2 < text.size() &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            result += static_cast<char>(byte);
            at += 2;
        } else {
            result += text[at];
        }
    }
    return result;
}

std::string userFolder() {
    if (const char* configuration = std::getenv("XDG_CONFIG_HOME"); configuration && configuration[0] == '/') {
        return std::string(configuration) + "/orvenmod";
    }
    const char* home = std::getenv("HOME");
    return std::string(home ? home : "") + "/.config/orvenmod";
}

/// Holds an application's lock file; other processes wait.
class Lock {
public:
    explicit Lock(const std::string& file) : number_(::open(file.c_str(), O_CREAT | O_RDWR | O_CLOEXEC, kPrivate)) {
        int result = number_ < 0 ? -1 : 0;
        do {
            if (number_ >= 0) result = ::flock(number_, LOCK_EX);
        } while (result != 0 && errno == EINTR);
        if (result == 0) return;
        const int why = errno;
        if (number_ >= 0) ::close(number_);
        fail(file, why);
    }
    ~Lock() { ::close(number_); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    int number_;
};

/// False where there is no such file.
bool load(CSimpleIniA& ini, const std::string& file) {
    std::string content;
    ini.SetUnicode();
    const ReadResult result = readFile(file, content);
    if (result == ReadResult::failed) fail(file, errno);
    if (result == ReadResult::missing) return false;
    if (ini.LoadData(content) < 0) fail(file, EINVAL);
    return true;
}

void store(const CSimpleIniA& ini, const std::string& file) {
    std::string content;
    if (ini.Save(content) < 0) fail(file, EINVAL);
    if (!replaceFile(file, content, kPrivate)) fail(file, errno);
}

}  // namespace

IniSettings::IniSettings() : folder_(userFolder()) {}

std::string IniSettings::get(const std::string& application, const std::string& section, const std::string& key,
                             const std::string& fallback) {
    CSimpleIniA ini;
    std::string content;
    ini.SetUnicode();
    if (readFile(fileOf(application), content) != ReadResult::read || ini.LoadData(content) < 0) return fallback;
    const char* value = ini.GetValue(encodedName(section).c_str(), encodedName(key).c_str());
    return value ? decoded(value) : fallback;
}

void IniSettings::save(const std::string& application, const std::string& section, const std::string& key,
                       const std::string& value) {
    const std::string file = fileOf(application);
    std::error_code error;
    if (fs::create_directories(folder_, error)) fs::permissions(folder_, fs::perms::owner_all, error);
    if (error) fail(folder_, error.value());
    const Lock lock(file + ".lock");
    CSimpleIniA ini;
    load(ini, file);
    const std::string written = encodedValue(value);
    const char* before = ini.GetValue(encodedName(section).c_str(), encodedName(key).c_str());
    if (before && before == written) return;
    ini.SetValue(encodedName(section).c_str(), encodedName(key).c_str(), written.c_str());
    store(ini, file);
}

void IniSettings::remove(const std::string& application, const std::string& section, const std::string& key) {
    const std::string file = fileOf(application);
    if (!fs::exists(file)) return;
    const Lock lock(file + ".lock");
    CSimpleIniA ini;
    if (!load(ini, file)) return;
    if (section.empty() && key.empty()) {
        if (::unlink(file.c_str()) != 0) fail(file, errno);
        return;
    }
    const std::string name = encodedName(key);
    if (ini.Delete(encodedName(section).c_str(), key.empty() ? nullptr : name.c_str())) store(ini, file);
}

std::string IniSettings::fileOf(const std::string& application) const {
    const std::string name = lowerCase(encoded(application, "%/\\:*?\"<>|"));
    return folder_ + "/" + (name.empty() || name.front() == '.' ? "%" + name : name) + ".ini";
}

}  // namespace orvenmod::platform::desktop
