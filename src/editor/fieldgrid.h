// The editor's field grid fps1: laid out from the class's metadata, its codes kept composed, its fields tested. It is
// the editor's whole data model; the columns are told in fieldrow.h.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "editor/fieldrow.h"
#include "frame/fetchedrows.h"
#include "platform/entrygrid.h"
#include "store/recordset.h"

namespace orvenmod {

class FieldGrid {
public:
    explicit FieldGrid(platform::EntryGrid& fps1) : fps1_(fps1) {}

    /// The category's row; the fields are the rows before it.
    int lastRow() const { return fps1_.rowCount(); }

    FieldRow field(int row) const { return fieldRow(fps1_, row); }
    /// Every field but the short code, which is no column of the class table.
    std::vector<FieldRow> classFields() const;
    /// What the user sees in row 1, 2 or 3; "" for a row that isn't there, since the layout failed before it.
    std::string shortCode() const { return readCell(fps1_, kValue, kShortCodeRow); }
    std::string code() const { return readCell(fps1_, kValue, kCodeRow); }
    std::string name() const { return readCell(fps1_, kValue, kNameRow); }
    /// The id of the chosen category, "" for none.
    std::string categoryId() const { return readCell(fps1_, kChosenId, lastRow()); }

    /// Builds the rows. Shows its own failures; false then, and the rows built so far stay.
    bool initFps();
    /// The short code proposed under gCurParentId and the code composed from it, as the window opens for a new item.
    void proposeCodes();

    /// Shows the value of a field that refers to nothing.
    void showValue(int row, const std::string& value) { fps1_.setText(kValue, row, value); }
    /// Shows a stored reference: its id and its entry's name.
    void showReference(int row, const std::string& id, const std::string& name);

    /// See ListedRows: of the lists that fields choose from.
    void tend();

    /// Chooses the item's category by its id, with its code.
    void chooseCategory(const std::string& id, const std::string& code);
    /// Writes what the category's row shows, worded as in its list.
    void showCategory(const std::string& text) { writeCell(fps1_, kValue, lastRow(), text); }

    void fps1_ComboCloseUp(int column, int row, int item);
    void fps1_ComboSelChange(int column, int row);
    void fps1_EditChange(int column, int row);

    /// Makes the short code's value the active cell.
    void activateFirst();
    /// Empties the fields and proposes codes; the category keeps its selection.
    void clearFields();
    /// Proposes a short code under gCurParentId and composes the code where there is something to compose.
    void renewCodes();
    /// Tests the fields that must be filled; warns of the first that isn't and gives its row, else 0.
    int checkFields() const;

private:
    void addField(const store::Recordset& field);
    void addReferenceLists(const store::Recordset& field, int row);
    void addCategoryRow();
    void preselectCategory();
    void composeLoosely(const std::string& shortCode);
    void composeStrictly();
    bool isRequired(int row) const;

    platform::EntryGrid& fps1_;
    std::vector<std::shared_ptr<ListedRows>> lookups_;
};

}  // namespace orvenmod
