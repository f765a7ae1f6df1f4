#include "platform/qt/celleditors.h"

#include <QAbstractItemView>
#include <QAbstractListModel>
#include <QAbstractProxyModel>
#include <QAction>
#include <QCalendarWidget>
#include <QCompleter>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "platform/qt/icons.h"

namespace orvenmod::platform::qt {

namespace {

constexpr int kListRows = 12;

/// The entries as the list shows them; typing finds them by their own texts.
class ItemList : public QAbstractListModel {
public:
    ItemList(QObject* parent, const QStringList& items, const QStringList& shown)
        : QAbstractListModel(parent), items_(items), shown_(shown) {}
    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(items_.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::DisplayRole) return shown_.at(index.row());
        return role == Qt::EditRole ? items_.at(index.row()) : QVariant();
    }

private:
    QStringList items_;
    QStringList shown_;
};

bool isCommand(const QKeyEvent& event) {
    const bool alone = event.key() == Qt::Key_Control || event.key() == Qt::Key_Alt;
    return !alone && (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier));
}

}  // namespace

TextCellEditor::TextCellEditor(QWidget* parent, bool withCalendar) : CellEditor(parent), hasCalendar_(withCalendar) {
    setFrame(false);
    if (!withCalendar) return;
    QAction* calendar = addAction(icon("calendar"), TrailingPosition);
    calendar->setObjectName(QStringLiteral("calendar"));
    calendar->setToolTip(QStringLiteral("选择日期 (Alt+↓)"));
    calendar->setShortcut(Qt::ALT | Qt::Key_Down);
    calendar->setShortcutContext(Qt::WidgetShortcut);
    connect(calendar, &QAction::triggered, this, &TextCellEditor::openCalendar);
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
        emit textEdited(text());
        if (done) done();
    };
    connect(calendar, &QCalendarWidget::clicked, this, take);
    connect(calendar, &QCalendarWidget::activated, this, take);
    box->move(mapToGlobal(QPoint(0, height())));
    box->show();
    calendar->setFocus(Qt::PopupFocusReason);
}

ItemCellEditor::ItemCellEditor(QWidget* parent, const QStringList& items, const QStringList& shown)
    : CellEditor(parent) {
    setFrame(false);
    auto* list = new QCompleter(this);
    list->setModel(new ItemList(list, items, shown));
    list->setFilterMode(Qt::MatchContains);
    list->setCaseSensitivity(Qt::CaseInsensitive);
    list->setMaxVisibleItems(kListRows);
    list->setWrapAround(false);  // past its ends the list would show what was typed, with the last entry still marked
    list->popup()->setObjectName(QStringLiteral("items"));
    list->popup()->setFont(font());
    setCompleter(list);
    list->popup()->installEventFilter(this);
    connect(list, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            [this](const QModelIndex& index) { picked(sourceRow(index)); });
    connect(list, qOverload<const QModelIndex&>(&QCompleter::highlighted), this, [this](const QModelIndex& index) {
        if (!index.isValid()) return;
        marked(sourceRow(index));
        // Once the entry's text stands in the field: what is typed next replaces it.
        QMetaObject::invokeMethod(this, &QLineEdit::selectAll, Qt::QueuedConnection);
    });
    connect(this, &QLineEdit::textEdited, this, [this](const QString& text) {
        typed_ = true;
        if (text.isEmpty()) QMetaObject::invokeMethod(this, &ItemCellEditor::listAll, Qt::QueuedConnection);
    });
}

void ItemCellEditor::openList() {
    completer()->setCompletionPrefix(typed_ ? text().trimmed() : QString());
    if (completer()->completionCount() == 0) completer()->setCompletionPrefix(QString());
    completer()->complete();
    const QModelIndex entry = completer()->model()->index(held(), 0);
    if (!entry.isValid()) return;
    auto* shown = qobject_cast<QAbstractProxyModel*>(completer()->completionModel());
    completer()->popup()->setCurrentIndex(shown->mapFromSource(entry));
}

// The completer shuts its list after the letter that empties the field.
void ItemCellEditor::listAll() {
    if (isVisible() && text().isEmpty()) openList();
}

void ItemCellEditor::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (!completer()->popup()->isVisible()) openList();
}

// Tab is for the field, and so are a command's keys, with the list closed.
bool ItemCellEditor::eventFilter(QObject* watched, QEvent* event) {
    QAbstractItemView* list = completer()->popup();
    if (watched != list) return QLineEdit::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress && keyInList(*static_cast<QKeyEvent*>(event))) return true;
    if (event->type() == QEvent::ShortcutOverride && isCommand(*static_cast<QKeyEvent*>(event))) list->hide();
    return QLineEdit::eventFilter(watched, event);
}

bool ItemCellEditor::keyInList(QKeyEvent& event) {
    QAbstractItemView* list = completer()->popup();
    switch (event.key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            list->hide();
            QCoreApplication::sendEvent(this, &event);
            return true;
        case Qt::Key_Escape:
            list->hide();
            undone();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter: {
            const QModelIndex entry = list->currentIndex();
            const int item = entry.isValid() ? sourceRow(entry) : -1;
            list->hide();
            if (item < 0) {
                QCoreApplication::sendEvent(this, &event);
                return true;
            }
            picked(item);
            entered();
            return true;
        }
        default:
            return false;
    }
}

int ItemCellEditor::sourceRow(const QModelIndex& shown) const {
    return qobject_cast<QAbstractProxyModel*>(completer()->completionModel())->mapToSource(shown).row();
}

}  // namespace orvenmod::platform::qt
