// The scripted user's steps in grids, trees and menus.
#include <gtest/gtest.h>

#include <QAbstractProxyModel>
#include <QApplication>
#include <QClipboard>
#include <QCompleter>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QMouseEvent>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>
#include <algorithm>

#include "platform/qt/keycodes.h"
#include "support/letters.h"
#include "support/qt_user.h"

namespace orvenmod::test {

using namespace platform;

namespace {

QTreeWidgetItem* nodeOf(QTreeWidget& tree, const std::string& key) {
    const QString wanted = QString::fromStdString(key);
    for (QTreeWidgetItemIterator each(&tree); *each != nullptr; ++each) {
        if ((*each)->data(0, Qt::UserRole).toString() == wanted) return *each;
    }
    return nullptr;
}

/// The menus to open from the bar, outermost first.
QList<QMenu*> menusAbove(QWidget& root, QAction& entry) {
    QList<QMenu*> path;
    for (QAction* below = &entry; below != nullptr;) {
        QMenu* holder = nullptr;
        for (QMenu* menu : root.findChildren<QMenu*>()) {
            // The bar and the toolbars have menus of their own for what doesn't fit; ours have names.
            if (!menu->objectName().isEmpty() && menu->actions().contains(below)) holder = menu;
        }
        if (holder != nullptr) path.prepend(holder);
        below = holder != nullptr ? holder->menuAction() : nullptr;
    }
    return path;
}

}  // namespace

void QtUser::chooseMenu(const std::string& menu) {
    requireFront();
    auto* bar = root_.menuBar();
    auto* entry = bar->findChild<QAction*>(QString::fromStdString(menu));
    if (entry == nullptr) stop("no such menu: " + menu);
    bool reachable = entry->isVisible() && entry->isEnabled();
    for (const QMenu* above : menusAbove(root_, *entry))
        reachable = reachable && above->menuAction()->isVisible() && above->menuAction()->isEnabled();
    if (!reachable) stop("the menu " + menu + " is hidden or disabled");
    menus_.next = QtMenuPlan::Next::leave;
    openMenus(*entry);
    menus_.next = QtMenuPlan::Next::fail;
    settle();
}

void QtUser::openMenus(QAction& entry) {
    auto* bar = root_.menuBar();
    const QList<QMenu*> path = menusAbove(root_, entry);
    if (path.isEmpty()) {
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(&entry).center());
        return;
    }
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->actionGeometry(path.front()->menuAction()).center());
    for (qsizetype place = 0; place < path.size(); ++place) {
        if (!path[place]->isVisible()) stop("the menu " + path[place]->objectName().toStdString() + " doesn't open");
        path[place]->setActiveAction(place + 1 < path.size() ? path[place + 1]->menuAction() : &entry);
    }
    QTest::keyClick(path.back(), Qt::Key_Return);
}

/// The middle of a node, scrolled into sight, with the nodes above it opened.
QPoint QtUser::nodeSpot(QTreeWidget& tree, const std::string& key) {
    QTreeWidgetItem* node = nodeOf(tree, key);
    const std::string name = tree.objectName().toStdString();
    if (node == nullptr) stop(name + " has no node " + key);
    for (QTreeWidgetItem* up = node->parent(); up != nullptr; up = up->parent())
        up->setExpanded(true);
    settle();
    tree.scrollToItem(node);
    const QRect place = tree.visualItemRect(node) & tree.viewport()->rect();
    if (place.isEmpty()) stop(name + " doesn't show the node " + key);
    return place.center();
}

void QtUser::clickNode(const std::string& tree, const std::string& key) {
    auto& widget = reach<QTreeWidget>(tree);
    QTest::mouseClick(widget.viewport(), Qt::LeftButton, Qt::NoModifier, nodeSpot(widget, key));
    settle();
}

void QtUser::rightClick(const std::string& control, const std::string& chooseMenu) {
    auto& view = reach<QAbstractItemView>(control);
    const QModelIndex current = view.currentIndex();
    // Where nothing is marked, on the empty ground below the last item.
    QPoint place(view.viewport()->width() / 2, view.viewport()->height() - 2);
    if (current.isValid()) place = spot(view, current);
    rightClickAt(view, place, chooseMenu);
}

void QtUser::rightClickNode(const std::string& tree, const std::string& key, const std::string& chooseMenu) {
    auto& widget = reach<QTreeWidget>(tree);
    rightClickAt(widget, nodeSpot(widget, key), chooseMenu);
}

void QtUser::rightClickRow(const std::string& grid, int row, const std::string& chooseMenu) {
    auto& view = reachRow(grid, row);
    rightClickAt(view, spot(view, view.model()->index(row - 1, shownColumn(view))), chooseMenu);
}

