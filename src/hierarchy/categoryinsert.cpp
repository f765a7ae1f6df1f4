#include "hierarchy/categoryinsert.h"

#include "frame/conversion.h"
#include "frame/idcounter.h"
#include "frame/openrows.h"

namespace orvenmod {

namespace {

constexpr IdCounter kItemIds = {"select fmaxNum from tblMaxNum where fTablename='tblItem'",
                                "insert into tblMaxNum(fMaxNum,fTableName) values(1,'tblItem')",
                                "update tblMaxnum set fMaxnum=fMaxNum+1  where fTablename='tblItem' "};

}  // namespace

std::optional<CategoryRefusal> storeCategory(const CategoryChange& wanted) {
    if (isCodeTaken(wanted.code)) return CategoryRefusal::codeTaken;
    const std::string id = std::to_string(takeId(kItemIds));
    const std::int32_t parentId = toInt32(wanted.parentId);
    const CategoryPlace place = placeBelow(parentId, id);
    appState().gConn->execute(
        "insert into tblitem(fitemid,fshortnumber,fnumber,fname,fitemclassid,fparentid,fisdetail,fdepth,fstatus,"
        "fcheckerid,fislock,flockerid,ffullname,fnbnumber) values(" +
        id + ",'" + wanted.shortCode + "','" + wanted.code + "','" + wanted.name + "'" + "," +
        std::to_string(appState().gItemClassId) + "," + std::to_string(parentId) + ",0," + std::to_string(place.depth) +
        ",0,0,0,0,'','" + place.path + "')");
    return std::nullopt;
}

}  // namespace orvenmod
