#include "platform/replaceall.h"

namespace orvenmod::platform {

std::string replaceAll(std::string text, std::string_view what, std::string_view by) {
    if (what.empty()) return text;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
        text.replace(at, what.size(), by);
    }
    return text;
}

}  // namespace orvenmod::platform
