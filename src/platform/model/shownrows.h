// Which row a list shows where: the one place that maps a shown row to the row behind it (its slot, which counts as the
// source does). Rows can be removed, sorted and narrowed.
//
// In the told order nothing is stored but what RowIndex keeps. Else the shown slots stand in their order, with their
// places by slot beside them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/model/bitset.h"
#include "platform/model/rowindex.h"

namespace orvenmod::platform::model {

class ShownRows {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// Starts again with `count` slots, all shown in the told order.
    void reset(std::size_t count);
    /// Shows one more at the end.
    void append();
    /// Keeps the first `size` of the told order.
    void truncate(std::size_t size);
    void remove(std::size_t position);

    std::size_t size() const { return told() ? rows_.size() : order_.size(); }
    /// Those that aren't shown included.
    std::size_t heldCount() const { return rows_.size(); }
    std::size_t slotCount() const { return rows_.slotCount(); }
    std::size_t slotAt(std::size_t position) const { return told() ? rows_.slotAt(position) : order_[position]; }
    /// Whether all show, in the order in which they were told.
    bool told() const { return !sorted_ && !shown_; }
    /// From a shown slot on, in another order than the told one.
    std::span<const std::uint32_t> slotsFrom(std::size_t slot) const {
        return std::span(order_).subspan(places_[slot]);
    }
    /// kNone for a slot that isn't shown.
    std::size_t positionOf(std::size_t slot) const;
    /// Slots in the order to show, of which those that aren't held are left out; nothing for the told order.
    void setOrder(std::optional<std::vector<std::uint32_t>> slots);
    /// The slots to show; nothing for all.
    void setShown(std::optional<BitSet> slots);

private:
    std::vector<std::uint32_t> heldSlots() const;
    void dropUnheld();
    void makeOrder();

    RowIndex rows_;
    std::optional<std::vector<std::uint32_t>> sorted_;
    std::optional<BitSet> shown_;
    std::vector<std::uint32_t> order_;   // slots by position
    std::vector<std::uint32_t> places_;  // positions by slot
};

}  // namespace orvenmod::platform::model
