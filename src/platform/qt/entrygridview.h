// The table that shows an entry grid and turns keys and clicks into what they mean in its cells.
#pragma once

#include <QTableView>

#include "platform/qt/entrydelegate.h"

namespace orvenmod::platform::qt {

class EntryGridView : public QTableView {
    Q_OBJECT
public:
    explicit EntryGridView(QWidget* parent);
    /// Before it is shown. All three must outlive the view's last event.
    void setUp(EntryGridItems& items, EntryActions& actions);

    /// On to the next cell that takes a value, in this row or the next ones.
    void advance();
    /// On to the next control, or back to the one before.
    void leave(bool next) { focusNextPrevChild(next); }
    /// Keeps what stands in the field that is open and closes it.
    void finishEdit();
    /// Opens the cell's field, and for a choice its list.
    void open(const QModelIndex& index);
    /// The same, and for a day its calendar.
    void dropDown(const QModelIndex& index);

    /// Code is at work: the view's signals are no user's.
    bool writing = false;

    bool isPressed(const QModelIndex& index) const { return pressed_.isValid() && pressed_ == index; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyboardSearch(const QString&) override {}
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;

private:
    bool isPressable(const QModelIndex& index) const;
    bool isCombo(const QModelIndex& index) const;

    EntryGridItems* items_ = nullptr;
    EntryActions* actions_ = nullptr;
    QPersistentModelIndex pressed_;
};

/// Closes the field that is open in any entry grid, keeping what was typed: a command is about to run.
void finishOpenEdit();

}  // namespace orvenmod::platform::qt
