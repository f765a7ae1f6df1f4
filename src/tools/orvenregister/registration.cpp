#include "tools/orvenregister/registration.h"

#include <dlfcn.h>
#include <stdlib.h>

#include <cstdint>
#include <filesystem>
#include <stdexcept>

#include "platform/desktop/inisettings.h"

namespace orvenmod::tools {

namespace {

namespace fs = std::filesystem;

using Entry = std::int32_t (*)();

std::string loaderError() {
    const char* const why = ::dlerror();
    return why != nullptr ? why : "can't be loaded";
}

/// Where the entries of all users stand. The library writes below the user's folder, which becomes this one. A desktop
/// puts folders of its own before the usual one, which other users don't look into.
std::string machineFolder() {
    const std::string usual = "/etc/xdg";
    const char* const folders = ::getenv("XDG_CONFIG_DIRS");
    const std::string list = folders != nullptr ? folders : "";
    const std::string first = list.substr(0, list.find(':'));
    const bool hasUsual = (":" + list + ":").find(":" + usual + ":") != std::string::npos;
    return hasUsual || !first.starts_with('/') ? usual : first;
}

// What the settings of one user write is for that user's eyes alone.
void letAllRead(const std::string& folder) {
    constexpr auto kEntered =
        fs::perms::group_read | fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec;
    constexpr auto kRead = fs::perms::group_read | fs::perms::others_read;
    fs::permissions(folder, kEntered, fs::perm_options::add);
    fs::permissions(folder + "/orvenmod.ini", kRead, fs::perm_options::add);
}

bool isSameFile(const std::string& registered, const std::string& wanted) {
    if (wanted.find('/') == std::string::npos && fs::path(registered).filename() == wanted) return true;
    return fs::weakly_canonical(registered) == fs::weakly_canonical(wanted);
}

/// Of a library that can't do so itself. Throws std::runtime_error with `why` where another one is registered, or none.
std::string takeAwayByPath(const std::string& wanted, const std::string& why) {
    platform::desktop::IniSettings settings;
    const std::string registered = settings.get("Orvenmod", "Classes", "Orvenmod.clsBasicInfo", "");
    if (registered.empty() || !isSameFile(registered, wanted)) throw std::runtime_error(why);
    settings.remove("Orvenmod", "Classes", "");
    return registered;
}

/// What the loader found; without an entry, why.
struct Found {
    Entry entry = nullptr;
    std::string file;
    std::string why;
};

Found found(const std::string& wanted, const char* name) {
    void* const loaded = ::dlopen(wanted.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (loaded == nullptr) return {nullptr, "", loaderError()};
    const auto entry = reinterpret_cast<Entry>(::dlsym(loaded, name));
    Dl_info info{};
    if (entry == nullptr || ::dladdr(reinterpret_cast<void*>(entry), &info) == 0)
        return {nullptr, "", wanted + " is no component: it has no " + name};
    return {entry, info.dli_fname, ""};
}

}  // namespace

std::string changeRegistration(const std::string& library, Action action, Whose whose) {
    // A file is taken by its path, so that the loader doesn't look for another of that name.
    const std::string wanted = fs::exists(library) ? fs::absolute(library).string() : library;
    const Found component = found(wanted, action == Action::put ? "DllRegisterServer" : "DllUnregisterServer");
    if (whose == Whose::machine) ::setenv("XDG_CONFIG_HOME", machineFolder().c_str(), 1);
    if (component.entry == nullptr && action == Action::remove) return takeAwayByPath(library, component.why);
    if (component.entry == nullptr) throw std::runtime_error(component.why);
    if (component.entry() != 0) {
        throw std::runtime_error(whose == Whose::machine ? machineFolder() + "/orvenmod can't be written"
                                                         : "the user's settings can't be written");
    }
    if (whose == Whose::machine && action == Action::put) letAllRead(machineFolder() + "/orvenmod");
    return component.file;
}

}  // namespace orvenmod::tools
