// The field in a cell tells what is done in it, and decides nothing: texts go to the model, ways out to the view. A
// field that loses the keyboard to a box, a menu or another program stays as it is, since the keyboard comes back; one
// that loses it to another control takes over, and gets the keyboard back where the cell refuses.
#include "platform/qt/entrydelegate.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include "platform/qt/celleditors.h"
#include "platform/qt/entrygridview.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

namespace {

QStringList toQt(const std::vector<std::string>& texts) {
    QStringList all;
    for (const std::string& text : texts)
        all << qt::toQt(text);
    return all;
}

}  // namespace

EntryDelegate::EntryDelegate(EntryGridView& view, const EntryGridItems& items, EntryActions& actions)
    : QStyledItemDelegate(&view), view_(view), items_(items), actions_(actions) {}

QWidget* EntryDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const {
    const CellPlace cell = EntryGridItems::cellOf(index);
    const bool combo = items_.cells().cellType(cell.column, cell.row) == CellType::combo;
    QWidget* editor = combo ? nullptr : textEditor(parent, index);
    if (combo && !actions_.reads([&] { editor = itemEditor(parent, index); })) return nullptr;
    const QVariant heading = index.model()->headerData(index.column(), Qt::Horizontal, Qt::DisplayRole);
    editor->setAccessibleName(heading.toString());
    editor->setObjectName(QStringLiteral("cell"));
    actions_.opened(cell);
    return editor;
}

QWidget* EntryDelegate::textEditor(QWidget* parent, const QModelIndex& index) const {
    const CellPlace cell = EntryGridItems::cellOf(index);
    const CellType type = items_.cells().cellType(cell.column, cell.row);
    auto* editor = new TextCellEditor(parent, type == CellType::date);
    if (type == CellType::number || type == CellType::currency) editor->setAlignment(Qt::AlignRight);
    connect(editor, &QLineEdit::textEdited, this, [this](const QString& text) { typed(text); });
    editor->done = [this] { view_.takeOver(); };
    return editor;
}

QWidget* EntryDelegate::itemEditor(QWidget* parent, const QModelIndex& index) const {
    const CellPlace cell = EntryGridItems::cellOf(index);
    const auto& cells = items_.cells();
    cells.selectedItem(cell.column, cell.row);
    auto* editor = new ItemCellEditor(parent, toQt(cells.items(cell.column, cell.row)),
                                      toQt(cells.listTexts(cell.column, cell.row)));
    const QPersistentModelIndex place(index);
    connect(editor, &QLineEdit::textEdited, this, [this, editor](const QString& text) {
        typed(text);
        editor->show(qt::toQt(items_.cells().openText()));
    });
    editor->held = [this] { return items_.cells().markedItem(); };
    editor->marked = [this](int item) { actions_.marked(item); };
    editor->picked = [this, editor, place](int item) { take(*editor, place, item); };
    editor->entered = [this] { view_.advance(); };
    editor->undone = [this] { view_.giveUp(); };
    return editor;
}

void EntryDelegate::typed(const QString& text) const {
    view_.hideHint();
    actions_.typed(text);
}

void EntryDelegate::setEditorData(QWidget* editor, const QModelIndex&) const {
    static_cast<CellEditor*>(editor)->show(qt::toQt(items_.cells().openText()));
}

void EntryDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex&) const {
    editor->setGeometry(option.rect);
    view_.placeHint();
}

// The field stays open while a box, a menu or another program has the keyboard.
bool EntryDelegate::eventFilter(QObject* watched, QEvent* event) {
    auto* editor = qobject_cast<QWidget*>(watched);
    if (editor == nullptr) return false;
    switch (event->type()) {
        case QEvent::KeyPress:
            if (key(*editor, *static_cast<QKeyEvent*>(event))) return true;
            break;
        case QEvent::FocusOut:
            focusLeft(*editor, static_cast<QFocusEvent*>(event)->reason());
            return false;
        case QEvent::Hide:
            view_.hideHint();
            break;
        default:
            break;
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

bool EntryDelegate::key(QWidget& editor, QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (view_.takeOver()) view_.advance();
            return true;
        case Qt::Key_F4:
            dropDown(editor);
            return true;
        case Qt::Key_Down:
            if (qobject_cast<ItemCellEditor*>(&editor) != nullptr) return dropDown(editor);
            [[fallthrough]];
        case Qt::Key_Up:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            if (event.modifiers() & (Qt::AltModifier | Qt::ControlModifier)) return false;
            if (view_.takeOver()) QCoreApplication::sendEvent(&view_, &event);
            return true;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            if (view_.takeOver()) view_.leave(event.key() == Qt::Key_Tab);
            return true;
        case Qt::Key_Escape:
            view_.giveUp();
            return true;
        default:
            return false;
    }
}

bool EntryDelegate::dropDown(QWidget& editor) {
    if (auto* choice = qobject_cast<ItemCellEditor*>(&editor)) {
        choice->openList();
        return true;
    }
    auto* day = qobject_cast<TextCellEditor*>(&editor);
    if (day == nullptr || !day->hasCalendar()) return false;
    day->openCalendar();
    return true;
}

void EntryDelegate::focusLeft(QWidget& editor, Qt::FocusReason reason) {
    const bool comesBack =
        reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
    if (comesBack || view_.takeOver()) return;
    // Not within the event that takes it away.
    QMetaObject::invokeMethod(
        &editor, [&editor] { editor.setFocus(); }, Qt::QueuedConnection);
}

// The field closes first: what a pick sets off may show boxes or write to this very cell.
void EntryDelegate::take(ItemCellEditor& editor, const QModelIndex& index, int item) const {
    const CellPlace cell = EntryGridItems::cellOf(index);
    emit const_cast<EntryDelegate*>(this)->closeEditor(&editor, RevertModelCache);
    actions_.picked(cell, item);
}

}  // namespace orvenmod::platform::qt
