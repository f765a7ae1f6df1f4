#include "entry/entry.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <mutex>
#include <stdexcept>

#include "entry/startup.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"

namespace orvenmod {

namespace {

std::atomic<int> alive = 0;
bool entryRuns = false;

// The number of the thread that the first object was made on; 0 before.
std::atomic<std::uint64_t> ownThread = 0;

void requireOwnThread() {
    const std::uint64_t own = ownThread;
    if (own != 0 && own != threadNumber()) throw std::runtime_error("组件只能在最先使用它的线程里使用");
}

// Of two threads that start at once one becomes the component's, and the other is refused.
void startUpOnOwnThread() {
    static std::mutex starting;
    const std::lock_guard lock(starting);
    requireOwnThread();
    startUp();
    ownThread = threadNumber();
}

struct AsText {
    std::string operator()(std::monostate) const { return ""; }
    std::string operator()(bool value) const { return value ? "True" : "False"; }
    std::string operator()(std::int16_t value) const { return std::to_string(value); }
    std::string operator()(std::int32_t value) const { return std::to_string(value); }
    std::string operator()(double value) const {
        constexpr int kDigits = 15;  // what was typed as 0.1 + 0.2 is 0.3
        std::array<char, 64> buffer{};
        char* const end =
            std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, kDigits).ptr;
        std::replace(buffer.data(), end, 'e', 'E');
        return {buffer.data(), end};
    }
    std::string operator()(const std::string& value) const { return value; }
    std::string operator()(const std::shared_ptr<void>&) const {
        throw ConversionFailure(ConversionFailure::kTypeMismatch, "类型不匹配");
    }
};

}  // namespace

std::uint64_t threadNumber() noexcept {
    static std::atomic<std::uint64_t> last = 0;
    thread_local const std::uint64_t own = ++last;
    return own;
}

void initializeClass() {
    startUpOnOwnThread();
    appState().gMsgTitle = setting("SystemSetup", "msgTitle", "奥文软件");
    appState().gIsAdmin = settingInt16("SystemLogin", "IsAdmin", "0");
}

RunningEntry::RunningEntry() {
    requireOwnThread();
    if (entryRuns) throw std::runtime_error("组件的窗口已经打开，请先关闭它");
    requireWindows();
    entryRuns = true;
}

RunningEntry::~RunningEntry() { entryRuns = false; }

void dropConnection() noexcept { appState().gConn.reset(); }

void dropConnectionOfObject() noexcept {
    if (!entryRuns) dropConnection();
}

std::string variantText(const Variant& value) { return std::visit(AsText(), value); }

std::int16_t variantInt16(const Variant& value) {
    if (value.index() == 0) return 0;
    if (const bool* flag = std::get_if<bool>(&value)) return *flag ? -1 : 0;
    if (const double* number = std::get_if<double>(&value)) return toInt16(*number);
    return toInt16(variantText(value));
}

void objectCreated() noexcept { ++alive; }
void objectDestroyed() noexcept { --alive; }
int liveObjects() noexcept { return alive; }

}  // namespace orvenmod
