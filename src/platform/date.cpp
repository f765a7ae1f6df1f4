#include "platform/date.h"

#include <cstdio>

namespace orvenmod::platform {

std::string toText(const Date& date) {
    char text[40];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.year, date.month, date.day);
    return text;
}

}  // namespace orvenmod::platform
