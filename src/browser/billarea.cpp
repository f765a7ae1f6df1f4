#include "browser/billarea.h"

#include <stdexcept>
#include <string>
#include <vector>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "platform/numberformat.h"

namespace orvenmod {

namespace {

constexpr int kNumber = 1;
constexpr int kName = 2;
constexpr int kModel = 3;
constexpr int kUnit = 4;
constexpr int kStock = 5;
constexpr int kQuantity = 6;

}  // namespace

void BillArea::setDecimals(int places) {
    platform::NumberRule rule;
    rule.decimals = places;
    fps1_.setNumberRule(kStock, 0, rule);
    fps1_.setNumberRule(kQuantity, 0, rule);
}

bool BillArea::confirmDouble(std::int32_t itemId) const {
    for (int row = 1; row <= fps1_.rowCount(); ++row) {
        if (toInt32(fps1_.cellTag(kNumber, row)) != itemId) continue;
        const std::string& name = appState().gItemName;
        return askQuestion("该" + name + "已经加入选定的" + name + "中,是否继续加入?");
    }
    return true;
}

void BillArea::addFPSItem(std::int32_t lngItemId, std::int16_t timeQtyEntryId) {
    if (!confirmDouble(lngItemId)) return;
    trapped([&] {
        openDB();
        setting("SystemSetup", "intBillStock", "0");
        const int before = fps1_.rowCount();
        readItem(lngItemId, timeQtyEntryId);
        closeDB();
        if (!empty()) fps1_.setActiveCell(kQuantity, fps1_.rowCount());
        // Without a new row, what is typed next would overwrite another item's quantity.
        if (fps1_.rowCount() > before) fps1_.setFocus();
        saveSetting("SystemSetup", "intBillStock", "0");
        return true;
    });
}

void BillArea::readItem(std::int32_t itemId, std::int16_t timeQtyEntryId) {
    store::Recordset rows = openRows(
        " select fnumber,fname,fmodel,fitemid,funit from icitem  where fitemid=" + std::to_string(itemId) + "   ");
    for (; !rows.eof(); rows.moveNext()) {
        const int row = fps1_.rowCount() + 1;
        fps1_.setRowCount(row);
        fps1_.setCellTag(kNumber, row, std::to_string(itemId));
        fps1_.setCellTag(kName, row, "0");
        fps1_.setText(kNumber, row, rows.text("fnumber"));
        fps1_.setText(kName, row, rows.text("fname"));
        fps1_.setText(kModel, row, rows.text("fModel"));
        fps1_.setText(kUnit, row, rows.text("funit"));
        if (timeQtyEntryId == 0) continue;
        fps1_.setText(kStock, row, platform::plainNumber(leadingNumber(stockShown(timeQtyEntryId + 1))));
    }
}

std::string BillArea::stockShown(int column) const {
    if (column >= vsf1_.columnCount()) throw std::out_of_range("下标越界");
    return vsf1_.text(vsf1_.currentRow(), column);
}

void BillArea::removeItem() {
    if (empty() || fps1_.activeRow() < 1) return;
    if (!askQuestion("确定要移除当前行吗?")) return;
    fps1_.deleteRow(fps1_.activeRow());
}

void BillArea::addToBill() {
    trapped([&] {
        openDB();
        const std::string user = std::to_string(appState().gLoginUserId);
        std::vector<std::string> statements = {"delete from tblItemInput where fuserid=" + user};
        for (int row = 1; row <= fps1_.rowCount(); ++row) {
            std::string quantity = fps1_.text(kQuantity, row);
            if (quantity.empty()) quantity = "0";
            statements.push_back("insert into tblItemInput(fitemid,fstockid,fqty,fuserid,fEntryId) values(" +
                                 fps1_.cellTag(kNumber, row) + "," + "0" + "," + quantity + "," + user + "," +
                                 std::to_string(row) + ")");
        }
        appState().gConn->executeAll(statements);
        return true;
    });
}

}  // namespace orvenmod
