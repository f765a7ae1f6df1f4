#include "visitor.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPrintDialog>
#include <QPushButton>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>
#include <memory>
#include <stdexcept>

namespace orvenmod::sample {
namespace {

constexpr int kPatience = 5000;  // milliseconds for something that must come
constexpr int kLook = 20;

/// Calls `act` as soon as `ready` gives something, from the loop that is running then; never once `asker` has gone.
template <class Ready, class Act>
void whenReady(const QObject* asker, Ready ready, Act act, int waited = 0) {
    QTimer::singleShot(kLook, asker, [=] {
        if (auto* thing = ready()) {
            act(*thing);
        } else if (waited < kPatience) {
            whenReady(asker, ready, act, waited + kLook);
        }
    });
}

QMessageBox* shownBox() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    return box != nullptr && box->isVisible() ? box : nullptr;
}

void commit(QWidget& widget, const QString& text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&widget, &event);
}

QModelIndex cellOf(const QTableView& view, int row, int column) {
    QModelIndex index = view.model()->index(row - 1, column - 1);
    if (!index.isValid()) throw std::runtime_error("no cell in row " + std::to_string(row));
    return index;
}

}  // namespace

void answerBox(const QObject& asker, Album& album, QMessageBox::StandardButton answer, const std::string& name,
               const std::string& caption, const std::function<void(const std::string&)>& came) {
    whenReady(&asker, shownBox, [&album, answer, name, caption, came](QMessageBox& box) {
        QAbstractButton* button = box.button(answer);
        came(button != nullptr ? "" : box.text().toStdString());
        album.add(box, name, caption);
        if (button != nullptr)
            button->click();
        else
            box.reject();
    });
}

Visitor::Visitor(QWidget& window, Album& album) : window_(window), album_(album) {}

template <class Widget>
Widget& Visitor::find(const QString& name) const {
    auto* widget = window_.findChild<Widget*>(name);
    if (widget == nullptr)
        throw std::runtime_error("no control " + name.toStdString() + " in " + window_.objectName().toStdString());
    return *widget;
}

QPoint Visitor::rowCentre(QTableView& view, int row) const {
    const QModelIndex index = view.model()->index(row - 1, view.columnAt(20));
    if (!index.isValid()) throw std::runtime_error("no row " + std::to_string(row));
    view.scrollTo(index);
    return view.visualRect(index).center();
}

void Visitor::picture(const std::string& name, const std::string& caption) {
    QTest::qWait(kLook);
    album_.add(window_, name, caption);
}

void Visitor::click(const QString& button) { QTest::mouseClick(&find<QWidget>(button), Qt::LeftButton); }

void Visitor::type(const QString& edit, const QString& text) {
    auto& line = find<QLineEdit>(edit);
    if (!line.isEnabled()) throw std::runtime_error("nobody can type into " + edit.toStdString());
    line.setFocus();
    line.selectAll();
    QTest::keyClick(&line, Qt::Key_Delete);
    commit(line, text);
}

void Visitor::pick(const QString& combo, const QString& entry) {
    auto& box = find<QComboBox>(combo);
    const int row = box.findText(entry);
    if (row < 0) throw std::runtime_error("no entry " + entry.toStdString());
    box.setFocus();
    while (box.currentIndex() != row) {
        const int before = box.currentIndex();
        QTest::keyClick(&box, before < row ? Qt::Key_Down : Qt::Key_Up);
        if (box.currentIndex() == before) throw std::runtime_error("the list doesn't move");
    }
}

void Visitor::setDate(const QString& picker, int year, int month, int day) {
    find<QDateEdit>(picker).setDate(QDate(year, month, day));
}

void Visitor::clickNode(const QString& tree, const QString& textBegin) {
    auto& view = find<QTreeWidget>(tree);
    const auto items = view.findItems(textBegin, Qt::MatchStartsWith | Qt::MatchRecursive);
    if (items.isEmpty()) throw std::runtime_error("no node " + textBegin.toStdString());
    view.scrollToItem(items.first());
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualItemRect(items.first()).center());
}

void Visitor::clickRow(const QString& grid, int row) {
    auto& view = find<QTableView>(grid);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, rowCentre(view, row));
}

