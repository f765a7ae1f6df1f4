#include "editor/itemload.h"

#include <string>

#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"

namespace orvenmod {

namespace {

void showFields(FieldGrid& fields, const store::Recordset& item) {
    for (int row = 1; row < fields.lastRow(); ++row) {
        const FieldRow field = fields.field(row);
        const std::string column = trim(field.fieldName);
        if (field.isReference()) {
            fields.showReference(row, item.text(column, "0"), item.text(column + "Name"));
        } else {
            fields.showValue(row, item.text(column));
        }
    }
}

void showCategory(FieldGrid& fields, const store::Recordset& item) {
    fields.chooseCategory(item.text("fparentid", "0"), item.text("fParentIdNumber", "0"));
    const std::int32_t depth = toInt32(item.text("fParentDepth", "1"));
    appState().gCurParentId = toInt32(required(item.field("fparentid")));
    fields.showCategory(categoryText(depth, item.text("fparentidName"), item.text("fparentidnumber")));
}

}  // namespace

bool getBasicInfo(FieldGrid& fields, Photo& photo, Attachments& attachments) {
    openDB();
    return trapped([&] {
        const auto item = openRows("select * from " + appState().gViewName +
                                   " where fitemid=" + std::to_string(appState().gCurItemId));
        if (item.eof()) {
            showWarning("数据读取错误！");
            return false;
        }
        showFields(fields, item);
        showCategory(fields, item);
        if (appState().gItemClassId == kPhotoClass) photo.load();
        attachments.load();
        return true;
    });
}

}  // namespace orvenmod
