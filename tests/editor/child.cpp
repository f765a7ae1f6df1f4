#include "editor/child.h"

#include "frame/services.h"

namespace orvenmod::test {

void ChildClerk::onModal(platform::memory::MemoryWindow& window) {
    MemoryUser user(window, book_, popUp_);
    try {
        work(user);
    } catch (const ScriptStopped&) {
    }
}

int runChild(ChildClerk& clerk, const std::string& connectionString, const std::function<void()>& play) {
    platform::memory::MemoryToolkit toolkit(clerk);
    MapSettings settings;
    FixedClock clock;
    platform::desktop::PlainIniFiles iniFiles;
    platform::desktop::ProcessFolders folders;
    Services services{stores(), toolkit, settings, iniFiles, folders, clock};
    useServices(&services);
    chooseGoods(connectionString);
    play();
    useServices(nullptr);
    return ::testing::UnitTest::GetInstance()->Failed() ? 1 : 0;
}

}  // namespace orvenmod::test