void Visitor::clickLastRow(const QString& grid) { clickRow(grid, find<QTableView>(grid).model()->rowCount()); }

void Visitor::clickHeading(const QString& grid, const QString& titleBegin) {
    auto& view = find<QTableView>(grid);
    QHeaderView& heading = *view.horizontalHeader();
    for (int column = 0; column < heading.count(); ++column) {
        const QString title = view.model()->headerData(column, Qt::Horizontal).toString();
        if (view.isColumnHidden(column) || !title.startsWith(titleBegin)) continue;
        const int middle = heading.sectionViewportPosition(column) + heading.sectionSize(column) / 2;
        QTest::mouseClick(heading.viewport(), Qt::LeftButton, {}, QPoint(middle, heading.height() / 2));
        return;
    }
    throw std::runtime_error("no heading " + titleBegin.toStdString());
}

void Visitor::doubleClickRow(const QString& grid, int row) {
    auto& view = find<QTableView>(grid);
    const QPoint place = rowCentre(view, row);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
}

void Visitor::keyOnGrid(const QString& grid, Qt::Key key) {
    auto& view = find<QTableView>(grid);
    view.setFocus();
    QTest::keyClick(&view, key);
}

void Visitor::clickCell(const QString& grid, int row, int column) {
    auto& view = find<QTableView>(grid);
    const QModelIndex index = cellOf(view, row, column);
    view.scrollTo(index);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
    QCoreApplication::processEvents();
}

// Keys are for an opened list first.
QWidget& Visitor::keyboard() const {
    if (QWidget* list = QApplication::activePopupWidget()) return *list;
    QWidget* focus = window_.focusWidget();
    return focus != nullptr ? *focus : window_;
}

void Visitor::typeKeys(const QString& text) {
    for (const QChar letter : text)
        QTest::sendKeyEvent(QTest::Click, &keyboard(), Qt::Key_unknown, QString(letter), Qt::NoModifier);
}

void Visitor::press(const QString& keys) {
    const QKeySequence sequence = QKeySequence::fromString(keys, QKeySequence::PortableText);
    if (sequence.isEmpty()) throw std::runtime_error("no such key: " + keys.toStdString());
    // Without a window manager nobody gives the window the keyboard back when a box closes.
    if (QApplication::activePopupWidget() == nullptr && !window_.isActiveWindow()) {
        window_.activateWindow();
        QCoreApplication::processEvents();
    }
    QTest::keyClick(&keyboard(), sequence[0].key(), sequence[0].keyboardModifiers());
    QCoreApplication::processEvents();
    // A button that is pressed by its letter stays down for a moment before it clicks.
    const QList<QPushButton*> buttons = window_.findChildren<QPushButton*>();
    const auto isUp = [](const QPushButton* button) { return !button->isDown(); };
    if (!QTest::qWaitFor([&] { return std::all_of(buttons.begin(), buttons.end(), isUp); }))
        throw std::runtime_error("a button stays down after " + keys.toStdString());
}

void Visitor::inputCell(const QString& grid, int row, int column, const QString& text) {
    clickCell(grid, row, column);
    typeKeys(text);
    press(QStringLiteral("Return"));
}

void Visitor::pickCell(const QString& grid, int row, int column, const QString& entry) {
    inputCell(grid, row, column, entry);
    if (cellOf(find<QTableView>(grid), row, column).data().toString() != entry)
        throw std::runtime_error("no entry " + entry.toStdString());
}

void Visitor::pictureRefusal(const QString& grid, const std::string& name, const std::string& caption) {
    const QList<QLabel*> hints = find<QTableView>(grid).window()->findChildren<QLabel*>(QStringLiteral("cellHint"));
    if (std::none_of(hints.begin(), hints.end(), [](const QLabel* hint) { return hint->isVisible(); }))
        throw std::runtime_error("nothing was refused for " + name);
    picture(name, caption);
}

