#include "platform/sheet/sheetwriter.h"

#include <chrono>
#include <future>

namespace orvenmod::platform {

namespace {

constexpr std::chrono::milliseconds kLook(20);

}  // namespace

bool completeMeanwhile(SheetWriter& sheet, const std::function<bool()>& meanwhile) {
    auto completed = std::async(std::launch::async, [&sheet] { sheet.complete(); });
    while (completed.wait_for(kLook) != std::future_status::ready)
        meanwhile();
    completed.get();
    return meanwhile();
}

}  // namespace orvenmod::platform
