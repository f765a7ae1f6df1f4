// Stores the item that the editor shows: a row of the class table, one of tblItem, the photo and the attachments, in
// one transaction.
#pragma once

#include <cstdint>

#include "editor/attachments.h"
#include "editor/fieldgrid.h"
#include "editor/itemstatements.h"
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

private:
    bool insertItem();
    bool updateItem();
    bool codeIsFree(const std::string& others) const;
    bool nameIsWanted(const std::string& others) const;
    Place place(std::int32_t itemId) const;
    ItemTexts texts() const;

    FieldGrid& fields_;
    Photo& photo_;
    Attachments& attachments_;
};

}  // namespace orvenmod
