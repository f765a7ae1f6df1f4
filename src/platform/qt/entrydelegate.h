// Paints the cells of an entry grid by their kind and opens their fields.
#pragma once

#include <QStyledItemDelegate>
#include <functional>

#include "platform/qt/entrygriditems.h"

namespace orvenmod::platform::qt {

class EntryGridView;
class ItemCellEditor;
class TextCellEditor;

/// What the user does in the cells.
struct EntryActions {
    std::function<bool(CellPlace, const QString&)> typed;            ///< false refuses the text
    std::function<void(CellPlace, const QString& before)> finished;  ///< the cell is left
    std::function<void(CellPlace, const QString& before)> undone;    ///< Escape
    std::function<void(CellPlace, int item)> picked;
    std::function<void(CellPlace)> pressed;  ///< a button or a check box
    std::function<void()> leftByEnter;       ///< behind the last cell that takes a value
};

class EntryDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    EntryDelegate(EntryGridView& view, const EntryGridItems& items, EntryActions& actions);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* textEditor(QWidget* parent, const QModelIndex& index) const;
    QWidget* itemEditor(QWidget* parent, const QModelIndex& index) const;
    bool keyInText(TextCellEditor& editor, QKeyEvent& event);
    bool keyInItems(ItemCellEditor& editor, QKeyEvent& event);
    void leave(QWidget* editor);
    void takeMeant(ItemCellEditor& editor);
    void take(ItemCellEditor& editor, const QModelIndex& index, int item) const;
    void paintStarred(QPainter& painter, const QStyleOptionViewItem& cell) const;
    void paintButton(QPainter& painter, const QStyleOptionViewItem& cell, const QModelIndex& index) const;
    void paintCheckBox(QPainter& painter, const QStyleOptionViewItem& cell, const QModelIndex& index) const;
    void paintCombo(QPainter& painter, const QStyleOptionViewItem& cell) const;

    EntryGridView& view_;
    const EntryGridItems& items_;
    EntryActions& actions_;
};

}  // namespace orvenmod::platform::qt
