#include "platform/memory/memorylistgrid.h"

namespace orvenmod::platform::memory {

void MemoryListGrid::setColumnAlignment(int column, int alignment) { model_.column(column).alignment = alignment; }

void MemoryListGrid::setHeaderAlignment(int column, int alignment) {
    model_.column(column).headerAlignment = alignment;
}

void MemoryListGrid::narrow(const std::string& words) {
    lineOpen_ = lineOpen_ || !words.empty();
    line_ = words;
    model_.narrow(line_);
}

void MemoryListGrid::openLine() {
    focus();
    lineOpen_ = inLine_ = marked_ = true;
}

void MemoryListGrid::closeLine() {
    lineOpen_ = inLine_ = false;
    line_.clear();
    model_.narrow(line_);
}

void MemoryListGrid::typeInLine(const std::string& letter) {
    if (marked_) line_.clear();
    if (letter.empty()) {
        while (!line_.empty() && (static_cast<unsigned char>(line_.back()) & 0xC0) == 0x80)
            line_.pop_back();
        if (!line_.empty()) line_.pop_back();
    }
    marked_ = false;
    line_ += letter;
    model_.narrow(line_);
}

}  // namespace orvenmod::platform::memory
