// Objects of the component for a host that links nothing of it: the library that was registered (orvenregister) is
// found, loaded, and used through its C interface. Only the standard library and the loader; link with -ldl where
// that is a library of its own.
//
//   orvenmod::Object items = orvenmod::CreateObject("Orvenmod.clsBasicInfo");
//   items.call("mainInterface", {3, "", "", "Provider=SQLite;Data Source=suite.db", 1});
//   std::string picked = std::get<std::string>(items.get("fName"));
//
// The library stays loaded until the process ends. An object is used by the thread that created it.
#pragma once

#include <dlfcn.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <orvenmod/orvenmod_c.h>
#include <orvenmod/variant.h>

namespace orvenmod {

/// What a use of an object failed with; `number` as orvenmod_c.h lists them.
class ObjectFailure : public std::runtime_error {
public:
    static constexpr int kLibraryNotLoaded = 48;

    ObjectFailure(int number, const std::string& text) : std::runtime_error(text), number_(number) {}
    int number() const { return number_; }

private:
    int number_;
};

namespace detail {

/// The calls of a loaded library, each by its own name.
struct Library {
    decltype(&orvenmod_error_number) errorNumber = nullptr;
    decltype(&orvenmod_error_text) errorText = nullptr;
    decltype(&orvenmod_create) create = nullptr;
    decltype(&orvenmod_release) release = nullptr;
    decltype(&orvenmod_get) get = nullptr;
    decltype(&orvenmod_put) put = nullptr;
    decltype(&orvenmod_call) call = nullptr;
    decltype(&orvenmod_member_count) memberCount = nullptr;
    decltype(&orvenmod_member_at) memberAt = nullptr;
    decltype(&orvenmod_free) free = nullptr;

    explicit Library(const std::string& file) {
        // Never closed: the toolkit behind the windows can't be taken out of a process.
        void* const loaded = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (loaded == nullptr) fail();
        find(loaded, "orvenmod_error_number", errorNumber);
        find(loaded, "orvenmod_error_text", errorText);
        find(loaded, "orvenmod_create", create);
        find(loaded, "orvenmod_release", release);
        find(loaded, "orvenmod_get", get);
        find(loaded, "orvenmod_put", put);
        find(loaded, "orvenmod_call", call);
        find(loaded, "orvenmod_member_count", memberCount);
        find(loaded, "orvenmod_member_at", memberAt);
        find(loaded, "orvenmod_free", free);
    }

