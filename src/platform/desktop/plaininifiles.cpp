#include "platform/desktop/plaininifiles.h"

#include "platform/desktop/files.h"
#include "platform/desktop/initext.h"

namespace orvenmod::platform::desktop {

namespace {

constexpr unsigned kNewFileMode = 0644;

}  // namespace

std::string PlainIniFiles::read(const std::string& path, const std::string& section, const std::string& key) {
    std::string content;
    if (readFile(nativePath(path), content) != ReadResult::read) return {};
    return IniText(std::move(content)).value(section, key).value_or(std::string());
}

bool PlainIniFiles::write(const std::string& path, const std::string& section, const std::string& key,
                          const std::string& value) {
    const std::string file = nativePath(path);
    std::string before;
    const ReadResult result = readFile(file, before);
    if (result == ReadResult::failed) return false;
    IniText changed(before);
    if (!changed.setValue(section, key, value)) return false;
    if (result == ReadResult::read && changed.text() == before) return true;
    return replaceFile(file, changed.text(), kNewFileMode);
}

}  // namespace orvenmod::platform::desktop
