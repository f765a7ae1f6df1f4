#include "platform/qt/listgridview.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include "platform/qt/keycodes.h"

namespace orvenmod::platform::qt {

void dressGrid(QTableView& grid) {
    grid.setAlternatingRowColors(true);
    grid.setShowGrid(true);
    grid.setWordWrap(false);
    grid.setCornerButtonEnabled(false);
    grid.setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    grid.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    grid.verticalHeader()->hide();
    grid.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid.verticalHeader()->setMinimumSectionSize(1);
    grid.verticalHeader()->setDefaultSectionSize(kRowHeight);
    grid.horizontalHeader()->setMinimumSectionSize(1);
    grid.horizontalHeader()->setFixedHeight(kRowHeight + 2);
    grid.horizontalHeader()->setHighlightSections(false);
    grid.horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
}

ListGridView::ListGridView(QWidget* parent) : QTableView(parent) {
    dressGrid(*this);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    horizontalHeader()->setSectionsClickable(true);
    connect(horizontalHeader(), &QHeaderView::sectionDoubleClicked, this, [this] {
        if (onDoubleClick) onDoubleClick();
    });
}

void ListGridView::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::RightButton) {
        // A menu is for the rows that are marked; the one under the mouse joins only where it is not among them.
        if (index.isValid() && !selectionModel()->isSelected(index))
            selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        else if (index.isValid())
            selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        if (onMouse) onMouse(MouseButton::right, event->globalPosition().toPoint());
        return;
    }
    QTableView::mousePressEvent(event);
    if (event->button() == Qt::LeftButton && onMouse) onMouse(MouseButton::left, event->globalPosition().toPoint());
}

void ListGridView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid() && onDoubleClick)
        onDoubleClick();
}

void ListGridView::keyPressEvent(QKeyEvent* event) {
    if (onKey) onKey(keyCodeOf(*event));
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return;
    QTableView::keyPressEvent(event);
}

void ListGridView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard && onMouse)
        onMouse(MouseButton::right, viewport()->mapToGlobal(visualRect(currentIndex()).center()));
    event->accept();
}

void ListGridView::focusInEvent(QFocusEvent* event) {
    const QScopedValueRollback<bool> guard(writing, true);
    const bool had = currentIndex().isValid();
    QTableView::focusInEvent(event);
    if (!had) selectionModel()->clearCurrentIndex();
}

}  // namespace orvenmod::platform::qt
