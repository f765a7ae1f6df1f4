#include "platform/qt/celleditors.h"

#include <QAbstractItemView>
#include <QAbstractProxyModel>
#include <QAction>
#include <QCalendarWidget>
#include <QCompleter>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QStringListModel>
#include <QVBoxLayout>
#include <QValidator>
#include <algorithm>

#include "platform/qt/icons.h"

namespace orvenmod::platform::qt {

namespace {

constexpr int kListRows = 12;

/// Keeps a refused letter out before it shows, the marked text still marked.
class CellValidator : public QValidator {
public:
    explicit CellValidator(TextCellEditor* editor) : QValidator(editor), editor_(*editor) {}
    State validate(QString& text, int&) const override {
        return !editor_.allowed || editor_.allowed(text) ? Acceptable : Invalid;
    }

private:
    TextCellEditor& editor_;
};

}  // namespace

TextCellEditor::TextCellEditor(QWidget* parent, bool withCalendar) : QLineEdit(parent), hasCalendar_(withCalendar) {
    setFrame(false);
    setValidator(new CellValidator(this));
    connect(this, &QLineEdit::textEdited, this, &TextCellEditor::edited);
    if (!withCalendar) return;
    QAction* calendar = addAction(icon("calendar"), TrailingPosition);
    calendar->setObjectName(QStringLiteral("calendar"));
    calendar->setToolTip(QStringLiteral("选择日期 (Alt+↓)"));
    calendar->setShortcut(Qt::ALT | Qt::Key_Down);
    calendar->setShortcutContext(Qt::WidgetShortcut);
    connect(calendar, &QAction::triggered, this, &TextCellEditor::openCalendar);
}

void TextCellEditor::show(const QString& text) {
    accepted_ = text;
    if (this->text() != text) setText(text);
}

// What stood there may break the rule already; then the validator lets all through, and this doesn't.
void TextCellEditor::edited(const QString& text) {
    if (offer(text)) {
        accepted_ = text;
        return;
    }
    const int cursor = cursorPosition() - static_cast<int>(text.size() - accepted_.size());
    setText(accepted_);
    setCursorPosition(std::max(cursor, 0));
}

void TextCellEditor::openCalendar() {
    auto* box = new QWidget(this, Qt::Popup);
    box->setAttribute(Qt::WA_DeleteOnClose);
    auto* calendar = new QCalendarWidget(box);
    calendar->setObjectName(QStringLiteral("calendarPopup"));
    calendar->setLocale(QLocale(QLocale::Chinese, QLocale::China));
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setFirstDayOfWeek(Qt::Monday);
    const QDate shown = QDate::fromString(text(), Qt::ISODate);
    if (shown.isValid()) calendar->setSelectedDate(shown);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(calendar);
    const auto take = [this, box](const QDate& date) {
        box->close();
        setText(date.toString(Qt::ISODate));
        edited(text());
        if (done) done();
    };
    connect(calendar, &QCalendarWidget::clicked, this, take);
    connect(calendar, &QCalendarWidget::activated, this, take);
    box->move(mapToGlobal(QPoint(0, height())));
    box->show();
    calendar->setFocus();
}

ItemCellEditor::ItemCellEditor(QWidget* parent, const QStringList& items) : QLineEdit(parent), items_(items) {
    setFrame(false);
    auto* list = new QCompleter(this);
    list->setModel(new QStringListModel(items_, list));
    list->setFilterMode(Qt::MatchContains);
    list->setCaseSensitivity(Qt::CaseInsensitive);
    list->setMaxVisibleItems(kListRows);
    list->popup()->setObjectName(QStringLiteral("items"));
    list->popup()->setFont(font());
    setCompleter(list);
    list->popup()->installEventFilter(this);
    connect(list, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            [this](const QModelIndex& shown) { picked(sourceRow(shown)); });
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) {
        touched = true;
        if (text.isEmpty()) openList();
    });
}

void ItemCellEditor::openList() {
    completer()->setCompletionPrefix(QString());
    completer()->complete();
    const qsizetype held = items_.indexOf(text());
    if (held >= 0)
        completer()->popup()->setCurrentIndex(completer()->completionModel()->index(static_cast<int>(held), 0));
}

void ItemCellEditor::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (!completer()->popup()->isVisible()) openList();
}

// Enter in the list takes the marked entry, or where none is the first shown, so that typing and Enter suffice. Tab is
// for the field, with the list closed.
bool ItemCellEditor::eventFilter(QObject* watched, QEvent* event) {
    QAbstractItemView* list = completer()->popup();
    if (watched == list && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
            list->hide();
            QCoreApplication::sendEvent(this, event);
            return true;
        }
        const int item = list->currentIndex().isValid() ? sourceRow(list->currentIndex()) : meant();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && item >= 0) {
            list->hide();
            picked(item);
            entered();
            return true;
        }
    }
    return QLineEdit::eventFilter(watched, event);
}

int ItemCellEditor::sourceRow(const QModelIndex& shown) const {
    return qobject_cast<QAbstractProxyModel*>(completer()->completionModel())->mapToSource(shown).row();
}

int ItemCellEditor::meant() const {
    const QString typed = text().trimmed();
    if (exact() >= 0) return exact();
    if (typed.isEmpty()) return -1;
    for (qsizetype item = 0; item < items_.size(); ++item) {
        if (items_[item].contains(typed, Qt::CaseInsensitive)) return static_cast<int>(item);
    }
    return -1;
}

}  // namespace orvenmod::platform::qt
