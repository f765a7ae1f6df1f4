#include "hierarchy/itemroutines.h"

#include <string>
#include <vector>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "hierarchy/frmItemUsage.h"
#include "hierarchy/usageguard.h"

namespace orvenmod {

namespace {

struct LockChange {
    const char* test;  // counts the item where it is so already
    const char* refusal;
    const char* change;
};

constexpr LockChange kLock = {"select count(fitemid) as fitemid1 from tblItem where fisLock=1 and fitemid=",
                              "该项目已经禁用！", "update tblItem set fisLock=1  where fitemid="};
constexpr LockChange kUnLock = {"select count(fitemid) as fitemid1 from tblItem where fisLock=0 and fitemid=",
                                "该项目未禁用！", "update tblItem set fisLock=0  where fitemid="};

bool changeLock(const LockChange& wanted) {
    return trapped([&] {
        openDB();
        const std::string id = std::to_string(appState().gCurItemId);
        const bool refused = toInt32(required(openRows(wanted.test + id).field("fitemid1"))) > 0;
        if (refused) {
            showWarning(wanted.refusal);
        } else {
            appState().gConn->execute(wanted.change + id);
        }
        return !refused;
    });
}

// What speaks against the delete of an item: its lock, told by its name, comes before any bill.
DeleteRefusal refusalOf(std::int32_t itemId) {
    store::Recordset rows = openRows("select fislock,fname from tblItem where fitemid=" + std::to_string(itemId));
    for (; !rows.eof(); rows.moveNext()) {
        if (toInt32(rows.text("fislock", "0")) == 1) return {rows.text("fname") + "已经禁用,不能删除!"};
    }
    return {usageOf(itemId, Guarded::item), DeleteRefusal::Cause::used};
}

}  // namespace

DeleteRefusal deleteUnused(std::int32_t itemId) {
    DeleteRefusal refusal = refusalOf(itemId);
    if (!refusal.text.empty()) return refusal;
    const std::string id = std::to_string(itemId);
    store::Connection& connection = *appState().gConn;
    connection.beginTrans();
    connection.executeAll(std::vector{"delete from tblItem where fitemid=" + id,
                                      "delete from " + appState().gItemTable + "  where fitemid=" + id,
                                      "delete from tblItemFJ where fitemid=" + id});
    connection.commitTrans();
    return {};
}

bool delDetail() {
    bool usageAsked = false;
    const bool deleted = trappedTransaction([&usageAsked] {
        openDB();
        const DeleteRefusal refusal = deleteUnused(appState().gCurItemId);
        if (refusal.text.empty()) return true;
        if (refusal.cause == DeleteRefusal::Cause::used) {
            usageAsked = showWarningOffering(refusal.text, "使用情况(&S)");
        } else {
            showWarning(refusal.text);
        }
        return false;
    });
    if (usageAsked) frmItemUsage(appState().gCurItemId).show();
    return deleted;
}

std::string deleteEmptyCategory(std::int32_t id) {
    const std::string number = std::to_string(id);
    if (!openRows("select top 1 fitemid from tblItem where fparentid=" + number).eof())
        return "该分类下面还有明细，不能删除!";
    appState().gConn->execute("delete from tblItem where fitemid=" + number);
    return "";
}

bool lockDetail() { return changeLock(kLock); }

bool unLockDetail() { return changeLock(kUnLock); }

bool delParent(const std::int32_t& id) {
    return trapped([&] {
        openDB();
        const std::string refusal = deleteEmptyCategory(id);
        if (!refusal.empty()) showWarning(refusal);
        return refusal.empty();
    });
}

}  // namespace orvenmod
