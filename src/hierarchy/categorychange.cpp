#include "hierarchy/categorychange.h"

#include "frame/conversion.h"
#include "frame/openrows.h"

namespace orvenmod {

CategoryPlace placeBelow(std::int32_t parentId, const std::string& id) {
    if (parentId == 0) return {"." + id + ".", 1};
    const store::Recordset parent =
        openRows("select fnbnumber,fdepth from tblItem where fitemid=" + std::to_string(parentId));
    if (parent.eof()) return {};
    const std::int32_t depth = toInt32(required(parent.field("fdepth"))) + 1;
    return {parent.text("fnbnumber") + id + ".", depth};
}

bool isCodeTaken(const std::string& code, const std::string& others) {
    return !openRows("select fitemid from tblitem where fnumber='" + code +
                     "' and fitemclassid=" + std::to_string(appState().gItemClassId) + others)
                .eof();
}

}  // namespace orvenmod
