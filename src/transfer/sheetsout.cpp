#include "transfer/sheetsout.h"

#include "platform/sheet/sheetwriter.h"
#include "platform/sheet/utf16.h"

namespace orvenmod {

namespace {

using platform::SheetColumn;

constexpr const char* kReason = "未导入的原因";
constexpr int kWidth = 2000;
constexpr int kReasonWidth = 5000;

/// As the file has it; what can't be read out of the file must not be taken for a value when it comes again.
platform::SheetCell refusedCell(const SheetCell& cell, bool code) {
    const bool lost = cell.kind == CellKind::uncomputed || cell.kind == CellKind::merged;
    if (lost || (code && cell.kind == CellKind::date)) return {.text = "#N/A"};
    return {.text = cell.text, .number = cell.kind == CellKind::number};
}

SheetColumn templateColumn(const ImportField& field) {
    SheetColumn column{.title = field.caption + (field.required ? "*" : ""), .width = kWidth, .format = "@"};
    if (field.isNumber()) column.format = "General";
    if (field.isDate()) column.format = "yyyy-mm-dd";
    if (field.isReference()) column.choices = field.entries->names();
    column.wholeColumn = true;
    return column;
}

}  // namespace

// The whole code is composed of the category's and the short one.
void writeTemplate(const std::string& path, const std::vector<ImportField>& fields) {
    platform::SheetLayout layout;
    layout.name = "Sheet1";
    for (std::size_t field = 0; field < fields.size(); ++field) {
        if (field != kCodeField) layout.columns.push_back(templateColumn(fields[field]));
    }
    platform::newXlsxWriter(path, layout)->finish();
}

std::size_t writeRefused(const std::string& path, const ImportSession& session) {
    platform::SheetLayout layout;
    layout.name = "Sheet1";
    std::vector<int> columns;
    for (std::size_t i = 0; i < session.headings().size(); ++i) {
        // One that comes for the second time has the reasons of the first behind it.
        if (session.headings()[i] == kReason) continue;
        columns.push_back(static_cast<int>(i));
        layout.columns.push_back({.title = session.headings()[i], .width = kWidth, .format = "@"});
    }
    layout.columns.push_back({.title = kReason, .width = kReasonWidth, .format = "@"});
    const auto sheet = platform::newXlsxWriter(path, layout);
    std::vector<SheetCell> held(columns.size());
    std::vector<platform::SheetCell> cells(layout.columns.size());
    std::size_t cut = 0;
    for (const std::size_t place : session.refused()) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            held[i] = session.rows().cell(session.row(place), columns[i]);
            cells[i] = refusedCell(held[i], session.isCode(columns[i]));
        }
        std::string reason = session.reasonOf(place);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (platform::cutToUnits(held[i].text).size() == held[i].text.size()) continue;
            reason += "；" + layout.columns[i].title + "：只存下前 " + std::to_string(platform::kLongestCell) + " 个字";
            ++cut;
        }
        cells.back() = {.text = reason};
        sheet->addRow(cells);
    }
    sheet->finish();
    return cut;
}

}  // namespace orvenmod
