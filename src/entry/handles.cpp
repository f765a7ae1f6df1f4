#include "entry/handles.h"

#include <algorithm>
#include <utility>

#include "entry/entry.h"
#include "frame/conversion.h"

namespace orvenmod {

namespace {

// Handles look like no address and no small number, so that a mistaken one is hardly ever another's.
constexpr std::uintptr_t kStep = 16;
constexpr std::uintptr_t kFirst = 0x4F52'0000;

orvenmod_object* handleOf(std::uintptr_t number) {
    return reinterpret_cast<orvenmod_object*>(number);  // NOLINT(performance-no-int-to-ptr): it is never followed
}

}  // namespace

Handles& Handles::all() {
    static auto* handles = new Handles;
    return *handles;
}

orvenmod_object* Handles::add(std::shared_ptr<LateObject> object) {
    const std::lock_guard lock(mutex_);
    last_ += kStep;
    const std::uintptr_t number = kFirst + last_;
    objects_.emplace(number, Owned{std::move(object), threadNumber()});
    return handleOf(number);
}

std::shared_ptr<LateObject> Handles::find(const orvenmod_object* handle) {
    const std::lock_guard lock(mutex_);
    return located(handle)->second.object;
}

void Handles::remove(const orvenmod_object* handle) {
    std::shared_ptr<LateObject> last;  // destroyed behind the lock: its end is the component's own affair
    const std::lock_guard lock(mutex_);
    const auto found = located(handle);
    last = std::move(found->second.object);
    objects_.erase(found);
}

Handles::Objects::iterator Handles::located(const orvenmod_object* handle) {
    const auto found = objects_.find(reinterpret_cast<std::uintptr_t>(handle));
    if (found == objects_.end()) throw CallFailure(CallFailure::kObjectRequired, "要求对象");
    if (found->second.thread != threadNumber())
        throw ConversionFailure(ConversionFailure::kInvalidCall, "对象只能由建立它的线程使用");
    return found;
}

const char* Handles::copyOf(const std::string& text) {
    auto copy = std::make_unique<char[]>(text.size() + 1);
    std::copy(text.begin(), text.end(), copy.get());
    const std::lock_guard lock(mutex_);
    const char* const address = copy.get();
    texts_.emplace(address, std::move(copy));
    return address;
}

void Handles::free(const char* text) {
    const std::lock_guard lock(mutex_);
    if (texts_.erase(text) == 0)
        throw ConversionFailure(ConversionFailure::kInvalidCall, "要释放的文本不是由本部件给出的");
}

}  // namespace orvenmod
