#include "hierarchy/itemcommands.h"

#include <string>

#include "frame/appstate.h"
#include "frame/classright.h"
#include "frame/mdlMain.h"
#include "frame/treenodes.h"
#include "hierarchy/frmItemUsage.h"
#include "hierarchy/frmParent.h"
#include "hierarchy/itemroutines.h"
#include "hierarchy/selecteditem.h"
#include "store/classrights.h"

namespace orvenmod {

namespace {

constexpr platform::Colour kDisabled = {175, 0, 0};

}  // namespace

void ItemCommands::MenuEditDelete_Click() {
    if (!isClassRightGranted(store::right::kDeleteDetail) || !takeSelectedItem(list_.vsf1())) return;
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
    if (!takeSelectedItem(list_.vsf1()) || !askQuestion("确定要禁用吗？")) return;
    const int row = list_.vsf1().currentRow();
    if (!lockDetail()) return;
    showInformation("禁用成功！");
    if (row >= 1) list_.vsf1().setRowColour(row, &kDisabled);
}

void ItemCommands::MenuUnLockDetail_Click() {
    if (!takeSelectedItem(list_.vsf1()) || !askQuestion("确定要反禁用吗？")) return;
    const int row = list_.vsf1().currentRow();
    if (!unLockDetail()) return;
    showInformation("反禁用成功！");
    if (row >= 1) list_.vsf1().setRowColour(row, nullptr);
}

void ItemCommands::MenuItemUsage_Click() {
    if (takeSelectedItem(list_.vsf1())) frmItemUsage(appState().gCurItemId).show();
}

void ItemCommands::MenuParentEditNew_Click() {
    if (!isClassRightGranted(store::right::kNewCategory)) return;
    appState().gEditMode = 0;
    frmParent(list_).show();
}

void ItemCommands::MenuParentEditUpdate_Click() {
    if (!isClassRightGranted(store::right::kUpdateCategory)) return;
    const std::string key = list_.tv1().selected();
    if (key.empty()) return;
    appState().gCurItemId = keyNumber(key);
    if (appState().gCurItemId == 0) return;
    appState().gEditMode = 1;
    frmParent(list_).show();
}

void ItemCommands::MenuParentEditDelete_Click() {
    if (!isClassRightGranted(store::right::kDeleteCategory)) return;
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
