#include "platform/settings.h"

namespace orvenmod::platform {

std::string nativePath(const std::string& path) {
    std::string native;
    native.reserve(path.size());
    for (const char c : path) {
        const char here = c == '\\' ? '/' : c;
        // The suite joins a folder that may end in a separator with one more.
        if (here == '/' && !native.empty() && native.back() == '/') continue;
        native += here;
    }
    return native;
}

}  // namespace orvenmod::platform
