#include "support/childclerk.h"

#include <gtest/gtest.h>

#include "frame/services.h"
#include "platform/memory/memorytoolkit.h"
#include "support/stage.h"

namespace orvenmod::test {

void ChildClerk::onModal(platform::memory::MemoryWindow& window) {
    MemoryUser user(window, book_, popUp_);
    try {
        work(user);
    } catch (const ScriptStopped&) {
    }
}

int runChild(ChildClerk& clerk, store::Store& store, const std::function<void()>& play) {
    platform::memory::MemoryToolkit toolkit(clerk);
    MapSettings settings;
    FixedClock clock;
    platform::desktop::PlainIniFiles iniFiles;
    platform::desktop::ProcessFolders folders;
    Services services{store, toolkit, settings, iniFiles, folders, clock};
    useServices(&services);
    play();
    useServices(nullptr);
    return ::testing::UnitTest::GetInstance()->Failed() ? 1 : 0;
}

}  // namespace orvenmod::test
