// Edit, combo and date picker.
#pragma once

#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <functional>

#include "platform/controls.h"
#include "platform/model/combomodel.h"
#include "platform/qt/controlbody.h"
#include "platform/qt/core.h"

namespace orvenmod::platform::qt {

/// The height of a field of one line, in pixels.
inline constexpr int kFieldHeight = 21;

/// A line edit that tells of a key before it acts on it.
class EditWidget : public QLineEdit {
    Q_OBJECT
public:
    using QLineEdit::QLineEdit;
    std::function<void(int)> onKey;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// A drop-down that the mouse wheel changes only where it has the focus.
class ComboWidget : public QComboBox {
    Q_OBJECT
public:
    using QComboBox::QComboBox;

protected:
    void wheelEvent(QWheelEvent* event) override;
};

/// A date edit whose calendar the keyboard opens too: F4 or Alt+Down. Tab leads out of it, not from year to month.
class DateWidget : public QDateEdit {
    Q_OBJECT
public:
    using QDateEdit::QDateEdit;

protected:
    bool focusNextPrevChild(bool next) override { return QWidget::focusNextPrevChild(next); }
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

class QtEdit final : public QtControl<Edit> {
public:
    QtEdit(Core& core, const ControlDesign& design, QWidget* parent);
    std::string text() const override;
    void setText(const std::string& text) override;

private:
    EditWidget* edit_;
};

class QtCombo final : public QtControl<Combo> {
public:
    QtCombo(Core& core, const ControlDesign& design, QWidget* parent);
    void clear() override;
    void addRow(const std::vector<std::string>& cells) override;
    int rowCount() const override { return model_.rowCount(); }
    std::string cell(int row, int column) const override { return model_.cell(row, column); }
    int selected() const override { return model_.selected(); }
    void select(int row) override;
    void setListRows(int rows) override;
    int listRows() const override { return model_.listRows(); }

private:
    void picked(int row);

    Core& core_;
    ComboWidget* combo_;
    model::ComboModel model_;
};

class QtDatePicker final : public QtControl<DatePicker> {
public:
    QtDatePicker(const ControlDesign& design, QWidget* parent);
    Date value() const override;
    void setValue(const Date& value) override;

private:
    DateWidget* picker_;
};

}  // namespace orvenmod::platform::qt
