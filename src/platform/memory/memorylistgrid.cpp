#include "platform/memory/memorylistgrid.h"

namespace orvenmod::platform::memory {

void MemoryListGrid::setColumnAlignment(int column, int alignment) { model_.column(column).alignment = alignment; }

void MemoryListGrid::setHeaderAlignment(int column, int alignment) {
    model_.column(column).headerAlignment = alignment;
}

void MemoryListGrid::narrow(const std::string& words) {
    lineOpen_ = lineOpen_ || !words.empty();
    model_.narrow(words);
}

void MemoryListGrid::openLine() {
    focus();
    lineOpen_ = inLine_ = marked_ = true;
}

void MemoryListGrid::closeLine() {
    lineOpen_ = inLine_ = false;
    model_.narrow("");
}

void MemoryListGrid::typeInLine(const std::string& letter) {
    std::string line = marked_ ? "" : model_.narrowing();
    if (letter.empty()) {
        while (!line.empty() && (static_cast<unsigned char>(line.back()) & 0xC0) == 0x80)
            line.pop_back();
        if (!line.empty()) line.pop_back();
    }
    marked_ = false;
    model_.narrow(line + letter);
}

}  // namespace orvenmod::platform::memory
