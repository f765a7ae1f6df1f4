#include "platform/qt/qtentrygrid.h"

#include <QHeaderView>
#include <QScopedValueRollback>

#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

QtEntryGrid::QtEntryGrid(Core& core, const ControlDesign& design, QWidget* parent)
    : QtControl(design, new EntryGridView(parent)),
      core_(core),
      model_(design.columns),
      items_(model_),
      view_(static_cast<EntryGridView*>(body_.widget())) {
    listen();
    view_->setUp(items_, actions_);
    for (int column = 1; column <= model_.columnCount(); ++column) {
        view_->setColumnWidth(column - 1, toPixels(static_cast<float>(model_.columnWidth(column))));
        view_->setColumnHidden(column - 1, model_.columnHidden(column));
        if (design.columns[static_cast<std::size_t>(column) - 1].stretches)
            view_->horizontalHeader()->setSectionResizeMode(column - 1, QHeaderView::Stretch);
    }
    QObject::connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, view_,
                     [this](const QModelIndex& current) {
                         const CellPlace cell = EntryGridItems::cellOf(current);
                         if (!view_->writing) model_.setActiveCell(cell.column, cell.row);
                     });
}

void QtEntryGrid::listen() {
    actions_.opened = [this](CellPlace cell) {
        model_.setActiveCell(cell.column, cell.row);
        model_.openCell();
    };
    actions_.reads = [this](const std::function<void()>& work) {
        bool read = false;
        core_.guard([&] {
            work();
            read = true;
        });
        return read;
    };
    actions_.typed = [this](const QString& text) {
        model_.typed(fromQt(text));
        const CellPlace cell = activeCell();
        items_.cellChanged(cell);
        if (model_.cellType(cell.column, cell.row) == CellType::combo) return;
        core_.guard([this, cell] { editChange.raise(cell.column, cell.row); });
    };
    actions_.marked = [this](int item) { model_.markItem(item); };
    actions_.left = [this] {
        auto left = model_.takeOver(core_.today());
        items_.cellChanged(activeCell());
        return left;
    };
    actions_.changed = [this](CellPlace cell, int item) { raisePick(cell, item); };
    actions_.undone = [this] {
        const CellPlace cell = activeCell();
        if (!model_.giveUp()) return;
        items_.cellChanged(cell);
        core_.guard([this, cell] { editChange.raise(cell.column, cell.row); });
    };
    actions_.picked = [this](CellPlace cell, int item) { picked(cell, item); };
    actions_.pressed = [this](CellPlace cell) { pressed(cell); };
    actions_.leftByEnter = [this] { core_.guard([this] { leftByEnter.raise(); }); };
}

void QtEntryGrid::setRowCount(int rows) {
    const QScopedValueRollback<bool> writing(view_->writing, true);
    items_.setRowCount(rows);
    showActive();
}

void QtEntryGrid::deleteRow(int row) {
    const QScopedValueRollback<bool> writing(view_->writing, true);
    items_.deleteRow(row);
    showActive();
}

void QtEntryGrid::setActiveCell(int column, int row) {
    if (activeCell() != CellPlace{column, row} && !view_->takeOver()) view_->giveUp();
    const QScopedValueRollback<bool> writing(view_->writing, true);
    model_.setActiveCell(column, row);
    showActive();
}

void QtEntryGrid::setText(int column, int row, const std::string& text) {
    model_.setText(column, row, text);
    items_.cellChanged({column, row});
}

void QtEntryGrid::setCellType(int column, int row, CellType type) {
    model_.setCellType(column, row, type);
    items_.cellChanged({column, row});
}

void QtEntryGrid::setNumberRule(int column, int row, const NumberRule& rule) {
    model_.setNumberRule(column, row, rule);
    items_.cellChanged({column, row});
}

void QtEntryGrid::setLocked(int column, int row, bool locked) {
    model_.setLocked(column, row, locked);
    items_.cellChanged({column, row});
}

void QtEntryGrid::setRequired(int column, int row, bool required) {
    model_.setRequired(column, row, required);
    items_.cellChanged({column, row});
}

void QtEntryGrid::setItems(int column, int row, const ItemTexts& items) {
    model_.setItems(column, row, items);
    items_.cellChanged({column, row});
}

void QtEntryGrid::setItemCodes(int column, int row, const ItemTexts& codes) { model_.setItemCodes(column, row, codes); }

void QtEntryGrid::selectItem(int column, int row, int item) {
    model_.selectItem(column, row, item);
    items_.cellChanged({column, row});
}

void QtEntryGrid::setColumnHidden(int column, bool hidden) {
    model_.setColumnHidden(column, hidden);
    view_->setColumnHidden(column - 1, hidden);
}

void QtEntryGrid::setLockedColour(const Colour& colour) {
    items_.lockedColour = QColor(colour.red, colour.green, colour.blue);
    view_->viewport()->update();
}

void QtEntryGrid::showActive() {
    const CellPlace cell = activeCell();
    if (cell.row == 0)
        view_->selectionModel()->clear();
    else
        view_->setCurrentIndex(items_.indexOf(cell));
}

void QtEntryGrid::picked(CellPlace cell, int item) {
    if (cell.row == 0) return;  // the row has gone meanwhile
    model_.selectItem(cell.column, cell.row, item);
    items_.cellChanged(cell);
    raisePick(cell, item);
}

void QtEntryGrid::raisePick(CellPlace cell, int item) {
    core_.guard([this, cell] { comboSelectionChange.raise(cell.column, cell.row); });
    core_.guard([this, cell, item] { comboCloseUp.raise(cell.column, cell.row, item); });
}

void QtEntryGrid::pressed(CellPlace cell) {
    if (model_.cellType(cell.column, cell.row) == CellType::checkBox) {
        model_.setText(cell.column, cell.row, model_.text(cell.column, cell.row) == "1" ? "0" : "1");
        items_.cellChanged(cell);
        return;
    }
    core_.guard([this, cell] { buttonClick.raise(cell.column, cell.row); });
}

}  // namespace orvenmod::platform::qt
