#include "editor/fieldgrid.h"

#include <memory>
#include <vector>

#include "editor/fieldsource.h"
#include "editor/shortnumber.h"
#include "frame/appstate.h"
#include "frame/conversion.h"
#include "frame/fetchedrows.h"
#include "frame/mdlMain.h"
#include "frame/openrows.h"

namespace orvenmod {

using platform::CellType;

namespace {

std::string classId() { return std::to_string(appState().gItemClassId); }

}  // namespace

bool FieldGrid::initFps() {
    openDB();
    return trapped([&] {
        store::Recordset fields = readFields();
        for (; !fields.eof(); fields.moveNext())
            addField(fields);
        addCategoryRow();
        for (int column = kFieldName; column <= kLastColumn; ++column)
            fps1_.setColumnHidden(column, true);
        if (appState().gEditMode == 0 && appState().gCurParentId > 0) preselectCategory();
        return true;
    });
}

void FieldGrid::addField(const store::Recordset& field) {
    const int row = fps1_.rowCount() + 1;
    fps1_.setRowCount(row);
    const std::string type = field.text("fFieldType");
    fps1_.setText(kCaption, row, field.text("fname"));
    fps1_.setText(kFieldName, row, field.text("fFieldName"));
    fps1_.setText(kFieldType, row, type);
    const auto cellType = static_cast<CellType>(toInt16(type));
    fps1_.setCellType(kValue, row, cellType);
    if (field.text("fislock", "0") == "1") fps1_.setLocked(kValue, row, true);
    if (cellType == CellType::number) fps1_.setNumberRule(kValue, row, numberRule(field));
    fps1_.setText(kSourceClass, row, field.text("FValueItemID"));
    fps1_.setText(kIsNull, row, field.text("fisNull"));
    fps1_.setRequired(kCaption, row, isRequired(row));
    fps1_.setText(kSourceKind, row, field.text("FItemType"));
    if (fieldRow(fps1_, row).isReference()) addReferenceLists(field, row);
}

void FieldGrid::addReferenceLists(const store::Recordset& field, int row) {
    fps1_.setCellType(kValue, row, CellType::combo);
    fps1_.setCellType(kChosenId, row, CellType::combo);
    const auto entries = std::make_shared<ListedRows>(listEntries(field));
    lookups_.push_back(entries);
    fps1_.setItems(kValue, row, {entries, entries->column("fname")});
    fps1_.setItems(kChosenId, row, {entries, entries->column("fitemid")});
    fps1_.setItemCodes(kValue, row, {entries, entries->column("fnumber")});
    fps1_.setItemLeader(kValue, row, kChosenId);
    fps1_.setClearable(kValue, row, true);
}

void FieldGrid::addCategoryRow() {
    const int row = fps1_.rowCount() + 1;
    fps1_.setRowCount(row);
    fps1_.setText(kCaption, row, "所属分类");
    store::Recordset categories = readCategories();
    std::vector<std::string> texts = {"无"};
    std::vector<std::string> ids = {"0"};
    std::vector<std::string> codes = {""};
    for (; !categories.eof(); categories.moveNext()) {
        const std::string code = categories.text("fNumber");
        texts.push_back(categoryText(toInt32(required(categories.field("fdepth"))), categories.text("fName"), code));
        ids.push_back(categories.text("fitemid"));
        codes.push_back(code);
    }
    for (const int column : {kValue, kChosenId, kCategoryCode})
        fps1_.setCellType(column, row, CellType::combo);
    fps1_.setItems(kValue, row, texts);
    fps1_.setItems(kChosenId, row, ids);
    fps1_.setItems(kCategoryCode, row, codes);
}

void FieldGrid::preselectCategory() {
    const std::string parent = std::to_string(appState().gCurParentId);
    const auto rows =
        openRows("select fName,fdepth,isnull(fnumber,'') as fNumber from tblItem where fisdetail=0 and fitemclassid=" +
                 classId() + " And fItemId = " + parent);
    fps1_.setText(kChosenId, lastRow(), parent);
    if (rows.eof()) return;
    const std::string code = rows.text("fnumber");
    fps1_.setText(kCategoryCode, lastRow(), code);
    fps1_.setText(kValue, lastRow(), categoryText(toInt32(rows.text("fDepth", "1")), rows.text("fName"), code));
}

void FieldGrid::proposeCodes() {
    const std::string shortCode = getShortNumber(appState().gCurParentId);
    writeCell(fps1_, kValue, kShortCodeRow, shortCode);
    composeLoosely(shortCode);
}

// Two rules compose the code, and their conditions differ: while typing and at the start any category code counts.
void FieldGrid::composeLoosely(const std::string& shortCode) {
    const std::string category = readCell(fps1_, kCategoryCode, lastRow());
    writeCell(fps1_, kValue, kCodeRow, category.empty() ? shortCode : category + "." + shortCode);
}

// After a pick, a copy and a clear an empty short code and the category code "0" don't.
void FieldGrid::composeStrictly() {
    const std::string own = shortCode();
    const std::string category = readCell(fps1_, kCategoryCode, lastRow());
    const bool both = !own.empty() && !category.empty() && category != "0";
    writeCell(fps1_, kValue, kCodeRow, both ? category + "." + own : own);
}

void FieldGrid::showReference(int row, const std::string& id, const std::string& name) {
    fps1_.setText(kChosenId, row, id);
    fps1_.setText(kValue, row, name);
}

void FieldGrid::tend() {
    for (const auto& entries : lookups_)
        entries->tend();
}

// A reference that was emptied refers to nothing.
std::vector<FieldRow> FieldGrid::classFields() const {
    std::vector<FieldRow> fields;
    for (int row = kCodeRow; row < lastRow(); ++row)
        fields.push_back(field(row));
    return fields;
}

void FieldGrid::chooseCategory(const std::string& id, const std::string& code) {
    writeCell(fps1_, kChosenId, lastRow(), id);
    writeCell(fps1_, kCategoryCode, lastRow(), code);
}

void FieldGrid::fps1_ComboCloseUp(int column, int row, int item) {
    if (item == -1 && column == kValue && row != lastRow()) fps1_.selectItem(kChosenId, row, -1);
    if (item == -1) return;
    if (column == kValue) {
        fps1_.selectItem(kChosenId, row, item);
        if (row == lastRow()) fps1_.selectItem(kCategoryCode, row, item);
        composeStrictly();
        const std::string category = categoryId();
        appState().gCurParentId = category.empty() ? 0 : toInt32(category);
    }
    // The code is composed from the old short code first; the second event of the pick composes it from the new one.
    if (row == lastRow()) writeCell(fps1_, kValue, kShortCodeRow, getShortNumber(appState().gCurParentId));
}

void FieldGrid::fps1_ComboSelChange(int column, int row) {
    if (column == kValue) fps1_ComboCloseUp(column, row, fps1_.selectedItem(kValue, row));
}

void FieldGrid::fps1_EditChange(int, int row) {
    if (row == kShortCodeRow) composeLoosely(fps1_.text(kValue, row));
}

void FieldGrid::clearFields() {
    for (int row = 1; row < lastRow(); ++row) {
        fps1_.setText(kValue, row, "");
        fps1_.setText(kChosenId, row, "");
    }
    activateFirst();
}

void FieldGrid::activateFirst() {
    if (lastRow() >= kShortCodeRow) fps1_.setActiveCell(kValue, kShortCodeRow);
}

void FieldGrid::renewCodes() {
    writeCell(fps1_, kValue, kShortCodeRow, getShortNumber(appState().gCurParentId));
    composeStrictly();
}

// 1 means that the field must be filled, whatever the column's name suggests.
bool FieldGrid::isRequired(int row) const { return trim(fps1_.text(kIsNull, row)) == "1"; }

int FieldGrid::checkFields() const {
    for (int row = 1; row < lastRow(); ++row) {
        if (!isRequired(row) || !trim(fps1_.text(kValue, row)).empty()) continue;
        showWarning(fps1_.text(kCaption, row) + "不能为空!");
        return row;
    }
    return 0;
}

}  // namespace orvenmod
