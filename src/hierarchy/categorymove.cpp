#include "hierarchy/categorymove.h"

#include <exception>
#include <string_view>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/services.h"

namespace orvenmod {

namespace {

constexpr int kInvalidCall = 5;
constexpr int kRowsBetweenPaints = 100;

// Where a category stands: as stored, or as it is to be.
struct Place {
    std::string path;
    std::int32_t depth = 0;
    std::string code;
};

store::Recordset openRows(const std::string& sql) { return appState().gConn->open(sql); }

std::string replaceAll(std::string text, std::string_view what, std::string_view by) {
    if (what.empty()) return text;
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
        text.replace(at, what.size(), by);
    }
    return text;
}

// The code from the place of the old one on, with the old one replaced. A code that doesn't hold it has no such place.
std::string movedCode(const std::string& code, const std::string& oldCode, const std::string& newCode) {
    const auto at = code.find(oldCode);
    if (code.empty() || at == std::string::npos) throw ConversionFailure(kInvalidCall, "无效的过程调用或参数");
    if (oldCode.empty()) return code;
    return newCode + code.substr(at + oldCode.size());
}

class Move {
public:
    explicit Move(const CategoryChange& wanted)
        : wanted_(wanted),
          id_(std::to_string(appState().gCurItemId)),
          class_(std::to_string(appState().gItemClassId)) {}

    bool isRefused() {
        if (codeIsTaken()) {
            showWarning("代码不能重复!");
            return true;
        }
        readPlaces();
        if (!isBelowItself()) return false;
        showWarning("新分类设置不正确，不能设置在原有分类及其以下分类，请检查！");
        return true;
    }

    void store() {
        store::Connection& connection = *appState().gConn;
        connection.beginTrans();
        connection.execute("update tblItem set fDepth=fDepth+" + std::to_string(new_.depth - old_.depth) +
                           " where fNBNumber like '" + old_.path + "%' and fitemclassid=" + class_);
        moveRows();
        connection.execute(" update tblItem set fname='" + wanted_.name + "'," + "fParentid=" + parentId_ +
                           ",fNBNumber='" + new_.path + "',fDepth=" + std::to_string(new_.depth) + ",fShortNumber='" +
                           wanted_.shortCode + "',fnumber='" + new_.code + "'" + " where fitemid=" + id_);
        connection.commitTrans();
    }

private:
    bool codeIsTaken() const {
        return !openRows("select fitemid from tblitem where fnumber='" + wanted_.code + "' and fitemclassid=" + class_ +
                         " and fitemid<>" + id_)
                    .eof();
    }

    void readPlaces() {
        const store::Recordset rows = openRows("select fNBNumber,fDepth,fNumber  from tblItem where fitemid=" + id_);
        old_ = {required(rows.field("fNBNumber")), toInt32(required(rows.field("fDepth"))),
                required(rows.field("fNumber"))};
        new_.code = wanted_.code;
        const std::int32_t parentId = toInt32(wanted_.parentId);
        parentId_ = std::to_string(parentId);
        if (parentId == 0) {
            new_.depth = 1;
            new_.path = "." + id_ + ".";
            return;
        }
        // Without the parent's row depth and path stay empty, as they are then written.
        const store::Recordset parent = openRows("select fnbnumber,fdepth from tblItem where fitemid=" + parentId_);
        if (parent.eof()) return;
        new_.depth = toInt32(required(parent.field("fdepth"))) + 1;
        new_.path = parent.text("fnbnumber") + id_ + ".";
    }

    bool isBelowItself() const {
        if (parentId_ == "0") return false;
        return !openRows("select fNBNumber from tblItem where fitemid=" + parentId_ +
                         " and fDepth>=" + std::to_string(old_.depth) + " and fNBNumber like '" + old_.path + "%'")
                    .eof();
    }

    // The category's own row is among them; the statement that ends the move has the last word on it.
    void moveRows() const {
        int moved = 0;
        store::Recordset rows = openRows("select fNBNumber,fitemid,fnumber from tblItem where fitemclassid=" + class_ +
                                         "  and fNBNumber like '" + old_.path + "%'");
        for (; !rows.eof(); rows.moveNext()) {
            moveRow(rows);
            if (++moved % kRowsBetweenPaints == 0) services().toolkit.paintPending();
        }
    }

    void moveRow(const store::Recordset& row) const {
        const std::string code = movedCode(required(row.field("fnumber")), old_.code, new_.code);
        const std::string path = replaceAll(required(row.field("fNBNumber")), old_.path, new_.path);
        const std::string id = row.text("fitemid");
        store::Connection& connection = *appState().gConn;
        connection.execute("update tblItem set fNBNumber='" + path + "' ,fNumber='" + code + "' where fitemid=" + id);
        connection.execute("update " + appState().gItemTable + " set " + " fNumber='" + code + "' where fitemid=" + id);
    }

    const CategoryChange& wanted_;
    const std::string id_;
    const std::string class_;
    std::string parentId_;
    Place old_;
    Place new_;
};

}  // namespace

bool moveCategory(const CategoryChange& wanted) {
    try {
        openDB();
        Move move(wanted);
        const bool refused = move.isRefused();
        if (!refused) move.store();
        closeDB();
        return !refused;
    } catch (const std::exception& failure) {
        showCritical(failure.what());
        if (appState().gConn) rollbackTrans();
        closeDB();
        return false;
    }
}

}  // namespace orvenmod
