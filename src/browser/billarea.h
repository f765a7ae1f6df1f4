// The bill area of frmBasicInfoList: items gathered in fps1 with their quantities, handed to the host in tblItemInput.
//
//   fps1   1 code | 2 name | 3 model | 4 unit | 5 stock | 6 quantity; tags: column 1 the item's id, column 2 "0"
#pragma once

#include <cstdint>
#include <string>

#include "platform/entrygrid.h"
#include "platform/listgrid.h"

namespace orvenmod {

class BillArea {
public:
    BillArea(platform::EntryGrid& fps1, platform::ListGrid& vsf1) : fps1_(fps1), vsf1_(vsf1) {}

    /// Decimal places of stock and quantity.
    void setDecimals(int places);

    /// Adds the item; asks where it stands there already. Its stock is read from the current row of the list, in column
    /// `timeQtyEntryId` + 1; 0 for a list without that column. Shows its own failures.
    void addFPSItem(std::int32_t lngItemId, std::int16_t timeQtyEntryId);
    /// Asks and removes the active row.
    void removeItem();
    bool empty() const { return fps1_.rowCount() < 1; }
    /// Writes the rows for the logged-in user, without a transaction. Shows its own failures.
    void addToBill();

private:
    bool confirmDouble(std::int32_t itemId) const;
    void readItem(std::int32_t itemId, std::int16_t timeQtyEntryId);
    /// The current row's cell, as the user sees it.
    std::string stockShown(int column) const;

    platform::EntryGrid& fps1_;
    platform::ListGrid& vsf1_;
};

}  // namespace orvenmod
