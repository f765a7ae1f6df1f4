#include "editor/itemstore.h"

#include <functional>
#include <string>
#include <vector>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/idcounter.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"

namespace orvenmod {

namespace {

std::string classId() { return std::to_string(appState().gItemClassId); }

std::string butItself(std::int32_t itemId) { return " and fitemid<>" + std::to_string(itemId); }

constexpr IdCounter kItemIds = {"select * from tblMaxnum where ftablename='tblItem'",
                                "insert into tblMaxNum(ftablename,fMaxNum) values('tblItem',1)",
                                "update tblMaxNum set  fmaxnum=fmaxnum+1  where ftablename='tblItem'"};

bool isLocked(std::int32_t itemId) {
    const auto rows = openRows("select fislock as fislock1 from tblItem where fitemid=" + std::to_string(itemId));
    return !rows.eof() && rows.text("fislock1", "0") == "1";
}

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
    if (!codeIsFree("") || !nameIsWanted("")) return false;
    const std::int32_t itemId = takeId(kItemIds);
    const std::string classRow = classInsert(state.gItemTable, fields_.classFields(), itemId);
    const std::string itemRow = itemInsert(itemId, texts(), state.gItemClassId, place(itemId));
    state.gCurItemId = itemId;
    state.gConn->beginTrans();
    state.gConn->executeAll(std::vector{classRow, itemRow});
    photo_.store(itemId);
    attachments_.storeAll(itemId);
    state.gConn->commitTrans();
    return true;
}

bool ItemStore::updateItem() {
    AppState& state = appState();
    const std::int32_t itemId = state.gCurItemId;
    const std::string classRow = classUpdate(state.gItemTable, fields_.classFields(), itemId);
    openDB();
    if (isLocked(itemId)) {
        showWarning("该项目已经禁用!不能修改");
        return false;
    }
    if (!codeIsFree(butItself(itemId)) || !nameIsWanted(butItself(itemId))) return false;
    const std::string itemRow = itemUpdate(itemId, texts(), place(itemId));
    state.gConn->beginTrans();
    std::vector<std::string> statements = {classRow, itemRow};
    if (state.gItemClassId == kPhotoClass) {
        statements.push_back("delete from icitemphoto where fitemid=" + std::to_string(itemId));
    }
    state.gConn->executeAll(statements);
    photo_.store(itemId);
    attachments_.storeChanges(itemId);
    state.gConn->commitTrans();
    return true;
}

// Categories count as well: an item can't take the code of one.
bool ItemStore::codeIsFree(const std::string& others) {
    const std::string code = trim(fields_.code());
    if (openRows("select * from tblItem where fnumber='" + code + "' and fitemclassid=" + classId() + others).eof()) {
        return true;
    }
    showWarning("代码已经存在,保存不成功!");
    refusedRow_ = kShortCodeRow;
    return false;
}

bool ItemStore::nameIsWanted(const std::string& others) {
    const std::string name = trim(fields_.name());
    const auto rows = openRows("select * from tblItem where fname='" + name + "' and fitemclassid=" + classId() +
                               others + " and fisdetail=1 ");
    if (rows.eof() || askQuestion(name + "名称已经存在,是否继续!")) return true;
    refusedRow_ = kNameRow;
    return false;
}

ItemTexts ItemStore::texts() const {
    return {.number = fields_.code(), .name = fields_.name(), .shortNumber = fields_.shortCode()};
}

// A category that is gone leaves the item without a place: depth and parent 0, an empty path.
Place ItemStore::place(std::int32_t itemId) const {
    const std::string own = std::to_string(itemId) + ".";
    const std::string parent = fields_.categoryId();
    if (parent.empty() || parent == "-1" || parent == "0") return {"0", "1", "." + own};
    const auto rows = openRows("select fnbnumber,fdepth,fitemid from tblItem where fitemid=" + parent +
                               " and fitemclassid=" + classId() + " and fisdetail=0 ");
    if (rows.eof()) return {};
    return {rows.text("fitemid"), std::to_string(toInt32(required(rows.field("fdepth"))) + 1),
            required(rows.field("fNBNumber")) + own};
}

}  // namespace orvenmod
