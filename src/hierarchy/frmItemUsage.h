// Tells which bills use an item: a line a family that the usage guard asks, with the number of its bills and the
// latest.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "hierarchy/itemusage.h"
#include "platform/window.h"

namespace orvenmod {

class frmItemUsage {
public:
    explicit frmItemUsage(std::int32_t itemId);

    /// Shows the window modally. A failure to read is shown, and the window isn't.
    void show();

private:
    void fill(const std::string& item, const std::vector<FamilyUsage>& usage);

    std::int32_t itemId_;
    std::unique_ptr<platform::Window> window_;
};

}  // namespace orvenmod
