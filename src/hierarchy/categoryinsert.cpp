#include "hierarchy/categoryinsert.h"

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"

namespace orvenmod {

namespace {

store::Recordset openRows(const std::string& sql) { return appState().gConn->open(sql); }

bool codeIsTaken(const std::string& code) {
    return !openRows("select fitemid from tblitem where fnumber='" + code +
                     "' and fitemclassid=" + std::to_string(appState().gItemClassId))
                .eof();
}

std::string takeId() {
    const store::Recordset counter = openRows("select fmaxNum from tblMaxNum where fTablename='tblItem'");
    const std::int64_t last = counter.eof() ? 0 : toInt32(required(counter.field("fmaxnum")));
    appState().gConn->execute(counter.eof() ? "insert into tblMaxNum(fMaxNum,fTableName) values(1,'tblItem')"
                                            : "update tblMaxnum set fMaxnum=fMaxNum+1  where fTablename='tblItem' ");
    return std::to_string(last + 1);
}

void insertRow(const CategoryChange& wanted, const std::string& id) {
    std::int32_t depth = 1;
    std::string path = "." + id + ".";
    const std::string parentId = std::to_string(toInt32(wanted.parentId));
    if (parentId != "0") {
        const store::Recordset parent = openRows("select fnbnumber,fdepth from tblItem where fitemid=" + parentId);
        depth = parent.eof() ? 0 : toInt32(required(parent.field("fdepth"))) + 1;
        path = parent.eof() ? "" : parent.text("fnbnumber") + id + ".";
    }
    appState().gConn->execute(
        "insert into tblitem(fitemid,fshortnumber,fnumber,fname,fitemclassid,fparentid,fisdetail,fdepth,fstatus,"
        "fcheckerid,fislock,flockerid,ffullname,fnbnumber) values(" +
        id + ",'" + wanted.shortCode + "','" + wanted.code + "','" + wanted.name + "'" + "," +
        std::to_string(appState().gItemClassId) + "," + parentId + ",0," + std::to_string(depth) + ",0,0,0,0,'','" +
        path + "')");
}

}  // namespace

bool insertCategory(const CategoryChange& wanted) {
    return trapped([&] {
        openDB();
        const bool refused = codeIsTaken(wanted.code);
        if (refused) {
            showWarning("代码不能重复!");
        } else {
            insertRow(wanted, takeId());
        }
        return !refused;
    });
}

}  // namespace orvenmod
