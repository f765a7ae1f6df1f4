#include "platform/itemtexts.h"

#include <stdexcept>
#include <utility>

namespace orvenmod::platform {

ItemTexts::ItemTexts(std::vector<std::string> texts)
    : held_(std::make_shared<Held>(Held{nullptr, 0, std::move(texts), true})) {}

ItemTexts::ItemTexts(std::shared_ptr<const RowSource> rows, int column)
    : held_(std::make_shared<Held>(Held{std::move(rows), column, {}, false})) {}

std::size_t ItemTexts::size() const { return held_->copied ? held_->texts.size() : held_->rows->rowCount(); }

std::string_view ItemTexts::at(std::size_t item) const {
    if (item >= size()) throw std::out_of_range("下标越界");
    return held_->rows ? held_->rows->cell(item, held_->column).value_or("") : held_->texts[item];
}

int ItemTexts::find(std::string_view text) const {
    for (std::size_t item = 0; item < size(); ++item) {
        if (at(item) == text) return static_cast<int>(item);
    }
    return -1;
}

const std::vector<std::string>& ItemTexts::all() const {
    if (!held_->copied) {
        held_->texts.reserve(size());
        for (std::size_t item = 0; item < held_->rows->rowCount(); ++item)
            held_->texts.emplace_back(held_->rows->cell(item, held_->column).value_or(""));
        held_->copied = true;
    }
    return held_->texts;
}

}  // namespace orvenmod::platform
