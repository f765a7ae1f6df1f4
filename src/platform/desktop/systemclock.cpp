#include "platform/desktop/systemclock.h"

#include <ctime>

namespace orvenmod::platform::desktop {

Date SystemClock::today() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday};
}

}  // namespace orvenmod::platform::desktop
