#include "hierarchy/frmItemUsage.h"

#include <string>

#include "frame/mdlMain.h"
#include "frame/services.h"
#include "hierarchy/frmItemUsage_design.h"
#include "platform/controls.h"
#include "platform/listgrid.h"

namespace orvenmod {

frmItemUsage::frmItemUsage(std::int32_t itemId)
    : itemId_(itemId), window_(services().toolkit.createWindow(itemUsageDesign())) {}

void frmItemUsage::show() {
    std::string item;
    std::vector<FamilyUsage> usage;
    const bool read = trapped([&] {
        openDB();
        item = usedItem(itemId_);
        usage = itemUsage(itemId_);
        return true;
    });
    if (!read) return;
    window_->get<platform::Button>("cmdClose").click = [this] { window_->close(); };
    window_->showModal([&] { fill(item, usage); });
}

void frmItemUsage::fill(const std::string& item, const std::vector<FamilyUsage>& usage) {
    auto& list = window_->get<platform::ListGrid>("vsfUsage");
    bool used = false;
    for (const FamilyUsage& family : usage) {
        std::string latest;
        for (const std::string& bill : family.latest)
            latest += (latest.empty() ? "" : ", ") + bill;
        list.addRow(family.family + "\t" + family.bills + "\t" + latest + "\t" + (family.balance ? "有" : ""));
        used = used || family.bills != "0" || family.balance;
    }
    list.setCurrentRow(1);
    window_->get<platform::Label>("lblItem").setCaption(
        "【" + item + "】" + (used ? "以下单据使用了该项目，每类列出最近十张：" : "没有单据使用该项目。"));
    list.setFocus();
}

}  // namespace orvenmod
