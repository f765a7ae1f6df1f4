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

enum class Deletion { free, refused, usageAsked };

// Whether something speaks against the delete of an item, told to the user: its lock, by its name, comes before any
// bill.
Deletion tellRefusal(const std::string& id) {
    store::Recordset rows = openRows("select fislock,fname from tblItem where fitemid=" + id);
    for (; !rows.eof(); rows.moveNext()) {
        if (toInt32(rows.text("fislock", "0")) != 1) continue;
        showWarning(rows.text("fname") + "已经禁用,不能删除!");
        return Deletion::refused;
    }
    const std::string usage = usageOf(appState().gCurItemId, Guarded::item);
    if (usage.empty()) return Deletion::free;
    return showWarningOffering(usage, "使用情况(&S)") ? Deletion::usageAsked : Deletion::refused;
}

}  // namespace

bool delDetail() {
    Deletion deletion = Deletion::free;
    const bool deleted = trappedTransaction([&deletion] {
        openDB();
        const std::string id = std::to_string(appState().gCurItemId);
        deletion = tellRefusal(id);
        if (deletion != Deletion::free) return false;
        store::Connection& connection = *appState().gConn;
        connection.beginTrans();
        connection.executeAll(std::vector{"delete from tblItem where fitemid=" + id,
                                          "delete from " + appState().gItemTable + "  where fitemid=" + id,
                                          "delete from tblItemFJ where fitemid=" + id});
        connection.commitTrans();
        return true;
    });
    if (deletion == Deletion::usageAsked) frmItemUsage(appState().gCurItemId).show();
    return deleted;
}

bool lockDetail() { return changeLock(kLock); }

bool unLockDetail() { return changeLock(kUnLock); }

bool delParent(const std::int32_t& id) {
    return trapped([&] {
        openDB();
        const std::string number = std::to_string(id);
        const bool refused = !openRows("select top 1 fitemid from tblItem where fparentid=" + number).eof();
        if (refused) {
            showWarning("该分类下面还有明细，不能删除!");
        } else {
            appState().gConn->execute("delete from tblItem where fitemid=" + number);
        }
        return !refused;
    });
}

}  // namespace orvenmod
