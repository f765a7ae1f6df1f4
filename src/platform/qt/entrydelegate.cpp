#include "platform/qt/entrydelegate.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include "platform/qt/celleditors.h"
#include "platform/qt/entrygridview.h"
#include "platform/qt/text.h"

namespace orvenmod::platform::qt {

EntryDelegate::EntryDelegate(EntryGridView& view, const EntryGridItems& items, EntryActions& actions)
    : QStyledItemDelegate(&view), view_(view), items_(items), actions_(actions) {}

QWidget* EntryDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const {
    const CellPlace cell = EntryGridItems::cellOf(index);
    const bool combo = items_.cells().cellType(cell.column, cell.row) == CellType::combo;
    QWidget* editor = combo ? itemEditor(parent, index) : textEditor(parent, index);
    const QVariant heading = index.model()->headerData(index.column(), Qt::Horizontal, Qt::DisplayRole);
    editor->setAccessibleName(heading.toString());
    editor->setObjectName(QStringLiteral("cell"));
    return editor;
}

QWidget* EntryDelegate::textEditor(QWidget* parent, const QModelIndex& index) const {
    const CellPlace cell = EntryGridItems::cellOf(index);
    const CellType type = items_.cells().cellType(cell.column, cell.row);
    auto* editor = new TextCellEditor(parent, type == CellType::date);
    if (type == CellType::number || type == CellType::currency) editor->setAlignment(Qt::AlignRight);
    editor->before = index.data(Qt::EditRole).toString();
    const QPersistentModelIndex place(index);
    editor->allowed = [this, place](const QString& text) {
        const CellPlace there = EntryGridItems::cellOf(place);
        return place.isValid() && items_.cells().mayType(there.column, there.row, fromQt(text));
    };
    editor->offer = [this, place](const QString& text) {
        return place.isValid() && actions_.typed(EntryGridItems::cellOf(place), text);
    };
    editor->done = [this, editor] { const_cast<EntryDelegate*>(this)->leave(editor); };
    return editor;
}

QWidget* EntryDelegate::itemEditor(QWidget* parent, const QModelIndex& index) const {
    const CellPlace cell = EntryGridItems::cellOf(index);
    QStringList items;
    for (const std::string& item : items_.cells().items(cell.column, cell.row))
        items << toQt(item);
    auto* editor = new ItemCellEditor(parent, items);
    const QPersistentModelIndex place(index);
    editor->picked = [this, editor, place](int item) { take(*editor, place, item); };
    editor->entered = [this] { view_.advance(); };
    return editor;
}

void EntryDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    const QString text = index.data(Qt::EditRole).toString();
    if (auto* field = qobject_cast<TextCellEditor*>(editor))
        field->show(text);
    else if (auto* choice = qobject_cast<ItemCellEditor*>(editor); choice != nullptr && !choice->touched)
        choice->setText(text);
}

void EntryDelegate::setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const {
    const CellPlace cell = EntryGridItems::cellOf(index);
    if (auto* field = qobject_cast<TextCellEditor*>(editor)) {
        actions_.finished(cell, field->before);
        field->before = index.data(Qt::EditRole).toString();
    } else if (auto* choice = qobject_cast<ItemCellEditor*>(editor); choice != nullptr && choice->touched) {
        choice->touched = false;
        const int item = choice->exact();
        if (item >= 0 && item != items_.cells().selectedItem(cell.column, cell.row)) actions_.picked(cell, item);
    }
}

void EntryDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex&) const {
    editor->setGeometry(option.rect);
}

bool EntryDelegate::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto& key = *static_cast<QKeyEvent*>(event);
        if (auto* field = qobject_cast<TextCellEditor*>(watched); field != nullptr && keyInText(*field, key))
            return true;
        if (auto* choice = qobject_cast<ItemCellEditor*>(watched); choice != nullptr && keyInItems(*choice, key))
            return true;
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

bool EntryDelegate::keyInText(TextCellEditor& editor, QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            leave(&editor);
            view_.advance();
            return true;
        case Qt::Key_F4:
            if (editor.hasCalendar()) editor.openCalendar();
            return true;
        case Qt::Key_Up:
        case Qt::Key_Down:
            if (event.modifiers() & Qt::AltModifier) return false;
            leave(&editor);
            QCoreApplication::sendEvent(&view_, &event);
            return true;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            leave(&editor);
            view_.leave(event.key() == Qt::Key_Tab);
            return true;
        case Qt::Key_Escape: {
            const CellPlace cell = EntryGridItems::cellOf(view_.currentIndex());
            const QString before = editor.before;
            emit closeEditor(&editor, RevertModelCache);
            actions_.undone(cell, before);
            return true;
        }
        default:
            return false;
    }
}

bool EntryDelegate::keyInItems(ItemCellEditor& editor, QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            takeMeant(editor);
            view_.advance();
            return true;
        case Qt::Key_Down:
        case Qt::Key_F4:
            editor.openList();
            return true;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            takeMeant(editor);
            view_.leave(event.key() == Qt::Key_Tab);
            return true;
        default:
            return false;
    }
}

void EntryDelegate::takeMeant(ItemCellEditor& editor) {
    const int item = editor.touched ? editor.meant() : -1;
    if (item >= 0)
        take(editor, view_.currentIndex(), item);
    else
        emit closeEditor(&editor, RevertModelCache);
}

void EntryDelegate::leave(QWidget* editor) {
    emit commitData(editor);
    emit closeEditor(editor, NoHint);
}

// The field closes first: what a pick sets off may show boxes or write to this very cell.
void EntryDelegate::take(ItemCellEditor& editor, const QModelIndex& index, int item) const {
    const CellPlace cell = EntryGridItems::cellOf(index);
    editor.touched = false;
    emit const_cast<EntryDelegate*>(this)->closeEditor(&editor, RevertModelCache);
    actions_.picked(cell, item);
}

}  // namespace orvenmod::platform::qt
