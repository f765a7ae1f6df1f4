#include "hierarchy/itemcommands.h"

#include <string>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/treenodes.h"
#include "hierarchy/frmParent.h"
#include "hierarchy/itemroutines.h"

namespace orvenmod {

namespace {

constexpr platform::Colour kDisabled = {175, 0, 0};

bool isGranted(const char* digits) {
    return isHaveRight(appState().gRightPrefix + std::to_string(appState().gItemClassId) + digits);
}

}  // namespace

// Of several selected rows the last decides: the commands act on one item alone.
bool ItemCommands::takeSelectedItem() {
    const platform::ListGrid& vsf1 = list_.vsf1();
    bool found = false;
    for (int row = 1; row < vsf1.rowCount(); ++row) {
        if (!vsf1.isSelected(row)) continue;
        appState().gCurItemId = toInt32(vsf1.text(row, 1));
        found = true;
    }
    return found;
}

void ItemCommands::MenuEditDelete_Click() {
    if (!isGranted("06") || !takeSelectedItem()) return;
    if (!askQuestion("确定要删除吗？")) return;
    if (!delDetail()) return;
    showInformation("数据删除成功！");
    platform::ListGrid& vsf1 = list_.vsf1();
    const int row = vsf1.currentRow();
    if (row < 1) return;
    vsf1.removeRow(row);
    if (row < vsf1.rowCount()) vsf1.setCurrentRow(row);
}

void ItemCommands::MenuLockDetail_Click() {
    if (!takeSelectedItem() || !askQuestion("确定要禁用吗？")) return;
    const int row = list_.vsf1().currentRow();
    if (!lockDetail()) return;
    showInformation("禁用成功！");
    if (row >= 1) list_.vsf1().setRowColour(row, &kDisabled);
}

void ItemCommands::MenuUnLockDetail_Click() {
    if (!takeSelectedItem() || !askQuestion("确定要反禁用吗？")) return;
    const int row = list_.vsf1().currentRow();
    if (!unLockDetail()) return;
    showInformation("反禁用成功！");
    if (row >= 1) list_.vsf1().setRowColour(row, nullptr);
}

void ItemCommands::MenuParentEditNew_Click() {
    if (!isGranted("01")) return;
    appState().gEditMode = 0;
    frmParent(list_).show();
}

void ItemCommands::MenuParentEditUpdate_Click() {
    if (!isGranted("02")) return;
    const std::string key = list_.tv1().selected();
    if (key.empty()) return;
    appState().gCurItemId = keyNumber(key);
    if (appState().gCurItemId == 0) return;
    appState().gEditMode = 1;
    frmParent(list_).show();
}

void ItemCommands::MenuParentEditDelete_Click() {
    if (!isGranted("03")) return;
    platform::Tree& tv1 = list_.tv1();
    const std::string key = tv1.selected();
    const std::int32_t id = keyNumber(key);
    if (id == 0) return;
    if (!askQuestion("确定要删除吗？")) return;
    const int index = tv1.indexOf(key);
    if (!delParent(id)) return;
    showInformation("删除成功!");
    tv1.remove(key);
    selectIndex(tv1, index);
}

}  // namespace orvenmod
