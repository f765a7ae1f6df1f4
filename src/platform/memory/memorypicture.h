// A picture box in memory: knows a picture by its first bytes and keeps only which file it shows.
#pragma once

#include <string>

#include "platform/controls.h"
#include "platform/memory/controlcore.h"

namespace orvenmod::platform::memory {

class MemoryPicture final : public MemoryControl<Picture> {
public:
    using MemoryControl::MemoryControl;
    bool show(const std::string& path) override;
    void clear() override { path_.clear(); }
    bool empty() const override { return path_.empty(); }

private:
    std::string path_;
};

}  // namespace orvenmod::platform::memory
