#include "store/sqlite/orderedkeys.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "store/tsql/textorder.h"

namespace orvenmod::store::sqlite {

// Signs from '{' on stand behind the letters for NOCASE, and a zero ends the text.
bool isOrderedAlike(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c > 0 && c < '{'; });
}

void OrderedKeys::add(std::string_view text, std::int64_t key) {
    const bool alike = isOrderedAlike(text);
    if (keys_.empty() || !isLast(text, alike)) {
        sortLast();
        begin_ = keys_.size();
        last_ = text;
        lastIsAlike_ = alike;
    }
    keys_.push_back(key);
}

Keys OrderedKeys::taken() {
    sortLast();
    keys_.shrink_to_fit();
    return std::exchange(keys_, {});
}

bool OrderedKeys::isLast(std::string_view text, bool alike) const {
    if (!alike || !lastIsAlike_) return tsql::compareTexts(last_, text) == 0;
    return last_.size() == text.size() &&
           sqlite3_strnicmp(last_.data(), text.data(), static_cast<int>(text.size())) == 0;
}

void OrderedKeys::sortLast() {
    if (keys_.size() - begin_ < 2) return;
    const auto from = keys_.begin() + static_cast<std::ptrdiff_t>(begin_);
    if (order_ == Order::ascending) {
        std::sort(from, keys_.end());
    } else {
        std::sort(from, keys_.end(), std::greater<>());
    }
}

}  // namespace orvenmod::store::sqlite