void QtUser::rightClickAt(QAbstractItemView& view, const QPoint& place, const std::string& chooseMenu) {
    menus_ = {QtMenuPlan::Next::choose, chooseMenu};
    QTest::mouseClick(view.viewport(), Qt::RightButton, Qt::NoModifier, place);
    settle();
    const bool missed = menus_.next == QtMenuPlan::Next::choose && !chooseMenu.empty();
    menus_ = {};
    if (missed) stop("no menu popped up over " + view.objectName().toStdString());
}

void QtUser::clickRow(const std::string& grid, int row, Qt::KeyboardModifiers modifiers) {
    auto& view = reachRow(grid, row);
    if (row == 0) stop("the heading of " + grid + " can't be selected");
    const int column = shownColumn(view);
    if (column < 0) stop(grid + " shows no column");
    QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, spot(view, view.model()->index(row - 1, column)));
    view.viewport()->repaint();  // the user sees the row before he does anything else
}

void QtUser::selectRow(const std::string& grid, int row) {
    clickRow(grid, row, Qt::NoModifier);
    settle();
}

void QtUser::alsoSelectRow(const std::string& grid, int row) {
    clickRow(grid, row, Qt::ControlModifier);
    settle();
}

void QtUser::selectCell(const std::string& grid, int row, int column) {
    auto& view = reachRow(grid, row);
    if (row == 0 || view.isColumnHidden(column)) stop(grid + " shows no such cell");
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                      spot(view, view.model()->index(row - 1, column)));
    settle();
}

QPoint QtUser::headingSpot(QTableView& view, int column) const {
    QHeaderView* heading = view.horizontalHeader();
    if (view.isColumnHidden(column)) stop(view.objectName().toStdString() + " hides that column");
    const int left = heading->sectionViewportPosition(column);
    const int middle = std::clamp(left + heading->sectionSize(column) / 2, 0, heading->viewport()->width() - 1);
    if (heading->logicalIndexAt(middle) != column) stop(view.objectName().toStdString() + " doesn't show that heading");
    return {middle, heading->height() / 2};
}

void QtUser::clickHeading(const std::string& grid, int column) {
    auto& view = reach<QTableView>(grid);
    QTest::mouseClick(view.horizontalHeader()->viewport(), Qt::LeftButton, Qt::NoModifier, headingSpot(view, column));
    settle();
}

void QtUser::rightClickHeading(const std::string& grid, int column, const std::string& chooseMenu) {
    auto& view = reach<QTableView>(grid);
    const QPoint place = headingSpot(view, column);
    menus_ = {QtMenuPlan::Next::choose, chooseMenu};
    QWidget* heading = view.horizontalHeader()->viewport();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, heading->mapToGlobal(place));
    QApplication::sendEvent(heading, &event);
    settle();
    const bool missed = menus_.next == QtMenuPlan::Next::choose && !chooseMenu.empty();
    menus_ = {};
    if (missed) stop("no menu popped up over the heading of " + grid);
}

void QtUser::dragHeading(const std::string& grid, int column, int ontoColumn) {
    auto& view = reach<QTableView>(grid);
    const QPoint from = headingSpot(view, column);
    const QPoint onto = headingSpot(view, ontoColumn);
    QWidget* heading = view.horizontalHeader()->viewport();
    const auto move = [&](QEvent::Type type, const QPoint& at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, at, heading->mapToGlobal(at), button, held, Qt::NoModifier);
        QApplication::sendEvent(heading, &event);
    };
    // Past the middle of the other heading, which is where the two change places.
    const int past = onto.x() + (onto.x() > from.x() ? 5 : -5);
    move(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    for (int part = 1; part <= 4; ++part)
        move(QEvent::MouseMove, {from.x() + (past - from.x()) * part / 4, onto.y()}, Qt::NoButton, Qt::LeftButton);
    move(QEvent::MouseButtonRelease, {past, onto.y()}, Qt::LeftButton, Qt::NoButton);
    settle();
}

void QtUser::pressForMenu(const std::string& shortcut, const std::string& chooseMenu) {
    menus_ = {QtMenuPlan::Next::choose, chooseMenu};
    press(shortcut);
    const bool missed = menus_.next == QtMenuPlan::Next::choose && !chooseMenu.empty();
    menus_ = {};
    if (missed) stop("no menu popped up by " + shortcut);
}