    void check(std::int32_t error) const {
        if (error != 0) throw ObjectFailure(error, errorText());
    }

private:
    [[noreturn]] static void fail() {
        const char* const why = ::dlerror();
        throw ObjectFailure(ObjectFailure::kLibraryNotLoaded,
                            std::string("加载动态库错误：") + (why != nullptr ? why : ""));
    }
    template <class Function>
    static void find(void* loaded, const char* name, Function*& function) {
        function = reinterpret_cast<Function*>(::dlsym(loaded, name));
        if (function == nullptr) fail();
    }
};

inline std::string lowerCase(std::string text) {
    for (char& letter : text) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return text;
}

inline std::string withoutBlanks(const std::string& text) {
    const auto first = text.find_first_not_of(" \t\r");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// The settings write a byte that their file would lose as "%XX".
inline std::string decoded(const std::string& text) {
    const std::string digits = "0123456789abcdef";
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::string pair = text[at] == '%' ? lowerCase(text.substr(at + 1, 2)) : "";
        if (pair.size() == 2 && pair.find_first_not_of(digits) == std::string::npos) {
            result += static_cast<char>(digits.find(pair[0]) * 16 + digits.find(pair[1]));
            at += 2;
        } else {
            result += text[at];
        }
    }
    return result;
}

inline std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

/// Where registrations stand: the user's own, then those of the machine.
inline std::vector<std::string> registrations() {
    const std::string own = environment("XDG_CONFIG_HOME");
    std::vector<std::string> folders = {own.rfind('/', 0) == 0 ? own : environment("HOME") + "/.config"};
    const std::string shared = environment("XDG_CONFIG_DIRS");
    std::istringstream list(shared.empty() ? "/etc/xdg" : shared);
    for (std::string folder; std::getline(list, folder, ':');) {
        if (folder.rfind('/', 0) == 0) folders.push_back(folder);
    }
    for (std::string& folder : folders)
        folder += "/orvenmod/orvenmod.ini";
    return folders;
}

inline std::string registeredIn(const std::string& iniFile, const std::string& className) {
    std::ifstream file(iniFile);
    bool within = false;
    for (std::string line; std::getline(file, line);) {
        line = withoutBlanks(line);
        if (!line.empty() && line.front() == '[') within = lowerCase(line) == "[classes]";
        const auto equals = line.find('=');
        if (!within || equals == std::string::npos) continue;
        if (lowerCase(decoded(withoutBlanks(line.substr(0, equals)))) == lowerCase(className))
            return decoded(withoutBlanks(line.substr(equals + 1)));
    }
    return "";
}

struct ToC {
    orvenmod_value operator()(std::monostate) const { return {ORVENMOD_NOTHING, 0, 0, nullptr}; }
    orvenmod_value operator()(bool value) const { return {ORVENMOD_BOOLEAN, value ? 1 : 0, 0, nullptr}; }
    orvenmod_value operator()(std::int16_t value) const { return {ORVENMOD_INT16, value, 0, nullptr}; }
    orvenmod_value operator()(std::int32_t value) const { return {ORVENMOD_INT32, value, 0, nullptr}; }
    orvenmod_value operator()(double value) const { return {ORVENMOD_DOUBLE, 0, value, nullptr}; }
    orvenmod_value operator()(const std::string& value) const {
        if (value.find('\0') != std::string::npos)
            throw ObjectFailure(ORVENMOD_E_INVALID_CALL, "无效的过程调用或参数：文本含有零字符");
        return {ORVENMOD_TEXT, 0, 0, value.c_str()};
    }
    orvenmod_value operator()(const std::shared_ptr<void>&) const {
        throw ObjectFailure(ORVENMOD_E_TYPE_MISMATCH, "类型不匹配");
    }
};

inline Variant fromC(const Library& library, const orvenmod_value& value) {
    switch (value.type) {
        case ORVENMOD_BOOLEAN:
            return value.integer != 0;
        case ORVENMOD_INT16:
            return static_cast<std::int16_t>(value.integer);
        case ORVENMOD_INT32:
            return value.integer;
        case ORVENMOD_DOUBLE:
            return value.number;
        case ORVENMOD_TEXT: {
            const std::string text = value.text;
            library.free(value.text);
            return text;
        }
        default:
            return {};
    }
}

}  // namespace detail

/// An object of the component. It ends with this one.
class Object {
public:
    Object(std::shared_ptr<const detail::Library> library, const std::string& className)
        : component_(std::move(library)) {
        component_->check(component_->create(className.c_str(), &handle_));
    }
    ~Object() {
        if (handle_ != nullptr) component_->release(handle_);
    }
    Object(Object&& other) noexcept
        : component_(std::move(other.component_)), handle_(std::exchange(other.handle_, {})) {}
    Object& operator=(Object&& other) noexcept {
        std::swap(component_, other.component_);
        std::swap(handle_, other.handle_);
        return *this;
    }

    Variant get(const std::string& property) const {
        orvenmod_value value;
        component_->check(component_->get(handle_, property.c_str(), &value));
        return detail::fromC(*component_, value);
    }

    void put(const std::string& property, const Variant& value) {
        const orvenmod_value given = std::visit(detail::ToC(), value);
        component_->check(component_->put(handle_, property.c_str(), &given));
    }

    /// An empty argument counts as left out.
    Variant call(const std::string& method, const std::vector<Variant>& arguments = {}) {
        std::vector<orvenmod_value> given;
        for (const Variant& each : arguments)
            given.push_back(std::visit(detail::ToC(), each));
        orvenmod_value result;
        component_->check(component_->call(handle_, method.c_str(), given.data(), given.size(), &result));
        return detail::fromC(*component_, result);
    }

    /// What the object has: ORVENMOD_PROPERTY or ORVENMOD_METHOD, and the name.
    std::vector<std::pair<std::int32_t, std::string>> members() const {
        std::int32_t count = 0;
        component_->check(component_->memberCount(handle_, &count));
        std::vector<std::pair<std::int32_t, std::string>> all;
        for (std::int32_t at = 0; at < count; ++at) {
            orvenmod_member member;
            component_->check(component_->memberAt(handle_, at, &member));
            all.emplace_back(member.kind, member.name);
        }
        return all;
    }

private:
    std::shared_ptr<const detail::Library> component_;
    orvenmod_object* handle_ = nullptr;
};

/// The file that the class is registered with, for the user or else for the machine; "" for none.
inline std::string RegisteredFile(const std::string& className) {
    for (const std::string& iniFile : detail::registrations()) {
        const std::string file = detail::registeredIn(iniFile, className);
        if (!file.empty()) return file;
    }
    return "";
}

/// An object of a registered class, "Orvenmod.clsBasicInfo" for one. Throws ObjectFailure: ORVENMOD_E_CANNOT_CREATE for
/// a class that isn't registered, kLibraryNotLoaded for a file that can't be loaded, and what the class fails with.
inline Object CreateObject(const std::string& className) {
    const std::string file = RegisteredFile(className);
    if (file.empty()) {
        throw ObjectFailure(ORVENMOD_E_CANNOT_CREATE, "部件不能创建对象：“" + className + "”没有登记（orvenregister）");
    }
    return {std::make_shared<detail::Library>(file), className};
}

}  // namespace orvenmod
