#include "editor/attachments.h"

#include "editor/binaryfile.h"
#include "frame/appstate.h"
#include "frame/classright.h"
#include "frame/conversion.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"
#include "frame/services.h"
#include "store/classrights.h"

namespace orvenmod {

namespace {

constexpr int kDelete = 1;
constexpr int kOpen = 2;
constexpr int kCaptionColumn = 3;
constexpr int kFileName = 4;
constexpr int kPath = 5;

bool isStored(const std::string& tag) { return !tag.empty() && tag != "0"; }

std::string currentItem() { return std::to_string(appState().gCurItemId); }

}  // namespace

void Attachments::load() {
    store::Recordset rows = openRows("select fentryid,fName,fFileName from tblItemFJ where fitemid=" + currentItem());
    clear();
    for (; !rows.eof(); rows.moveNext()) {
        add(rows.text("fName"), rows.text("fFileName"), "");
        fps2_.setCellTag(kDelete, fps2_.rowCount(), rows.text("fentryid"));
    }
}

void Attachments::add(const std::string& caption, const std::string& fileName, const std::string& path) {
    const int row = fps2_.rowCount() + 1;
    fps2_.setRowCount(row);
    fps2_.setText(kCaptionColumn, row, caption);
    fps2_.setRequired(kCaptionColumn, row, true);
    fps2_.setText(kFileName, row, fileName);
    fps2_.setText(kPath, row, path);
}

void Attachments::storeRow(std::int32_t itemId, int row) const {
    const auto content = readFile(fps2_.text(kPath, row));
    const auto rows = appState().gConn->openTable("tblItemFJ");
    rows->addNew();
    rows->set("fitemid", std::to_string(itemId));
    rows->setBinary("fFJ", content);
    rows->set("fFileName", fps2_.text(kFileName, row));
    rows->set("fentryid", std::to_string(row));
    rows->set("fName", fps2_.text(kCaptionColumn, row));
    rows->update();
}

void Attachments::storeAll(std::int32_t itemId) const {
    for (int row = 1; row <= fps2_.rowCount(); ++row)
        storeRow(itemId, row);
}

void Attachments::storeChanges(std::int32_t itemId) const {
    for (int row = 1; row <= fps2_.rowCount(); ++row) {
        const std::string entryId = fps2_.cellTag(kDelete, row);
        if (!isStored(entryId)) {
            storeRow(itemId, row);
            continue;
        }
        appState().gConn->execute("update tblItemFJ set fName='" + trim(fps2_.text(kCaptionColumn, row)) +
                                  "' where fitemid=" + std::to_string(itemId) + " and fentryid=" + entryId);
    }
}

int Attachments::checkCaptions() const {
    for (int row = 1; row <= fps2_.rowCount(); ++row) {
        if (!trim(fps2_.text(kCaptionColumn, row)).empty()) continue;
        showWarning("附件第" + std::to_string(row) + "行名称不能为空!");
        return row;
    }
    return 0;
}

void Attachments::showCaption(int row) {
    fps2_.setActiveCell(kCaptionColumn, row);
    fps2_.setFocus();
}

void Attachments::removeOpened() {
    if (!fjTempFile_.empty()) removeFile(fjTempFile_);
}

void Attachments::cmdAddFJ_Click() {
    if (!isClassRightGranted(store::right::kNewAttachment)) return;
    cd2_.setFilter("附件文件(*.*)|*.*");
    if (!cd2_.showOpen() || cd2_.fileName().empty()) return;
    add("", cd2_.fileTitle(), cd2_.fileName());
    // Its name is what the user types next.
    showCaption(fps2_.rowCount());
}

void Attachments::fps2_ButtonClicked(int column, int row) {
    if (column != kDelete && column != kOpen) return;
    if (column == kDelete && (!isClassRightGranted(store::right::kDeleteAttachment) || !askQuestion("确定要删除吗？")))
        return;
    if (column == kOpen && !isClassRightGranted(store::right::kOpenAttachment)) return;
    const std::string path = fps2_.text(kPath, row);
    if (!path.empty()) {
        if (column == kOpen) return services().toolkit.openDocument(path);
        return fps2_.deleteRow(row);
    }
    const std::int32_t entryId = toInt32(fps2_.cellTag(kDelete, row));
    if (column == kOpen) return getFJInfo(entryId);
    fps2_.deleteRow(row);
    delFJ(entryId);
}

void Attachments::delFJ(std::int32_t entryId) {
    openDB();
    trapped([&] {
        appState().gConn->execute("delete from tblItemFJ where fitemid=" + currentItem() +
                                  " and fEntryId=" + std::to_string(entryId));
        return true;
    });
}

void Attachments::getFJInfo(std::int32_t entryId) {
    openDB();
    trapped([&] {
        removeOpened();
        store::Recordset rows = openRows("select * from tblItemFJ where fitemid=" + currentItem() +
                                         " and fEntryId=" + std::to_string(entryId));
        // Two rows of one entry id append their names, as they always have.
        std::string name;
        for (; !rows.eof(); rows.moveNext()) {
            name += plainFileName(rows.text("fFileName"));
            const std::string path = services().folders.attachments() + "/" + plainFileName(name);
            writeFile(path, rows.field("fFJ").value_or(""));
            fjTempFile_ = path;
            services().toolkit.openDocument(path);
        }
        return true;
    });
}

}  // namespace orvenmod