void Visitor::pictureCalendar(const QString& grid, int row, int column, const std::string& name,
                              const std::string& caption) {
    clickCell(grid, row, column);
    press(QStringLiteral("F4"));
    QWidget* calendar = QApplication::activePopupWidget();
    if (calendar == nullptr) throw std::runtime_error("no calendar in row " + std::to_string(row));
    picture(name, caption);
    calendar->close();
    press(QStringLiteral("Esc"));
}

void Visitor::clickTool(const QString& key) {
    for (auto* action : window_.findChildren<QAction*>(key)) {
        action->trigger();
        return;
    }
    throw std::runtime_error("no button " + key.toStdString());
}

void Visitor::chooseTab(const QString& tabs, int page) {
    auto* bar = find<QWidget>(tabs).findChild<QTabBar*>();
    if (bar == nullptr) throw std::runtime_error("no tabs " + tabs.toStdString());
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(page).center());
}

void Visitor::pictureMenuOf(const QString& view, const std::string& name, const std::string& caption) {
    pictureNextMenu(name, caption);
    QTest::mouseClick(find<QAbstractScrollArea>(view).viewport(), Qt::RightButton, {}, QPoint(60, 36));
}

void Visitor::pictureNextMenu(const std::string& name, const std::string& caption) {
    whenReady(
        &asker_, [] { return QApplication::activePopupWidget(); },
        [this, name, caption](QWidget& menu) {
            album_.add(window_, name, caption);
            menu.close();
        });
}

void Visitor::pictureListOf(const QString& combo, const std::string& name, const std::string& caption) {
    auto& box = find<QComboBox>(combo);
    box.showPopup();
    picture(name, caption);
    box.hidePopup();
}

void Visitor::chooseMenu(const QString& action) { find<QAction>(action).trigger(); }

void Visitor::expectBox(QMessageBox::StandardButton answer, const std::string& name, const std::string& caption) {
    ++boxes_;
    answerBox(asker_, album_, answer, name, caption, [this, name](const std::string& other) {
        --boxes_;
        if (!other.empty() && otherBox_.empty()) otherBox_ = "instead of " + name + " came: " + other;
    });
}

void Visitor::chooseFile(const QString& path) {
    ++boxes_;
    const auto shown = []() -> QFileDialog* {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        return dialog != nullptr && dialog->isVisible() ? dialog : nullptr;
    };
    whenReady(&asker_, shown, [this, path](QFileDialog& dialog) {
        --boxes_;
        dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
        QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open), Qt::LeftButton);
    });
}

void Visitor::expectDialog(const QString& dialog, const std::string& name, const std::string& caption) {
    ++boxes_;
    const auto shown = [dialog]() -> QWidget* {
        QWidget* top = QApplication::activeModalWidget();
        return top != nullptr && top->objectName() == dialog && top->isVisible() ? top : nullptr;
    };
    whenReady(&asker_, shown, [this, name, caption](QWidget& widget) {
        --boxes_;
        QTest::qWait(10 * kLook);
        album_.add(widget, name, caption);
        widget.close();
    });
}

void Visitor::saveTo(const QString& file, const std::string& name, const std::string& caption) {
    ++boxes_;
    const auto shown = [] { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()); };
    whenReady(&asker_, shown, [this, file, name, caption](QFileDialog& dialog) {
        --boxes_;
        dialog.setDirectory(QFileInfo(file).absolutePath());
        dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(QFileInfo(file).fileName());
        QTest::qWait(kLook);
        album_.add(dialog, name, caption);
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
    });
}

void Visitor::printTo(const QString& file, const std::string& name, const std::string& caption) {
    ++boxes_;
    const auto shown = [] { return qobject_cast<QPrintDialog*>(QApplication::activeModalWidget()); };
    whenReady(&asker_, shown, [this, file, name, caption](QPrintDialog& dialog) {
        --boxes_;
        dialog.findChild<QLineEdit*>(QStringLiteral("filename"))->setText(file);
        QTest::qWait(kLook);
        album_.add(dialog, name, caption);
        dialog.accept();
    });
}

void Visitor::boxesDone() const {
    if (!otherBox_.empty()) throw std::runtime_error(otherBox_);
    if (boxes_ != 0) throw std::runtime_error("a box that was expected didn't come");
}

}  // namespace orvenmod::sample
