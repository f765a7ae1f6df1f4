// The entry grid: the cells stand in the shared model, which also tells what may be typed.
#pragma once

#include "platform/entrygrid.h"
#include "platform/qt/controlbody.h"
#include "platform/qt/core.h"
#include "platform/qt/entrygridview.h"

namespace orvenmod::platform::qt {

class QtEntryGrid final : public QtControl<EntryGrid> {
public:
    QtEntryGrid(Core& core, const ControlDesign& design, QWidget* parent);

    int rowCount() const override { return model_.rowCount(); }
    int columnCount() const override { return model_.columnCount(); }
    void setRowCount(int rows) override;
    void deleteRow(int row) override;
    int activeRow() const override { return model_.activeRow(); }
    int activeColumn() const override { return model_.activeColumn(); }
    void setActiveCell(int column, int row) override;

    std::string text(int column, int row) const override { return model_.text(column, row); }
    void setText(int column, int row, const std::string& text) override;
    void setCellType(int column, int row, CellType type) override;
    CellType cellType(int column, int row) const override { return model_.cellType(column, row); }
    void setNumberRule(int column, int row, const NumberRule& rule) override;
    void setLocked(int column, int row, bool locked) override;
    bool locked(int column, int row) const override { return model_.locked(column, row); }
    void setRequired(int column, int row, bool required) override;
    bool required(int column, int row) const override { return model_.required(column, row); }
    std::string cellTag(int column, int row) const override { return model_.cellTag(column, row); }
    void setCellTag(int column, int row, const std::string& tag) override { model_.setCellTag(column, row, tag); }
    void setItems(int column, int row, const ItemTexts& items) override;
    void setItemCodes(int column, int row, const ItemTexts& codes) override;
    void setItemLeader(int column, int row, int leader) override { model_.setItemLeader(column, row, leader); }
    void setClearable(int column, int row, bool clearable) override { model_.setClearable(column, row, clearable); }
    int selectedItem(int column, int row) const override { return model_.selectedItem(column, row); }
    void selectItem(int column, int row, int item) override;
    void setColumnHidden(int column, bool hidden) override;
    bool columnHidden(int column) const override { return model_.columnHidden(column); }
    void setLockedColour(const Colour& colour) override;
    bool cellOpen() const override { return model_.cellOpen(); }
    std::string openText() const override { return model_.openText(); }
    std::string refusal() const override { return model_.refusal(); }

private:
    void listen();
    CellPlace activeCell() const { return {model_.activeColumn(), model_.activeRow()}; }
    void showActive();
    void picked(CellPlace cell, int item);
    void raisePick(CellPlace cell, int item);
    void pressed(CellPlace cell);

    Core& core_;
    model::EntryGridModel model_;
    EntryGridItems items_;
    EntryActions actions_;
    EntryGridView* view_;
};

}  // namespace orvenmod::platform::qt
