#include "dictionary/entrylist.h"

#include <string>

#include "dictionary/deljczl.h"
#include "dictionary/frmJCZL.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"

namespace orvenmod {

void EntryList::read(std::int32_t itemClassId) {
    const store::Recordset rows = appState().gConn->open(
        "select fitemid,fname,fnumber from tblSubType where fitemclassid=" + std::to_string(itemClassId) +
        " order by fnumber ");
    const int id = rows.column("fitemid");
    const int code = rows.column("fnumber");
    const int name = rows.column("fname");
    vsf1_.setRowCount(1);
    std::string cells;
    for (std::size_t row = 0; row < rows.rowCount(); ++row) {
        cells = rows.cell(row, id).value_or("");
        cells.append("\t").append(rows.cell(row, code).value_or(""));
        cells.append("\t").append(rows.cell(row, name).value_or(""));
        vsf1_.addRow(cells);
    }
}

bool EntryList::hasCurrentRow() const { return vsf1_.rowCount() > 1 && vsf1_.currentRow() >= 1; }

void EntryList::takeCurrentId() const { appState().gCurItemId = toInt32(vsf1_.text(vsf1_.currentRow(), 0)); }

void EntryList::updateRow() {
    if (!hasCurrentRow()) return;
    takeCurrentId();
    appState().gEditMode = 1;
    frmJCZL().show();
}

void EntryList::deleteRow() {
    if (!hasCurrentRow() || !askQuestion("确定要删除吗？")) return;
    takeCurrentId();
    const int row = vsf1_.currentRow();
    if (!delJCZL()) return;
    showInformation("数据删除成功！");
    vsf1_.removeRow(row);
    if (vsf1_.rowCount() < 2) return;
    vsf1_.setSelected(row == vsf1_.rowCount() ? row - 1 : row, true);
}

void EntryList::markRow(int row) {
    if (row < 1 || row >= vsf1_.rowCount()) return;
    vsf1_.setCurrentRow(row);
    vsf1_.setSelected(row, true);
}

}  // namespace orvenmod
