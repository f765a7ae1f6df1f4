#include "platform/model/shownrows.h"

#include <algorithm>
#include <utility>

namespace orvenmod::platform::model {

namespace {

constexpr std::uint32_t kNowhere = static_cast<std::uint32_t>(-1);

}  // namespace

void ShownRows::reset(std::size_t count) {
    rows_.reset(count);
    sorted_.reset();
    shown_.reset();
    makeOrder();
}

void ShownRows::append() {
    const std::size_t slot = rows_.append();
    if (sorted_) sorted_->push_back(static_cast<std::uint32_t>(slot));
    if (shown_) shown_->set(slot);
    if (told()) return;
    places_.push_back(static_cast<std::uint32_t>(order_.size()));
    order_.push_back(static_cast<std::uint32_t>(slot));
}

void ShownRows::truncate(std::size_t size) {
    rows_.truncate(size);
    if (told()) return;
    if (sorted_) dropUnheld();
    makeOrder();
}

void ShownRows::remove(std::size_t position) {
    const std::size_t slot = slotAt(position);
    rows_.remove(rows_.positionOf(slot));
    if (told()) return;
    if (sorted_) std::erase(*sorted_, static_cast<std::uint32_t>(slot));
    order_.erase(order_.begin() + static_cast<std::ptrdiff_t>(position));
    places_[slot] = kNowhere;
    for (std::size_t after = position; after < order_.size(); ++after)
        places_[order_[after]] = static_cast<std::uint32_t>(after);
}

std::size_t ShownRows::positionOf(std::size_t slot) const {
    if (told()) return rows_.positionOf(slot);
    return places_[slot] == kNowhere ? kNone : places_[slot];
}

std::vector<std::uint32_t> ShownRows::heldSlots() const {
    std::vector<std::uint32_t> slots;
    slots.reserve(rows_.size());
    for (std::size_t slot = 0; slot < rows_.slotCount(); ++slot) {
        if (rows_.has(slot)) slots.push_back(static_cast<std::uint32_t>(slot));
    }
    return slots;
}

void ShownRows::setOrder(std::optional<std::vector<std::uint32_t>> slots) {
    sorted_ = std::move(slots);
    if (sorted_ && sorted_->size() != rows_.size()) dropUnheld();
    makeOrder();
}

void ShownRows::dropUnheld() {
    std::erase_if(*sorted_, [this](std::uint32_t slot) { return !rows_.has(slot); });
}

void ShownRows::setShown(std::optional<BitSet> slots) {
    shown_ = std::move(slots);
    makeOrder();
}

void ShownRows::makeOrder() {
    order_.clear();
    places_.clear();
    if (told()) return;
    order_ = sorted_ ? *sorted_ : heldSlots();
    if (shown_) std::erase_if(order_, [this](std::uint32_t slot) { return !shown_->test(slot); });
    places_.assign(rows_.slotCount(), kNowhere);
    for (std::size_t position = 0; position < order_.size(); ++position)
        places_[order_[position]] = static_cast<std::uint32_t>(position);
}

}  // namespace orvenmod::platform::model
