// The keys of a window's menus and buttons hold wherever the keyboard stands in it. Qt asks the control in focus first,
// and an edit keeps such keys as Ctrl+A; and where a menu of the bar and a button have the same letter, Qt only walks
// from one to the other.
#pragma once

#include <QObject>

class QKeyEvent;
class QMainWindow;
class QPushButton;

namespace orvenmod::platform::qt {

class WindowKeys : public QObject {
    Q_OBJECT
public:
    explicit WindowKeys(QMainWindow& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isMenuKey(const QKeyEvent& key) const;
    /// The button in reach that has this letter, null for none.
    QPushButton* buttonOf(const QKeyEvent& key) const;

    QMainWindow& window_;
};

}  // namespace orvenmod::platform::qt
