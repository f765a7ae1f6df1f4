#include "editor/fieldsource.h"

#include <string>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/openrows.h"
#include "store/itemclass.h"

namespace orvenmod {

namespace {

std::string classId() { return std::to_string(appState().gItemClassId); }

// A dictionary's statement has no condition between its two words and is refused by the database: a class with such a
// field opens with the rows before it.
std::string entriesQuery(const store::Recordset& field) {
    const bool dictionary = trim(field.text("FItemType")) == store::kDictionary;
    const std::string source = dictionary ? " tblSubType where " : " tblItem where fisdetail=1 ";
    return "select * from " + source + " and   fitemclassid=" + field.text("fvalueitemid") + " order by fnumber ";
}

}  // namespace

store::Recordset readFields() {
    return openRows("select * from tblTableInfo where fitemclassid=" + classId() + " and fisvisible=1 " +
                    " order by finterid");
}

// A limit that was left empty is stored as 0: no number but 0 would keep two of them, and none at all one on the wrong
// side of the other.
platform::NumberRule numberRule(const store::Recordset& field) {
    platform::NumberRule rule;
    const std::string maximum = field.text("FMaxNumber");
    const std::string minimum = field.text("FMinNumber");
    if (!field.text("FNumberDec").empty()) rule.decimals = toInt16(field.text("FNumberDec"));
    const double most = maximum.empty() ? 0 : toDouble(maximum);
    const double least = minimum.empty() ? 0 : toDouble(minimum);
    if (!maximum.empty() && (most != 0 || least < 0)) rule.maximum = most;
    if (!minimum.empty() && (least != 0 || most > 0)) rule.minimum = least;
    return rule;
}

store::Recordset readEntries(const store::Recordset& field) { return openRows(entriesQuery(field)); }

std::unique_ptr<store::ListRows> listEntries(const store::Recordset& field) {
    return appState().gConn->openUnseen(entriesQuery(field));
}

store::Recordset readCategories() {
    return openRows(
        "select fName,fItemid,fdepth,isnull(fnumber,'') as fnumber from tblItem where fisdetail=0 "
        " and fitemclassid=" +
        classId() + " order by fnumber,fnbnumber,fdepth");
}

}  // namespace orvenmod
