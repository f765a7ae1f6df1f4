// The editor's field grid fps1: laid out from the class's metadata, its codes kept composed, its fields tested. It is
// the editor's whole data model; the columns are told in fieldrow.h.
#pragma once

#include <cstdint>
#include <string>

#include "editor/fieldrow.h"
#include "platform/entrygrid.h"
#include "store/recordset.h"

namespace orvenmod {

class FieldGrid {
public:
    explicit FieldGrid(platform::EntryGrid& fps1) : fps1_(fps1) {}

    platform::EntryGrid& cells() { return fps1_; }
    /// The category's row.
    int lastRow() const { return fps1_.rowCount(); }

    /// Builds the rows. Shows its own failures; false then, and the rows built so far stay.
    bool initFps();
    /// The short code proposed under gCurParentId and the code composed from it, as the window opens for a new item.
    void proposeCodes();

    /// Shows a stored reference: its id and its entry's name.
    void showReference(int row, const std::string& id, const std::string& name);

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
};

}  // namespace orvenmod
