#include "transfer/workbookstyles.h"

namespace orvenmod {

namespace {

struct Range {
    std::size_t first, last;
};
// The format numbers that every workbook has without telling them, those of East Asian programs included.
constexpr Range kBuiltInDays[] = {{14, 17}, {22, 22}, {27, 31}, {34, 36}, {50, 54}, {57, 58}};

}  // namespace

bool isDayFormat(std::string_view code) {
    bool quoted = false;
    bool bracketed = false;
    for (std::size_t at = 0; at < code.size(); ++at) {
        const char letter = code[at];
        if (letter == '"') quoted = !quoted;
        if (letter == '\\' || letter == '_') ++at;
        if (letter == '[') bracketed = true;
        if (letter == ']') bracketed = false;
        if (quoted || bracketed) continue;
        if (letter == 'y' || letter == 'Y' || letter == 'd' || letter == 'D') return true;
    }
    return false;
}

bool WorkbookStyles::isDay(std::size_t cellFormat) const {
    if (cellFormat >= cellFormats_.size()) return false;
    const std::size_t id = cellFormats_[cellFormat];
    if (const auto own = formats_.find(id); own != formats_.end()) return isDayFormat(own->second);
    for (const Range& days : kBuiltInDays) {
        if (id >= days.first && id <= days.last) return true;
    }
    return false;
}

size_t WorkbookStyles::commit_number_format() {
    formats_[formatId_] = formatCode_;
    return formatId_;
}

size_t WorkbookStyles::commit_cell_xf() {
    cellFormats_.push_back(cellFormatId_);
    cellFormatId_ = 0;
    return cellFormats_.size() - 1;
}

size_t WorkbookStyles::takeIndex() {
    cellFormatId_ = 0;
    return lastIndex_++;
}

}  // namespace orvenmod
