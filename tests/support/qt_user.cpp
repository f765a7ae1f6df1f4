#include "support/qt_user.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDateEdit>
#include <QHeaderView>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>
#include <QToolBar>
#include <QTreeWidget>
#include <algorithm>

#include "support/letters.h"

namespace orvenmod::test {

using namespace platform;

void settle() { QCoreApplication::processEvents(); }

void pressLetter(QWidget& target, const std::string& letter) {
    const bool plain = letter.size() == 1;
    const int key = plain ? std::toupper(static_cast<unsigned char>(letter.front())) : Qt::Key_unknown;
    QTest::sendKeyEvent(QTest::Click, &target, static_cast<Qt::Key>(key), QString::fromStdString(letter),
                        Qt::NoModifier);
}

namespace {

/// The text that a desktop's keyboard sends with a key that writes nothing.
QString controlCharacter(Qt::Key key) {
    if (key == Qt::Key_Escape) return QStringLiteral("\x1b");
    if (key == Qt::Key_Backspace) return QStringLiteral("\b");
    return key == Qt::Key_Delete ? QStringLiteral("\x7f") : QString();
}

}  // namespace

void QtUser::stop(const std::string& why) const {
    ADD_FAILURE() << window_.name() << ": " << why;
    throw QtStepStopped();
}

void QtUser::requireFront() const {
    if (!window_.shown()) stop("the window is closed, no user can act in it");
    if (QApplication::activeModalWidget() != &root_) stop("another window lies in front");
    // Without a window manager nobody gives the window the keyboard back when a list or a menu closes.
    if (QApplication::activePopupWidget() == nullptr && !root_.isActiveWindow()) {
        root_.activateWindow();
        settle();
    }
}

void QtUser::requireReach(const QWidget* widget, const std::string& shown) const {
    if (widget == nullptr) stop("no such control for this step: " + shown);
    if (!widget->isVisible()) stop(shown + " is not in sight");
    if (!widget->isEnabled()) stop(shown + " is disabled");
}

QTableView& QtUser::reachRow(const std::string& grid, int row) {
    auto& view = reach<QTableView>(grid);
    if (row < 0 || row > view.model()->rowCount()) stop(grid + " has no row " + std::to_string(row));
    return view;
}

QTableView& QtUser::reachCell(const std::string& grid, int column, int row) {
    auto& view = reach<QTableView>(grid);
    const std::string place = " column " + std::to_string(column) + " row " + std::to_string(row);
    if (!view.model()->index(row - 1, column - 1).isValid()) stop(grid + " has no" + place);
    if (view.isColumnHidden(column - 1)) stop(grid + place + " is hidden");
    return view;
}

QPoint QtUser::spot(QAbstractItemView& view, const QModelIndex& index) const {
    view.scrollTo(index);
    const QRect place = view.visualRect(index) & view.viewport()->rect();
    if (place.isEmpty()) stop(view.objectName().toStdString() + " doesn't show that item");
    return place.center();
}

int QtUser::shownColumn(const QTableView& view) {
    for (int column = 0; column < view.model()->columnCount(); ++column) {
        if (!view.isColumnHidden(column)) return column;
    }
    return -1;
}

void QtUser::click(const std::string& button, int index) {
    QTest::mouseClick(&reach<QPushButton>(button, index), Qt::LeftButton);
    settle();
}

void QtUser::clickTool(const std::string& key) {
    requireFront();
    for (QToolBar* bar : root_.findChildren<QToolBar*>()) {
        auto* action = bar->findChild<QAction*>(QString::fromStdString(key));
        if (action == nullptr) continue;
        QWidget* button = bar->widgetForAction(action);
        if (!bar->isEnabled() || !button->isVisible()) stop("the toolbar button " + key + " is not in reach");
        if (!action->isEnabled()) stop("the toolbar button " + key + " is disabled");
        QTest::mouseClick(button, Qt::LeftButton);
        settle();
        return;
    }
    stop("no such toolbar button: " + key);
}

void QtUser::press(const std::string& shortcut) {
    requireFront();
    const QString key = QString::fromStdString(shortcut).replace("Enter", "Return").replace("Page", "Pg");
    const QKeySequence sequence = QKeySequence::fromString(key, QKeySequence::PortableText);
    if (sequence.isEmpty() || sequence[0].key() == Qt::Key_unknown) stop("no such key: " + shortcut);
    // A letter with Alt may open a menu of the bar, and then the next keys are for it.
    const bool opens = sequence[0].keyboardModifiers().testFlag(Qt::AltModifier);
    if (opens) menus_.next = QtMenuPlan::Next::leave;
    const QString character = controlCharacter(sequence[0].key());
    if (character.isEmpty())
        QTest::keyClick(&keyTarget(), sequence[0].key(), sequence[0].keyboardModifiers());
    else
        QTest::sendKeyEvent(QTest::Click, &keyTarget(), sequence[0].key(), character, sequence[0].keyboardModifiers());
    settle();
    if (opens) finishClick();
    if (opens) menus_.next = QtMenuPlan::Next::fail;
}

// A button that is pressed by its letter stays down for a moment before it clicks.
void QtUser::finishClick() {
    const QList<QPushButton*> buttons = root_.findChildren<QPushButton*>();
    const auto isDown = [](const QPushButton* button) { return button->isDown(); };
    const auto allUp = [&] { return std::none_of(buttons.begin(), buttons.end(), isDown); };
    if (!QTest::qWaitFor(allUp)) stop("a button stays down");
    settle();
}

QWidget& QtUser::keyTarget() {
    if (QWidget* popUp = QApplication::activePopupWidget()) return *popUp;
    QWidget* focus = root_.focusWidget();
    return focus != nullptr ? *focus : root_;
}

void QtUser::type(const std::string& edit, const std::string& text, int index) {
    auto& field = reach<QLineEdit>(edit, index);
    QTest::mouseClick(&field, Qt::LeftButton);
    QTest::keyClick(&field, Qt::Key_Home);
    QTest::keyClick(&field, Qt::Key_End, Qt::ShiftModifier);
    if (text.empty()) QTest::keyClick(&field, Qt::Key_Delete);
    for (const std::string& letter : lettersOf(text))
        pressLetter(field, letter);
    settle();
}

void QtUser::pick(const std::string& combo, int row, int index) {
    auto& box = reach<QComboBox>(combo, index);
    if (row < 0 || row >= box.count()) stop(combo + " has no row " + std::to_string(row));
    box.setFocus(Qt::MouseFocusReason);
    QTest::keyClick(&box, Qt::Key_F4);
    if (!box.view()->isVisible()) stop(combo + " doesn't open");
    const QPoint place = spot(*box.view(), box.model()->index(row, box.modelColumn(), box.rootModelIndex()));
    QTest::mouseClick(box.view()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    settle();
}

void QtUser::pickDate(const std::string& picker, const Date& date) {
    auto& field = reach<QDateEdit>(picker);
    field.setFocus(Qt::MouseFocusReason);
    QTest::keyClick(&field, Qt::Key_F4);
    QCalendarWidget* calendar = field.calendarWidget();
    if (!calendar->isVisible()) stop(picker + " doesn't open");
    calendar->setSelectedDate(QDate(date.year, date.month, date.day));
    QTest::keyClick(calendar->findChild<QTableView*>(), Qt::Key_Return);
    settle();
    const QDate wanted(date.year, date.month, date.day);
    if (field.date() != wanted) stop(picker + " doesn't take " + toText(date));
}

void QtUser::chooseTab(const std::string& tabs, int tab) {
    auto& widget = reach<QWidget>(tabs);
    auto* bar = widget.findChild<QTabBar*>(QString(), Qt::FindDirectChildrenOnly);
    if (bar == nullptr || tab < 0 || tab >= bar->count()) stop(tabs + " has no tab " + std::to_string(tab));
    if (!bar->isTabEnabled(tab)) stop(tabs + " has tab " + std::to_string(tab) + " disabled");
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(tab).center());
    settle();
}

void QtUser::closeWindow() {
    requireFront();
    root_.close();
    settle();
}

void QtUser::resizeWindow(float width, float height) {
    requireFront();
    if (root_.minimumSize() == root_.maximumSize()) stop("the window's size is fixed");
    constexpr float kTwipsPerPixel = 15;
    const QSize wanted(qRound(width / kTwipsPerPixel), qRound(height / kTwipsPerPixel));
    const QWidget* area = root_.centralWidget();
    root_.resize(root_.size() + wanted - area->size());
    settle();
}

void QtUser::rest() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* ticker = window->findChild<QTimer*>(QStringLiteral("ticker"), Qt::FindDirectChildrenOnly);
        if (ticker == nullptr || !ticker->isActive()) continue;
        QTimerEvent due(ticker->timerId());
        QCoreApplication::sendEvent(ticker, &due);
    }
    settle();
}

}  // namespace orvenmod::test
