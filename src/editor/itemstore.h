// Stores the item that the editor shows: a row of the class table, one of tblItem, the photo and the attachments, in
// one transaction.
#pragma once

#include <cstdint>

#include "editor/attachments.h"
#include "editor/fieldgrid.h"
#include "editor/itemsave.h"
#include "editor/photo.h"

namespace orvenmod {

class ItemStore {
public:
    ItemStore(FieldGrid& fields, Photo& photo, Attachments& attachments)
        : fields_(fields), photo_(photo), attachments_(attachments) {}

    /// A new item; gCurItemId is its id then. False where the user or the database refused it, which is shown. A
    /// failure before the transaction makes the rollback fail too, and that failure goes up.
    bool insert();
    /// Writes over gCurItemId; otherwise as insert.
    bool update();
    /// The row of fps1 to mend after a save that was refused for its code or its name, else 0.
    int refusedRow() const { return refusedRow_; }

private:
    bool insertItem();
    bool updateItem();
    bool codeIsFree(const ItemDraft& item, const std::string& others);
    bool nameIsWanted(const ItemDraft& item, const std::string& others);
    ItemDraft draft() const;

    FieldGrid& fields_;
    Photo& photo_;
    Attachments& attachments_;
    int refusedRow_ = 0;
};

}  // namespace orvenmod
