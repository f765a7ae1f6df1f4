// The small controls: one interface a kind, with just what the windows' logic uses.
#pragma once

#include <string>
#include <vector>

#include "platform/control.h"
#include "platform/date.h"
#include "platform/event.h"
#include "platform/keys.h"

namespace orvenmod::platform {

class Frame : public Control {
public:
    virtual std::string caption() const = 0;
    virtual void setCaption(const std::string& caption) = 0;
};

class Label : public Control {
public:
    virtual std::string caption() const = 0;
    virtual void setCaption(const std::string& caption) = 0;
};

class Button : public Control {
public:
    virtual std::string caption() const = 0;
    virtual void setCaption(const std::string& caption) = 0;

    Event<> click;
};

class Edit : public Control {
public:
    virtual std::string text() const = 0;
    /// Raises `change`, also when the text is the same.
    virtual void setText(const std::string& text) = 0;

    Event<> change;
    Event<int> keyDown;  ///< the key's code; Enter is kKeyEnter
};

/// A drop-down whose rows have several columns, of which the user sees the first. Rows and columns from 0.
class Combo : public Control {
public:
    virtual void clear() = 0;
    virtual void addRow(const std::vector<std::string>& cells) = 0;
    virtual int rowCount() const = 0;
    /// "" for a column that the row hasn't. Throws std::out_of_range for a row that isn't.
    virtual std::string cell(int row, int column) const = 0;
    /// The selected row, -1 for none.
    virtual int selected() const = 0;
    /// Selects a row (-1 for none) and raises `selectionChange`. A row beyond the last throws std::out_of_range.
    virtual void select(int row) = 0;
    /// How many rows the opened list shows at once.
    virtual void setListRows(int rows) = 0;
    virtual int listRows() const = 0;

    Event<> selectionChange;
};

class DatePicker : public Control {
public:
    virtual Date value() const = 0;
    virtual void setValue(const Date& value) = 0;
};

class Picture : public Control {
public:
    /// Shows the file scaled in proportion; false and an empty picture for a file that is none.
    virtual bool show(const std::string& path) = 0;
    virtual void clear() = 0;
    virtual bool empty() const = 0;
};

class Tabs : public Control {
public:
    virtual int tab() const = 0;
    virtual void setTab(int index) = 0;
    virtual std::string tabCaption(int index) const = 0;
    virtual void setTabCaption(int index, const std::string& caption) = 0;
    virtual void setTabEnabled(int index, bool enabled) = 0;
    virtual bool tabEnabled(int index) const = 0;
};

class Toolbar : public Control {
public:
    virtual bool hasButton(const std::string& key) const = 0;
    virtual void setButtonVisible(const std::string& key, bool visible) = 0;
    virtual bool buttonVisible(const std::string& key) const = 0;
    virtual void setButtonEnabled(const std::string& key, bool enabled) = 0;
    virtual bool buttonEnabled(const std::string& key) const = 0;

    Event<std::string> buttonClick;  ///< the button's key
};

/// An entry of the menu bar or of one of its menus. Place and size mean nothing.
class Menu : public Control {
public:
    virtual std::string caption() const = 0;
    virtual void setCaption(const std::string& caption) = 0;
    virtual bool checked() const = 0;
    virtual void setChecked(bool checked) = 0;
    /// Pops the menu's entries up at the mouse (or at the control in focus) and waits for the choice.
    virtual void popUp() = 0;

    Event<> click;
};

/// Asks the user for a file.
class FileDialog : public Control {
public:
    /// Pairs of caption and pattern: "Excel文件(*.xls)|*.xls|...".
    virtual void setFilter(const std::string& filter) = 0;
    /// True where a file was named, false where the user cancelled.
    virtual bool showOpen() = 0;
    virtual bool showSave() = 0;
    /// The full path chosen last, "" for none.
    virtual std::string fileName() const = 0;
    /// The same without the folder.
    virtual std::string fileTitle() const = 0;
};

}  // namespace orvenmod::platform
