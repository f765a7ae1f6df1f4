// The cell that its user types into.
#include "platform/model/cellinput.h"
#include "platform/model/entrygridmodel.h"

namespace orvenmod::platform::model {

namespace {

const std::string kNothing;

}  // namespace

bool EntryGridModel::takesTyping(int column, int row) const {
    return takesText(column, row) ||
           (cellType(column, row) == CellType::combo && !columnHidden(column) && !locked(column, row));
}

bool EntryGridModel::takesText(int column, int row) const {
    if (columnHidden(column) || locked(column, row)) return false;
    const CellType type = cellType(column, row);
    return type == CellType::text || type == CellType::number || type == CellType::currency || type == CellType::date;
}

std::pair<int, int> EntryGridModel::nextValue() const {
    if (activeRow_ == 0) return {0, 0};
    int column = activeColumn_;
    for (int row = activeRow_; row <= rowCount(); ++row, column = 0) {
        while (++column <= columnCount()) {
            const bool shut = columnHidden(column) || locked(column, row);
            if (!shut && cellType(column, row) != CellType::button) return {column, row};
        }
    }
    return {0, 0};
}

void EntryGridModel::openCell() {
    if (edit_ || activeRow_ == 0 || !takesTyping(activeColumn_, activeRow_)) return;
    // What can't be read fails here, while nothing is open.
    if (cellType(activeColumn_, activeRow_) == CellType::combo) {
        items(activeColumn_, activeRow_);
        selectedItem(activeColumn_, activeRow_);
    }
    const std::string& held = activeCell().text;
    edit_ = Edit{held, held};
}

const std::string& EntryGridModel::openText() const {
    if (!edit_) return kNothing;
    return cellType(activeColumn_, activeRow_) == CellType::combo ? edit_->typed : text(activeColumn_, activeRow_);
}

const std::string& EntryGridModel::refusal() const { return edit_ ? edit_->refusal : kNothing; }

void EntryGridModel::typed(const std::string& text) {
    if (!edit_) return;
    edit_->refusal.clear();
    edit_->marked = -1;
    edit_->typed = onOneLine(text);
    if (cellType(activeColumn_, activeRow_) != CellType::combo) activeCell().text = edit_->typed;
}

void EntryGridModel::markItem(int item) {
    if (!edit_) return;
    edit_->marked = item;
    edit_->typed = itemTexts(activeColumn_, activeRow_).at(static_cast<std::size_t>(item));
    edit_->refusal.clear();
}

int EntryGridModel::markedItem() const {
    if (!edit_) return -1;
    if (edit_->marked < 0 && edit_->typed == edit_->before) return selectedItem(activeColumn_, activeRow_);
    return edit_->marked;
}

EntryGridModel::Left EntryGridModel::takeOver(const std::optional<Date>& today) {
    if (!edit_) return {};
    const CellType type = cellType(activeColumn_, activeRow_);
    if (type == CellType::combo) return takeOverItem();
    Cell& own = activeCell();
    CellInput input{own.text};
    if (own.text != edit_->before) {
        if (type == CellType::date) input = readDate(own.text, today);
        if (type == CellType::number || type == CellType::currency)
            input = readNumber(own.text, numberRule(activeColumn_, activeRow_));
    }
    edit_->refusal = input.refusal;
    if (!input.refusal.empty()) return {.refusal = input.refusal};
    own.text = input.text;
    edit_.reset();
    return {};
}

// A choice that nobody changed stays the one it is, also among entries of the same text.
EntryGridModel::Left EntryGridModel::takeOverItem() {
    const Cell& own = activeCell();
    const int before = selectedItem(activeColumn_, activeRow_);
    ItemInput meant{before};
    if (edit_->marked >= 0) {
        meant.item = edit_->marked;
    } else if (plainLetters(edit_->typed).empty() && edit_->typed != edit_->before) {
        meant = own.clearable ? ItemInput() : ItemInput{.refusal = "请选择一项"};
    } else if (edit_->typed != edit_->before) {
        meant = readItem(edit_->typed, items(activeColumn_, activeRow_));
    }
    edit_->refusal = meant.refusal;
    if (!meant.refusal.empty()) return {.refusal = meant.refusal};
    const bool cleared = meant.item < 0 && edit_->typed != edit_->before;
    const bool changed = meant.item != before || cleared;
    edit_.reset();
    if (!changed) return {};
    selectItem(activeColumn_, activeRow_, meant.item);
    return {.refusal = {}, .picked = meant.item};
}

bool EntryGridModel::giveUp() {
    if (!edit_) return false;
    const Edit given = *edit_;
    edit_.reset();
    Cell& own = activeCell();
    const bool changed = own.text != given.before;
    own.text = given.before;
    return changed;
}

}  // namespace orvenmod::platform::model
