// Paints the cells of an entry grid by their kind and opens their fields.
#pragma once

#include <QStyledItemDelegate>
#include <functional>

#include "platform/qt/entrygriditems.h"

namespace orvenmod::platform::qt {

class EntryGridView;
class ItemCellEditor;

/// What the user does in the cells.
struct EntryActions {
    std::function<void(CellPlace)> opened;
    /// Runs what reads entries; false where that failed, which was told.
    std::function<bool(const std::function<void()>&)> reads;
    std::function<void(const QString&)> typed;          ///< into the open cell
    std::function<void(int item)> marked;               ///< in the open cell's list
    std::function<model::EntryGridModel::Left()> left;  ///< takes over what was typed, without events
    std::function<void(CellPlace, int item)> changed;   ///< raises the events of a pick
    std::function<void()> undone;                       ///< the open cell is given up
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
    /// Nothing: the view takes over what was typed.
    void setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const override {}
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* textEditor(QWidget* parent, const QModelIndex& index) const;
    QWidget* itemEditor(QWidget* parent, const QModelIndex& index) const;
    void typed(const QString& text) const;
    bool key(QWidget& editor, QKeyEvent& event);
    /// Opens the list or the calendar of the field; false where it has none.
    static bool dropDown(QWidget& editor);
    void focusLeft(QWidget& editor, Qt::FocusReason reason);
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
