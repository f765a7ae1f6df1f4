#include "editor/itemstore.h"

#include <functional>
#include <string>
#include <vector>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"

namespace orvenmod {

namespace {

// Not trappedTransaction: where the store can't be opened the rollback is tried as well, and its own failure goes up to
// the event loop, as it does where no transaction is open.
bool trappedSave(const std::function<bool()>& work) {
    const auto showAndUndo = [](const std::string& failure) {
        showCritical(failure);
        rollbackTrans();
    };
    return trapped(work, showAndUndo);
}

}  // namespace

bool ItemStore::insert() {
    refusedRow_ = 0;
    return trappedSave([this] { return insertItem(); });
}

bool ItemStore::update() {
    refusedRow_ = 0;
    return trappedSave([this] { return updateItem(); });
}

bool ItemStore::insertItem() {
    AppState& state = appState();
    openDB();
    const ItemDraft item = draft();
    if (!codeIsFree(item, "") || !nameIsWanted(item, "")) return false;
    const std::int32_t itemId = takeItemId();
    const std::vector<std::string> rows = newItemRows(item, itemId);
    state.gCurItemId = itemId;
    state.gConn->beginTrans();
    state.gConn->executeAll(rows);
    photo_.store(itemId);
    attachments_.storeAll(itemId);
    state.gConn->commitTrans();
    return true;
}

bool ItemStore::updateItem() {
    AppState& state = appState();
    const std::int32_t itemId = state.gCurItemId;
    const ItemDraft item = draft();
    openDB();
    if (isItemLocked(itemId)) {
        showWarning(kLockedItem);
        return false;
    }
    if (!codeIsFree(item, butItself(itemId)) || !nameIsWanted(item, butItself(itemId))) return false;
    const std::vector<std::string> rows = changedItemRows(item, itemId);
    state.gConn->beginTrans();
    state.gConn->executeAll(rows);
    photo_.store(itemId);
    attachments_.storeChanges(itemId);
    state.gConn->commitTrans();
    return true;
}

bool ItemStore::codeIsFree(const ItemDraft& item, const std::string& others) {
    if (!codeIsTaken(item, others)) return true;
    showWarning(kTakenCode);
    refusedRow_ = kShortCodeRow;
    return false;
}

bool ItemStore::nameIsWanted(const ItemDraft& item, const std::string& others) {
    if (!nameIsTaken(item, others) || askQuestion(trim(item.texts.name) + "名称已经存在,是否继续!")) return true;
    refusedRow_ = kNameRow;
    return false;
}

ItemDraft ItemStore::draft() const {
    return {.classFields = fields_.classFields(),
            .texts = {.number = fields_.code(), .name = fields_.name(), .shortNumber = fields_.shortCode()},
            .categoryId = fields_.categoryId()};
}

}  // namespace orvenmod
