// The process's own folders below $XDG_RUNTIME_DIR, else $TMPDIR, else /tmp.
#pragma once

#include <sys/types.h>

#include <string>

#include "platform/settings.h"

namespace orvenmod::platform::desktop {

class ProcessFolders final : public Folders {
public:
    ProcessFolders();
    /// Removes the folders with all they hold, without following symbolic links out of them. A forked child leaves
    /// them.
    ~ProcessFolders() override;
    ProcessFolders(const ProcessFolders&) = delete;
    ProcessFolders& operator=(const ProcessFolders&) = delete;

    /// Both throw std::runtime_error where no folder can be made.
    std::string temporary() override { return folder("temp"); }
    std::string attachments() override { return folder("attachments"); }

private:
    std::string folder(const std::string& name);

    std::string root_;
    pid_t owner_;
};

}  // namespace orvenmod::platform::desktop
