// The tour's visitor: clicks and types in real windows, finds every control by its name, and takes pictures. A control
// that isn't there, or a box that doesn't come, ends the tour with a message.
#pragma once

#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

class QTableView;

namespace orvenmod::sample {

/// The pictures of one tour, numbered in the order in which they were taken.
class Album {
public:
    explicit Album(std::string folder);

    /// The window, with what is open over it.
    void add(QWidget& widget, const std::string& name, const std::string& caption);
    /// The list of the pictures, also written into the folder.
    std::string list() const;

private:
    std::string next(const std::string& name, const std::string& caption);

    std::string folder_;
    std::vector<std::pair<std::string, std::string>> pictures_;
};

/// The next box is pictured and answered with the button; `came` is called when it is there. A box that has no such
/// button is another one: `came` gets its text, and it is closed without an answer. Nothing happens once `asker` has
/// gone.
void answerBox(const QObject& asker, Album& album, QMessageBox::StandardButton answer, const std::string& name,
               const std::string& caption, const std::function<void(const std::string&)>& came);

class Visitor {
public:
    Visitor(QWidget& window, Album& album);

    void picture(const std::string& name, const std::string& caption);

    void click(const QString& button);
    void type(const QString& edit, const QString& text);
    void pick(const QString& combo, const QString& entry);
    void setDate(const QString& picker, int year, int month, int day);
    void clickNode(const QString& tree, const QString& textBegin);
    void clickRow(const QString& grid, int row);
    void clickLastRow(const QString& grid);
    void clickHeading(const QString& grid, const QString& titleBegin);
    void doubleClickRow(const QString& grid, int row);
    void keyOnGrid(const QString& grid, Qt::Key key);
    void clickCell(const QString& grid, int row, int column);
    /// Letter by letter, to whatever has the keyboard.
    void typeKeys(const QString& text);
    /// A key or a shortcut, as "Tab" or "Ctrl+S", to whatever has the keyboard.
    void press(const QString& keys);
    /// Types into a cell, and leaves it by Enter.
    void inputCell(const QString& grid, int row, int column, const QString& text);
    /// Picks the entry of a cell's list by typing it.
    void pickCell(const QString& grid, int row, int column, const QString& entry);
    /// The cell that is open and refuses what was typed.
    void pictureRefusal(const QString& grid, const std::string& name, const std::string& caption);
    /// The calendar of a cell's day; pictured and closed.
    void pictureCalendar(const QString& grid, int row, int column, const std::string& name, const std::string& caption);
    /// The popup menu of a tree or grid; pictured, and closed without a choice.
    void pictureMenuOf(const QString& view, const std::string& name, const std::string& caption);
    /// Of the menu that what follows opens.
    void pictureNextMenu(const std::string& name, const std::string& caption);
    /// The opened list of a combo; pictured and closed.
    void pictureListOf(const QString& combo, const std::string& name, const std::string& caption);
    void chooseMenu(const QString& action);
    void clickTool(const QString& key);
    void chooseTab(const QString& tabs, int page);

    /// The next box is pictured and answered with the button.
    void expectBox(QMessageBox::StandardButton answer, const std::string& name, const std::string& caption);
    /// The next file dialog takes the file.
    void chooseFile(const QString& path);
    /// The next dialog of that name is pictured and closed.
    void expectDialog(const QString& dialog, const std::string& name, const std::string& caption);
    /// The next save dialog is pictured with that file's name in it, and takes it.
    void saveTo(const QString& file, const std::string& name, const std::string& caption);
    /// The next print goes to that PDF file; its dialog is pictured.
    void printTo(const QString& file, const std::string& name, const std::string& caption);
    /// Throws where an expected box didn't come, or another did.
    void boxesDone() const;

    /// The window is left by itself: nobody need close it, and the tour ends where it stays.
    void closed() { closed_ = true; }
    bool isClosed() const { return closed_; }

private:
    template <class Widget>
    Widget& find(const QString& name) const;
    QPoint rowCentre(QTableView& view, int row) const;
    QWidget& keyboard() const;

    QWidget& window_;
    Album& album_;
    QObject asker_;
    int boxes_ = 0;
    std::string otherBox_;
    bool closed_ = false;
};

}  // namespace orvenmod::sample
