#include "editor/shortnumber.h"

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/idcounter.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"

namespace orvenmod {

namespace {

constexpr const char* kFirst = "001";

std::string siblings(std::int32_t parentId) {
    return std::to_string(appState().gItemClassId) + " and fparentid=" + std::to_string(parentId);
}

int greatestLength(std::int32_t parentId) {
    const auto rows =
        openRows("select isnull(max(len(fshortnumber)),1) as fshortnumber from tblitem where fitemclassid=" +
                 siblings(parentId));
    return rows.eof() ? 1 : toInt32(required(rows.field("fshortnumber")));
}

// The comparison is of numbers, so a code that is none fails here.
std::string successor(const std::string& highest) {
    if (toDouble(highest) == 0) return kFirst;
    const std::string next = isNumeric(highest) ? std::to_string(idAfter(toInt32(highest))) : kFirst;
    return next.size() < highest.size() ? std::string(highest.size() - next.size(), '0') + next : next;
}

}  // namespace

std::string getShortNumber(std::int32_t parentId) {
    openDB();
    std::string result = kFirst;
    trapped([&] {
        const int length = greatestLength(parentId);
        const auto rows = openRows(
            "select isnull(max(cast(fshortnumber as varchar(10))),0) as fshortnumber from tblitem where fitemclassid=" +
            siblings(parentId) + " and len(fshortnumber)=" + std::to_string(length));
        result = rows.eof() ? "" : successor(required(rows.field("fshortnumber")));
        return true;
    });
    return result;
}

}  // namespace orvenmod
