// The fields that open in an entry grid's cell while its user types.
#pragma once

#include <QLineEdit>
#include <QStringList>
#include <functional>

class QModelIndex;

namespace orvenmod::platform::qt {

class CellEditor : public QLineEdit {
    Q_OBJECT
public:
    using QLineEdit::QLineEdit;

    /// Shows what the cell holds now. The cursor stays where the text is the same.
    void show(const QString& text) {
        if (this->text() != text) setText(text);
    }
};

/// For text, numbers and days.
class TextCellEditor : public CellEditor {
    Q_OBJECT
public:
    /// `withCalendar` adds a button that opens a calendar.
    TextCellEditor(QWidget* parent, bool withCalendar);

    std::function<void()> done;  ///< a day was picked: the field can close

    bool hasCalendar() const { return hasCalendar_; }
    void openCalendar();

private:
    bool hasCalendar_;
};

/// For a choice: shows the entries that contain what is typed, in place of the text of the entry that the list marks.
/// Nothing typed shows all.
class ItemCellEditor : public CellEditor {
    Q_OBJECT
public:
    /// `shown` are the entries' texts in the list, where they may carry more than in the cell.
    ItemCellEditor(QWidget* parent, const QStringList& items, const QStringList& shown);

    std::function<int()> held;        ///< the entry to mark as the list opens, -1 for none
    std::function<void(int)> marked;  ///< the arrow keys came to an entry of the list
    std::function<void(int)> picked;  ///< by the mouse or Enter
    std::function<void()> entered;    ///< Enter in the list
    std::function<void()> undone;     ///< Escape in the list

    /// All entries, or those that contain what was typed since the field opened.
    void openList();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void listAll();
    bool keyInList(QKeyEvent& event);
    /// The entry that the list shows there.
    int sourceRow(const QModelIndex& shown) const;

    bool typed_ = false;
};

}  // namespace orvenmod::platform::qt
