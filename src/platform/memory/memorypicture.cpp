#include "platform/memory/memorypicture.h"

#include <fstream>
#include <string_view>

#include "platform/settings.h"

namespace orvenmod::platform::memory {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kSignatures[] = {"\x89PNG\r\n\x1a\n"sv, "\xff\xd8\xff"sv, "GIF8"sv, "BM"sv, "\0\0\1\0"sv};

bool isPicture(const std::string& path) {
    std::ifstream file(nativePath(path), std::ios::binary);
    char bytes[16] = {};
    if (!file.read(bytes, sizeof bytes)) return false;  // no picture is as short
    for (const std::string_view signature : kSignatures) {
        if (std::string_view(bytes, signature.size()) == signature) return true;
    }
    return false;
}

}  // namespace

bool MemoryPicture::show(const std::string& path) {
    const bool good = isPicture(path);
    path_ = good ? path : std::string();
    return good;
}

}  // namespace orvenmod::platform::memory
