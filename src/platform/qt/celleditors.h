// The fields that open in an entry grid's cell while its user types.
#pragma once

#include <QLineEdit>
#include <QPersistentModelIndex>
#include <QStringList>
#include <functional>

namespace orvenmod::platform::qt {

/// For text, numbers and days. Every letter is offered at once, and a letter that is refused never shows.
class TextCellEditor : public QLineEdit {
    Q_OBJECT
public:
    /// `withCalendar` adds a button that opens a calendar.
    TextCellEditor(QWidget* parent, bool withCalendar);

    /// What the cell held when the field opened.
    QString before;
    std::function<bool(const QString&)> allowed;  ///< whether the cell may hold this while its user types
    std::function<bool(const QString&)> offer;    ///< the same, and the cell takes it
    std::function<void()> done;                   ///< a day was picked: the field can close

    /// Shows what the cell holds now.
    void show(const QString& text);
    bool hasCalendar() const { return hasCalendar_; }
    void openCalendar();

private:
    void edited(const QString& text);

    bool hasCalendar_;
    QString accepted_;
};

/// For a choice: shows the entries that contain what is typed. Nothing typed shows all.
class ItemCellEditor : public QLineEdit {
    Q_OBJECT
public:
    ItemCellEditor(QWidget* parent, const QStringList& items);

    std::function<void(int)> picked;
    std::function<void()> entered;  ///< after a pick by Enter

    void openList();
    /// The entry of exactly the text in the field, -1 for none.
    int exact() const { return static_cast<int>(items_.indexOf(text())); }
    /// What Enter takes: the entry of exactly that text, else the first that contains it, -1 for none.
    int meant() const;
    /// Whether its user typed in it since it opened.
    bool touched = false;

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// The entry that the list shows there.
    int sourceRow(const QModelIndex& shown) const;

    QStringList items_;
};

}  // namespace orvenmod::platform::qt
