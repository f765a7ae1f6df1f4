#include "platform/qt/sharedpalette.h"

#include <algorithm>

namespace orvenmod::platform::qt {

namespace {

constexpr std::size_t kMostKnown = 32;

}  // namespace

QPalette SharedPalettes::shared(const QPalette& palette) {
    auto found = std::find(known_.begin(), known_.end(), palette);
    if (found == known_.end()) {
        // A desktop may change its colours now and then.
        if (known_.size() == kMostKnown) known_.clear();
        found = known_.insert(known_.end(), palette);
    }
    QPalette same = *found;
    same.setCurrentColorGroup(palette.currentColorGroup());
    return same;
}

WithSharedPalette::WithSharedPalette(SharedPalettes& palettes, const QStyleOption* option)
    : option_(const_cast<QStyleOption*>(option)) {
    if (option_ == nullptr) return;
    own_ = option_->palette;
    option_->palette = palettes.shared(own_);
}

WithSharedPalette::~WithSharedPalette() {
    if (option_ != nullptr) option_->palette = own_;
}

}  // namespace orvenmod::platform::qt
