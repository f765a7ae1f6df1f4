// The table that shows an entry grid and turns keys and clicks into what they mean in its cells.
#pragma once

#include <QPointer>
#include <QTableView>

#include "platform/qt/cellhint.h"
#include "platform/qt/entrydelegate.h"

class QLineEdit;

namespace orvenmod::platform::qt {

class EntryGridView : public QTableView {
    Q_OBJECT
public:
    explicit EntryGridView(QWidget* parent);
    ~EntryGridView() override;
    /// Before it is shown. All three must outlive the view's last event.
    void setUp(EntryGridItems& items, EntryActions& actions);

    /// On to the next cell that takes a value, in this row or the next ones.
    void advance();
    /// On to the next control, or back to the one before.
    void leave(bool next) { focusNextPrevChild(next); }
    /// Closes the field that is open with what was typed. False where the cell refuses: it stays open, told why.
    bool takeOver();
    /// Closes it with what stood in the cell before.
    void giveUp();
    void hideHint();
    void placeHint();
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
    void inputMethodEvent(QInputMethodEvent* event) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void keyboardSearch(const QString&) override {}
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    class LeavingWatch;

    QLineEdit* openField() const;
    bool copyOrPaste(const QKeyEvent& event);
    /// Puts the text in place of the active cell's, as if typed and left.
    void enterText(const QString& text);
    bool isPressable(const QModelIndex& index) const;
    bool isCombo(const QModelIndex& index) const;

    EntryGridItems* items_ = nullptr;
    EntryActions* actions_ = nullptr;
    QPersistentModelIndex pressed_;
    LeavingWatch* watch_;
    bool composing_ = false;   ///< an input method, in a cell that it has opened
    QPointer<CellHint> hint_;  ///< the window's, which takes it away first
};

/// Before a command in the window runs, or its user turns a page: takes over the cell that is open in one of its grids.
/// False where that refuses.
bool takeOverIn(const QWidget& window);

}  // namespace orvenmod::platform::qt