void QtUser::doubleClickRow(const std::string& grid, int row) {
    auto& view = reachRow(grid, row);
    if (row == 0) {
        QHeaderView* heading = view.horizontalHeader();
        const int column = shownColumn(view);
        const int x = column < 0 ? heading->width() / 2
                                 : heading->sectionViewportPosition(column) + heading->sectionSize(column) / 2;
        const QPoint place(x, heading->height() / 2);
        QTest::mouseClick(heading->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(heading->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    } else {
        clickRow(grid, row, Qt::NoModifier);
        const QPoint place = spot(view, view.model()->index(row - 1, shownColumn(view)));
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, place);
    }
    settle();
}

void QtUser::keyOnGrid(const std::string& grid, int key) {
    auto& view = reach<QTableView>(grid);
    view.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&view, static_cast<Qt::Key>(platform::qt::keyOfCode(key)));
    settle();
}

void QtUser::clickInto(QTableView& view, const QModelIndex& index) {
    if (auto* field = qobject_cast<QLineEdit*>(view.indexWidget(index))) {
        QTest::mouseClick(field, Qt::LeftButton);
        field->selectAll();
        return;
    }
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, spot(view, index));
    if (view.currentIndex() != index) stop("the open cell of " + view.objectName().toStdString() + " isn't left");
}

void QtUser::typeCell(const std::string& grid, int column, int row, const std::string& text) {
    auto& view = reachCell(grid, column, row);
    const QModelIndex index = view.model()->index(row - 1, column - 1);
    const auto& cells = control<EntryGrid>(grid);
    if (!index.flags().testFlag(Qt::ItemIsEditable) || cells.cellType(column, row) == CellType::combo) {
        stop(grid + " takes no text in column " + std::to_string(column) + " row " + std::to_string(row));
    }
    clickInto(view, index);
    const QPersistentModelIndex cell(index);
    if (text.empty()) QTest::keyClick(&keyTarget(), Qt::Key_Delete);
    typeKeys(text);
    if (QWidget* field = view.indexWidget(index)) {
        // Enter keeps what was typed and moves on; the user then comes back to the cell.
        QTest::keyClick(field, Qt::Key_Return);
        if (cell.isValid() && view.currentIndex() != cell)
            QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, spot(view, cell));
    }
    settle();
}

// The first letter opens the cell's field, which has the focus from then on.
void QtUser::typeKeys(const std::string& text) {
    requireFront();
    for (const std::string& letter : lettersOf(text))
        pressLetter(keyTarget(), letter);
    settle();
}

void QtUser::paste(const std::string& text) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
    press("Ctrl+V");
}

std::string QtUser::copiedHtml() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data != nullptr ? data->html().toStdString() : "";
}

std::string QtUser::copied() { return QGuiApplication::clipboard()->text().toStdString(); }

std::vector<std::string> QtUser::openedList() {
    const auto* list = qobject_cast<QAbstractItemView*>(QApplication::activePopupWidget());
    std::vector<std::string> texts;
    for (int row = 0; list != nullptr && row < list->model()->rowCount(); ++row)
        texts.push_back(list->model()->index(row, 0).data().toString().toStdString());
    return texts;
}

void QtUser::pickCell(const std::string& grid, int column, int row, int item) {
    auto& view = reachCell(grid, column, row);
    const QModelIndex index = view.model()->index(row - 1, column - 1);
    const std::string place = grid + " column " + std::to_string(column) + " row " + std::to_string(row);
    const auto& cells = control<EntryGrid>(grid);
    if (cells.cellType(column, row) != CellType::combo) stop(place + " is no combo");
    if (cells.locked(column, row)) stop(place + " is locked");
    clickInto(view, index);
    auto* field = qobject_cast<QLineEdit*>(view.indexWidget(index));
    if (field == nullptr || field->completer() == nullptr) stop(place + " doesn't open");
    QAbstractItemView* list = field->completer()->popup();
    const auto* shown = qobject_cast<QAbstractProxyModel*>(field->completer()->completionModel());
    const QModelIndex entry = shown->mapFromSource(field->completer()->model()->index(item, 0));
    if (!entry.isValid() || !list->isVisible()) {
        list->hide();
        stop(place + " has no entry " + std::to_string(item));
    }
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, spot(*list, entry));
    settle();
}

void QtUser::clickCell(const std::string& grid, int column, int row) {
    auto& view = reachCell(grid, column, row);
    const QModelIndex index = view.model()->index(row - 1, column - 1);
    const auto& cells = control<EntryGrid>(grid);
    const CellType type = cells.cellType(column, row);
    if (cells.locked(column, row) && (type == CellType::button || type == CellType::checkBox)) {
        stop(grid + " column " + std::to_string(column) + " row " + std::to_string(row) + " is locked");
    }
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, spot(view, index));
    // A click on a choice opens its list; this user only came to the cell.
    for (int open = 0; open < 2 && type == CellType::combo && view.indexWidget(index) != nullptr; ++open)
        QTest::keyClick(&keyTarget(), Qt::Key_Escape);
    settle();
}

}  // namespace orvenmod::test
