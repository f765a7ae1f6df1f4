#include "platform/qt/inputcontrols.h"

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <limits>
#include <stdexcept>

#include "platform/qt/keycodes.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

void EditWidget::keyPressEvent(QKeyEvent* event) {
    if (onKey) onKey(keyCodeOf(*event));
    QLineEdit::keyPressEvent(event);
    // Enter is the field's, not its container's.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) event->accept();
}

void ComboWidget::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

void DateWidget::keyPressEvent(QKeyEvent* event) {
    const bool open =
        event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier));
    if (!open) {
        QDateEdit::keyPressEvent(event);
        return;
    }
    // Qt opens it for a click on the arrow alone.
    const QPointF arrow(width() - height() / 2.0, height() / 2.0);
    QMouseEvent press(QEvent::MouseButtonPress, arrow, mapToGlobal(arrow), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    mousePressEvent(&press);
}

void DateWidget::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QDateEdit::wheelEvent(event);
    } else {
        event->ignore();
    }
}

QtEdit::QtEdit(Core& core, const ControlDesign& design, QWidget* parent)
    : QtControl(design, new EditWidget(parent)), edit_(static_cast<EditWidget*>(body_.widget())) {
    edit_->setMaxLength(std::numeric_limits<int>::max() / 4);
    edit_->onKey = [this, &core](int code) { core.guard([this, code] { keyDown.raise(code); }); };
    QObject::connect(edit_, &QLineEdit::textEdited, edit_, [this, &core] { core.guard([this] { change.raise(); }); });
}

std::string QtEdit::text() const { return fromQt(edit_->text()); }

void QtEdit::setText(const std::string& text) {
    edit_->setText(toQt(text));  // emits no textEdited
    if (!edit_->hasFocus()) edit_->setCursorPosition(0);
    change.raise();
}

QtCombo::QtCombo(Core& core, const ControlDesign& design, QWidget* parent)
    : QtControl(design, new ComboWidget(parent)), core_(core), combo_(static_cast<ComboWidget*>(body_.widget())) {
    combo_->setFocusPolicy(Qt::StrongFocus);
    combo_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo_->setMaxVisibleItems(model_.listRows());
    body_.fixHeight(kFieldHeight);
    QObject::connect(combo_, &QComboBox::activated, combo_, [this](int row) { picked(row); });
}

void QtCombo::clear() {
    const QSignalBlocker quiet(combo_);
    model_.clear();
    combo_->clear();
}

void QtCombo::addRow(const std::vector<std::string>& cells) {
    const QSignalBlocker quiet(combo_);
    model_.addRow(cells);
    combo_->addItem(cells.empty() ? QString() : toQt(cells.front()));
    combo_->setCurrentIndex(model_.selected());  // the widget selects its first row by itself
}

void QtCombo::select(int row) {
    model_.select(row);
    {
        const QSignalBlocker quiet(combo_);
        combo_->setCurrentIndex(row);
    }
    combo_->update();
    selectionChange.raise();
}

void QtCombo::setListRows(int rows) {
    model_.setListRows(rows);
    combo_->setMaxVisibleItems(std::max(rows, 1));
}

void QtCombo::picked(int row) {
    if (row == model_.selected()) return;
    model_.select(row);
    core_.guard([this] { selectionChange.raise(); });
}

QtDatePicker::QtDatePicker(const ControlDesign& design, QWidget* parent)
    : QtControl(design, new DateWidget(parent)), picker_(static_cast<DateWidget*>(body_.widget())) {
    picker_->setLocale(QLocale(QLocale::Chinese, QLocale::China));
    picker_->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
    picker_->setCalendarPopup(true);
    picker_->setDateRange(QDate(1601, 1, 1), QDate(9999, 12, 31));
    picker_->setDate(QDate::currentDate());
    picker_->calendarWidget()->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    picker_->calendarWidget()->setFirstDayOfWeek(Qt::Monday);
}

Date QtDatePicker::value() const {
    const QDate date = picker_->date();
    return {date.year(), date.month(), date.day()};
}

void QtDatePicker::setValue(const Date& value) {
    const QDate date(value.year, value.month, value.day);
    if (!date.isValid() || date < picker_->minimumDate()) throw std::out_of_range("no such day: " + toText(value));
    picker_->setDate(date);
}

}  // namespace orvenmod::platform::qt
