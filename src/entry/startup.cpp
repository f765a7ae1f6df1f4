#include "entry/startup.h"

#include <cstdlib>
#include <optional>

#include "entry/storefactory.h"
#include "frame/appstate.h"
#include "platform/desktop/inisettings.h"
#include "platform/desktop/plaininifiles.h"
#include "platform/desktop/processfolders.h"
#include "platform/desktop/systemclock.h"
#include "platform/qt/qttoolkit.h"
#include "store/trace.h"

namespace orvenmod {

namespace {

platform::Settings& ownSettings() {
    static platform::desktop::IniSettings settings;
    return settings;
}

// The component's store, with a trace where the environment asks for one.
store::Store& tracedStore() {
    static std::optional<store::TracingStore> tracing;
    const char* file = std::getenv("ORVEN_SQL_TRACE");
    if (file == nullptr || *file == '\0') return componentStore();
    if (!tracing) tracing.emplace(componentStore(), store::traceToFile(file));
    return *tracing;
}

// Never destroyed: a host's QApplication may be gone before the process's static objects are.
platform::Toolkit& ownToolkit() {
    static auto* toolkit = new platform::qt::QtToolkit;
    return *toolkit;
}

Services& ownServices() {
    static platform::desktop::PlainIniFiles iniFiles;
    static platform::desktop::ProcessFolders folders;
    static platform::desktop::SystemClock clock;
    static Services own{tracedStore(), ownToolkit(), ownSettings(), iniFiles, folders, clock};
    return own;
}

}  // namespace

void startUp() {
    if (!hasServices()) useServices(&ownServices());
    requireWindows();
    services().toolkit.setFailureTitle([] { return appState().gMsgTitle; });
}

void requireWindows() {
    if (const auto* windows = dynamic_cast<const platform::qt::QtToolkit*>(&services().toolkit))
        windows->requireApplication();
}

platform::Settings& sharedSettings() { return hasServices() ? services().settings : ownSettings(); }

store::Store& componentStore() {
    static StoreFactory factory([] {
        if (hasServices()) services().toolkit.paintPending();
    });
    return factory;
}

}  // namespace orvenmod
