// The machine's clock, in its own time zone.
#pragma once

#include "platform/settings.h"

namespace orvenmod::platform::desktop {

class SystemClock final : public Clock {
public:
    Date today() override;
};

}  // namespace orvenmod::platform::desktop
