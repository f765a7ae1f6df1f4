#include "platform/model/entrygridmodel.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "platform/date.h"
#include "platform/numberformat.h"

namespace orvenmod::platform::model {

namespace {

constexpr NumberRule kCurrencyRule{4, -922337203685477.0, 922337203685477.0};

}  // namespace

EntryGridModel::EntryGridModel(const std::vector<GridColumn>& columns) {
    for (const GridColumn& design : columns) {
        columns_.push_back({std::string(design.title), design.width, design.alignment, design.hidden, design.locked,
                            design.type, NumberRule(), ItemTexts()});
    }
}

void EntryGridModel::setRowCount(int rows) {
    if (rows < 0) throw std::out_of_range("no such number of rows: " + std::to_string(rows));
    rows_.resize(static_cast<std::size_t>(rows), std::vector<Cell>(columns_.size()));
    if (activeRow_ <= rows) return;
    edit_.reset();
    setActiveCell(0, 0);
}

void EntryGridModel::deleteRow(int row) {
    if (row < 1 || row > rowCount()) throw std::out_of_range("no such row: " + std::to_string(row));
    rows_.erase(rows_.begin() + (row - 1));
    if (activeRow_ == row) edit_.reset();
    if (activeRow_ > row || activeRow_ > rowCount()) --activeRow_;
    if (activeRow_ == 0) activeColumn_ = 0;
}

void EntryGridModel::setActiveCell(int column, int row) {
    if (column != 0 || row != 0) cell(column, row);  // tests both
    if (column != activeColumn_ || row != activeRow_) giveUp();
    activeColumn_ = column;
    activeRow_ = row;
}

const std::string& EntryGridModel::text(int column, int row) const {
    return row == 0 ? this->column(column).title : cell(column, row).text;
}

void EntryGridModel::setText(int column, int row, const std::string& text) {
    if (row == 0) {
        this->column(column).title = text;
        return;
    }
    if (cellType(column, row) == CellType::checkBox && !text.empty() && text != "0" && text != "1") {
        throw std::invalid_argument("无效的属性值：" + text);
    }
    // A date cell holds a day.
    cell(column, row).text = cellType(column, row) == CellType::date ? std::string(withoutMidnight(text)) : text;
    matchItem(column, row);
}

std::string EntryGridModel::displayText(int column, int row) const {
    const std::string& own = text(column, row);
    if (row == 0) return own;
    const CellType type = cellType(column, row);
    if (type == CellType::currency) return formatNumber(own, "#,##0.00");
    if (type != CellType::number) return own;
    const int decimals = std::max(numberRule(column, row).decimals, 0);
    return formatNumber(own, decimals == 0 ? "0" : "0." + std::string(static_cast<std::size_t>(decimals), '0'));
}

CellType EntryGridModel::cellType(int column, int row) const {
    const CellType& whole = this->column(column).type;
    return row == 0 ? whole : cell(column, row).type.value_or(whole);
}

void EntryGridModel::setCellType(int column, int row, CellType type) {
    if (row != 0) {
        cell(column, row).type = type;
        matchItem(column, row);
        return;
    }
    this->column(column).type = type;
    for (int each = 1; each <= rowCount(); ++each) {
        cell(column, each).type.reset();
        matchItem(column, each);
    }
}

const NumberRule& EntryGridModel::numberRule(int column, int row) const {
    const NumberRule& whole = this->column(column).rule;
    if (cellType(column, row) == CellType::currency) return kCurrencyRule;
    if (row == 0) return whole;
    const Cell& own = cell(column, row);
    return own.rule ? *own.rule : whole;
}

void EntryGridModel::setNumberRule(int column, int row, const NumberRule& rule) {
    if (row != 0) {
        cell(column, row).rule = rule;
        return;
    }
    this->column(column).rule = rule;
    for (int each = 1; each <= rowCount(); ++each)
        cell(column, each).rule.reset();
}

bool EntryGridModel::locked(int column, int row) const {
    const bool whole = this->column(column).locked;
    return row == 0 ? whole : cell(column, row).locked.value_or(whole);
}

void EntryGridModel::setLocked(int column, int row, bool locked) {
    if (row != 0) {
        cell(column, row).locked = locked;
        return;
    }
    this->column(column).locked = locked;
    for (int each = 1; each <= rowCount(); ++each)
        cell(column, each).locked.reset();
}

bool EntryGridModel::required(int column, int row) const { return cell(column, row).required; }

void EntryGridModel::setRequired(int column, int row, bool required) { cell(column, row).required = required; }

const std::string& EntryGridModel::cellTag(int column, int row) const { return cell(column, row).tag; }

void EntryGridModel::setCellTag(int column, int row, const std::string& tag) { cell(column, row).tag = tag; }

const ItemTexts& EntryGridModel::itemTexts(int column, int row) const {
    const ItemTexts& whole = this->column(column).items;
    return row != 0 && cell(column, row).items ? *cell(column, row).items : whole;
}

void EntryGridModel::setItems(int column, int row, const ItemTexts& items) {
    if (row != 0) {
        cell(column, row).items = items;
        cell(column, row).codes.reset();
        matchItem(column, row);
        return;
    }
    this->column(column).items = items;
    for (int each = 1; each <= rowCount(); ++each) {
        cell(column, each).items.reset();
        cell(column, each).codes.reset();
        matchItem(column, each);
    }
}

void EntryGridModel::setItemCodes(int column, int row, const ItemTexts& codes) {
    if (codes.size() != itemTexts(column, row).size()) throw std::invalid_argument("a code for each entry");
    cell(column, row).codes = codes;
}

std::vector<std::string> EntryGridModel::listTexts(int column, int row) const {
    Items texts = items(column, row);
    const auto& codes = cell(column, row).codes;
    if (!codes) return texts;
    std::unordered_map<std::string_view, int> counts;
    const Items& names = items(column, row);
    for (const std::string& name : names)
        ++counts[name];
    for (std::size_t item = 0; item < names.size(); ++item) {
        if (counts[names[item]] > 1) texts[item].append("(").append(codes->at(item)).append(")");
    }
    return texts;
}

void EntryGridModel::setClearable(int column, int row, bool clearable) { cell(column, row).clearable = clearable; }

void EntryGridModel::setItemLeader(int column, int row, int leader) { cell(column, row).leader = leader; }

int EntryGridModel::selectedItem(int column, int row) const {
    const Cell& own = cell(column, row);
    if (!own.selected) own.selected = foundItem(column, row);
    return *own.selected;
}

void EntryGridModel::selectItem(int column, int row, int item) {
    const ItemTexts& all = itemTexts(column, row);
    if (item < -1 || item >= static_cast<int>(all.size())) throw std::out_of_range("下标越界");
    Cell& own = cell(column, row);
    own.selected = item;
    own.text = item < 0 ? std::string() : std::string(all.at(static_cast<std::size_t>(item)));
}

bool EntryGridModel::columnHidden(int column) const { return this->column(column).hidden; }

void EntryGridModel::setColumnHidden(int column, bool hidden) { this->column(column).hidden = hidden; }

int EntryGridModel::columnWidth(int column) const { return this->column(column).width; }

Alignment EntryGridModel::columnAlignment(int column) const { return this->column(column).alignment; }

const std::string& EntryGridModel::heading(int column) const { return this->column(column).title; }

const EntryGridModel::Column& EntryGridModel::column(int column) const {
    if (column < 1 || column > columnCount()) throw std::out_of_range("no such column: " + std::to_string(column));
    return columns_[static_cast<std::size_t>(column) - 1];
}

EntryGridModel::Column& EntryGridModel::column(int column) {
    return const_cast<Column&>(std::as_const(*this).column(column));
}

const EntryGridModel::Cell& EntryGridModel::cell(int column, int row) const {
    this->column(column);  // tests it
    if (row < 1 || row > rowCount()) throw std::out_of_range("no such row: " + std::to_string(row));
    return rows_[static_cast<std::size_t>(row) - 1][static_cast<std::size_t>(column) - 1];
}

EntryGridModel::Cell& EntryGridModel::cell(int column, int row) {
    return const_cast<Cell&>(std::as_const(*this).cell(column, row));
}

void EntryGridModel::matchItem(int column, int row) {
    Cell& own = cell(column, row);
    own.selected = -1;
    if (cellType(column, row) == CellType::combo) own.selected.reset();
}

int EntryGridModel::foundItem(int column, int row) const {
    const Cell& own = cell(column, row);
    const ItemTexts& all = itemTexts(column, row);
    const int led = own.leader == 0 ? -1 : selectedItem(own.leader, row);
    if (led >= 0 && led < static_cast<int>(all.size()) && all.at(static_cast<std::size_t>(led)) == own.text) return led;
    return all.find(own.text);
}

}  // namespace orvenmod::platform::model
