// An ini file of anybody's: it can be read and changed, and what was set is read back.
#include "platform/desktop/initext.h"

#include <algorithm>

#include "fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using orvenmod::platform::desktop::IniText;
    const std::string_view text = orvenmod::fuzz::textOf(data, size);
    // The first three lines are names and a value, the rest the file.
    std::string_view parts[3];
    std::string_view rest = text;
    for (std::string_view& part : parts) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        part = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    const auto [section, key, value] = parts;
    IniText ini{std::string(rest)};
    ini.value("SYSTEM", "path");
    if (!ini.setValue(section, key, value)) {
        orvenmod::fuzz::check(ini.text() == rest, "what was refused changed nothing");
        return 0;
    }
    const auto found = ini.value(section, key);
    orvenmod::fuzz::check(found.has_value(), "what was set is there");
    IniText again(ini.text());
    orvenmod::fuzz::check(again.value(section, key) == found, "and is read again as it was");
    return 0;
}
