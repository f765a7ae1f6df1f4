// The scripted user of the Qt toolkit: works the real widgets with mouse and keyboard events, found by their names as a
// test robot finds them. Acts only on what a user could reach: anything else fails the test and ends the script of that
// window.
#pragma once

#include <QMainWindow>
#include <QModelIndex>
#include <QPoint>
#include <string>

#include "support/scriptbook.h"
#include "support/user.h"

class QAbstractItemView;
class QAction;
class QTableView;
class QTreeWidget;

namespace orvenmod::test {

/// Thrown when a step can't be done; the failure is told already.
struct QtStepStopped {};

/// Lets what a step set off come to rest: what was posted is delivered, nothing is waited for.
void settle();

/// One letter, of whatever script, as the keyboard or the input method gives it.
void pressLetter(QWidget& target, const std::string& letter);

/// What the watcher does with the next menu that shows.
struct QtMenuPlan {
    enum class Next { fail, leave, choose };
    Next next = Next::fail;
    std::string entry;  ///< to choose, "" closes the menu
};

class QtUser final : public User {
public:
    QtUser(platform::Window& window, QMainWindow& root, ScriptBook& book, QtMenuPlan& menus)
        : window_(window), root_(root), book_(book), menus_(menus) {}

#include "support/usersteps.inc"

private:
    [[noreturn]] void stop(const std::string& why) const;
    void requireFront() const;
    /// The widget of that name, in reach of the user.
    template <class Widget>
    Widget& reach(const std::string& name, int index = -1) {
        requireFront();
        const std::string shown = index < 0 ? name : name + "(" + std::to_string(index) + ")";
        auto* widget = root_.findChild<Widget*>(QString::fromStdString(shown));
        requireReach(widget, shown);
        return *widget;
    }
    void requireReach(const QWidget* widget, const std::string& shown) const;
    QTableView& reachRow(const std::string& grid, int row);
    QTableView& reachCell(const std::string& grid, int column, int row);
    QPoint nodeSpot(QTreeWidget& tree, const std::string& key);
    /// A right click there, and the choice from the menu that pops up.
    void rightClickAt(QAbstractItemView& view, const QPoint& place, const std::string& chooseMenu);
    /// Comes to the cell by a click, or stays in it where it is open.
    void clickInto(QTableView& view, const QModelIndex& index);
    void clickRow(const std::string& grid, int row, Qt::KeyboardModifiers modifiers);
    /// The middle of an item in its view's viewport, scrolled into sight.
    QPoint spot(QAbstractItemView& view, const QModelIndex& index) const;
    /// The middle of a heading, scrolled into sight.
    QPoint headingSpot(QTableView& view, int column) const;
    static int shownColumn(const QTableView& view);
    void openMenus(QAction& entry);
    QWidget& keyTarget();
    void finishClick();

    platform::Window& window_;
    QMainWindow& root_;
    ScriptBook& book_;
    QtMenuPlan& menus_;
};

}  // namespace orvenmod::test
