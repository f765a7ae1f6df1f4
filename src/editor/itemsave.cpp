#include "editor/itemsave.h"

#include "editor/photo.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/idcounter.h"
#include "frame/openrows.h"

namespace orvenmod {

namespace {

std::string classId() { return std::to_string(appState().gItemClassId); }

constexpr IdCounter kItemIds = {"select * from tblMaxnum where ftablename='tblItem'",
                                "insert into tblMaxNum(ftablename,fMaxNum) values('tblItem',1)",
                                "update tblMaxNum set  fmaxnum=fmaxnum+1  where ftablename='tblItem'"};

Place placeOf(const std::string& parent, std::int32_t itemId) {
    const std::string own = std::to_string(itemId) + ".";
    if (parent.empty() || parent == "-1" || parent == "0") return {"0", "1", "." + own};
    const auto rows = openRows("select fnbnumber,fdepth,fitemid from tblItem where fitemid=" + parent +
                               " and fitemclassid=" + classId() + " and fisdetail=0 ");
    if (rows.eof()) return {};
    return {rows.text("fitemid"), std::to_string(toInt32(required(rows.field("fdepth"))) + 1),
            required(rows.field("fNBNumber")) + own};
}

}  // namespace

std::string butItself(std::int32_t itemId) { return " and fitemid<>" + std::to_string(itemId); }

std::optional<bool> itemLock(std::int32_t itemId) {
    const auto rows = openRows("select fislock as fislock1 from tblItem where fitemid=" + std::to_string(itemId));
    if (rows.eof()) return std::nullopt;
    return rows.text("fislock1", "0") == "1";
}

bool codeIsTaken(const ItemDraft& item, const std::string& others) {
    return !openRows("select * from tblItem where fnumber='" + trim(item.texts.number) +
                     "' and fitemclassid=" + classId() + others)
                .eof();
}

bool nameIsTaken(const ItemDraft& item, const std::string& others) {
    return !openRows("select * from tblItem where fname='" + trim(item.texts.name) + "' and fitemclassid=" + classId() +
                     others + " and fisdetail=1 ")
                .eof();
}

std::int32_t takeItemId() { return takeId(kItemIds); }

std::vector<std::string> newItemRows(const ItemDraft& item, std::int32_t itemId) {
    const AppState& state = appState();
    return {classInsert(state.gItemTable, item.classFields, itemId),
            itemInsert(itemId, item.texts, state.gItemClassId, placeOf(item.categoryId, itemId))};
}

std::vector<std::string> changedItemRows(const ItemDraft& item, std::int32_t itemId) {
    std::vector<std::string> rows = {classUpdate(appState().gItemTable, item.classFields, itemId),
                                     itemUpdate(itemId, item.texts, placeOf(item.categoryId, itemId))};
    if (appState().gItemClassId == kPhotoClass)
        rows.push_back("delete from icitemphoto where fitemid=" + std::to_string(itemId));
    return rows;
}

}  // namespace orvenmod
