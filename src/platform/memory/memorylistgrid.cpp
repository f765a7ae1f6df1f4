#include "platform/memory/memorylistgrid.h"

#include "platform/memory/memorytoolkit.h"

namespace orvenmod::platform::memory {

void MemoryListGrid::setColumnAlignment(int column, int alignment) { model_.column(column).alignment = alignment; }

void MemoryListGrid::setHeaderAlignment(int column, int alignment) {
    model_.column(column).headerAlignment = alignment;
}

void MemoryListGrid::narrow(const std::string& words) {
    lineOpen_ = lineOpen_ || !words.empty();
    line_ = words;
    showNarrowing();
}

template <class Work>
bool MemoryListGrid::doneUnderBar(const char* text, Work work) {
    return model::doneUnder(*toolkit().createProgress(text, "", model_.allRows()), work);
}

bool MemoryListGrid::readyNarrowing() {
    return doneUnderBar(model::kReadyingNarrowing,
                        [this](const model::RowsDone& done) { model_.readyNarrowing(done); });
}

void MemoryListGrid::showNarrowing() {
    if (!line_.empty() && !readyNarrowing()) return closeLine();
    model_.narrow(line_);
}

void MemoryListGrid::openLine() {
    bool cancelled = false;
    toolkit().guard([&] { cancelled = !readyNarrowing(); });
    if (cancelled) return closeLine();
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
    showNarrowing();
}

bool MemoryListGrid::readySort(int column) {
    return doneUnderBar(model::kSorting, [&](const model::RowsDone& done) { model_.readySort(column, done); });
}

void MemoryListGrid::sortOn(int column) {
    model_.setCurrentColumn(column);
    if (readySort(column)) model_.sortOn(column);
}

void MemoryListGrid::sort(int column, SortOrder order) {
    if (order == SortOrder::told || readySort(column)) model_.sort(column, order);
}

void MemoryListGrid::arrange() {
    if (model_.sorts() && !readySort(model_.sortedColumn())) sort(model_.sortedColumn(), SortOrder::told);
    if (!model_.narrowing().empty() && !readyNarrowing()) closeLine();
    model_.arrange();
}

model::CopiedRows MemoryListGrid::copySelected() {
    model::CopiedRows copied;
    doneUnderBar(model::kCopying, [&](const model::RowsDone& done) { copied = copySelectedRows(model_, done); });
    return copied;
}

}  // namespace orvenmod::platform::memory
