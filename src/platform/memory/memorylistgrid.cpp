#include "platform/memory/memorylistgrid.h"

namespace orvenmod::platform::memory {

void MemoryListGrid::setColumnAlignment(int column, int alignment) { model_.column(column).alignment = alignment; }

void MemoryListGrid::setHeaderAlignment(int column, int alignment) {
    model_.column(column).headerAlignment = alignment;
}

}  // namespace orvenmod::platform::memory
