#include "platform/qt/listgridview.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

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
}

void ListGridView::mousePressEvent(QMouseEvent* event) {
    if (onLook) onLook();
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() == Qt::RightButton) {
        // What a menu on the list does, it does to the row under the mouse, and to no other that was marked.
        if (index.isValid())
            selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        if (onMouse) onMouse(MouseButton::right, event->globalPosition().toPoint());
        return;
    }
    // Beside the rows the view would take the marks away, and the next command would mean none.
    if (index.isValid()) QTableView::mousePressEvent(event);
    if (event->button() == Qt::LeftButton && onMouse) onMouse(MouseButton::left, event->globalPosition().toPoint());
}

void ListGridView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid() && onDoubleClick)
        onDoubleClick();
}

void ListGridView::keyPressEvent(QKeyEvent* event) {
    if (onLook) onLook();
    if (onOwnKey && onOwnKey(*event)) return;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    // Enter that is held down would act on whatever row comes to lie under it.
    if (onKey && !(enter && event->isAutoRepeat())) onKey(keyCodeOf(*event));
    if (!enter) QTableView::keyPressEvent(event);
}

void ListGridView::keyboardSearch(const QString& text) {
    if (text.trimmed().isEmpty()) return;
    if (!onTyped || !onTyped(text)) QTableView::keyboardSearch(text);
}

// Whole rows are what the user goes through: the ends of a row are the list's.
QModelIndex ListGridView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (action == MoveHome || action == MoveEnd) modifiers |= Qt::ControlModifier;
    return QTableView::moveCursor(action, modifiers);
}

void ListGridView::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard && onMouse)
        onMouse(MouseButton::right, viewport()->mapToGlobal(visualRect(currentIndex()).center()));
    event->accept();
}

void ListGridView::resizeEvent(QResizeEvent* event) {
    const int top = rowViewportPosition(currentIndex().row());
    const bool shown = currentIndex().isValid() && top >= 0 && top < event->oldSize().height();
    QTableView::resizeEvent(event);
    if (!shown) return;
    const int across = horizontalScrollBar()->value();
    scrollTo(currentIndex());
    horizontalScrollBar()->setValue(across);
}

void ListGridView::updateGeometries() {
    QTableView::updateGeometries();
    alignTopRow(*this);
}

void ListGridView::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (dy == 0) return;
    alignTopRow(*this);
    if (onLook) onLook();
}

// At its end the table would align the last row with the bottom, and cut the one at the top.
bool alignTopRow(QTableView& grid) {
    QHeaderView* rows = grid.verticalHeader();
    const int before = rows->offset();
    rows->setOffsetToSectionPosition(grid.verticalScrollBar()->value());
    if (rows->offset() == before) return false;
    grid.viewport()->update();
    return true;
}

void ListGridView::focusInEvent(QFocusEvent* event) {
    const QScopedValueRollback<bool> guard(writing, true);
    const bool had = currentIndex().isValid();
    QTableView::focusInEvent(event);
    if (!had) selectionModel()->clearCurrentIndex();
}

}  // namespace orvenmod::platform::qt
