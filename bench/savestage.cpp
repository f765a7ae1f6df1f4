#include "savestage.h"

#include "editor/fieldrow.h"
#include "editor/frmBasicInfo.h"
#include "entry/startup.h"
#include "frame/appstate.h"
#include "platform/controls.h"
#include "subtree.h"

namespace orvenmod::bench {

SaveStage::SaveStage(std::string target) : target_(std::move(target)) {
    const auto connection = componentStore().connect(target_);
    counter_ = connection->open("select fMaxNum from tblMaxNum where fTableName='tblItem'").text("fMaxNum");
    // The category with the most goods: the next code is sought among them.
    category_ = std::stoi(connection
                              ->open("select top 1 fParentId from tblItem where fItemClassId=3 and fIsDetail=1 "
                                     "group by fParentId order by count(*) desc")
                              .text("fParentId"));
    connection->close();
}

void SaveStage::chooseGoods() const {
    AppState& state = appState();
    state.gConnStr = target_;
    state.gItemClassId = 3;
    state.gItemName = "货品";
    state.gItemTable = "ICItem";
    state.gViewName = "vICItem";
    state.gIsAdmin = 1;
}

double SaveStage::save(MemoryStage& windows, const Clock& clock) const {
    chooseGoods();
    appState().gEditMode = 0;
    appState().gCurParentId = category_;
    double took = 0;
    windows.onWindow("frmBasicInfo", [&](platform::memory::MemoryWindow& window) {
        window.get<platform::EntryGrid>("fps1").setText(kValue, kNameRow, "一件新货品");
        windows.forgetRecords();
        took = leastOf(
            1, [&] { window.get<platform::Toolbar>("Toolbar1").buttonClick.raise("Save"); }, clock);
    });
    frmBasicInfo::instance().show(nullptr);
    windows.check();
    return took;
}

void SaveStage::restore() const {
    const auto connection = componentStore().connect(target_);
    for (const char* table : {"tblItem", "ICItem"})
        connection->execute("delete from " + std::string(table) + " where fItemId>" + counter_ + " and fItemId<" +
                            std::to_string(kMoveTarget));
    connection->execute("update tblMaxNum set fMaxNum=" + counter_ + " where fTableName='tblItem'");
    connection->close();
}

}  // namespace orvenmod::bench
