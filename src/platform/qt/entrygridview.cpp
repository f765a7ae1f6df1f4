#include "platform/qt/entrygridview.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include "platform/qt/celleditors.h"
#include "platform/qt/listgridview.h"

namespace orvenmod::platform::qt {

namespace {

constexpr int kRowHeaderWidth = 30;

}  // namespace

EntryGridView::EntryGridView(QWidget* parent) : QTableView(parent) {
    dressGrid(*this);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectItems);
    setEditTriggers(AnyKeyPressed | EditKeyPressed | DoubleClicked);
    setTabKeyNavigation(false);
    verticalHeader()->show();
    verticalHeader()->setMinimumWidth(kRowHeaderWidth);
    verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
    verticalHeader()->setSectionsClickable(false);
    horizontalHeader()->setSectionsClickable(false);
}

void EntryGridView::setUp(EntryGridItems& items, EntryActions& actions) {
    items_ = &items;
    actions_ = &actions;
    setItemDelegate(new EntryDelegate(*this, items, actions));
    setModel(&items);
}

void EntryGridView::advance() {
    const CellPlace cell = EntryGridItems::cellOf(currentIndex());
    if (cell.row == 0) return;
    const auto [column, row] = items_->cells().nextEntry(cell.column, cell.row);
    if (row > 0)
        setCurrentIndex(items_->indexOf({column, row}));
    else
        actions_->leftByEnter();
}

void EntryGridView::finishEdit() {
    if (state() != EditingState) return;
    QWidget* editor = indexWidget(currentIndex());
    if (editor == nullptr) return;
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void EntryGridView::open(const QModelIndex& index) { QTableView::edit(index); }

void EntryGridView::dropDown(const QModelIndex& index) {
    open(index);
    auto* day = qobject_cast<TextCellEditor*>(indexWidget(index));
    if (day != nullptr && day->hasCalendar()) day->openCalendar();
}

bool EntryGridView::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    if (!QTableView::edit(index, trigger, event)) return false;
    auto* choice = qobject_cast<ItemCellEditor*>(indexWidget(index));
    if (choice != nullptr && trigger != AnyKeyPressed) choice->openList();
    return true;
}

void EntryGridView::mousePressEvent(QMouseEvent* event) {
    QTableView::mousePressEvent(event);
    if (event->button() != Qt::LeftButton) return;
    const QModelIndex index = indexAt(event->position().toPoint());
    pressed_ = isPressable(index) || isCombo(index) ? index : QModelIndex();
    if (pressed_.isValid()) update(index);
}

void EntryGridView::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    const QModelIndex index = pressed_;
    pressed_ = QModelIndex();
    if (event->button() != Qt::LeftButton || !index.isValid()) return;
    update(index);
    if (indexAt(event->position().toPoint()) != index) return;
    if (isPressable(index))
        actions_->pressed(EntryGridItems::cellOf(index));
    else
        open(index);
}

void EntryGridView::keyPressEvent(QKeyEvent* event) {
    const QModelIndex index = currentIndex();
    const CellPlace cell = EntryGridItems::cellOf(index);
    const bool button = isPressable(index) && items_->cells().cellType(cell.column, cell.row) == CellType::button;
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            button ? actions_->pressed(cell) : advance();
            return;
        case Qt::Key_Space:
            if (!isPressable(index)) break;
            actions_->pressed(cell);
            return;
        case Qt::Key_F4:
            dropDown(index);
            return;
        case Qt::Key_Down:
            if (!(event->modifiers() & Qt::AltModifier)) break;
            dropDown(index);
            return;
        case Qt::Key_Delete:
            if (index.isValid() && items_->cells().takesText(cell.column, cell.row)) {
                const QString before = index.data(Qt::EditRole).toString();
                if (actions_->typed(cell, QString())) actions_->finished(cell, before);
            }
            return;
        default:
            break;
    }
    QTableView::keyPressEvent(event);
}

// The view would make its first cell active by itself.
void EntryGridView::focusInEvent(QFocusEvent* event) {
    const QScopedValueRollback<bool> guard(writing, true);
    const bool had = currentIndex().isValid();
    QTableView::focusInEvent(event);
    if (!had) selectionModel()->clearCurrentIndex();
}

bool EntryGridView::isPressable(const QModelIndex& index) const {
    if (!index.isValid()) return false;
    const CellPlace cell = EntryGridItems::cellOf(index);
    const CellType type = items_->cells().cellType(cell.column, cell.row);
    if (type != CellType::button && type != CellType::checkBox) return false;
    return !items_->cells().locked(cell.column, cell.row);
}

bool EntryGridView::isCombo(const QModelIndex& index) const {
    if (!index.isValid()) return false;
    const CellPlace cell = EntryGridItems::cellOf(index);
    return items_->cells().cellType(cell.column, cell.row) == CellType::combo &&
           !items_->cells().locked(cell.column, cell.row);
}

void finishOpenEdit() {
    for (QWidget* widget = QApplication::focusWidget(); widget != nullptr; widget = widget->parentWidget()) {
        if (auto* grid = qobject_cast<EntryGridView*>(widget)) grid->finishEdit();
    }
}

}  // namespace orvenmod::platform::qt
