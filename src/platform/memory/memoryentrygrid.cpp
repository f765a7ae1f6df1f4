#include "platform/memory/memoryentrygrid.h"

namespace orvenmod::platform::memory {

void MemoryEntryGrid::setNumberRule(int column, int row, const NumberRule& rule) {
    model_.setNumberRule(column, row, rule);
}

void MemoryEntryGrid::setItems(int column, int row, const std::vector<std::string>& items) {
    model_.setItems(column, row, items);
}

}  // namespace orvenmod::platform::memory
