// An entry grid in memory.
#pragma once

#include <string>
#include <vector>

#include "platform/entrygrid.h"
#include "platform/memory/controlcore.h"
#include "platform/model/entrygridmodel.h"

namespace orvenmod::platform::memory {

class MemoryEntryGrid final : public MemoryControl<EntryGrid> {
public:
    MemoryEntryGrid(MemoryWindow& window, const ControlDesign& design)
        : MemoryControl(window, design), model_(design.columns) {}

    int rowCount() const override { return model_.rowCount(); }
    int columnCount() const override { return model_.columnCount(); }
    void setRowCount(int rows) override { model_.setRowCount(rows); }
    void deleteRow(int row) override { model_.deleteRow(row); }
    int activeRow() const override { return model_.activeRow(); }
    int activeColumn() const override { return model_.activeColumn(); }
    void setActiveCell(int column, int row) override;
    std::string text(int column, int row) const override { return model_.text(column, row); }
    void setText(int column, int row, const std::string& text) override { model_.setText(column, row, text); }
    void setCellType(int column, int row, CellType type) override { model_.setCellType(column, row, type); }
    CellType cellType(int column, int row) const override { return model_.cellType(column, row); }
    void setNumberRule(int column, int row, const NumberRule& rule) override;
    void setLocked(int column, int row, bool locked) override { model_.setLocked(column, row, locked); }
    bool locked(int column, int row) const override { return model_.locked(column, row); }
    void setRequired(int column, int row, bool required) override { model_.setRequired(column, row, required); }
    bool required(int column, int row) const override { return model_.required(column, row); }
    std::string cellTag(int column, int row) const override { return model_.cellTag(column, row); }
    void setCellTag(int column, int row, const std::string& tag) override { model_.setCellTag(column, row, tag); }
    void setItems(int column, int row, const ItemTexts& items) override;
    void setItemCodes(int column, int row, const ItemTexts& codes) override;
    void setItemLeader(int column, int row, int leader) override;
    void setClearable(int column, int row, bool clearable) override { model_.setClearable(column, row, clearable); }
    int selectedItem(int column, int row) const override { return model_.selectedItem(column, row); }
    void selectItem(int column, int row, int item) override { model_.selectItem(column, row, item); }
    void setColumnHidden(int column, bool hidden) override { model_.setColumnHidden(column, hidden); }
    bool columnHidden(int column) const override { return model_.columnHidden(column); }
    void setLockedColour(const Colour& colour) override { lockedColour_ = colour; }
    const Colour& lockedColour() const { return lockedColour_; }
    bool cellOpen() const override { return model_.cellOpen(); }
    std::string openText() const override { return model_.openText(); }
    std::string refusal() const override { return model_.refusal(); }

    model::EntryGridModel& model() { return model_; }

    // What its user does in the active cell. Failures of the events are shown.
    /// Opens it where it isn't open; `text` is all that stands in it then.
    void type(const std::string& text);
    /// Leaves the open cell; false where it refuses. True where none is open.
    bool takeOver();
    /// Leaves it as it was opened.
    void giveUp();
    /// Takes an entry of its list.
    void pick(int item);
    /// Opens it with all of its text marked.
    void openField();
    /// Opens its list, for a combo; typing opens it where an entry fits.
    void openList();
    bool listOpen() const { return listOpen_ && cellOpen(); }
    /// The entries that the open list shows: those with what was typed, all where there are none.
    std::vector<int> listed() const;

    /// Whether all that stands in the open cell is marked: the next letter takes its place.
    bool marked() const { return marked_ && cellOpen(); }
    void setMarked(bool marked) { marked_ = marked; }

private:
    /// Opens the active cell where it takes typing. False where that failed, which was told.
    bool openCell();
    void raisePick(int column, int row, int item);

    model::EntryGridModel model_;
    bool listOpen_ = false;
    bool marked_ = false;
    std::string typed_;  ///< by its user, since the cell was opened
    Colour lockedColour_{255, 255, 255};
};

}  // namespace orvenmod::platform::memory
